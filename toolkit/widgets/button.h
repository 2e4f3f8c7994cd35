// Widgets that carry a text: labels, and the buttons that one presses.
#pragma once

#include <memory>
#include <string>

#include "toolkit/core/widget.h"

namespace zel {

// Bits of a button, beside kFlagPressed and kFlagAutoSize.
inline constexpr std::uint32_t kFlagToggle = 65536;       // a release leaves the state switched
inline constexpr std::uint32_t kFlagAutoRepeat = 131072;  // activates again and again while held

// Where wrapped text lies in its label.
enum VerticalAlign : int { kAlignTop = 0, kAlignBottom = 1, kAlignMiddle = 2 };

// Shows a text on one line, or wrapped into lines. A new label sizes itself to its text.
class Label : public Widget {
 public:
  Label();

  void Draw(Bitmap& canvas) override;
  void Enable() override;
  void Disable() override;
  void MsgInitSkin() override;

  // The virtual operations that a label adds; their order is part of the interface.
  virtual void UpdateSize();
  // Keeps a copy; null leaves no text.
  virtual void SetText(const char* newText);
  virtual void SetNumber(int n);
  // Without the zeros at its end, but with one digit behind the point: 12.5, 12.0.
  virtual void SetNumber(double d);
  virtual const char* GetText() const;  // null without text
  // The text read as a number, 0 when it is none; the integer is cut toward zero.
  virtual int GetInt() const;
  virtual double GetDouble() const;
  virtual void SetAlignment(int alignment);  // a TextAlign
  virtual int GetAlignment() const;
  virtual void AlignLeft();
  virtual void AlignRight();
  virtual void AlignCentre();
  virtual void SetVAlignment(int alignment);  // a VerticalAlign
  virtual int GetVAlignment() const;
  virtual bool IsMultiline() const;
  virtual void SetMultiline(bool wrap);
  // Of all lines, at the label's width; 0 without text.
  virtual int TextHeight() const;

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
             const char* newText, int alignment = kAlignLeft);

 protected:
  int TextState() const { return Disabled() ? kDisabled : kNormal; }

  std::unique_ptr<std::string> text;
  int align = kAlignLeft;
  int valign = kAlignTop;
  bool multiline = false;

 private:
  // After a change of what gives it its size. What it covered before shows again.
  void FollowChange();
};

// Sends MSG_ACTIVATE to its parent when it is pressed and released, or its key is typed. An "&" in
// the text marks the letter that is underlined, but not in that of a check box or radio button.
//
// Pressed by the mouse it follows the button; pressed by its key it stays down for a while, counted
// in logic ticks. The selected state is the pressed look, or the checked state of a toggle.
class Button : public Label {
 public:
  Button();

  void MsgStart() override;
  void Draw(Bitmap& canvas) override;
  void MsgKey() override;
  bool MsgWantFocus() override;
  void MsgGotFocus() override;
  void MsgLostFocus() override;
  void MsgLostMouse() override;
  void MsgLPress() override;
  void MsgLRelease() override;
  void MsgTick() override;
  void MsgInitSkin() override;
  void UpdateSize() override;

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
             const char* newText);

 protected:
  // A toggle's look: pressed only while it is held.
  int HeldState() const;
  void SwitchSelected();
  void BeginPress();
  void ShowChange();
  void Activate();
  // What check boxes and radio buttons share.
  void DrawToggle(Bitmap& canvas);
  void InitToggleSkin(int textSet, int element);

  int keyTimer = 0;     // logic ticks left of a key press
  int repeatTimer = 0;  // logic ticks until the next auto-repeat message

 private:
  // Takes back a press of the mouse whose release will go elsewhere, like focus and pointer.
  void DropPress();
  int KeyPressTicks() const;
  void EndKeyPress();
  void AutoRepeat();
};

// A toggle drawn as a box beside its text.
class CheckBox : public Button {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;
};

// A toggle of which only one in a group is selected: selecting one tells the others through
// MSG_RADIO.
class RadioButton : public Button {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgKey() override;
  void MsgRadio(int g) override;
  void MsgLPress() override;
  void MsgLRelease() override;
  void MsgInitSkin() override;

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
             const char* newText, int g);
  void SetGroup(int g) { group = g; }
  int GetGroup() const { return group; }

 protected:
  int group = 0;
};

}  // namespace zel
