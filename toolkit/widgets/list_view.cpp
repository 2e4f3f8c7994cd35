#include "toolkit/widgets/list_view.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kPlainItemHeight = 12;  // pixels, without a picture of the skin
constexpr int kTextInset = 3;

// States of an item, in the order of the frames of "LIST".
enum ItemState : int {
  kItemPlain,
  kItemMarked,
  kItemFocused,
  kItemCursor,
  kItemCursorMarked,
  kItemCurrent,  // and marked, under the focus
  kItemDisabled,
  kItemDisabledMarked,
};

}  // namespace

int TextStateOfItem(int state) {
  constexpr int kTextStates[kListStates] = {kNormal,   kNormal,   kFocused,  kFocused,
                                            kSelected, kSelected, kDisabled, kDisabled};
  return kTextStates[state];
}

void ListItem::Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) {
  if (skinBitmap)
    skinBitmap->DrawArea(canvas.GetBitmap(), 0, state, 0, 0, canvas.Width(), canvas.Height(), 1,
                         kListStates);
}

int ListItem::GetHeight() const {
  const Skin* skin = owner ? owner->GetSkin() : nullptr;
  if (skin && skin->listHeight != 0) return skin->listHeight;
  const SkinBitmap* element = owner ? owner->GetBitmap() : nullptr;
  return element ? element->Height() / kListStates : Zoomed(kPlainItemHeight);
}

const char* ListItem::GetText() const { return nullptr; }
Rect ListItem::PaintedPart(Size) const { return {}; }

TextListItem::TextListItem(const char* itemText, std::intptr_t userData) : ListItem{userData} {
  SetText(itemText);
}

const char* TextListItem::GetText() const { return text ? text->c_str() : nullptr; }

void TextListItem::SetText(const char* newText) {
  text = newText ? std::make_unique<std::string>(newText) : nullptr;
  if (owner) owner->Redraw();
}

void TextListItem::Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) {
  ListItem::Draw(canvas, skinBitmap, state);
  if (!text || !owner || !owner->GetParent()) return;
  const Widget& styled = *owner->GetParent();
  const int group = TextStateOfItem(state);
  const Font& font = styled.GetFont(group);
  font.TextoutShadow(canvas, text->c_str(),
                     {Zoomed(kTextInset), (GetHeight() - font.TextHeight()) / 2},
                     styled.GetFontColor(group), styled.GetShadowColor(group), Color{}, kAlignLeft);
}

ListItem* ListView::GetItem(int index) const {
  return IsValid(index) ? items[static_cast<std::size_t>(index)].get() : nullptr;
}

void ListView::InsertItem(std::unique_ptr<ListItem> item, int index) {
  item->owner = this;
  index = std::clamp(index, 0, Count());
  items.insert(items.begin() + index, std::move(item));
  // The mark stays with the current position.
  if (!multiSelect && index <= current && current < Count() - 1)
    std::swap(GetItem(current)->selected, GetItem(current + 1)->selected);
  Redraw();
  if (Count() == 1) SetCurrent(0);
}

void ListView::DeleteItem(int index) {
  if (!IsValid(index)) return;
  items.erase(items.begin() + index);
  Redraw();
  SetFirst(first);
  PageSize();
  const bool moves = index < current || current >= Count();
  if (Count() == 0) current = -1;
  if (moves)
    SetCurrent(std::min(std::max(current - 1, 0), Count() - 1));
  else if (!multiSelect)
    MarkCurrent(current);
}

void ListView::SetFirst(int index) {
  index = std::clamp(index, 0, std::max(0, Count() - 1));
  if (index == first) return;
  first = index;
  Redraw();
}

void ListView::SetMultiSelect(bool multi) {
  multiSelect = multi;
  Redraw();
}

void ListView::Clear() {
  items.clear();
  first = 0;
  current = -1;
  Redraw();
}

void ListView::MarkCurrent(int index) {
  if (!IsValid(index)) return;
  if (ListItem* before = GetItem(current)) before->selected = false;
  current = index;
  GetItem(current)->selected = true;
}

