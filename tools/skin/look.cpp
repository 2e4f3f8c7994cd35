#include "tools/skin/look.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "toolkit/draw/contrast.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/skin/elements.h"

namespace zel {
namespace {

constexpr double kUsualSize = 18;  // of text, for which measures are said

Color Mix(Color a, Color b, double share) {
  const auto mixed = [share](int from, int to) {
    return static_cast<int>(std::lround(from + (to - from) * share));
  };
  return Color{mixed(a.r(), b.r()), mixed(a.g(), b.g()), mixed(a.b(), b.b())};
}

// As much of the tint as the text on it bears.
Color Tinted(Color ground, Color tint, double share, Color text) {
  constexpr double kStep = 0.02;
  while (share > 0 && Contrast(Mix(ground, tint, share), text) < kReadableContrast) share -= kStep;
  return Mix(ground, tint, std::max(0.0, share));
}

constexpr int kWide = 64;  // wide tiles dress a wide widget with few copies
constexpr int kMargin = 4;

// The size of a frame.
Size WideFrame(const Look&) { return {kWide, kWide}; }
Size ButtonFrame(const Look& look) { return {2 * look.Units(6) + 12, 2 * look.Units(6) + 14}; }
Size IconFrame(const Look& look) { return {look.Units(16), look.Units(16)}; }
Size ThinFrame(const Look& look) { return {look.Units(14), look.Units(14)}; }
Size SmallButtonFrame(const Look& look) { return {look.Units(18), look.Units(20)}; }
Size TrackFrame(const Look& look) { return {24, look.Units(22)}; }
Size GripFrame(const Look& look) { return {look.Units(11), look.Units(22)}; }
Size BarFrame(const Look& look) { return {24, look.Units(15)}; }
Size ScrollTrackFrame(const Look& look) { return {24, look.Units(14)}; }
Size ScrollGripFrame(const Look& look) { return {2 * look.Units(14) + 8, look.Units(14)}; }
Size LineFrame(const Look&) { return {12, 2}; }
Size RowFrame(const Look& look) { return {kWide, look.TextSize() + look.Units(8)}; }
Size ItemFrame(const Look& look) { return {48, look.Units(20)}; }
Size TabFrame(const Look& look) { return {24, look.Units(20)}; }
Size WindowFrame(const Look&) { return {30, 30}; }
Size TitleFrame(const Look& look) { return {30, look.BarHeight()}; }
Size TitleTextFrame(const Look& look) { return {12, look.Units(24)}; }
Size EdgeFrame(const Look&) { return {30, Look::BarBorder()}; }
Size SideFrame(const Look& look) {
  return {Look::BarBorder(), 3 * (look.BarHeight() + Look::BarBorder())};
}

// The size of its tile.
Size WholeTile(const Look&, Size frame) { return frame; }
Size InnerTile(const Look&, Size frame) {
  return {std::max(2, frame.w - 2 * kMargin), std::max(2, frame.h - 2 * kMargin)};
}
Size BoxTile(const Look&, Size frame) { return {frame.w - 8, frame.h - 16}; }
Size ButtonTile(const Look&, Size) { return {12, 14}; }
Size RowTile(const Look& look, Size frame) {
  return {frame.w - 2 * kMargin, frame.h - 2 * look.Units(6)};
}
Size WindowTile(const Look&, Size) { return {14, 14}; }
Size TitleTextTile(const Look&, Size frame) { return {4, frame.h}; }
Size ThinEdgeTile(const Look&, Size frame) { return {frame.w - 4, frame.h - 4}; }
Size ToggleTile(const Look&, Size frame) {
  return {frame.w - 2 * (frame.w / 4), frame.h - 2 * (frame.h / 4)};
}
Size TrackTile(const Look&, Size frame) { return {16, frame.h - 4}; }
Size ScrollGripTile(const Look&, Size frame) { return {8, std::max(2, frame.h - 2 * kMargin)}; }
Size LineTile(const Look&, Size) { return {8, 2}; }
Size EdgeTile(const Look&, Size frame) { return {14, frame.h}; }
Size SideTile(const Look&, Size frame) { return {frame.w, frame.h / 3}; }

}  // namespace

LookColors::LookColors(const LookSeed& seed) : face{seed.ground} {
  const Color white{255, 255, 255}, black{0, 0, 0};
  isDark = Contrast(face, white) > Contrast(face, black);
  const Color top = isDark ? white : black;
  sunken = isDark ? Mix(face, black, 0.28) : Mix(face, white, 0.8);
  back = Mix(face, black, isDark ? 0.45 : 0.06);
  panel = Mix(face, sunken, isDark ? 0.7 : 1);
  button = isDark ? Mix(face, white, 0.08) : Mix(face, white, 0.6);
  bar = isDark ? Mix(face, white, 0.045) : Mix(face, black, 0.07);
  barOff = Mix(face, bar, 0.4);
  tooltip = isDark ? Mix(face, white, 0.07) : Mix(face, white, 0.75);
  // On a middling ground neither white nor black can be read on what is nearer to it.
  for (Color* ground : {&sunken, &back, &panel, &button, &bar, &barOff, &tooltip}) {
    constexpr double kStep = 0.125;
    double share = 0;
    while (share < 1 && Contrast(Mix(*ground, face, share), top) < kReadableContrast)
      share += kStep;
    *ground = Mix(*ground, face, share);
  }
  const auto readable = [this](Color color, Color ground) {
    return WithContrast(color, ground, kReadableContrast, isDark);
  };
  text = seed.text.IsSet() ? seed.text : Mix(top, face, 0.08);
  for (const Color ground : {face, sunken, back, panel, button, bar, tooltip})
    text = readable(text, ground);
  quiet = Mix(text, face, 0.25);
  disabled = Mix(text, face, 0.45);
  for (const Color ground : {face, sunken, panel, button, barOff, back}) {
    quiet = readable(quiet, ground);
    disabled = readable(disabled, ground);
  }
  const Color usual{isDark ? 66 : 24, isDark ? 133 : 98, isDark ? 212 : 180};
  accent = seed.accent.IsSet() ? seed.accent : usual;
  onAccent = Contrast(accent, white) >= Contrast(accent, black) ||
                     Contrast(accent, white) > kVisibleContrast
                 ? white
                 : black;
  mark = accent;
  for (const Color ground : {face, sunken, panel, button}) mark = readable(mark, ground);
  accent = WithContrast(accent, onAccent, kReadableContrast);
  select = Tinted(panel, seed.accent.IsSet() ? seed.accent : usual, isDark ? 0.42 : 0.26, text);
  focus = Tinted(button, accent, isDark ? 0.2 : 0.12, text);
  fieldEdge = WithContrast(seed.accent.IsSet() ? seed.accent : usual, panel, kVisibleContrast);
  idle = Tinted(panel, text, 0.08, text);

  light = Mix(face, text, 0.1);
  edge = Mix(face, text, 0.26);
  edgeOff = Mix(face, text, 0.14);
  grey = Mix(face, text, 0.15);
  tab = Tinted(face, text, 0.15, text);
  grip = WithContrast(Mix(face, text, 0.36), panel, 2);
  rule = Mix(panel, text, 0.15);
}

int Look::Units(int measure) const {
  return std::max(1, static_cast<int>(std::lround(measure * size_ / kUsualSize)));
}

// One that is vertical has the measures of the horizontal one, turned.
struct Look::Kind {
  ElementIndex id;
  Size (*frame)(const Look& look);
  Size (*tile)(const Look& look, Size frame);
  Color LookColors::*ground;                                    // null for none
  void (Look::*draw)(Painting& frame, const Part& part) const;  // on it; null for nothing
  bool isVertical = false;

