// What makes two presses a double click.
#pragma once

namespace zel {

// The buttons of the mouse as Allegro counts them.
enum MouseButton : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

// Counts logic ticks from one press to the next. Two presses of the same button within the window
// are a double click, which comes with the tick after the second one.
class DoubleClicks {
 public:
  // The window in logic ticks.
  void SetWindow(int ticks) { window_ = ticks; }
  int Window() const { return window_; }

  // The buttons that have been pressed since the last call, in a tick or between two: what happens
  // between two belongs to the second one. True when a double click is due now, which Take takes.
  bool Note(int pressed, bool inTick);
  // False when it was forgotten meanwhile.
  bool Take();
  // The next press is the first one again.
  void Forget();

 private:
  enum class State { kNone, kLeftOnce, kRightOnce, kMiddleOnce, kDetected };

  bool NotePress(int pressed);

  State state_ = State::kNone;
  int counter_ = 0;  // logic ticks since the first press
  int window_ = 0;
  bool pressedSinceTick_ = false;  // which the next tick then does not count
};

}  // namespace zel