void ListView::Redraw() {
  Widget::Redraw();
  RepaintBehind();
}

Rect ListView::PaintedPart() const {
  Rect painted{x(), y(), w(), 0};
  for (int i = first; i < Count() && painted.h < h(); ++i) {
    const int height = HeightOf(i);
    if (IsCut(i, painted.h + height)) break;
    const Rect row = GetItem(i)->PaintedPart({w(), height});
    if (row.y != 0 || row.h != height) break;
    const int left = std::max(painted.x, x() + row.x);
    const int right = std::min(painted.Right(), x() + row.Right());
    painted = {left, painted.y, right - left, painted.h + height};
  }
  return painted.Shared(Bounds());
}

void ListView::RedrawItems(int index, int other) {
  int y = 0;
  for (int i = first; i < Count() && y < h(); ++i) {
    const int height = HeightOf(i);
    if (i == index || i == other) {
      const Rect row{0, y, w(), std::min(height, h() - y)};
      RedrawPart(row);
      if (parent) parent->RedrawBehind(this, row);
    }
    y += height;
  }
  // The list counts as changed even when neither row shows.
  if (!Dirty()) Redraw();
}

void ListView::SetCurrent(int index) {
  const int before = current;
  if (multiSelect)
    current = index;
  else
    MarkCurrent(index);
  RedrawItems(before, current);
  Report(MSG_SCROLL, current);
}

void ListView::SelectItem(int index) {
  if (!IsValid(index)) return;
  const int before = current;
  if (!multiSelect) {
    MarkCurrent(index);
  } else {
    current = index;
    GetItem(index)->selected = true;
  }
  RedrawItems(before, current);
}

void ListView::DeselectItem(int index) {
  if (!IsValid(index)) return;
  GetItem(index)->selected = false;
  RedrawItems(index, index);
}

bool ListView::IsSelected(int index) const { return IsValid(index) && GetItem(index)->selected; }

void ListView::DeselectAll() {
  for (const auto& item : items) item->selected = false;
  Redraw();
}

int ListView::GetSelected() const {
  if (!multiSelect) return current;
  const auto marked =
      std::find_if(items.begin(), items.end(), [](const auto& item) { return item->selected; });
  return marked == items.end() ? 0 : static_cast<int>(marked - items.begin());
}

bool ListView::IsCut(int index, int bottom) const {
  return skin && skin->listHeight != 0 && index > first && bottom > h();
}

int ListView::ItemAt() const {
  const int y = GetMousePos().y;
  int sum = 0;
  for (int i = first; i < Count(); ++i) {
    sum += HeightOf(i);
    if (IsCut(i, sum)) break;
    if (sum >= y) return i;
  }
  return -1;
}

int ListView::PageSize() {
  if (bitmapIndex == -1) return 0;
  int sum = 0;
  for (int i = first; i < Count(); ++i) {
    sum += HeightOf(i);
    if (sum > h()) return i - first;
  }
  int top = first;
  while (top > 0 && sum + HeightOf(top - 1) <= h()) sum += HeightOf(--top);
  SetFirst(top);
  return Count() - first;
}

void ListView::ScrollToCurrent() {
  const int target = GetSelected();
  const int page = std::max(1, PageSize());
  SetFirst(std::clamp(first, target - page + 1, target));
  ShowWhole(target);
  Redraw();
}

void ListView::ShowWhole(int index) {
  int bottom = 0;
  for (int i = first; i <= index && i < Count(); ++i) bottom += HeightOf(i);
  while (IsCut(index, bottom)) {
    bottom -= HeightOf(first);
    SetFirst(first + 1);
  }
}

void ListView::Sort() {
  ListItem* stays = GetItem(current);
  const auto text = [](const std::unique_ptr<ListItem>& item) {
    const char* own = item->GetText();
    return own ? own : "";
  };
  std::stable_sort(items.begin(), items.end(),
                   [text](const auto& a, const auto& b) { return ustrcmp(text(a), text(b)) < 0; });
  const auto found = std::find_if(items.begin(), items.end(),
                                  [stays](const auto& item) { return item.get() == stays; });
  if (found != items.end()) current = static_cast<int>(found - items.begin());
  Redraw();
}

