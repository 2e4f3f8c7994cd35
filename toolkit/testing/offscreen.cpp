#include "toolkit/testing/offscreen.h"

#include <png.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "imageformats/register.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kLargestExtent = 16384;

// Draws on a bitmap that somebody else owns.
class MemoryScreen final : public ScreenUpdate {
 public:
  explicit MemoryScreen(BITMAP* frame) { canvas.Set(frame, false, kMemoryBitmap); }
  Error Create() override { return kNoError; }
};

// The clock, in Allegro's hardware ticks.
struct Timer {
  void (*tick)();
  long period;
  long left;
};
std::vector<Timer> timers;

int InstallTick(void (*tick)(), long period) {
  std::erase_if(timers, [tick](const Timer& timer) { return timer.tick == tick; });
  timers.push_back({tick, period, period});
  return 0;
}

void RemoveTick(void (*tick)()) {
  std::erase_if(timers, [tick](const Timer& timer) { return timer.tick == tick; });
}

void GoOnBy(long time) {
  for (Timer& timer : timers)
    for (timer.left -= time; timer.left <= 0; timer.left += timer.period) timer.tick();
}

constexpr png_byte kOpaque = 255;

bool WritePng(const char* path, BITMAP* bitmap, Size size, png_uint_32 format) {
  const int depth = bitmap_color_depth(bitmap), mask = bitmap_mask_color(bitmap);
  std::vector<png_byte> pixels;
  for (int y = 0; y < size.h; ++y)
    for (int x = 0; x < size.w; ++x) {
      const int color = getpixel(bitmap, x, y);
      for (const auto component : {getr_depth, getg_depth, getb_depth})
        pixels.push_back(static_cast<png_byte>(component(depth, color)));
      if (format & PNG_FORMAT_FLAG_ALPHA) pixels.push_back(color == mask ? 0 : kOpaque);
    }
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.format = format;
  image.width = static_cast<png_uint_32>(size.w);
  image.height = static_cast<png_uint_32>(size.h);
  // The library's own way to a file deletes one that it cannot write, a device, too.
  struct stat there {};
  const bool isPlain = lstat(path, &there) == 0 ? S_ISREG(there.st_mode) : errno == ENOENT;
  const std::string beside = std::string{path} + ".unfinished";
  const std::string written = isPlain ? beside : path;
  if (isPlain) std::remove(beside.c_str());
  errno = 0;
  std::FILE* file = std::fopen(written.c_str(), isPlain ? "wbx" : "wb");
  if (!file) return false;
  bool isDone = png_image_write_to_stdio(&image, file, 0, pixels.data(), 0, nullptr) != 0;
  isDone = std::fclose(file) == 0 && isDone;
  if (!isPlain) return isDone;
  if (isDone && std::rename(beside.c_str(), path) == 0) return true;
  const int error = errno;
  std::remove(beside.c_str());
  errno = error;
  return false;
}

}  // namespace

Offscreen* Offscreen::current_ = nullptr;

Offscreen::Offscreen() : previous_{std::exchange(timerDriver, {InstallTick, RemoveTick, Wait})} {
  current_ = this;
  if (!system_driver) install_allegro(SYSTEM_NONE, &errno, nullptr);
  InstallBitmapGuard();
  RegisterPictureFormats();
}

Offscreen::~Offscreen() {
  SetCurrentScreenUpdate(nullptr);
  ExitToolkit();
  timers.clear();
  timerDriver = previous_;
  current_ = nullptr;
}

bool Offscreen::SetMode(Size size, int depth) {
  if (!IsColorDepth(depth)) return false;
  if (std::max(size.w, size.h) > kLargestExtent || std::min(size.w, size.h) < 1) return false;
  frame_.reset(create_bitmap_ex(depth, size.w, size.h));
  if (!frame_) return false;
  clear_bitmap(frame_.get());
  settings.screenWidth = size.w;
  settings.screenHeight = size.h;
  settings.colorDepth = depth;
  settings.showMouse = false;
  settings.useKeyboard = false;
  settings.yield = true;  // or the clock would stand still
  set_color_depth(depth);
  set_palette(default_palette);
  RecomputeNamedColors();
  set_color_conversion(PictureConversion());
  if (Skin* skin = CurrentSkin()) skin->Reload();
  return true;
}

std::string Offscreen::LoadSkin(const char* name) {
  const bool hasEngine = EngineInit();
  SetCurrentSkin(std::make_unique<Skin>(name));
  const Error error = hasEngine ? CurrentSkin()->GetError() : Error{kFontError};
  if (!error.IsError()) return {};
  const std::string text = error.GetDescription();
  return std::string{name} + ": " + text.substr(0, text.find('\n'));
}

void Offscreen::Run(Dialog& root) {
  SetCurrentScreenUpdate(std::make_unique<MemoryScreen>(frame_.get()));
  root.Execute(nullptr);
}

void Offscreen::Run(Dialog& root, int frames) {
  onFrame = [&root, frames]() mutable {
    if (--frames <= 0) root.Close();
  };
  Run(root);
  onFrame = nullptr;
}

void Offscreen::Wait() {
  if (current_->onFrame) current_->onFrame();
  GoOnBy(TIMERS_PER_SECOND / settings.UsableFrameRate());
}

bool SavePng(const char* path, BITMAP* bitmap, Size part) {
  return WritePng(path, bitmap, {std::min(bitmap->w, part.w), std::min(bitmap->h, part.h)},
                  PNG_FORMAT_RGB);
}

bool SaveMaskedPng(const char* path, BITMAP* bitmap) {
  return WritePng(path, bitmap, {bitmap->w, bitmap->h}, PNG_FORMAT_RGBA);
}

bool ParseSize(const char* text, Size* size) {
  char rest = 0;
  return std::sscanf(text, "%dx%d%c", &size->w, &size->h, &rest) == 2 &&
         std::min(size->w, size->h) > 0;
}

}  // namespace zel
