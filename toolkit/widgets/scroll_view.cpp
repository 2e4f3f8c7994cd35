#include "toolkit/widgets/scroll_view.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kBarIncrement = 16;  // pixels per press of an arrow or step of the wheel

// Texts beyond this length are cut: nobody reads that much in a panel, and each line costs memory
// of its own.
constexpr std::size_t kLongestText = 4u << 20;
// Files beyond this length are not read at all.
constexpr std::size_t kLongestFile = 64u << 20;

constexpr int kTabColumns = 8;

bool ShowsBar(int mode, int room, int extent) {
  return mode == kAlwaysScroll || (mode == kScrollAsNeeded && room < extent);
}

int InLimits(std::int64_t pixels) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<std::int64_t>(pixels, Limits::min(), Limits::max()));
}

// Where a view of `extent` has to begin so that [from, from + length) shows; the far edge wins.
int Reveal(int position, int extent, std::int64_t from, int length) {
  return InLimits(std::max(std::min<std::int64_t>(position, from), from + length - extent));
}

}  // namespace

void ScrollContent::Draw(Bitmap& canvas) { view_.DrawVisible(canvas); }

ScrollView::ScrollView() : content{*this} {
  for (Widget* child :
       {static_cast<Widget*>(&corner), static_cast<Widget*>(&hBar), static_cast<Widget*>(&vBar),
        static_cast<Widget*>(&panel), static_cast<Widget*>(&content)})
    Add(child);
  hBar.SetOrientation(kHorizontal);
  vBar.SetOrientation(kVertical);
  for (ScrollBar* bar : {&hBar, &vBar}) {
    bar->SetIncrement(Zoomed(kBarIncrement));
    bar->Hide();
  }
  corner.Hide();
}

Size ScrollView::Room() const {
  return {w() - marginLeft - marginRight, h() - marginTop - marginBottom};
}

int ScrollView::VisibleWidth() const { return Room().w - (vShown ? vBar.Thickness() : 0); }
int ScrollView::VisibleHeight() const { return Room().h - (hShown ? hBar.Thickness() : 0); }

void ScrollView::DrawContent(Bitmap&) {}
void ScrollView::Scrolled() {}

void ScrollView::DrawVisible(Bitmap& canvas) {
  SubCanvas visible{canvas, marginLeft, marginTop, VisibleWidth(), VisibleHeight()};
  if (!visible.IsEmpty()) DrawContent(visible);
}

void ScrollView::SetContentSize(int width, int height) {
  contentW = width;
  contentH = height;
  UpdateLayout();
}

bool ScrollView::NeedsBars(int width, int height) const {
  return ShowsBar(hMode, Room().w, width) || ShowsBar(vMode, Room().h, height);
}

void ScrollView::ReplaceContent(int width, int height, int overhang) {
  const bool hasBars = hShown || vShown || NeedsBars(contentW, contentH);
  if (hasBars || NeedsBars(width, height)) return SetContentSize(width, height);
  const Rect changed{0, 0, marginLeft + std::max(contentW, width) + overhang,
                     marginTop + std::max(contentH, height) + overhang};
  contentW = width;
  contentH = height;
  RedrawBehind(&content, changed);
}

void ScrollView::SetScrollModes(int horizontal, int vertical) {
  hMode = horizontal;
  vMode = vertical;
  UpdateLayout();
}

void ScrollView::SetMargins(int left, int top, int right, int bottom) {
  marginLeft = left;
  marginTop = top;
  marginRight = right;
  marginBottom = bottom;
  UpdateLayout();
}

void ScrollView::ClampScroll() {
  scrollX = std::clamp(scrollX, 0, std::max(0, contentW - std::max(0, VisibleWidth())));
  scrollY = std::clamp(scrollY, 0, std::max(0, contentH - std::max(0, VisibleHeight())));
  hBar.SetPosition(scrollX);
  vBar.SetPosition(scrollY);
}

void ScrollView::ScrollTo(int left, int top, int width, int height) {
  const Point before{scrollX, scrollY};
  scrollX = Reveal(scrollX, VisibleWidth(), left, width);
  scrollY = Reveal(scrollY, VisibleHeight(), top, height);
  if (before == Point{scrollX, scrollY}) return;
  ClampScroll();
  Redraw();
}

void ScrollView::Center() {
  const Point before{scrollX, scrollY};
  scrollX = (contentW - VisibleWidth()) / 2;
  scrollY = (contentH - VisibleHeight()) / 2;
  if (before == Point{scrollX, scrollY}) return;
  ClampScroll();
  Redraw();
}

// The room that the other bar leaves counts.
void ScrollView::DecideBars() {
  const Size room = Room();
  const bool needsH = ShowsBar(hMode, room.w, contentW), needsV = ShowsBar(vMode, room.h, contentH);
  hShown = ShowsBar(hMode, room.w - (needsV ? vBar.Thickness() : 0), contentW);
  vShown = ShowsBar(vMode, room.h - (needsH ? hBar.Thickness() : 0), contentH);
}

void ScrollView::PlaceBars() {
  const int right = vShown ? vBar.Thickness() : 0;
  const int bottom = hShown ? hBar.Thickness() : 0;
  // In a view that is smaller than its bars they stay at its near edges.
  const int width = std::max(0, w() - right);
  const int height = std::max(0, h() - bottom);
  if (hShown) {
    hBar.Shape(0, height, width, bottom);
    hBar.SetRange(contentW, VisibleWidth());
  }
  if (vShown) {
    vBar.Shape(width, 0, right, height);
    vBar.SetRange(contentH, VisibleHeight());
  }
  panel.Shape(0, 0, width, height);
  content.Shape(0, 0, width, height);
  corner.Shape(width, height, right, bottom);
}

