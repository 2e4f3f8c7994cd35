// A look that follows from a few colours and a size.
#pragma once

#include <string>

#include "toolkit/base/geometry.h"
#include "toolkit/draw/color.h"
#include "tools/skin/painting.h"

namespace zel {

// What the look follows from. Colours that are none are chosen to the ground.
struct LookSeed {
  Color ground, text, accent;
  int size = 18;  // of a line of text, in pixels
};

// The colours of a look. Each text has a contrast of 4.5 at least to each ground that it has, also
// where the seed's would have less.
struct LookColors {
  explicit LookColors(const LookSeed& seed);

  bool isDark;
  Color face, sunken, back, panel, button, bar, barOff, tooltip, tab;  // grounds
  Color text, quiet, disabled, mark, onAccent;                         // on them
  Color accent, select, fieldEdge, focus, idle, light, edge, edgeOff, grey, grip, rule;
};

// The elements and pointer shapes, drawn for a size of text.
class Look {
 public:
  explicit Look(const LookSeed& seed) : colors_{seed}, size_{seed.size} {}

  const LookColors& Colors() const { return colors_; }
  int TextSize() const { return size_; }
  // A measure that is said for texts of 18 pixels; 1 at least.
  int Units(int measure) const;

  Size FrameOf(int element) const;
  Size TileOf(int element) const;
  // The frame at this place of the element's grid.
  void Draw(Painting& frame, int element, int column, int row) const;

  // The rows of lists, the title bar and its parts.
  int RowHeight() const { return size_ + Units(12); }
  int BarHeight() const { return size_ + Units(10); }
  static int BarBorder() { return 4; }

 private:
  // A frame that is being drawn.
  struct Part {
    int element, column;
    int state;  // its place among the frames that say the state
    Size size;
  };
  // How an element is made; see look.cpp.
  struct Kind;
  static const Kind& KindOf(int element);

  void DrawButton(Painting& frame, const Part& part) const;
  void DrawToggle(Painting& frame, const Part& part) const;
  void DrawArrow(Painting& frame, const Part& part) const;
  void DrawIcon(Painting& frame, const Part& part) const;
  void DrawRow(Painting& frame, const Part& part) const;
  void DrawMenuButton(Painting& frame, const Part& part) const;
  void DrawMenuItem(Painting& frame, const Part& part) const;
  void DrawSliderTrack(Painting& frame, const Part& part) const;
  void DrawSliderGrip(Painting& frame, const Part& part) const;
  void DrawScrollGrip(Painting& frame, const Part& part) const;
  void DrawProgress(Painting& frame, const Part& part) const;
  void DrawTab(Painting& frame, const Part& part) const;
  void DrawWindowPart(Painting& frame, const Part& part) const;
  void DrawPanel(Painting& frame, const Part& part) const;

  LookColors colors_;
  int size_;
};

// The pointer shapes, in squares of 24 units.
struct PointerLook {
  Spot hotspot;
  int frames, duration;
  void (*draw)(Painting& frame, int index, double size);
};
inline constexpr int kPointerSize = 24;
const PointerLook& PointerLookOf(int shape);

}  // namespace zel
