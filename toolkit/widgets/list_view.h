// Lists of items, one below the other.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/core/dialog.h"
#include "toolkit/skin/elements.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_bar.h"

namespace zel {

class ListView;

// The DrawState whose font and colours belong to a state of an item.
int TextStateOfItem(int state);

// One entry of a list; it draws itself into the strip that the list gives it.
class ListItem {
 public:
  explicit ListItem(std::intptr_t userData = 0) : data{userData} {}
  ListItem(const ListItem&) = delete;
  ListItem& operator=(const ListItem&) = delete;
  virtual ~ListItem() = default;
  // Fills the canvas with frame `state` of the skin bitmap; nothing when there is none.
  virtual void Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state);
  // In pixels: as the skin says, else one frame of the list's element, or 12 without one.
  virtual int GetHeight() const;
  virtual const char* GetText() const;  // null when the item has no text
  // What part of a canvas of this size Draw is sure to fill, whatever the state; empty unless the
  // item knows.
  virtual Rect PaintedPart(Size canvas) const;
  // Shows by itself that it is current: no dotted rectangle lies over it.
  virtual bool ShowsCurrent() const { return false; }

  std::intptr_t data;         // the user's
  ListView* owner = nullptr;  // set when the item is inserted
  bool selected = false;      // marked, or current in single selection
};

// An item that shows a text of its own.
class TextListItem : public ListItem {
 public:
  explicit TextListItem(const char* itemText, std::intptr_t userData = 0);
  void Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) override;
  const char* GetText() const override;
  void SetText(const char* newText);  // null for none

 protected:
  std::unique_ptr<std::string> text;
};

// Shows its items from a first visible one downward, with a current item and, if wanted, marks.
//
// Owns the items. Tells its parent MSG_SCROLL when the current item moves and MSG_ACTIVATE when an
// item is chosen, both with the item's index; a press below the last item activates -1.
class ListView : public Widget {
 public:
  ListView() = default;

  void Draw(Bitmap& canvas) override;
  void MsgDClick() override;
  bool MsgChar(int code) override;
  bool MsgWantFocus() override;  // only with items
  void MsgLPress() override;
  void MsgMouseMove(Point p) override;
  void MsgInitSkin() override;
  // Also what shows where an item draws no ground, or where there are no items.
  void Redraw() override;
  // The columns that all visible items fill, as far down as there are items.
  Rect PaintedPart() const override;

  // Takes the item in before position `index`, or at the end. The first item becomes current.
  void InsertItem(std::unique_ptr<ListItem> item, int index);
  void InsertItem(std::unique_ptr<ListItem> item) { InsertItem(std::move(item), Count()); }
  // Ignored for an index that is not in the list.
  void DeleteItem(int index);
  // Takes all items out without telling anybody; no item is current then.
  void Clear();
  ListItem* GetItem(int index) const;  // null for an index that is not in the list
  int Count() const { return static_cast<int>(items.size()); }
  int GetCurrent() const { return current; }
  int GetFirst() const { return first; }
  void SetFirst(int index);  // brought to an item that there is
  void SetMultiSelect(bool multi);

  // Makes an item current; in single selection an invalid index changes nothing. Tells the parent.
  void SetCurrent(int index);
  // Marks and unmarks; invalid indexes are ignored.
  void SelectItem(int index);
  void DeselectItem(int index);
  bool IsSelected(int index) const;
  void DeselectAll();
  // The current item in single selection, else the first marked one, or 0.
  int GetSelected() const;
  // The item under the pointer, or -1.
  int ItemAt() const;
  // How many items fit; moves the first visible item back where there is room below.
  int PageSize();
  void ScrollToCurrent();
  // Scrolls on until an item is not cut: rows above it may be higher than those that a page was
  // counted with. Only where the skin says how high rows are.
  void ShowWhole(int index);
  // Sorts by text, byte by byte; the current item stays current.
  void Sort();

 protected:
  bool IsValid(int index) const { return index >= 0 && index < Count(); }
  // The drawing state of an item, which is also its frame in the element.
  int StateOf(int index) const;
  // The list may be gone or filled anew when this returns, like after SetCurrent.
  void ActivateItem(int index);
  // Moves the current item, cut to the items that there are.
  void MoveCurrentTo(std::int64_t target);
  // Repaints only the rows of two items, when the others stay where they are.
  void RedrawItems(int index, int other);

  std::vector<std::unique_ptr<ListItem>> items;
  int first = 0;     // the first visible item; 0 in an empty list
  int current = -1;  // -1 when there is none
  bool multiSelect = false;

 private:
  int HeightOf(int index) const { return items[static_cast<std::size_t>(index)]->GetHeight(); }
  // Where the skin says how high rows are, one that does not fit does not show.
  bool IsCut(int index, int bottom) const;
  void ChooseByKey(int scancode);
  void MarkCurrent(int index);
};

// A list with a frame and a scroll bar.
//
// Owns the list; its parent gets MSG_SCROLL and MSG_ACTIVATE in the box's name.
class ListBox : public Dialog {
 public:
  ListBox();
  explicit ListBox(std::unique_ptr<ListView> view);

  void MsgInitSkin() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void Unhide() override;

  // This colour instead of the frame; none for the frame.
  void SetGround(Color color) { panel.SetPlain(color); }
  ListView& GetList() { return *list; }
  const ListView& GetList() const { return *list; }
  void InsertItem(std::unique_ptr<ListItem> item, int index);
  void InsertItem(std::unique_ptr<ListItem> item);
  void DeleteItem(int index);
  ListItem* GetItem(int index) const { return list->GetItem(index); }
  int Count() const { return list->Count(); }
  int GetCurrent() const { return list->GetCurrent(); }
  void SetCurrent(int index) { list->SetCurrent(index); }
  void SelectItem(int index) { list->SelectItem(index); }
  void DeselectItem(int index) { list->DeselectItem(index); }
  bool IsSelected(int index) const { return list->IsSelected(index); }
  void DeselectAll() { list->DeselectAll(); }
  void Sort() { list->Sort(); }
  // To be called when items of the list itself came or went: lays the box out again.
  void ItemsChanged();

 private:
  void AskForLayout();
  void FollowCurrent();

 protected:
  std::unique_ptr<ListView> list;
  Panel panel;
  ScrollBar scrollBar;
};

}  // namespace zel