int ListView::StateOf(int index) const {
  const bool marked = IsSelected(index);
  const bool isCurrent = index == current;
  if (!multiSelect) {
    if (Disabled()) return kItemDisabled;
    return isCurrent ? kItemCurrent : kItemPlain;
  }
  if (HasFocus()) {
    if (isCurrent) return marked ? kItemCursorMarked : kItemCursor;
    return marked ? kItemCurrent : kItemFocused;
  }
  if (Disabled()) return marked ? kItemDisabledMarked : kItemDisabled;
  return marked ? kItemMarked : kItemPlain;
}

void ListView::Draw(Bitmap& canvas) {
  const BITMAP* target = canvas.GetBitmap();
  if (!target) return;
  const int line = Zoomed(1);
  int y = 0;
  for (int i = first; i < Count() && y <= h(); ++i) {
    ListItem& item = *GetItem(i);
    const int height = item.GetHeight();
    if (IsCut(i, y + height)) break;
    const bool shows = y < target->cb && y + height > target->ct;
    if (shows) {
      SubCanvas strip{canvas, 0, y, w(), height};
      item.Draw(strip, GetBitmap(), StateOf(i));
      if (i == current && skin && skin->dottedRect != 0 && !item.ShowsCurrent())
        canvas.DottedRect(line, y + line, w() - 1 - line, y + height - 1 - line,
                          skin->colors[kFontFace], line);
    }
    y += height;
  }
}

void ListView::MoveCurrentTo(std::int64_t target) {
  const std::int64_t last = Count() - 1;
  const int index = target < 0 ? 0 : static_cast<int>(std::min(target, last));
  if (index != current) SetCurrent(index);
}

void ListView::ActivateItem(int index) {
  Redraw();
  Report(MSG_ACTIVATE, index);
}

void ListView::ChooseByKey(int scancode) {
  bool& marked = GetItem(current)->selected;
  if (multiSelect) marked = scancode == KEY_ENTER || !marked;
  ActivateItem(current);
}

bool ListView::MsgChar(int code) {
  Widget::MsgChar(code);
  const int scancode = code >> 8;
  // In multiple selection any number may be current.
  const std::int64_t from = current;
  std::int64_t target = from;
  switch (scancode) {
    case KEY_ENTER:
    case KEY_SPACE:
      if (!IsValid(current)) break;
      ChooseByKey(scancode);
      return true;
    case KEY_HOME:
      target = 0;
      break;
    case KEY_END:
      target = Count() - 1;
      break;
    case KEY_PGUP:
      target = from - PageSize();
      break;
    case KEY_PGDN:
      target = from + PageSize();
      break;
    case KEY_UP:
      target = from - 1;
      break;
    case KEY_DOWN:
      target = from + 1;
      break;
    default:
      return false;
  }
  MoveCurrentTo(target);
  return true;
}

bool ListView::MsgWantFocus() {
  Widget::MsgWantFocus();
  return Count() > 0;
}

void ListView::MsgLPress() {
  const LifeWatch watch{*this};
  Widget::MsgLPress();
  const int pressed = ItemAt();
  if (!multiSelect) {
    if (IsValid(pressed)) SetCurrent(pressed);
    if (watch.IsGone() || pressed >= Count()) return;
  } else if (IsSelected(pressed)) {
    DeselectItem(pressed);
  } else {
    SelectItem(pressed);
  }
  ActivateItem(pressed);
}

void ListView::MsgDClick() {
  Widget::MsgDClick();
  const int clicked = ItemAt();
  if (clicked != -1) ActivateItem(clicked);
}

void ListView::MsgMouseMove(Point p) {
  Widget::MsgMouseMove(p);
  if (!multiSelect) return;
  const int under = ItemAt();
  if (IsValid(under) && under != current) SetCurrent(under);
}