  Size Turned(Size size) const { return isVertical ? Size{size.h, size.w} : size; }
};

const Look::Kind& Look::KindOf(int element) {
  using Colors = LookColors;
  // By ElementIndex.
  static constexpr Kind kKinds[] = {
      {BOX, WideFrame, BoxTile, &Colors::face, &Look::DrawPanel},
      {BOX_SHADDOW, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {BUTTON, ButtonFrame, ButtonTile, &Colors::face, &Look::DrawButton},
      {CHECKBOX, IconFrame, ToggleTile, &Colors::face, &Look::DrawToggle},
      {CLEAR_BACK, WideFrame, ThinEdgeTile, &Colors::back, nullptr},
      {COMBO_BUTTON, SmallButtonFrame, WholeTile, nullptr, &Look::DrawArrow},
      {HSLIDER_BACK, TrackFrame, TrackTile, &Colors::face, &Look::DrawSliderTrack},
      {HSLIDER_GRIP, GripFrame, WholeTile, nullptr, &Look::DrawSliderGrip},
      {ICONEXIT, IconFrame, WholeTile, nullptr, &Look::DrawIcon},
      {ICONMAX, IconFrame, WholeTile, nullptr, &Look::DrawIcon},
      {ICONMIN, IconFrame, WholeTile, nullptr, &Look::DrawIcon},
      {ICONRESTORE, IconFrame, WholeTile, nullptr, &Look::DrawIcon},
      {LIST, RowFrame, RowTile, &Colors::sunken, &Look::DrawRow},
      {MENU_BACK, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {MENU_BUTTON, SmallButtonFrame, InnerTile, &Colors::face, &Look::DrawMenuButton},
      {MENU_ITEM, ItemFrame, TrackTile, &Colors::face, &Look::DrawMenuItem},
      {PANEL_GROOVE, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {PANEL_RAISED, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {PANEL_RIDGE, WideFrame, ThinEdgeTile, &Colors::face, &Look::DrawPanel},
      {PANEL_SUNKEN, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {PROGRESSH, BarFrame, InnerTile, nullptr, &Look::DrawProgress},
      {PROGRESSV, BarFrame, InnerTile, nullptr, &Look::DrawProgress, true},
      {RADIO, IconFrame, ToggleTile, nullptr, &Look::DrawToggle},
      {SCROLL_DOWN, ThinFrame, InnerTile, &Colors::panel, &Look::DrawArrow},
      {SCROLL_HBACK, ScrollTrackFrame, InnerTile, &Colors::panel, nullptr},
      {SCROLL_HGRIP, ScrollGripFrame, ScrollGripTile, &Colors::panel, &Look::DrawScrollGrip},
      {SCROLL_HGRIPOVERLAY, ThinFrame, WholeTile, nullptr, nullptr},
      {SCROLL_LEFT, ThinFrame, InnerTile, &Colors::panel, &Look::DrawArrow},
      {SCROLL_RIGHT, ThinFrame, InnerTile, &Colors::panel, &Look::DrawArrow},
      {SCROLL_UP, ThinFrame, InnerTile, &Colors::panel, &Look::DrawArrow},
      {SCROLL_VBACK, ScrollTrackFrame, InnerTile, &Colors::panel, nullptr, true},
      {SCROLL_VGRIP, ScrollGripFrame, ScrollGripTile, &Colors::panel, &Look::DrawScrollGrip, true},
      {SCROLL_VGRIPOVERLAY, ThinFrame, WholeTile, nullptr, nullptr},
      {SEPARATORH, LineFrame, LineTile, &Colors::rule, nullptr},
      {SEPARATORV, LineFrame, LineTile, &Colors::rule, nullptr, true},
      {TAB_BUTTON, TabFrame, InnerTile, nullptr, &Look::DrawTab},
      {TAB_WINDOW, WideFrame, InnerTile, &Colors::face, &Look::DrawPanel},
      {VSLIDER_BACK, TrackFrame, TrackTile, &Colors::face, &Look::DrawSliderTrack, true},
      {VSLIDER_GRIP, GripFrame, WholeTile, nullptr, &Look::DrawSliderGrip, true},
      {WINBOTTOM, EdgeFrame, EdgeTile, nullptr, &Look::DrawWindowPart},
      {WINDOW, WindowFrame, WindowTile, &Colors::face, nullptr},
      {WINGRIP, TitleFrame, EdgeTile, nullptr, &Look::DrawWindowPart},
      {WINLEFT, SideFrame, SideTile, nullptr, &Look::DrawWindowPart},
      {WINRIGHT, SideFrame, SideTile, nullptr, &Look::DrawWindowPart},
      {WINTEXT, TitleTextFrame, TitleTextTile, nullptr, nullptr},
      {WINTOP, EdgeFrame, EdgeTile, nullptr, &Look::DrawWindowPart},
  };
  constexpr auto kIsMisplaced = [](const Kind& a, const Kind& b) { return a.id >= b.id; };
  static_assert(std::size(kKinds) == kElementCount &&
                std::adjacent_find(std::begin(kKinds), std::end(kKinds), kIsMisplaced) ==
                    std::end(kKinds));
  return kKinds[element];
}

Size Look::FrameOf(int element) const {
  const Kind& kind = KindOf(element);
  return kind.Turned(kind.frame(*this));
}

Size Look::TileOf(int element) const {
  const Kind& kind = KindOf(element);
  return kind.Turned(kind.tile(*this, kind.frame(*this)));
}

void Look::Draw(Painting& frame, int element, int column, int row) const {
  const Kind& kind = KindOf(element);
  if (kind.ground) frame.Fill(colors_.*kind.ground);
  const int state = kElementGrids[element].h == 1 ? column : row;
  if (kind.draw) (this->*kind.draw)(frame, {element, column, state, FrameOf(element)});
}

void Look::DrawButton(Painting& frame, const Part& part) const {
  const Color fills[] = {colors_.button, colors_.accent, colors_.face, colors_.focus};
  const Color edges[] = {colors_.edge, colors_.accent, colors_.edgeOff, colors_.mark};
  frame.Box({0, 0, part.size.w, part.size.h}, Units(5), fills[part.state], edges[part.state],
            part.state == kFocused ? 2 : 1);
}

void Look::DrawToggle(Painting& frame, const Part& part) const {
  const Color fills[] = {colors_.sunken, colors_.accent, colors_.face, colors_.focus};
  const Color edges[] = {colors_.edge, colors_.accent, colors_.edgeOff, colors_.mark};
  const Color marks[] = {colors_.mark, colors_.onAccent, colors_.disabled, colors_.mark};
  constexpr double kDrawn = 16;
  const bool isOn = part.column == 1;
  const int state = part.state, side = part.size.w;
  const auto put = [side](Shape shape) { return Placed(std::move(shape), kDrawn, side, 0, 0); };
  if (part.element == RADIO) {
    frame.Box({0, 0, side, side}, side, fills[state], edges[state]);
    if (isOn) frame.Paint(put(Disc({8, 8}, 3.4)), marks[state]);
    return;
  }
  frame.Box({0, 0, side, side}, Units(4), fills[state], edges[state]);
  if (isOn) frame.Paint(put(Stroke({{4.2, 8.4}, {7, 11.2}, {11.8, 5}}, 2.2)), marks[state]);
}

void Look::DrawArrow(Painting& frame, const Part& part) const {
  const int element = part.element, state = part.state;
  const Size size = part.size;
  const bool isPart = element != COMBO_BUTTON;  // of a scroll bar
  if (isPart && state == kSelected)
    frame.Paint(RoundedBox(1, 1, size.w - 2, size.h - 2, Units(3)), colors_.accent);
  Color mark = isPart ? colors_.quiet : colors_.text;
  if (state == kDisabled) mark = isPart ? colors_.grip : colors_.disabled;
  if (state == kFocused) mark = colors_.mark;
  if (state == kSelected) mark = colors_.onAccent;
  const double r = isPart ? 3.2 : 4;
  const Shape down = Stroke({{8 - r, 8 - r / 2}, {8, 8 + r / 2}, {8 + r, 8 - r / 2}}, 1.9);
  const double turn = element == SCROLL_LEFT    ? 90
                      : element == SCROLL_UP    ? 180
                      : element == SCROLL_RIGHT ? 270
                                                : 0;
  const double side = std::min(size.w, size.h) * (isPart ? 16.0 / 14 : 16.0 / 18);
  frame.Paint(
      Placed(Turned(down, {8, 8}, turn), 16, side, (size.w - side) / 2, (size.h - side) / 2), mark);
}

void Look::DrawIcon(Painting& frame, const Part& part) const {
  const int element = part.element, state = part.state, side = part.size.w;
  frame.Fill(state == kDisabled ? colors_.barOff : colors_.bar);
  if (state == kSelected) frame.Paint(RoundedBox(0, 0, side, side, Units(3)), colors_.accent);
  Color mark = state == kDisabled ? colors_.disabled : colors_.text;
  if (state == kSelected) mark = colors_.onAccent;
  const auto paint = [&](std::vector<Spot> places, double width) {
    frame.Paint(Placed(Stroke(std::move(places), width), 16, side, 0, 0), mark);
  };
  if (element == ICONEXIT) {
    paint({{5, 5}, {11, 11}}, 1.9);
    paint({{11, 5}, {5, 11}}, 1.9);
  } else if (element == ICONMAX) {
    paint({{4.5, 4.5}, {11.5, 4.5}, {11.5, 11.5}, {4.5, 11.5}, {4.5, 4.5}}, 1.4);
    paint({{4.5, 6}, {11.5, 6}}, 1.4);
  } else if (element == ICONMIN) {
    paint({{4.5, 11}, {11.5, 11}}, 1.9);
  } else {
    paint({{4.5, 7}, {9.5, 7}, {9.5, 12}, {4.5, 12}, {4.5, 7}}, 1.4);
    paint({{7, 6}, {7, 4.5}, {12, 4.5}, {12, 9.5}, {10.5, 9.5}}, 1.4);
  }
}

void Look::DrawRow(Painting& frame, const Part& part) const {
  const Color fills[] = {colors_.sunken, colors_.select, colors_.sunken, colors_.focus,
                         colors_.select, colors_.select, colors_.sunken, colors_.grey};
  const Color fill = fills[part.state];
  if (fill == colors_.sunken) return;
  frame.Paint(RoundedBox(0, 1, part.size.w, part.size.h - 2, Units(4)), fill);
}

void Look::DrawMenuButton(Painting& frame, const Part& part) const {
  if (part.state == 1) frame.Fill(colors_.select);
}

void Look::DrawMenuItem(Painting& frame, const Part& part) const {
  const int row = part.state;
  const Size size = part.size;
  const bool isChosen = row == 1 || row == 4 || row == 6;
  if (isChosen) frame.Paint(RoundedBox(1, 0, size.w - 2, size.h, Units(3)), colors_.accent);
  const Color mark = isChosen ? colors_.onAccent : colors_.text;
  const double middle = size.h / 2.0;
  if (row == 2) frame.Paint(RoundedBox(4, middle - 0.5, size.w - 8, 1, 0), colors_.rule);
  if (row == 3 || row == 4)
    frame.Paint(Stroke({{40, middle - 3.5}, {43.5, middle}, {40, middle + 3.5}}, 1.9), mark);
  if (row > 4) frame.Paint(Stroke({{5, middle}, {8, middle + 3}, {13, middle - 4}}, 1.9), mark);
}

void Look::DrawSliderTrack(Painting& frame, const Part& part) const {
  const Size size = part.size;
  const double thick = Units(4);
  const Color groove = part.state == kDisabled ? colors_.grey : colors_.edge;
  if (part.element == HSLIDER_BACK)
    frame.Paint(RoundedBox(0, (size.h - thick) / 2, size.w, thick, thick / 2), groove);
  else
    frame.Paint(RoundedBox((size.w - thick) / 2, 0, thick, size.h, thick / 2), groove);
}

void Look::DrawSliderGrip(Painting& frame, const Part& part) const {
  const Color fills[] = {colors_.grip, colors_.accent, colors_.grey, colors_.mark};
  frame.Paint(RoundedBox(0, 0, part.size.w, part.size.h, Units(4)), fills[part.state]);
}

void Look::DrawScrollGrip(Painting& frame, const Part& part) const {
  const Color fills[] = {colors_.grip, colors_.accent, colors_.grey, colors_.mark};
  const double inset = Units(3);
  frame.Paint(RoundedBox(inset, inset, part.size.w - 2 * inset, part.size.h - 2 * inset, Units(4)),
              fills[part.state]);
}

void Look::DrawProgress(Painting& frame, const Part& part) const {
  const Size size = part.size;
  if (part.state == 1)
    frame.Paint(RoundedBox(2, 2, size.w - 4, size.h - 4, Units(2)), colors_.accent);
  else
    frame.Box({0, 0, size.w, size.h}, Units(3), colors_.sunken, colors_.edge);
}

void Look::DrawTab(Painting& frame, const Part& part) const {
  frame.Box({0, 1, part.size.w, part.size.h + Units(6)}, Units(4),
            part.state == kSelected ? colors_.face : colors_.tab, colors_.edge);
}

void Look::DrawWindowPart(Painting& frame, const Part& part) const {
  const int element = part.element;
  const Size size = part.size;
  const bool isActive = part.state == 0;
  const Color bar = isActive ? colors_.bar : colors_.barOff;
  const Color edge = isActive ? colors_.accent : colors_.edge;
  if (element == WINGRIP) return frame.Fill(bar);
  frame.Fill(element == WINTOP ? bar : colors_.face);
  // Beside the title bar the sides are of its colour.
  if (element == WINLEFT || element == WINRIGHT) {
    frame.Paint(RoundedBox(-1, -1, size.w + 2, size.h / 3.0 + 1, 0), bar);
    frame.Paint(RoundedBox(element == WINLEFT ? 0 : size.w - 1, 0, 1, size.h, 0), edge);
    return;
  }
  frame.Paint(RoundedBox(0, element == WINTOP ? 0 : size.h - 1, size.w, 1, 0), edge);
}

void Look::DrawPanel(Painting& frame, const Part& part) const {
  const int element = part.element;
  const Size size = part.size;
  if (element == PANEL_GROOVE || element == PANEL_RIDGE || element == BOX)
    frame.Box({0, 0, size.w, size.h}, element == PANEL_RIDGE ? 1 : Units(3), colors_.face,
              colors_.edge);
  else
    frame.Box({0, 0, size.w, size.h}, element == BOX_SHADDOW ? 0 : Units(3),
              element == PANEL_SUNKEN ? colors_.sunken : colors_.face,
              element == PANEL_RAISED ? colors_.edgeOff : colors_.edge);
}

}  // namespace zel
