// How much larger than its numbers say everything is drawn.
//
// Skins, menu files and the widgets' own numbers are written in the pixels of a screen that nobody
// has to look at closely. A zoom makes everything that much larger: fonts are set to the larger
// size, pictures are made anew, and numbers of pixels go through Zoomed. What has been laid out,
// the screen and the mouse are in the pixels that there are.
#pragma once

namespace zel {

inline constexpr double kLeastZoom = 1, kLargestZoom = 8;
// A setting only: as large as what is shown fits on the screen.
inline constexpr double kZoomToFit = 0;

// What a text says: kZoomToFit for "auto" in any case, else its number brought to
// kLeastZoom..kLargestZoom; 1 for what is no number.
double ParseZoom(const char* text);

// Brought to kLeastZoom..kLargestZoom. Counts for what is made from then on: the skin is to be
// loaded afterwards.
void SetZoom(double zoom);
double CurrentZoom();
inline bool IsZoomed() { return CurrentZoom() != 1; }

// A number of pixels at the current zoom, to the nearest; never 0 for another number.
int Zoomed(int pixels);
}  // namespace zel
