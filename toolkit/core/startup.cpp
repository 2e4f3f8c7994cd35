#include "toolkit/core/startup.h"

#include <sys/prctl.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>

#include "imageformats/register.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/console_guard.h"
#include "toolkit/base/console_switch.h"
#include "toolkit/base/framebuffer.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/input_rest.h"
#include "toolkit/base/process.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// Cards below this one are Allegro's autodetection.
constexpr int kFirstRealCard = 3;
constexpr int kFullScreenCard = GFX_AUTODETECT_FULLSCREEN;
constexpr int kWindowedCard = GFX_AUTODETECT_WINDOWED;
static_assert(kFullScreenCard == 1 && kWindowedCard == 2);

constexpr int kDefaultDepth = 16;
constexpr int kPaletteDepth = 8;
constexpr int kNoDepth = 0;
constexpr int kSystemRate = -1;  // of the keyboard

// While it lives, threads that are created sleep up to 4 ms longer than they ask for. Those of
// Allegro ask for a few microseconds at a time: with the kernel's usual slack that wakes the
// processor thousands of times a second; with this one the program idles below one percent and a
// tick comes at most this much later. What sets up a graphics mode does not wait that long.
class LazyThreads {
 public:
  LazyThreads() { prctl(PR_SET_TIMERSLACK, kNanoseconds); }
  ~LazyThreads() { prctl(PR_SET_TIMERSLACK, kUsual); }
  LazyThreads(const LazyThreads&) = delete;
  LazyThreads& operator=(const LazyThreads&) = delete;

 private:
  static constexpr unsigned long kNanoseconds = 4'000'000;
  static constexpr unsigned long kUsual = 0;
};

bool InstallAllegro() {
  if (system_driver) return true;
  const LazyThreads lazy;
  SignalKeeper signals;
  if (install_allegro(SYSTEM_AUTODETECT, &errno, std::atexit) != 0) return false;
  // Allegro's handlers run its whole shut-down inside whatever was interrupted, and may hang or
  // crash there. Only a console without a guard needs them: an X server cleans up by itself.
  if (IsGuarded() || system_driver->id != SYSTEM_LINUX) signals.PutBack();
  InstallBitmapGuard();
  RegisterPictureFormats();
  return true;
}

int ResolveCard(int card, bool fullscreen) {
  if (card >= kFirstRealCard) return card;
  return fullscreen ? kFullScreenCard : kWindowedCard;
}

int ResolveDepth(int depth) {
  if (depth >= 1) return depth;
  const int desktop = desktop_color_depth();
  return desktop >= 1 ? desktop : kDefaultDepth;
}

// What is tried when a depth cannot be set.
int PairedDepth(int depth) {
  switch (depth) {
    case kPaletteDepth:
      return kNoDepth;  // and so refused
    case 16:
      return 15;
    case 24:
      return 32;
    case 32:
      return 24;
    default:
      return 16;
  }
}

// Allegro slows the mouse down with every change of the mode.
void ApplyMouseSpeed() {
  set_mouse_speed(settings.UsableMouseSpeed(), settings.UsableMouseSpeed());
}

// What lives in the mode that ends, or was taken from its screen.
void LeaveMode() {
  if (ScreenUpdate* update = CurrentScreenUpdate()) update->Destroy();
  if (MousePointer* pointer = CurrentPointer()) pointer->FreeBackground();
}

void EnterMode() {
  ApplyMouseSpeed();
  if (settings.useVideoMemory) ShowVideoPage();
  if (ScreenUpdate* update = CurrentScreenUpdate()) update->Create();
}

void KeepRunning() {
  if (settings.runInBackground && set_display_switch_mode(SWITCH_BACKGROUND) != 0)
    set_display_switch_mode(SWITCH_BACKAMNESIA);
  Loop().WatchDisplaySwitches();
}

void MakeFollow(Dialog& root) {
  const int width = settings.screenWidth, height = settings.screenHeight;
  root.Resize(width, height);
  // A window takes that for the size of its client area; its frame has to fit on the screen, too.
  root.Resize(width - std::max(0, root.w() - width), height - std::max(0, root.h() - height));
  ReloadSkins(root);
}

