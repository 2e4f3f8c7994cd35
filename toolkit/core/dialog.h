// The widget that holds other widgets and runs them.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/core/widget.h"

namespace zel {

class Tooltip;
struct InputRecord;
struct MouseState;

inline constexpr std::uint32_t kFlagMovable = 262144;
inline constexpr std::uint32_t kFlagSizeable = 524288;

// Popup: keep the dialog's coordinate.
inline constexpr int kKeepPosition = 32768;

// What a press at the pointer would drag.
enum DragMode : int {
  kDragNone,
  kDragMove,
  kDragTopLeft,
  kDragTopRight,
  kDragBottomLeft,
  kDragBottomRight,
  kDragTop,
  kDragBottom,
  kDragLeft,
  kDragRight,
};

// Where MoveFocus goes.
enum class FocusMove { kNext, kPrevious, kRight, kLeft, kDown, kUp };

// A container with an event loop.
//
// The outermost dialog (the root, its own parent) owns the loop: it routes input, as soon as there
// is some, to the child under the pointer or with the focus, and once per logic tick tells where
// the pointer has gone and delivers timers; then it draws what is dirty through the current screen
// update. Dialogs inside it are driven by it.
//
// Borrows its children in drawing order, the last one topmost; owns its tooltip. A new dialog
// covers the screen and is a root until it is added to another dialog.
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
  // Runs the dialog on top of the root of `over`, if that runs, else of the root that does, else of
  // what is on the screen, until it is taken out or it or that root is closed. The root itself is
  // not run again.
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
  const std::vector<Widget*>& Children() const { return children; }
  // The child with the focus and the child under the pointer; null when there is none.
  Widget* GetFocus() const { return focus; }
  Widget* GetMouse() const { return mouse; }
  // The same, followed into child dialogs.
  Widget* FocusWidget() const;
  Widget* MouseWidget() const;
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
  // Where on the screen a child shows: neither what lies in it nor what lies above it, here and in
  // all dialogs around, paints over that.
  PixelArea ShownPart(Widget* child) const;
  // Gives `widget`, and the containers between it and this dialog, the focus if it wants it.
  void SetFocus(Widget* widget);
  void ChangeFocus(Widget* oldFocus, Widget* newFocus);
  void MoveFocus(FocusMove move);
  // What the mouse has done as the devices show it, and what the double click waits for. Once per
  // logic tick.
  void HandleMouse();
  // The joystick, or a key that waits in Allegro's buffer. Once per logic tick.
  void HandleKeyboard();
  // True when the key was used.
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
  bool joystickHeld = false;
  bool escapeCloses = true;
  bool closed = false;
  Point pressPosition;  // of the left button, relative to the dialog
  int dragMode = kDragNone;
  int minWidth = 20;
  int minHeight = 8;

  // Shows the pointer shape that goes with the mode.
  void SetDragMode(int mode);

 private:
  struct CanvasBase {
    BITMAP* bitmap;
    Point origin;  // the absolute position of the bitmap's top-left corner
  };
  struct Candidate {
    Widget* widget;
    int score;
  };
  using Handler = void (Widget::*)();

  // Calls act(child) for the children that there are now, unless they have gone meanwhile.
  template <class Act>
  void ForEachChild(Act act) {
    for (Widget* child : std::vector<Widget*>(children))
      if (IsChild(child)) act(child);
  }
  bool IsChild(const Widget* widget) const;
  // The child that is the widget or contains it; null when there is none.
  Widget* ChildTowards(const Widget* widget) const;

  CanvasBase FindCanvasBase(bool ownDrawing) const;
  bool IsCovered(std::size_t index) const;
  void MarkCovering(const Widget& changed) const;
  void MarkAbove(const Widget* changed, const Rect& area) const;
  void PrepareDrawing();
  void DrawTree(bool redrawsAll);

  void StartRoot();
  void EndRoot();
  bool WorkOffTimers();
  // Tells the input that has been recorded until now; false when there was none.
  bool WorkOffInput();
  // False when it says nothing new.
  bool HandleRecord(const InputRecord& record);
  // Until there is a tick or input.
  void Wait();
  void DrawFrame();
  void DrawFirstFrame();
  void RestoreVideoMemory();
  Widget* RunPopup(Dialog& root, int px, int py, Widget* focusWidget);
  void PutTooltipAway();

  // True for the root and for what is popped up over it: input begins here.
  bool TakesInput() const { return IsRoot() || TestFlag(kFlagPoppedUp); }
  Dialog* InputTarget();
  void FindMouseAtStart();
  // The child, or what lies in it, if the pointer is there.
  static Widget* UnderPointer(Widget* child);
  Widget* FindUnderPointer();
  // The same for a dialog that takes input; one that is popped up may be found itself.
  Widget* FindMousePath();
  // Goes on where a popup is gone, with the release that the popup saw instead.
  void TakeInputBack();
  void SetMousePath(const Widget* deepest);
  // Tells what it finds there how far the pointer has moved.
  void FollowPointer(Point delta = {});
  // True while a press on the focus goes on.
  bool FocusIsPressed() const;
  void MoveFocusWithPointer(Widget* underPointer);
  void RoutePress(Handler handler);
  void RouteRelease(Handler handler);
  Widget* CapturingChild() const;
  void Drag();
  void DragEdges(int dx, int dy);
  // Tells what has changed since that state of the mouse.
  void TellMouse(const MouseState& before, bool inTick);
  void DispatchButtons(int before, int now);

  void DropFocus(Widget* widget);
  bool HandleJoystick();
  bool OfferToFocus(int code, int character, int scancode);
  bool OfferToChildren(int code);
  bool HandleShortcut(int character, int scancode);
  bool HandleDialogKey(int character, int scancode);
  // Takes a child out and makes it independent; false when a handler has destroyed it meanwhile.
  bool TakeOut(Widget* child);
  void CollectCandidates(const Widget* leftOut, std::vector<Candidate>& candidates);

  std::unique_ptr<Tooltip> tooltipWidget_;
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

// The window for a double click in logic ticks, from Settings::doubleClickDelay; set when a root
// starts, and again by whoever switches the mouse on later.
void UpdateDoubleClickWindow();
int DoubleClickWindow();

}  // namespace zel
