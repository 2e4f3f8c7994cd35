// The base of everything visible.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/base/geometry.h"
#include "toolkit/base/messages.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/font.h"
#include "toolkit/draw/pixel_area.h"
#include "toolkit/draw/skin_bitmap.h"
#include "toolkit/skin/elements.h"

namespace zel {

class Animator;
class Dialog;
class Skin;

// State bits of a widget. Bits from 16384 on have a meaning of their own in each kind of widget.
enum WidgetFlag : std::uint32_t {
  kFlagExit = 1,  // choosing it closes the dialog
  kFlagSelected = 2,
  kFlagFocus = 4,  // has the keyboard focus
  kFlagMouse = 8,  // the pointer is over it
  kFlagHidden = 16,
  kFlagDisabled = 32,
  kFlagDirty = 64,             // must be redrawn
  kFlagMoved = 256,            // since the last MSG_MOVE
  kFlagResized = 512,          // since the last MSG_RESIZE
  kFlagSkinChanged = 1024,     // since the last MSG_INITSKIN
  kFlagStartAnimation = 2048,  // a transition starts at the next drawing
  kFlagContainer = 4096,       // is a Dialog
  kFlagWindow = 8192,          // is a movable window
  // What several kinds of widgets agree on.
  kFlagPressed = 16384,   // a press is in progress; such a focus child captures the mouse buttons
  kFlagAutoSize = 32768,  // sizes itself to its text or picture
  kFlagPoppedUp = 1048576,
};

// A rectangle on the screen that draws itself and answers messages.
//
// The Rect holds the absolute position on the screen; where the widget lies in its parent is kept
// beside it. Borrows its parent and its skin; owns its animator and its tooltip text. Every
// handler's default reports the event to the parent's HandleEvent. A widget belongs to at most one
// parent and leaves it when it is destroyed.
class Widget : public Rect {
 public:
  Widget();
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;

  // The virtual operations; their order is part of the interface.
  ~Widget() override;
  // Shows pointer shape `index` of the parent's skin; nothing without a parent.
  virtual void SetCursor(int index);
  virtual void MsgStart();
  virtual void MsgEnd();
  // Paints the widget, or the current frame of its transition, and tells the screen update.
  virtual void MsgDraw();
  // Paints on a canvas whose origin is the widget's top-left corner.
  virtual void Draw(Bitmap& canvas);
  virtual void MsgClick();
  virtual void MsgDClick();
  virtual void MsgKey();
  // Keys: true when the key was used. `code` is the character plus the scan code times 256.
  virtual bool MsgChar(int code);
  virtual bool MsgUChar(int character);
  virtual bool MsgXChar(int code);
  virtual bool MsgWantFocus();
  virtual void MsgGotFocus();
  virtual void MsgLostFocus();
  virtual bool MsgWantMouse();
  virtual void MsgGotMouse();
  virtual void MsgLostMouse();
  virtual void MsgIdle();
  virtual void MsgRadio(int group);
  virtual void MsgWheel(int steps);
  virtual void MsgLPress();
  virtual void MsgMPress();
  virtual void MsgRPress();
  virtual void MsgLRelease();
  virtual void MsgMRelease();
  virtual void MsgRRelease();
  virtual void MsgTimer(int id);
  virtual void MsgTick();
  virtual void MsgMove();
  virtual void MsgResize();
  virtual void MsgShape();
  virtual void MsgMouseMove(Point p);
  virtual void MsgInitSkin();
  virtual bool MsgClose();
  virtual bool MsgWantTab();  // may Tab and the arrows give it the focus?
  virtual int x() const;
  virtual int y() const;
  virtual int x2() const;
  virtual int y2() const;
  virtual int w() const;
  virtual int h() const;
  virtual Point GetRelativePos() const;
  virtual int GetKey() const;
  virtual std::uint32_t GetFlags() const;
  // True when all bits of the mask are set.
  virtual bool TestFlag(std::uint32_t mask) const;
  virtual bool HasFocus() const;
  virtual bool HasMouse() const;
  virtual bool Hidden() const;
  virtual bool IsExit() const;
  virtual bool Selected() const;
  virtual bool Disabled() const;
  virtual bool Dirty() const;
  virtual bool IsContainer() const;
  virtual bool IsWindow() const;
  virtual Dialog* GetParent() const;
  // Positions are relative to the parent; a negative one counts from its right or bottom edge once
  // the widget has been added. A root keeps its place on the screen, but is popped up at the one
  // given. With `percent` the value is a share of the parent's size and applied at the next layout.
  // All are kept within kMostPixels.
  virtual void SetX(int v, bool percent = false);
  virtual void SetY(int v, bool percent = false);
  virtual void SetW(int v, bool percent = false);
  virtual void SetH(int v, bool percent = false);
  virtual void SetKey(int shortcut);
  virtual void SetFlag(std::uint32_t mask);
  virtual void ClearFlag(std::uint32_t mask);
  virtual void Enable();
  virtual void Disable();
  virtual void Hide();
  virtual void Unhide();
  virtual void MakeExit();
  virtual void DontExit();
  virtual void Redraw();
  virtual void Place(int px, int py, bool percent = false);
  virtual void Place(Point p, bool percent = false);
  virtual void Resize(int width, int height, bool percent = false);
  virtual void Resize(Size size, bool percent = false);
  virtual void Shape(int px, int py, int width, int height, bool percent = false);
  virtual void Shape(Point p, Size size, bool percent = false);
  virtual void Shape(const Rect& rect, bool percent = false);
  virtual void Select();
  virtual void Deselect();
  virtual void SetParent(Dialog* dialog);
  // Takes the animator over; null changes nothing.
  virtual void SetAnimator(std::unique_ptr<Animator> newAnimator);
  virtual void SetAnimationProperties(int length, int type);
  virtual void StartAnimation();
  virtual void PlayAnimation(int type);
  virtual void StopAnimation();
  virtual void ResetAnimation();
  // Keeps a copy of the text; null for none.
  virtual void SetTooltip(const char* text);
  // The own text, else the parent's; null when there is none up to the root.
  virtual const char* GetTooltip() const;
  virtual void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask);
  // Null means the current skin.
  virtual void SetSkin(Skin* newSkin);
  virtual Skin* GetSkin() const;
  // The pointer relative to the widget's top-left corner.
  virtual Point GetMousePos() const;
  // The part of the Rect that the widget surely paints every pixel of while it shows: what lies
  // under it need not be drawn. All of an opaque widget; else empty, unless it knows more.
  virtual Rect PaintedPart() const;

