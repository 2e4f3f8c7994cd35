#include "toolkit/base/framebuffer.h"

#include <fcntl.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "toolkit/base/allegro.h"

namespace zel {
namespace {

constexpr int kConsoleSystem = AL_ID('L', 'N', 'X', 'C');

bool OnConsole() { return system_driver && system_driver->id == kConsoleSystem; }

// The device that Allegro opens.
const char* DevicePath() {
  const char* path = get_config_string("graphics", "framebuffer", std::getenv("FRAMEBUFFER"));
  return path && *path ? path : "/dev/fb0";
}

class Framebuffer {
 public:
  Framebuffer() = default;
  Framebuffer(const Framebuffer&) = delete;
  Framebuffer& operator=(const Framebuffer&) = delete;
  ~Framebuffer() { close(device_); }

  Size Shown() const { return {static_cast<int>(mode_.xres), static_cast<int>(mode_.yres)}; }

  int Depth() const { return static_cast<int>(mode_.bits_per_pixel); }

  bool Takes(int w, int h, int depth) const {
    return !isOpen_ || Fits(mode_, w, h, depth) || Fits(Tried(w, h, depth), w, h, depth);
  }

 private:
  static bool Fits(const fb_var_screeninfo& mode, int w, int h, int depth) {
    return mode.bits_per_pixel == static_cast<unsigned>(depth) &&
           mode.xres >= static_cast<unsigned>(w) && mode.yres >= static_cast<unsigned>(h);
  }

  // What the kernel would make of the wish; the mode stays. Most framebuffers cannot change it.
  fb_var_screeninfo Tried(int w, int h, int depth) const {
    fb_var_screeninfo mode = mode_;
    mode.xres = mode.xres_virtual = static_cast<unsigned>(w);
    mode.yres = mode.yres_virtual = static_cast<unsigned>(h);
    mode.bits_per_pixel = static_cast<unsigned>(depth);
    mode.xoffset = mode.yoffset = 0;
    mode.activate = FB_ACTIVATE_TEST;
    return ioctl(device_, FBIOPUT_VSCREENINFO, &mode) == 0 ? mode : mode_;
  }

  fb_var_screeninfo mode_{};  // all 0 where it is not open
  int device_ = open(DevicePath(), O_RDWR | O_CLOEXEC);
  bool isOpen_ = ioctl(device_, FBIOGET_VSCREENINFO, &mode_) == 0;
};

}  // namespace

bool FramebufferTakes(int w, int h, int depth) {
  return !OnConsole() || Framebuffer{}.Takes(w, h, depth);
}

Size FramebufferSize() { return OnConsole() ? Framebuffer{}.Shown() : Size{}; }
int FramebufferDepth() { return OnConsole() ? Framebuffer{}.Depth() : 0; }

}  // namespace zel
