#include "tools/skin/look.h"

#include <algorithm>
#include <cmath>

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

bool IsVertical(int element) {
  return element == VSLIDER_BACK || element == VSLIDER_GRIP || element == PROGRESSV ||
         element == SCROLL_VBACK || element == SCROLL_VGRIP || element == SEPARATORV;
}

Size Across(int element, Size size) { return IsVertical(element) ? Size{size.h, size.w} : size; }

constexpr int kWide = 64;  // wide tiles dress a wide widget with few copies
constexpr int kMargin = 4;

}  // namespace

LookColors::LookColors(const LookSeed& seed) {
  const Color white{255, 255, 255}, black{0, 0, 0};
  face = seed.ground;
  isDark = Contrast(face, white) > Contrast(face, black);
  const Color top = isDark ? white : black;
  sunken = isDark ? Mix(face, black, 0.28) : Mix(face, white, 0.8);
  back = Mix(face, black, isDark ? 0.45 : 0.06);
  panel = Mix(face, sunken, isDark ? 0.7 : 1);
  button = isDark ? Mix(face, white, 0.08) : Mix(face, white, 0.6);
  bar = isDark ? Mix(face, white, 0.045) : Mix(face, black, 0.07);
  barOff = Mix(face, bar, 0.4);
  tooltip = isDark ? Mix(face, white, 0.07) : Mix(face, white, 0.75);
  text = seed.text.IsSet() ? seed.text : Mix(top, face, 0.08);
  for (const Color ground : {face, sunken, back, panel, button, bar, tooltip})
    text = WithContrast(text, ground, kReadableContrast);
  quiet = Mix(text, face, 0.25);
  disabled = Mix(text, face, 0.45);
  for (const Color ground : {face, sunken, panel, button, barOff, back}) {
    quiet = WithContrast(quiet, ground, kReadableContrast);
    disabled = WithContrast(disabled, ground, kReadableContrast);
  }
  const Color usual{isDark ? 66 : 24, isDark ? 133 : 98, isDark ? 212 : 180};
  accent = seed.accent.IsSet() ? seed.accent : usual;
  onAccent = Contrast(accent, white) >= Contrast(accent, black) ||
                     Contrast(accent, white) > kVisibleContrast
                 ? white
                 : black;
  mark = accent;
  for (const Color ground : {face, sunken, panel, button})
    mark = WithContrast(mark, ground, kReadableContrast);
  accent = WithContrast(accent, onAccent, kReadableContrast);
  select = Tinted(panel, seed.accent.IsSet() ? seed.accent : usual, isDark ? 0.42 : 0.26, text);
  focus = Tinted(button, accent, isDark ? 0.2 : 0.12, text);
  fieldEdge = WithContrast(seed.accent.IsSet() ? seed.accent : usual, panel, kVisibleContrast);
  idle = Tinted(panel, text, 0.08, text);

  light = Mix(face, text, 0.1);
  edge = Mix(face, text, 0.26);
  edgeOff = Mix(face, text, 0.14);
  grey = Mix(face, text, 0.15);
  grip = WithContrast(Mix(face, text, 0.36), panel, 2);
  rule = Mix(panel, text, 0.15);
}

int Look::Units(int measure) const {
  return std::max(1, static_cast<int>(std::lround(measure * size_ / kUsualSize)));
}