  // Calls the handler of message `msg` and answers 0, kMessageWanted or kMessageUsed. Unknown
  // numbers do nothing.
  int SendMessage(int msg, int arg = 0);

  void SetTextBackColor(Color color) { textBackColor = color; }
  void SetFontColor(Color text, Color shadow, int state);
  void SetFont(int index, int state);
  // What the widget writes with in a DrawState. The font is Allegro's own when there is no skin.
  const Font& GetFont(int state) const;
  Color GetFontColor(int state) const { return fontColor[state]; }
  Color GetShadowColor(int state) const { return shadowColor[state]; }
  Color GetTextBackColor() const { return textBackColor; }
  void SetBitmap(int index) { bitmapIndex = index; }
  // The skin's element; null when none is selected or it has no picture.
  SkinBitmap* GetBitmap() const { return GetElement(bitmapIndex); }
  // (0, 0) for a root, else the parent's absolute position plus the relative one.
  Point GetAbsolutePos() const;
  // Makes the Rect lie where GetAbsolutePos says; without a parent at the relative position.
  void UpdateAbsolutePos();

  // Repaints only a part, given relative to the widget, unless all of it is going to be repainted.
  void RedrawPart(const Rect& part);
  // Repaints what of the widget lies in an area of the screen; a container is repainted whole.
  void RedrawArea(const Rect& area);
  // Takes back what is still to be repainted.
  void ForgetRedraw();
  // True when no more than parts are to be repainted.
  bool DirtyInParts() const;
  const std::vector<Rect>& DirtyParts() const { return dirtyParts_.Rects(); }
  // True while a transition runs or is to begin.
  bool InTransition() const;
  // The Rect that the widget covers on the screen.
  const Rect& Bounds() const { return *this; }
  // Widgets are numbered as they are made; Tab follows the numbers.
  unsigned CreationOrder() const { return creationOrder_; }
  const Rect& PercentGeometry() const { return relGeom; }
  // True while the widget paints every pixel of its area: what lies under it need not be drawn.
  bool IsOpaque() const;

 protected:
  // Tells the parent, if there is one.
  void Report(int msg, EventArg arg1 = 0, EventArg arg2 = 0);
  // Takes fonts, text colours and shadow colours of all four states from a text set of the skin.
  void TakeTextSet(int textSet);
  // An element of the skin by index; null when there is no such one or it has no picture.
  SkinBitmap* GetElement(int index) const;
  // The DrawState of a widget that one can press: disabled first, then selected, then focused.
  int LookState() const;
  // True when the skin wants a dotted rectangle to show that the widget has the focus.
  bool ShowsFocus() const;
  // Before the look changes, in a widget that does not paint its whole area: what lies behind it
  // shows again.
  void RepaintBehind();
  // The same, and the widget as a whole.
  void RedrawWithGround();
  // Sets or clears a flag and repaints.
  void ChangeFlag(std::uint32_t mask, bool set);
  void ApplyPercentPosition();
  void ApplyPercentSize();
  void SetOpaque(bool paintsAll) { opaque_ = paintsAll; }

  std::uint32_t flags = 0;
  int key = 0;  // shortcut: a character, or a scan code times 256
  Color textBackColor;
  Color fontColor[kDrawStates];
  Color shadowColor[kDrawStates];
  int fontIndex[kDrawStates] = {};
  int bitmapIndex = -1;
  Dialog* parent = nullptr;
  Skin* skin;
  Point relPos;
  Rect relGeom{-1, -1, -1, -1};  // percent of the parent's size; -1 is not used
  std::unique_ptr<Animator> animator;
  int animationLength = 1;  // milliseconds
  int animationType = 0;    // effect of the animator; 0 is none
  std::unique_ptr<std::string> tooltip;

 private:
  // True when the widget lies in another one.
  bool IsNested() const;
  void Paint(Bitmap& canvas);
  void PaintParts(Bitmap& canvas);
  void PaintShown(Bitmap& canvas);
  void DrawPart(Bitmap& canvas, const Rect& part);

  PixelArea dirtyParts_;  // relative to the widget
  bool opaque_ = false;
  unsigned creationOrder_;
};

}  // namespace zel
