#include "tools/preview/player.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/testing/hands.h"
#include "tools/preview/channel.h"
#include "tools/preview/rehearsal.h"

namespace zel {
namespace {

constexpr int kShifts = KB_SHIFT_FLAG | KB_CTRL_FLAG | KB_ALT_FLAG;
constexpr int kButtons = 7;
constexpr int kLastCharacter = 0x10FFFF;
constexpr int kMostSteps = 100;

std::string FirstLine(const char* file) {
  std::ifstream stream{file};
  std::string line;
  std::getline(stream, line);
  return line;
}

class Player {
 public:
  Player(const Scene& scene, Scratch& scratch, int descriptor)
      : rehearsal_{scene, scratch}, channel_{loop_, descriptor} {
    channel_.onEnd = [] { _exit(EXIT_SUCCESS); };
    channel_.onMessage = [this](char kind, const std::string& line) {
      if (kind == kInputMessage) Act(line);
    };
  }

  [[noreturn]] void Run() {
    const std::string complaint = rehearsal_.SetUp();
    if (!complaint.empty()) End(kComplaintMessage, complaint);
    const std::chrono::nanoseconds second = std::chrono::seconds{1};
    period_ = second / settings.UsableFrameRate();
    next_ = Clock::now();
    rehearsal_.Run([this](bool isReady) {
      if (!isReady && !isShown_) return;
      isShown_ = true;
      ShowFrame();
      TellPosition();
      AwaitTick();
    });
    // The files are what a script finds.
    End(kChoiceMessage, std::to_string(launcherState.exitCode & 0xFF) + '\n' +
                            FirstLine(paths.positionFile) + '\n' + FirstLine(paths.outputFile));
  }

 private:
  using Clock = std::chrono::steady_clock;

  [[noreturn]] void End(char kind, const std::string& said) {
    channel_.Send(kind, said);
    while (!channel_.IsIdle()) loop_.Pass(-1);
    _exit(EXIT_SUCCESS);
  }

  // What has not been sent yet waits for the next tick, so that a slow reader gets the newest.
  void ShowFrame() {
    BITMAP* frame = rehearsal_.Frame();
    if (!channel_.IsIdle() || !HasChanged(frame)) return;
    const std::int32_t extent[] = {frame->w, frame->h};
    std::string message(sizeof extent + std::size_t{3} * frame->w * frame->h, '\0');
    std::memcpy(message.data(), extent, sizeof extent);
    char* out = message.data() + sizeof extent;
    const BitmapPtr row{create_bitmap_ex(32, frame->w, 1)};
    for (int y = 0; y < frame->h; ++y) {
      blit(frame, row.get(), 0, y, 0, 0, frame->w, 1);
      for (int x = 0; x < frame->w; ++x) {
        const int pixel = getpixel(row.get(), x, 0);
        *out++ = static_cast<char>(getr32(pixel));
        *out++ = static_cast<char>(getg32(pixel));
        *out++ = static_cast<char>(getb32(pixel));
      }
    }
    channel_.Send(kFrameMessage, message);
  }

  bool HasChanged(BITMAP* frame) {
    const std::size_t bytes =
        static_cast<std::size_t>(frame->w) * ((bitmap_color_depth(frame) + 7) / 8);
    std::string now;
    now.reserve(bytes * frame->h + sizeof(PALETTE));
    for (int y = 0; y < frame->h; ++y)
      now.append(reinterpret_cast<const char*>(frame->line[y]), bytes);
    PALETTE palette;
    get_palette(palette);
    now.append(reinterpret_cast<const char*>(palette), sizeof palette);
    if (now == shown_) return false;
    shown_.swap(now);
    return true;
  }

  void TellPosition() {
    const std::string position = PositionOf(rehearsal_.Config());
    if (position != position_) channel_.Send(kPositionMessage, position);
    position_ = position;
  }

  // What is done meanwhile is answered at once; the clock makes up for it.
  void AwaitTick() {
    Leave();
    next_ += period_;
    const Clock::time_point now = Clock::now();
    if (now - next_ > std::chrono::seconds{1}) next_ = now;
    hasActed_ = false;
    for (auto left = next_ - now; left.count() > 0 && !hasActed_; left = next_ - Clock::now())
      loop_.Pass(static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count()));
    if (next_ <= now) loop_.Pass(0);
  }

  void Act(const std::string& line) {
    std::istringstream words{line};
    std::string what;
    int a = -1, b = -1, c = -1;
    words >> what >> a >> b >> c;
    const bool isKey = a > 0 && a < KEY_MAX;
    if (what == "down" && isKey && b >= 0 && b <= kLastCharacter) {
      HoldShifts(c & kShifts);
      PressKey(b, a);
    } else if (what == "up" && isKey) {
      ReleaseKey(a);
      HoldShifts(b & kShifts);
    } else if (what == "mouse") {
      ShowMouse();
      const BITMAP* frame = rehearsal_.Frame();
      PutMouse({std::clamp(a, 0, frame->w - 1), std::clamp(b, 0, frame->h - 1)});
      if ((c & kButtons) != mouse_b) HoldButtons(c & kButtons);
    } else if (what == "wheel") {
      ShowMouse();
      TurnWheel(std::clamp(a, -kMostSteps, kMostSteps));
    }
    if (what == "mouse" || what == "wheel" || what == "leave") hasLeft_ = what == "leave";
    hasActed_ = true;
  }

  // A pointer that is away does nothing, so that what it did before it left comes first.
  void Leave() {
    if (!hasLeft_ || !settings.showMouse || InputWaits()) return;
    if (MousePointer* pointer = CurrentPointer()) pointer->Hide();
    settings.showMouse = false;
  }

  // As when the launcher's mouse server has started.
  static void ShowMouse() {
    if (settings.showMouse) return;
    settings.showMouse = true;
    UpdateDoubleClickWindow();
  }

  PollLoop loop_;
  Rehearsal rehearsal_;
  Channel channel_;
  std::chrono::nanoseconds period_{};
  Clock::time_point next_;
  std::string shown_, position_;
  bool isShown_ = false, hasActed_ = false, hasLeft_ = false;
};

}  // namespace

void Play(const Scene& scene, Scratch& scratch, int descriptor) {
  Player{scene, scratch, descriptor}.Run();
}

}  // namespace zel
