// A number that one types or steps with two arrows.
#pragma once

#include <string>

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/value_range.h"

namespace zel {

// An arrow of a spin box: its element is stretched over the whole button.
class SpinButton : public Button {
 public:
  void Draw(Bitmap& canvas) override;
};

// An edit box with two arrows at its right edge, all owned, and a value that follows them.
//
// What is typed becomes the value at once, brought between the bounds, and nobody is told. An arrow
// that changes the value, again and again while it is held, tells the parent MSG_SCROLL with the
// whole increment as a whole number, negative downward, even where a bound cut it short. Enter
// tells it MSG_ACTIVATE. Other keys are the edit box's.
class SpinBox : public Dialog, public ValueRange {
 public:
  SpinBox();

  void MsgInitSkin() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void SetValue(double d) override;
  // These also show the value, rounded.
  void Increment() override;
  void Decrement() override;

  // Shortcut and flags are those of the edit box. With numbers of type int the text is read as a
  // whole number, in base 16 with the edit box's filter for that.
  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, double newMin,
             double newMax, double newValue, double newIncrement);
  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int newMin,
             int newMax, int newValue, int newIncrement);
  using ValueRange::Setup;
  EditBox& GetEdit() { return edit; }

 private:
  void ShowValue();
  void TakeText();
  // True for a key that has changed the text. Others leave the value alone, which the text may show
  // rounded.
  bool IsTyping(int msg, EventArg arg);
  void Step(bool up);

 protected:
  EditBox edit;
  SpinButton upButton;
  SpinButton downButton;
  bool integerMode = false;

 private:
  std::string knownText_;  // when the value was last shown or taken
};

}  // namespace zel
