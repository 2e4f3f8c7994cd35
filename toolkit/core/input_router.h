// From recorded input, and from the devices, to the dialog that it is for.
#pragma once

namespace zel {

class Dialog;
struct InputRecord;
struct MouseState;

// For a root. What happens is for the dialog that is popped up over it, as long as that has the
// focus, else for itself.
class InputRouter {
 public:
  explicit InputRouter(Dialog& root) : root_{root} {}

  Dialog& Target() const;
  // Tells the input that has been recorded until now; false when there was none.
  bool WorkOff();
  // What the mouse has done as the devices show it, and what the double click waits for. Once per
  // logic tick.
  void LookAtMouse();
  // The joystick, or a key that waits in Allegro's buffer. Once per logic tick.
  void LookAtKeyboard();

 private:
  // False when it says nothing new.
  bool Tell(const InputRecord& record);
  // Tells what has changed since that state of the mouse.
  void TellMouse(const MouseState& before, bool inTick);

  Dialog& root_;
};

}  // namespace zel