Size Look::FrameOf(int element) const {
  const int thin = Units(14), icon = Units(16), bar = BarHeight() + BarBorder();
  switch (element) {
    case BUTTON:
      return {2 * Units(6) + 12, 2 * Units(6) + 14};
    case CHECKBOX:
    case RADIO:
    case ICONEXIT:
    case ICONMAX:
    case ICONMIN:
    case ICONRESTORE:
      return {icon, icon};
    case COMBO_BUTTON:
    case MENU_BUTTON:
      return {Units(18), Units(20)};
    case HSLIDER_BACK:
    case VSLIDER_BACK:
      return Across(element, {24, Units(22)});
    case HSLIDER_GRIP:
    case VSLIDER_GRIP:
      return Across(element, {Units(11), Units(22)});
    case LIST:
      return {kWide, size_ + Units(8)};
    case MENU_ITEM:
      return {48, Units(20)};
    case PROGRESSH:
    case PROGRESSV:
      return Across(element, {24, Units(15)});
    case SCROLL_DOWN:
    case SCROLL_LEFT:
    case SCROLL_RIGHT:
    case SCROLL_UP:
    case SCROLL_HGRIPOVERLAY:
    case SCROLL_VGRIPOVERLAY:
      return {thin, thin};
    case SCROLL_HBACK:
    case SCROLL_VBACK:
      return Across(element, {24, thin});
    case SCROLL_HGRIP:
    case SCROLL_VGRIP:
      return Across(element, {2 * thin + 8, thin});
    case SEPARATORH:
    case SEPARATORV:
      return Across(element, {12, 2});
    case TAB_BUTTON:
      return {24, Units(20)};
    case WINBOTTOM:
    case WINTOP:
      return {30, BarBorder()};
    case WINDOW:
      return {30, 30};
    case WINGRIP:
      return {30, BarHeight()};
    case WINLEFT:
    case WINRIGHT:
      return {BarBorder(), 3 * bar};
    case WINTEXT:
      return {12, Units(24)};
    default:
      return {kWide, kWide};
  }
}

Size Look::TileOf(int element) const {
  const Size frame = FrameOf(element);
  const Size inner{frame.w - 2 * kMargin, frame.h - 2 * kMargin};
  switch (element) {
    case BUTTON:
      return {12, 14};
    case CHECKBOX:
    case RADIO:
      return {frame.w - 2 * (frame.w / 4), frame.h - 2 * (frame.h / 4)};
    case LIST:
      return {frame.w - 2 * kMargin, frame.h - 2 * Units(6)};
    case BOX:
      return {frame.w - 8, frame.h - 16};
    case CLEAR_BACK:
    case PANEL_RIDGE:
      return {frame.w - 4, frame.h - 4};
    case MENU_ITEM:
      return {16, frame.h - 4};
    case SCROLL_HGRIP:
    case SCROLL_VGRIP:
      return Across(element, {8, std::max(2, FrameOf(SCROLL_UP).w - 2 * kMargin)});
    case HSLIDER_BACK:
    case VSLIDER_BACK:
      return Across(element, {16, std::max(frame.w, frame.h) > 0 ? Units(22) - 4 : 1});
    case SEPARATORH:
    case SEPARATORV:
      return Across(element, {8, 2});
    case WINBOTTOM:
    case WINTOP:
    case WINGRIP:
      return {14, frame.h};
    case WINDOW:
      return {14, 14};
    case WINLEFT:
    case WINRIGHT:
      return {frame.w, frame.h / 3};
    case WINTEXT:
      return {4, frame.h};
    case COMBO_BUTTON:
    case HSLIDER_GRIP:
    case VSLIDER_GRIP:
    case ICONEXIT:
    case ICONMAX:
    case ICONMIN:
    case ICONRESTORE:
    case SCROLL_HGRIPOVERLAY:
    case SCROLL_VGRIPOVERLAY:
      return frame;
    default:
      return {std::max(2, inner.w), std::max(2, inner.h)};
  }
}

