// Setting Allegro's graphics and text modes.
//
// Allegro destroys every video bitmap when the mode changes, and its screen bitmap once more. So a
// video page that took the place of the screen has to leave it first; no other code calls
// set_gfx_mode.
#pragma once

namespace zel {

// In bits per pixel.
inline constexpr int kColorDepths[] = {8, 15, 16, 24, 32};
bool IsColorDepth(int depth);

// Sets a mode of `depth` bits per pixel with `card`, one of Allegro's driver ids; sides outside
// 64..32767 pixels count as the nearest of these. False when there is no such mode; then there is
// no screen, but new bitmaps have that depth.
bool SetGraphicsMode(int card, int w, int h, int depth);
// Leaves graphics for the text console; nothing where Allegro is not installed.
void SetTextMode();
// Replaces the screen by a page of video memory of the same size, if there is enough of it.
void ShowVideoPage();

}  // namespace zel
