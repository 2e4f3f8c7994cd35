// The widget that holds other widgets and runs them.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/core/drag.h"
#include "toolkit/core/focus_search.h"
#include "toolkit/core/widget.h"

namespace zel {

struct DialogRun;

inline constexpr std::uint32_t kFlagMovable = 262144;
inline constexpr std::uint32_t kFlagSizeable = 524288;

// Popup: keep the dialog's coordinate.
inline constexpr int kKeepPosition = 32768;

// A container that can run.
//
// The outermost dialog is the root, its own parent. While it runs, the EventLoop drives it, and it
// drives the dialogs inside it: input goes, as soon as there is some, to the child under the
// pointer (MousePath) or with the focus (KeyRouter), timers and ticks to all; then what is dirty is
// drawn (damage.h).
//
// Borrows its children in drawing order, the last one topmost; owns, once it has run by itself, its
// tooltip. A new dialog covers the screen and is a root until it is added to another dialog.
//
// Handlers may take children in and out, and destroy children. The one whose event is handled may
// be destroyed when it reports MSG_ACTIVATE or MSG_SCROLL; with other messages only if its class
// does nothing after reporting, as Widget's own handlers do. A dialog itself must outlive the
// messages that it passes on.
class Dialog : public Widget {
 public:
  Dialog();

  ~Dialog() override;
  void MsgStart() override;
  void MsgEnd() override;
  void MsgDraw() override;
  void MsgClick() override;
  void MsgDClick() override;
  bool MsgWantFocus() override;
  void MsgGotFocus() override;
  void MsgLostFocus() override;
  void MsgIdle() override;
  void MsgWheel(int steps) override;
  void MsgLPress() override;
  void MsgMPress() override;
  void MsgRPress() override;
  void MsgLRelease() override;
  void MsgMRelease() override;
  void MsgRRelease() override;
  void MsgTimer(int id) override;
  void MsgTick() override;
  void MsgMove() override;
  void MsgResize() override;
  void MsgShape() override;
  void MsgMouseMove(Point delta) override;
  void MsgInitSkin() override;
  void Enable() override;
  void Disable() override;
  void Hide() override;
  void Unhide() override;
  void Redraw() override;
  void SetSkin(Skin* newSkin) override;

  // The virtual operations that a dialog adds; their order is part of the interface.
  virtual int GetDragMode();
  virtual void UpdateLayout();
  virtual void CreateScreenUpdate();
  // Takes a widget in as the topmost child. False when it is one already, and for null, this
  // dialog itself and what it lies in.
  virtual bool Add(Widget* widget);
  virtual void Remove(Widget* widget);
  // What children report. An exit widget that was activated closes the dialog; all else goes up.
  virtual void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2);
  // Ends Execute or Popup if MsgClose allows it.
  virtual void Close();
  // Runs the dialog as a root until it is closed; answers the child that had the focus. While a
  // root runs, the same as Popup over it. A dialog inside another one that does not run cannot run
  // either: null at once, as for both of these, with a message on standard error, before Allegro is
  // installed.
  virtual Widget* Execute(Widget* focusWidget);
  // Runs the dialog, modally, on top of the root of `over`, if that runs, else of the root that
  // does, else of what is on the screen, until it is taken out or it or that root is closed. The
  // root itself is not run again; the widget that had its focus has it again afterwards, if it can.
  // The answer is as that of Execute.
  virtual Widget* Popup(Dialog* over, int px, int py, Widget* focusWidget);
  virtual Widget* Popup(Dialog* over, Point pos, Widget* focusWidget);
  // Puts the dialog in the middle of its parent; a root pops up in that of the screen.
  virtual void Centre();
  void Resize(int width, int height, bool percent = false) override;
  void Resize(Size size, bool percent = false) override;

  bool IsRoot() const { return parent == this; }
  bool IsRunning() const { return running; }
  bool IsClosed() const { return closed; }
  Dialog* GetRoot();
  // The dialog that this one lies in; null for a root.
  Dialog* Around() const { return IsRoot() ? nullptr : parent; }
  const std::vector<Widget*>& Children() const { return children; }
  // The child with the focus and the child under the pointer; null when there is none.
  Widget* GetFocus() const { return focus; }
  Widget* GetMouse() const { return mouse; }
  // The same, followed into child dialogs.
  Widget* FocusWidget() const;
  Widget* MouseWidget() const;
  bool HasChild(const Widget* widget) const;
  // True when the widget is this dialog or lies in it, however deep. The pointer may be that of a
  // widget that is gone.
  bool Contains(const Widget* widget) const;
  using Rect::Contains;
  // Children may come and go meanwhile.
  void SendToChildren(int msg, int arg = 0);
  // Repaints what lies under a part of a child that does not cover its whole area. The part is
  // relative to the child.
  void RedrawBehind(const Widget* child, const Rect& part);
  // Makes a child the topmost one.
  void BringToFront(Widget* child);
  void SetEscapeCloses(bool closes) { escapeCloses = closes; }