void Look::Draw(Painting& frame, int element, int column, int row) const {
  const Size grid = kElementGrids[element];
  const int state = grid.h == 1 ? column : row;
  switch (element) {
    case BUTTON:
      return DrawButton(frame, state, Units(5));
    case CHECKBOX:
    case RADIO:
      return DrawToggle(frame, element, column == 1, row);
    case COMBO_BUTTON:
    case SCROLL_DOWN:
    case SCROLL_LEFT:
    case SCROLL_RIGHT:
    case SCROLL_UP:
      return DrawArrow(frame, element, state);
    case ICONEXIT:
    case ICONMAX:
    case ICONMIN:
    case ICONRESTORE:
      return DrawIcon(frame, element, state);
    case HSLIDER_BACK:
    case VSLIDER_BACK:
    case HSLIDER_GRIP:
    case VSLIDER_GRIP:
      return DrawSlider(frame, element, state);
    case LIST:
      return DrawRow(frame, row);
    case MENU_BUTTON:
      return frame.Fill(row == 1 ? colors_.select : colors_.face);
    case MENU_ITEM:
      return DrawMenuItem(frame, row);
    case PROGRESSH:
    case PROGRESSV:
      return DrawProgress(frame, element, state == 1);
    case SCROLL_HBACK:
    case SCROLL_VBACK:
    case SCROLL_HGRIP:
    case SCROLL_VGRIP:
      return DrawScrollBar(frame, element, state);
    case SEPARATORH:
    case SEPARATORV:
      return frame.Fill(colors_.rule);
    case CLEAR_BACK:
      return frame.Fill(colors_.back);
    case WINBOTTOM:
    case WINTOP:
    case WINGRIP:
    case WINLEFT:
    case WINRIGHT:
      return DrawWindowPart(frame, element, state == 0);
    case WINDOW:
      return frame.Fill(colors_.face);
    case TAB_BUTTON: {
      const Size size = FrameOf(element);
      return frame.Box({0, 1, size.w, size.h + Units(6)}, Units(4),
                       row == kSelected ? colors_.face : colors_.grey, colors_.edge);
    }
    case SCROLL_HGRIPOVERLAY:
    case SCROLL_VGRIPOVERLAY:
    case WINTEXT:
      return;
    default:
      return DrawPanel(frame, element);
  }
}

void Look::DrawButton(Painting& frame, int state, double radius) const {
  const Color fills[] = {colors_.button, colors_.accent, colors_.face, colors_.focus};
  const Color edges[] = {colors_.edge, colors_.accent, colors_.edgeOff, colors_.mark};
  const Size size = FrameOf(BUTTON);
  frame.Fill(colors_.face);
  frame.Box({0, 0, size.w, size.h}, radius, fills[state], edges[state], state == kFocused ? 2 : 1);
}

void Look::DrawToggle(Painting& frame, int element, bool isOn, int state) const {
  const Color fills[] = {colors_.sunken, colors_.accent, colors_.face, colors_.focus};
  const Color edges[] = {colors_.edge, colors_.accent, colors_.edgeOff, colors_.mark};
  const Color marks[] = {colors_.mark, colors_.onAccent, colors_.disabled, colors_.mark};
  constexpr double kDrawn = 16;
  const int side = FrameOf(element).w;
  const auto put = [side](Shape shape) { return Placed(std::move(shape), kDrawn, side, 0, 0); };
  if (element == RADIO) {
    frame.Box({0, 0, side, side}, side, fills[state], edges[state]);
    if (isOn) frame.Paint(put(Disc({8, 8}, 3.4)), marks[state]);
    return;
  }
  frame.Fill(colors_.face);
  frame.Box({0, 0, side, side}, Units(4), fills[state], edges[state]);
  if (isOn) frame.Paint(put(Stroke({{4.2, 8.4}, {7, 11.2}, {11.8, 5}}, 2.2)), marks[state]);
}