void ListView::MsgInitSkin() {
  Widget::MsgInitSkin();
  SetBitmap(LIST);
}

ListBox::ListBox() : ListBox{std::make_unique<ListView>()} {}

ListBox::ListBox(std::unique_ptr<ListView> view) : list{std::move(view)} {
  Add(&panel);
  Add(list.get());
  Add(&scrollBar);
}

// The layout follows at the next tick: whoever is told of a new current item may destroy the box.
void ListBox::AskForLayout() { SetFlag(kFlagResized); }

void ListBox::InsertItem(std::unique_ptr<ListItem> item, int index) {
  AskForLayout();
  list->InsertItem(std::move(item), index);
}

void ListBox::InsertItem(std::unique_ptr<ListItem> item) { InsertItem(std::move(item), Count()); }

void ListBox::DeleteItem(int index) {
  AskForLayout();
  list->DeleteItem(index);
}

void ListBox::ItemsChanged() { UpdateLayout(); }

void ListBox::MsgInitSkin() {
  Dialog::MsgInitSkin();
  panel.SetBitmap(PANEL_SUNKEN);
  TakeTextSet(kListText);
  SetTextBackColor(Color{});
  UpdateLayout();
}

void ListBox::UpdateLayout() {
  const SkinBitmap* barElement = skin ? skin->bitmaps[SCROLL_VBACK].get() : nullptr;
  if (!barElement || barElement->IsEmpty()) {
    // A bar without pictures would only lie over the list and take its mouse.
    scrollBar.Hide();
    return;
  }
  const int barWidth = barElement->Width();
  const SkinBitmap& frame = *skin->bitmaps[PANEL_SUNKEN];
  const int edgeX = panel.IsPlain() ? 0 : frame.EdgeWidthOf(frame.Width());
  const int edgeY = panel.IsPlain() ? 0 : frame.EdgeHeightOf(frame.Height());

  panel.Resize(w(), h());
  list->Shape(edgeX, edgeY, w() - 2 * edgeX, h() - 2 * edgeY);
  const int first = list->GetFirst();
  const int page = list->PageSize();
  if (page < Count()) {
    if (!panel.IsPlain()) panel.SetW(w() - barWidth);
    list->SetW(w() - 2 * edgeX - barWidth);
    scrollBar.Shape(std::max(0, w() - barWidth), 0, barWidth, h());
    scrollBar.SetOrientation(kVertical);
    // Items may be higher beside the bar, and what was moved back cut.
    list->SetFirst(first);
    scrollBar.SetRange(Count(), list->PageSize());
    scrollBar.SetPosition(list->GetFirst());
    if (!Hidden()) scrollBar.Unhide();
  } else {
    scrollBar.Hide();
  }
  Dialog::UpdateLayout();
}

void ListBox::Unhide() {
  Dialog::Unhide();
  // The scroll bar may not be needed.
  UpdateLayout();
}

void ListBox::FollowCurrent() {
  const int current = list->GetCurrent();
  const int before = list->GetFirst();
  if (current < before) {
    list->SetFirst(current);
  } else {
    const int page = list->PageSize();
    if (page != 0 && list->GetFirst() + page <= current) list->SetFirst(current - page + 1);
    list->ShowWhole(current);
  }
  if (list->GetFirst() == before) return;
  scrollBar.SetPosition(list->GetFirst());
  Redraw();
}

void ListBox::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_WHEEL && !scrollBar.Hidden() && !scrollBar.Dialog::Contains(sender)) {
    scrollBar.ScrollByWheel(static_cast<int>(arg1));
  } else if (msg == MSG_SCROLL && sender == list.get()) {
    FollowCurrent();
    Report(MSG_SCROLL, list->GetCurrent());
  } else if (msg == MSG_SCROLL && sender == &scrollBar) {
    list->SetFirst(scrollBar.GetPosition());
    Redraw();
  } else if (msg == MSG_ACTIVATE && sender == list.get() && arg1 >= 0) {
    Report(MSG_ACTIVATE, arg1);
  }
}

}  // namespace zel