  // The bitmap that a child draws on; empty when there is none (outside the screen, or before the
  // dialog's own transition has begun).
  SubCanvas GetCanvas(const Widget* widget);
  // Where on the screen the pixel (0, 0) of what children draw on lies.
  Point CanvasOrigin() const;
  // Gives `widget`, and the containers between it and this dialog, the focus if it wants it.
  void SetFocus(Widget* widget);
  void ChangeFocus(Widget* oldFocus, Widget* newFocus);
  void MoveFocus(FocusMove move);
  // Routes what mouse, joystick and keyboard have done; see InputRouter. Once per logic tick.
  void HandleMouse();
  void HandleKeyboard();
  // Offers a key to whoever may use it; see KeyRouter. True when it was used.
  bool HandleKey(int character, int scancode);
  void DrawDirty();
  // Sends the pending moves and resizes.
  void ApplyGeometry();
  // Re-reads the skin where it changed.
  void InitChangedSkins();
  // Takes a child out without a message; for widgets that are destroyed.
  void Forget(Widget* widget);

 protected:
  std::vector<Widget*> children;
  bool running = false;
  Widget* focus = nullptr;
  Widget* mouse = nullptr;
  bool escapeCloses = true;
  bool closed = false;
  Point pressPosition;  // of the left button, relative to the dialog
  int dragMode = kDragNone;
  int minWidth = 20;
  int minHeight = 8;

  // Shows the pointer shape that goes with the mode.
  void SetDragMode(int mode);

 private:
  friend class InputRouter;
  friend class KeyRouter;
  friend class MousePath;

  struct CanvasBase {
    BITMAP* bitmap;
    Point origin;  // the absolute position of the bitmap's top-left corner
  };
  using Handler = void (Widget::*)();

  // Calls act(child) for the children that there are now, unless they have gone meanwhile.
  template <class Act>
  void ForEachChild(Act act) {
    for (Widget* child : std::vector<Widget*>(children))
      if (HasChild(child)) act(child);
  }
  // The child that is the widget or contains it; null when there is none.
  Widget* ChildTowards(const Widget* widget) const;
  // Takes a child out and makes it independent; false when a handler has destroyed it meanwhile.
  bool TakeOut(Widget* child);
  CanvasBase FindCanvasBase(bool ownDrawing) const;

  // Made when they are first asked for.
  DialogRun& RunParts();
  Widget* RunPopup(Dialog& root, int px, int py, Widget* focusWidget);
  void PutTooltipAway();

  // True for the root and for what is popped up over it: input begins here.
  bool TakesInput() const { return IsRoot() || TestFlag(kFlagPoppedUp); }
  void RoutePress(Handler handler);
  void RouteRelease(Handler handler);
  Widget* CapturingChild() const;
  void Drag();

  // True while a press on the focus goes on.
  bool FocusIsPressed() const;
  void DropFocus(Widget* widget);

  std::unique_ptr<DialogRun> run_;  // null until it has run by itself
};

// The widget, or null when it is hidden or disabled: input is not for it then.
inline Widget* IfUsable(Widget* widget) {
  return widget && !widget->Hidden() && !widget->Disabled() ? widget : nullptr;
}

// The widget as a dialog, or null when it is none.
inline Dialog* AsDialog(Widget* widget) {
  return widget && widget->IsContainer() ? static_cast<Dialog*>(widget) : nullptr;
}

// For a widget that goes on after it has told its parent something: whoever was told may have taken
// it out or destroyed it, and what it was in. To be made before; the root must outlive it.
class LifeWatch {
 public:
  explicit LifeWatch(const Widget& widget)
      : widget_{&widget}, root_{widget.GetParent() ? widget.GetParent()->GetRoot() : nullptr} {}

  bool IsGone() const { return root_ && !root_->Contains(widget_); }

 private:
  const Widget* widget_;
  const Dialog* root_;  // null without a parent, when nobody is told
};

}  // namespace zel