void RestoreMode(Dialog& root) {
  SetGraphicsMode(settings.gfxMode, settings.screenWidth, settings.screenHeight,
                  settings.colorDepth);
  EnterMode();
  if (settings.colorDepth == 8) {
    // Setting a mode also sets the palette that the skins' colours are places in.
    RecomputeNamedColors();
    MakeFollow(root);
  }
  root.Redraw();
  KeepRunning();
}

// What is to fit the screen takes the framebuffer as it is.
void TakeFramebuffer() {
  const Size size = FramebufferSize();
  if (settings.zoom != kZoomToFit || size.w < 1 || size.h < 1) return;
  settings.gfxMode = kFullScreenCard;
  settings.fullscreen = true;
  settings.screenWidth = size.w;
  settings.screenHeight = size.h;
  settings.colorDepth = FramebufferDepth();
}

Error InstallInput() {
  const LazyThreads lazy;
  if (install_keyboard() != 0) return kKeyboardError;
  three_finger_flag = FALSE;  // Ctrl+Alt+Del is no way to end a dialog that refuses to close
  if (install_timer() != 0) return kTimerError;
  if (install_mouse() < 0) return kMouseError;
  RemoveInputAtRest();
  if (settings.keyDelay != kSystemRate && settings.keyRepeat != kSystemRate)
    set_keyboard_rate(std::max(0, settings.keyDelay), std::max(0, settings.keyRepeat));
  ApplyMouseSpeed();
  request_refresh_rate(std::max(0, settings.refreshRate));
  if (settings.useJoystick) install_joystick(JOY_TYPE_AUTODETECT);
  return kNoError;
}

Error LoadCurrentSkin() {
  if (!EngineInit()) return kFontError;
  std::unique_ptr<Skin> skin{new (std::nothrow) Skin{settings.skinPath}};
  if (!skin) return kMemoryError;
  SetCurrentSkin(std::move(skin));
  const Error result = CurrentSkin()->GetError();
  return result.IsError() ? result : Error{kNoError};
}

}  // namespace

Error InstallToolkit(const char* configFile, void (*ready)(), void (*settled)()) {
  if (!InstallAllegro()) return kAllegroError;
  HoldConsoleSwitches();
  process.Begin();
  settings.Load(configFile);
  if (settled) settled();
  SetZoom(settings.zoom);
  if (configFile) TakeFramebuffer();
  const Error mode = ChangeScreenMode(settings.gfxMode, settings.fullscreen, settings.screenWidth,
                                      settings.screenHeight, settings.colorDepth, nullptr);
  if (mode.IsError()) return mode;
  const Error input = InstallInput();
  if (input.IsError()) return input;
  if (ready) ready();
  return LoadCurrentSkin();
}

Error ChangeScreenMode(int card, bool fullscreen, int w, int h, int depth, Dialog* root) {
  card = ResolveCard(card, fullscreen);
  depth = ResolveDepth(depth);
  const bool shadow = settings.mouseShadow && depth != kPaletteDepth;
  LeaveMode();
  if (!SetGraphicsMode(card, w, h, depth)) {
    const int paired = PairedDepth(depth);
    if (!SetGraphicsMode(card, w, h, paired)) {
      if (root) RestoreMode(*root);
      return kGraphicsError;
    }
    depth = paired;
  }
  settings.screenWidth = SCREEN_W;
  settings.screenHeight = SCREEN_H;
  settings.gfxMode = card;
  settings.colorDepth = depth;
  settings.mouseShadow = shadow;
  RecomputeNamedColors();
  set_color_conversion(PictureConversion());
  EnterMode();
  if (root) MakeFollow(*root);
  KeepRunning();
  return kNoError;
}

void ExitToolkit() {
  SetCurrentSkin(nullptr);
  EngineExit();
  // A root that runs goes on without them, to its end.
  if (!Loop().Root()) process.End();
}

}  // namespace zel
