// Which of a menu file's layouts is shown, how large and where, on screens that none is made for.
#pragma once

#include <cstdint>
#include <string>

#include "toolkit/base/geometry.h"

namespace zel {

// Without a zoom the layout is as large as the screen, and lies at its corner.
struct ScreenLayout {
  std::string section;  // of menu files; empty without a zoom, where the screen's size decides
  Size size;            // in the file's pixels
  double scale = 1;     // pixels of the screen to one of the file
  Point origin;         // of the layout on the screen

  // A place in the file's pixels, where it is on the screen. A negative position counts from the
  // layout's far edge.
  Rect OnScreen(const Rect& place) const;
  Point OnScreen(Point place) const;
};

// Where things lie on the screen, in pixels. A menu file that leaves a value out inherits it from
// the file read before it.
struct LayoutValues {
  std::int32_t menuLeft = 79;
  std::int32_t menuTop = 180;
  std::int32_t menuWidth = 340;
  std::int32_t menuHeight = 297;
  std::int32_t hintLeft = 413;
  std::int32_t hintTop = 180;
  std::int32_t hintWidth = 287;
  std::int32_t hintHeight = 297;
  std::int32_t progressX = 82;
  std::int32_t progressY = 490;
  std::int32_t progressW = 614;
};
inline constexpr int kProgressHeight = 30;
// The top of a countdown without a place of its own, from the progress bar's, while that shows.
inline constexpr int kCountdownBelow = 32;

// The screens whose sections of a menu file count also without a zoom.
inline constexpr Size kUsualScreens[] = {{640, 480}, {800, 600}, {1024, 768}};
bool IsUsual(Size screen);

// The section of a menu file for screens of one size, and the other way round: true for a section
// that is for one size, which is stored.
std::string SectionFor(Size screen);
bool ReadSectionSize(const std::string& section, Size* size);

// Chooses a layout of the menu file for a screen and sets the toolkit's zoom. With kZoomToFit it is
// the one of the screen's own size, else the one that fills the screen best, as large as it fits;
// with a number the largest that the screen has room for at that zoom, or at less where it has room
// for none. On a screen that is too small for all of them the places of one shrink, and text and
// pictures stay as they are. Known are all sections "MENU_CONFIGURATION_WxH", and the general one
// for the least of the usual sizes that its panels fit in. A section's key "Zoom" says how much
// larger than its numbers' own pixels text and pictures are to be there.
ScreenLayout FitLayout(const char* menuFile, Size screen, double zoom);
// The same, but 1 is a zoom like any other.
ScreenLayout FitZoomedLayout(const char* menuFile, Size screen, double zoom);

}  // namespace zel