void Look::DrawArrow(Painting& frame, int element, int state) const {
  const bool isPart = element != COMBO_BUTTON;  // of a scroll bar
  const Size size = FrameOf(element);
  if (isPart) frame.Fill(colors_.panel);
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

void Look::DrawIcon(Painting& frame, int element, int state) const {
  const int side = FrameOf(element).w;
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

void Look::DrawRow(Painting& frame, int row) const {
  const Color fills[] = {colors_.sunken, colors_.select, colors_.sunken, colors_.focus,
                         colors_.select, colors_.select, colors_.sunken, colors_.grey};
  const Size size = FrameOf(LIST);
  frame.Fill(colors_.sunken);
  if (fills[row] == colors_.sunken) return;
  frame.Paint(RoundedBox(0, 1, size.w, size.h - 2, Units(4)), fills[row]);
}

void Look::DrawMenuItem(Painting& frame, int row) const {
  const Size size = FrameOf(MENU_ITEM);
  const bool isChosen = row == 1 || row == 4 || row == 6;
  frame.Fill(colors_.face);
  if (isChosen) frame.Paint(RoundedBox(1, 0, size.w - 2, size.h, Units(3)), colors_.accent);
  const Color mark = isChosen ? colors_.onAccent : colors_.text;
  const double middle = size.h / 2.0;
  if (row == 2) frame.Paint(RoundedBox(4, middle - 0.5, size.w - 8, 1, 0), colors_.rule);
  if (row == 3 || row == 4)
    frame.Paint(Stroke({{40, middle - 3.5}, {43.5, middle}, {40, middle + 3.5}}, 1.9), mark);
  if (row > 4) frame.Paint(Stroke({{5, middle}, {8, middle + 3}, {13, middle - 4}}, 1.9), mark);
}

void Look::DrawSlider(Painting& frame, int element, int state) const {
  const Size size = FrameOf(element);
  if (element == HSLIDER_GRIP || element == VSLIDER_GRIP) {
    const Color fills[] = {colors_.grip, colors_.accent, colors_.grey, colors_.mark};
    frame.Paint(RoundedBox(0, 0, size.w, size.h, Units(4)), fills[state]);
    return;
  }
  frame.Fill(colors_.face);
  const double thick = Units(4);
  const Color groove = state == kDisabled ? colors_.grey : colors_.edge;
  if (element == HSLIDER_BACK)
    frame.Paint(RoundedBox(0, (size.h - thick) / 2, size.w, thick, thick / 2), groove);
  else
    frame.Paint(RoundedBox((size.w - thick) / 2, 0, thick, size.h, thick / 2), groove);
}

void Look::DrawScrollBar(Painting& frame, int element, int state) const {
  const Size size = FrameOf(element);
  frame.Fill(colors_.panel);
  if (element == SCROLL_HBACK || element == SCROLL_VBACK) return;
  const Color fills[] = {colors_.grip, colors_.accent, colors_.grey, colors_.mark};
  const double inset = Units(3);
  frame.Paint(RoundedBox(inset, inset, size.w - 2 * inset, size.h - 2 * inset, Units(4)),
              fills[state]);
}

void Look::DrawProgress(Painting& frame, int element, bool isFilling) const {
  const Size size = FrameOf(element);
  if (isFilling)
    frame.Paint(RoundedBox(2, 2, size.w - 4, size.h - 4, Units(2)), colors_.accent);
  else
    frame.Box({0, 0, size.w, size.h}, Units(3), colors_.sunken, colors_.edge);
}

void Look::DrawWindowPart(Painting& frame, int element, bool isActive) const {
  const Size size = FrameOf(element);
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

void Look::DrawPanel(Painting& frame, int element) const {
  const Size size = FrameOf(element);
  frame.Fill(colors_.face);
  if (element == PANEL_GROOVE || element == PANEL_RIDGE || element == BOX)
    frame.Box({0, 0, size.w, size.h}, element == PANEL_RIDGE ? 1 : Units(3), colors_.face,
              colors_.edge);
  else
    frame.Box({0, 0, size.w, size.h}, element == BOX_SHADDOW ? 0 : Units(3),
              element == PANEL_SUNKEN ? colors_.sunken : colors_.face,
              element == PANEL_RAISED ? colors_.edgeOff : colors_.edge);
}

}  // namespace zel
