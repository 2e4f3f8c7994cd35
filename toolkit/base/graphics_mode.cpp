#include "toolkit/base/graphics_mode.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/display_colors.h"
#include "toolkit/base/framebuffer.h"
#include "toolkit/base/geometry.h"
#include "toolkit/base/process.h"

namespace zel {
namespace {

// Allegro's console drivers divide by numbers that become 0 with much smaller or larger modes.
constexpr int kLeastSide = 64;

constexpr int kTextColumns = 80;
constexpr int kTextRows = 25;

void PutScreenBack() {
  if (process.replacedScreen) screen = std::exchange(process.replacedScreen, nullptr);
  process.middlePart.reset();
}

// Allegro leaves the mode in its own exit handler, registered earlier and so run later.
bool PutsScreenBackAtExit() {
  bool& registered = process.putsScreenBackAtExit;
  if (!registered) registered = std::atexit(PutScreenBack) == 0;
  return registered;
}

// Shows a mode smaller than the framebuffer in the middle of it instead of in its corner.
void CentreScreen() {
  const Size shown = FramebufferSize();
  const int x = (std::min(shown.w, screen->w) - SCREEN_W) / 2;
  const int y = (std::min(shown.h, screen->h) - SCREEN_H) / 2;
  if (x < 0 || y < 0 || x + y == 0 || !PutsScreenBackAtExit()) return;
  process.middlePart.reset(create_sub_bitmap(screen, x, y, SCREEN_W, SCREEN_H));
  if (process.middlePart) process.replacedScreen = std::exchange(screen, process.middlePart.get());
}

// Whether the card is the console's framebuffer, or Allegro is free to take that.
bool IsFramebuffer(int card) {
  return card == GFX_FBCON || card == GFX_AUTODETECT || card == GFX_AUTODETECT_FULLSCREEN ||
         card == GFX_AUTODETECT_WINDOWED;
}

}  // namespace

bool IsColorDepth(int depth) {
  return std::find(std::begin(kColorDepths), std::end(kColorDepths), depth) !=
         std::end(kColorDepths);
}

bool SetGraphicsMode(int card, int w, int h, int depth) {
  if (!IsColorDepth(depth)) return false;
  PutScreenBack();
  set_color_depth(depth);
  w = std::clamp(w, kLeastSide, kMostPixels);
  h = std::clamp(h, kLeastSide, kMostPixels);
  if (IsFramebuffer(card) && !FramebufferTakes(w, h, depth)) {
    SetTextMode();
    return false;
  }
  if (set_gfx_mode(card, w, h, 0, 0) != 0) return false;
  SpeedUpDisplay();
  CentreScreen();
  return true;
}

void SetTextMode() {
  PutScreenBack();
  if (system_driver) set_gfx_mode(GFX_TEXT, kTextColumns, kTextRows, 0, 0);
}

void ShowVideoPage() {
  PutScreenBack();
  BITMAP* page = gfx_driver ? create_video_bitmap(SCREEN_W, SCREEN_H) : nullptr;
  if (!page || !PutsScreenBackAtExit()) return;
  process.replacedScreen = std::exchange(screen, page);
  show_video_bitmap(page);
}

}  // namespace zel