void ScrollView::UpdateLayout() {
  DecideBars();
  PlaceBars();
  ClampScroll();
  const auto show = [this](Widget& widget, bool shown) {
    if (!shown)
      widget.Hide();
    else if (!Hidden())
      widget.Unhide();
  };
  show(hBar, hShown);
  show(vBar, vShown);
  show(corner, hShown && vShown);
  Dialog::UpdateLayout();
  Redraw();
}

void ScrollView::MsgInitSkin() {
  Dialog::MsgInitSkin();
  UpdateLayout();
}

void ScrollView::Unhide() {
  Dialog::Unhide();
  // The bars may not be needed.
  UpdateLayout();
}

void ScrollView::ScrollByWheel(const Widget* sender, int steps) {
  const bool overBar = hBar.Dialog::Contains(sender) || vBar.Dialog::Contains(sender);
  if (vShown && !overBar) vBar.ScrollByWheel(steps * Zoomed(kBarIncrement));
}

void ScrollView::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_WHEEL) ScrollByWheel(sender, static_cast<int>(arg1));
  if (msg != MSG_SCROLL || (sender != &hBar && sender != &vBar)) return;
  (sender == &hBar ? scrollX : scrollY) = static_cast<int>(arg1);
  Redraw();
  Scrolled();
}

void TextView::MsgInitSkin() {
  TakeTextSet(kEditText);
  ScrollView::MsgInitSkin();
  UpdateContentSize();
  Redraw();
}

void TextView::MsgGotFocus() {
  ScrollView::MsgGotFocus();
  TakeFocusLook();
}

void TextView::MsgLostFocus() {
  ScrollView::MsgLostFocus();
  TakeFocusLook();
}

int TextView::FirstLine() const { return scrollY / std::max(1, GetFont(LookState()).TextHeight()); }

void TextView::ShowLine(int line) {
  ScrollTo(scrollX, line * GetFont(LookState()).TextHeight(), 1, VisibleHeight());
}

void TextView::TakeFocusLook() {
  // A long text is not measured without need.
  if (fontIndex[kFocused] != fontIndex[kNormal]) UpdateContentSize();
  Redraw();
}

void TextView::UpdateContentSize() {
  const Font& font = GetFont(LookState());
  int widest = 0;
  for (const std::string& line : lines) widest = std::max(widest, font.TextLength(line.c_str()));
  const auto count = static_cast<std::int64_t>(lines.size());
  ReplaceContent(widest, InLimits(font.TextHeight() * count), font.TextHeight());
}

void TextView::Clear() {
  lines.clear();
  scrollX = scrollY = 0;
}

// A font has no picture of a tab: the spaces that lead to the next stop stand for it. Nor has it
// one of what else ends a line.
void TextView::AddLine(const std::string& line) {
  std::string shown;
  int column = 0;
  for (const char* at = line.c_str(); *at != '\0';) {
    const char* const start = at;
    const bool isTab = ugetxc(&at) == '\t';
    const int columns = isTab ? kTabColumns - column % kTabColumns : 1;
    if (isTab)
      shown.append(static_cast<std::size_t>(columns), ' ');
    else
      shown.append(start, at);
    column += columns;
  }
  if (shown.ends_with('\r')) shown.pop_back();
  lines.push_back(std::move(shown));
}

void TextView::LoadFile(const char* path) {
  Clear();
  if (IsFile(path)) {
    std::string text = ReadText(path, kLongestFile);
    text.resize(std::min(text.size(), kLongestText));
    for (auto start = text.begin(); start != text.end();) {
      const auto end = std::find(start, text.end(), '\n');
      std::string line{start, end};
      AddLine(CutToBytes(line.c_str(), line.size()));
      start = end == text.end() ? end : end + 1;
    }
    lines.emplace_back();
  }
  UpdateContentSize();
}

void TextView::AppendLines(std::vector<std::string> more) {
  std::move(more.begin(), more.end(), std::back_inserter(lines));
  UpdateContentSize();
}

void TextView::SetLines(std::vector<std::string> newLines) {
  Clear();
  lines = std::move(newLines);
  UpdateContentSize();
}

void TextView::SetText(const char* text) {
  Clear();
  std::string rest = text ? text : "";
  char* position = nullptr;
  const Ascii separator{"\n"};
  for (char* line = ustrtok_r(rest.data(), separator, &position); line;
       line = ustrtok_r(nullptr, separator, &position))
    if (std::strcmp(line, "\r") != 0) AddLine(line);
  UpdateContentSize();
}

void TextView::DrawContent(Bitmap& canvas) {
  const int state = LookState();
  const Font& font = GetFont(state);
  const int lineHeight = font.TextHeight();
  if (lineHeight < 1) return;
  int y = -(scrollY % lineHeight);
  for (auto line = static_cast<std::size_t>(scrollY / lineHeight);
       line < lines.size() && y <= canvas.Height(); ++line) {
    font.TextoutShadow(canvas, lines[line].c_str(), {-scrollX, y}, GetFontColor(state),
                       GetShadowColor(state), Color{}, kAlignLeft);
    y += lineHeight;
  }
}

}  // namespace zel
