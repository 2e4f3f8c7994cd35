#include "toolkit/core/graphics_mode.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "toolkit/core/allegro.h"
#include "toolkit/core/geometry.h"

namespace zel {
namespace {

// Allegro's console drivers divide by numbers that become 0 with much smaller or larger modes.
constexpr int kLeastSide = 64;

constexpr int kTextColumns = 80;
constexpr int kTextRows = 25;

constexpr int kDepths[] = {8, 15, 16, 24, 32};

BITMAP* replacedScreen = nullptr;  // the mode's own, while a video page stands for it

void PutScreenBack() {
  if (replacedScreen) screen = std::exchange(replacedScreen, nullptr);
}

}  // namespace

bool SetGraphicsMode(int card, int w, int h, int depth) {
  if (std::find(std::begin(kDepths), std::end(kDepths), depth) == std::end(kDepths)) return false;
  PutScreenBack();
  set_color_depth(depth);
  return set_gfx_mode(card, std::clamp(w, kLeastSide, kMostPixels),
                      std::clamp(h, kLeastSide, kMostPixels), 0, 0) == 0;
}

void SetTextMode() {
  PutScreenBack();
  set_gfx_mode(GFX_TEXT, kTextColumns, kTextRows, 0, 0);
}

void ShowVideoPage() {
  BITMAP* page = gfx_driver ? create_video_bitmap(SCREEN_W, SCREEN_H) : nullptr;
  if (!page) return;
  // Allegro leaves the mode in its own exit handler, registered earlier and so run later.
  static const bool registered = std::atexit(PutScreenBack) == 0;
  if (!registered) return;
  replacedScreen = std::exchange(screen, page);
  show_video_bitmap(page);
}

}  // namespace zel
