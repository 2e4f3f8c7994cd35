// Dialogs in a frame that the user moves, resizes, rolls up and maximises.
#pragma once

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/panel.h"

namespace zel {

// The strips of a window's frame, and its title bar.
enum WindowPart : int { kLeftPart, kRightPart, kTopPart, kBottomPart, kGripPart, kWindowParts };

// One of those strips. Its focus bit, which the window sets, is the active look.
class FramePart : public Widget {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;

  // Selects the part's element; ignored for what is no WindowPart.
  void SetPart(int p);
  int Part() const { return part; }
  bool IsVertical() const { return part == kLeftPart || part == kRightPart; }
  // Of one frame of the element, across the strip; 0 without a picture.
  int Thickness() const;
  // How far the corners reach along the strip.
  int CornerExtent() const;

 protected:
  int part = kLeftPart;

 private:
  void DrawLine(Bitmap& canvas) const;
};

// The strip behind the title text, for skins that want one.
class TitleBack : public Widget {
 public:
  void Draw(Bitmap& canvas) override;

  // What the element adds to the width of the title, and how much of it lies on the left.
  int ExtraWidth() const;
  int EdgeWidth() const;
  int Thickness() const;
};

// A button of the title bar: as large as its element, disabled while the window is not active. Tab
// passes it by.
class WindowButton : public Button {
 public:
  explicit WindowButton(int element);
  void MsgInitSkin() override;
  bool MsgWantTab() override { return false; }

  void SetIcon(int element);

 private:
  int icon_;
};

// What holds the application's widgets; whatever they report goes to the window.
class ClientArea : public Dialog {
 public:
  ClientArea();
  void MsgInitSkin() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

 protected:
  Panel panel;
};

// A bit of Window's state.
enum WindowState : int { kRolledUp = 1, kMaximized = 2, kAutoRollup = 4 };

// A dialog with borders, a title bar with buttons, and a client area to which widgets are added.
//
// It looks active while it has the focus. Sizes given to Resize, and with it to Shape and Setup,
// are those of the client area. A new window covers the screen, can be moved and resized, and has
// the title "Window".
class Window : public Dialog {
 public:
  Window();

  void MsgGotFocus() override;
  void MsgLostFocus() override;
  void MsgGotMouse() override;
  void MsgLostMouse() override;
  void MsgInitSkin() override;
  // These reach the client area also while it is rolled up.
  void Enable() override;
  void Disable() override;
  void Unhide() override;
  void SetSkin(Skin* newSkin) override;
  int GetDragMode() override;
  void UpdateLayout() override;
  // To and from the client area.
  bool Add(Widget* widget) override;
  void Remove(Widget* widget) override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  Widget* Popup(Dialog* over, int px, int py, Widget* focusWidget) override;
  using Dialog::Popup;
  // A percentage is that of the whole window.
  void Resize(int width, int height, bool percent = false) override;
  void Resize(Size size, bool percent = false) override;

  // The virtual operations that a window adds; their order is part of the interface.
  // The window takes the width of the new client area and gives it its height. It borrows the
  // client area; null means its own.
  virtual void SetClientArea(Dialog* dialog);
  // Roll up to the title bar and down again; not while the window is maximised.
  virtual void Minimize();
  // Cover the parent, and back to the place before; not while the window is rolled up.
  virtual void Maximize();
  // Whether the window rolls up whenever the pointer leaves it.
  virtual void SetAutoRollup(bool rollsUp);

  void SetTitle(const char* text);
  bool IsInState(WindowState bit) const { return (state & bit) != 0; }
  Dialog& Client() { return *client; }

 protected:
  Label title;
  FramePart left, right, top, bottom, grip;
  WindowButton minButton, maxButton, closeButton;
  TitleBack textBack;
  ClientArea clientArea;
  Dialog* client = &clientArea;
  Rect savedRect;  // before rolling up or maximising, relative to the parent
  int state = 0;   // WindowState bits

 private:
  void ResizeFrame(int width, int height);
  void TakeClientSize();
  void PlaceFrame();
  void PlaceTitle();
  void TakeTitleLook();
  void FitToClient();
  void UpdateActive(int msg);
  void UpdateButtons();
  void FinishStateChange();
  FramePart* PartUnderPointer();
  // Without a picture of the frame nothing is laid out.
  bool IsDressed() const { return skin && left.GetBitmap(); }
  // What the frame adds to the size of the client area.
  Size FrameSize() const;
  int TitleBarHeight() const;

  Size grownMinimum_;  // by so much the frame has enlarged the minimum size
};

}  // namespace zel
