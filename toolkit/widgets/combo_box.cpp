#include "toolkit/widgets/combo_box.h"

#include <algorithm>
#include <utility>

#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kListHeight = 80;
constexpr int kTextCapacity = 256;

}  // namespace

void ComboButton::Draw(Bitmap& canvas) {
  Button::Draw(canvas);
  const SkinBitmap* mark = GetElement(arrow);
  if (!mark) return;
  const int height = mark->Height() / kDrawStates;
  mark->masked_blit(canvas, 0, LookState() * height, (w() - mark->Width()) / 2, (h() - height) / 2,
                    mark->Width(), height);
}

ComboBox::ComboBox() {
  Add(&edit);
  Add(&button);
  Add(&listBox);
  listBox.Hide();
  listBox.SetH(Zoomed(kListHeight));
}

void ComboBox::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                     int index) {
  Close();
  Widget::Setup(px, py, width, height, shortcut, mask);
  listBox.SelectItem(std::max(0, std::min(index, listBox.Count() - 1)));
  edit.Setup(0, 0, width, height, shortcut, mask, nullptr, kTextCapacity);
  ShowCurrent();
  listBox.SetW(width);
}

void ComboBox::MsgStart() {
  // The end of the dialog may have come while the list was open.
  Close();
  Dialog::MsgStart();
}

void ComboBox::MsgResize() {
  Widget::MsgResize();
  AddListHeight();
  UpdateLayout();
}

void ComboBox::MsgShape() {
  Widget::MsgShape();
  AddListHeight();
  UpdateLayout();
}

void ComboBox::AddListHeight() {
  const bool isPercent = PercentGeometry().h >= 0;
  if (isPercent && IsOpen()) SetH(h() + listBox.h());
}

void ComboBox::ShowCurrent() {
  const ListItem* current = listBox.GetItem(listBox.GetCurrent());
  edit.SetText(current ? current->GetText() : nullptr);
}

void ComboBox::MsgInitSkin() {
  Dialog::MsgInitSkin();
  button.SetArrow(COMBO_BUTTON);
  if (skin) listBox.SetAnimationProperties(skin->comboAnimationLength, skin->comboAnimationType);
  UpdateLayout();
}

void ComboBox::UpdateLayout() {
  const SkinBitmap* arrow = GetElement(COMBO_BUTTON);
  if (!arrow) return;
  const int left = std::max(0, w() - arrow->Width());
  const int height = std::max(0, IsOpen() ? h() - listBox.h() : h());
  button.Shape(left, 0, arrow->Width(), height);
  edit.Resize(left, height);
  ShowCurrent();
  listBox.Place(0, height);
  listBox.SetW(w());
  Dialog::UpdateLayout();
}

void ComboBox::Hide() {
  Close();
  Dialog::Hide();
}

void ComboBox::Unhide() {
  Close();
  Dialog::Unhide();
  listBox.Hide();
}

// Opening and closing.

void ComboBox::Open() {
  if (IsOpen()) return;
  openedWith_ = listBox.GetCurrent();
  SetH(edit.h() + listBox.h());
  listBox.StartAnimation();
  listBox.Unhide();
  listBox.GetList().ScrollToCurrent();
  if (parent) parent->BringToFront(this);
  Redraw();
}

void ComboBox::Close() {
  if (!IsOpen()) return;
  listBox.ResetAnimation();
  if (listBox.HasFocus()) GiveFocus(button);
  listBox.Hide();
  SetH(edit.h());
  GetRoot()->Redraw();
}

void ComboBox::GiveFocus(Widget& child) { ChangeFocus(FocusWidget(), &child); }

void ComboBox::Cancel() {
  listBox.SelectItem(openedWith_);
  Close();
}

void ComboBox::CloseWhenLeft() {
  // While a button is held, a scroll bar may be dragged.
  if (!TestFlag(kFlagPressed) && !Rect{0, 0, w(), h()}.Contains(GetMousePos())) Close();
}

void ComboBox::MsgLRelease() {
  Dialog::MsgLRelease();
  CloseWhenLeft();
}

void ComboBox::MsgLostFocus() {
  Dialog::MsgLostFocus();
  lostFocus_ = true;
}

void ComboBox::MsgTick() {
  Dialog::MsgTick();
  // Going from one part of the box to another, the focus is only lost for a moment.
  if (std::exchange(lostFocus_, false) && !HasFocus()) Close();
}

bool ComboBox::MsgChar(int code) {
  Dialog::MsgChar(code);
  if (!IsOpen() || code >> 8 != KEY_ESC) return false;
  Cancel();
  return true;
}

void ComboBox::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  if (msg == MSG_LOSTMOUSE) CloseWhenLeft();
  if (msg != MSG_ACTIVATE) {
    Dialog::HandleEvent(sender, msg, arg1, arg2);
    return;
  }
  if (sender == &button) {
    if (IsOpen()) {
      Close();
    } else {
      Open();
      GiveFocus(listBox.GetList());
    }
  } else if (sender == &listBox) {
    ShowCurrent();
    Close();
    GiveFocus(button);
    Report(MSG_ACTIVATE, arg1);
  } else if (sender == &edit) {
    if (IsOpen())
      Close();
    else
      Open();
    Report(MSG_ACTIVATE, listBox.GetList().GetSelected());
  }
}

}  // namespace zel
