// A field that shows one entry of a list and drops the list down.
#pragma once

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/list_view.h"

namespace zel {

// A button with an arrow in its middle.
class ComboButton : public Button {
 public:
  void Draw(Bitmap& canvas) override;
  void SetArrow(int element) { arrow = element; }

 protected:
  int arrow = -1;  // element of the skin
};

// An edit box with the chosen entry, a button and the list that it opens, all owned. The entries
// are those of the list.
//
// Tells its parent MSG_ACTIVATE with the index of the entry that was chosen, or of the current one
// when Enter is pressed in the field. While the list is open the combo box is as high as both and
// lies above its siblings. The list closes when an entry was chosen, when the pointer leaves it and
// the field, when the focus goes elsewhere and at Escape, which also takes back what the keys did.
class ComboBox : public Dialog {
 public:
  ComboBox();

  void MsgStart() override;
  bool MsgChar(int code) override;
  void MsgLostFocus() override;
  void MsgLRelease() override;
  void MsgTick() override;
  void MsgResize() override;
  void MsgShape() override;
  void MsgInitSkin() override;
  void Hide() override;
  void Unhide() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void Close() override;  // the list, not a dialog

  // Makes an entry current, the first or last one for an index beyond them.
  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int index);
  void Open();
  bool IsOpen() const { return !listBox.Hidden(); }
  EditBox& GetEdit() { return edit; }
  ListBox& GetListBox() { return listBox; }

 private:
  // A height in percent is that of the closed box.
  void AddListHeight();
  void ShowCurrent();
  void GiveFocus(Widget& child);
  void CloseWhenLeft();
  void Cancel();

 protected:
  EditBox edit;
  ComboButton button;
  ListBox listBox;

 private:
  int openedWith_ = -1;     // the current entry when the list opened
  bool lostFocus_ = false;  // since the last tick
};

}  // namespace zel
