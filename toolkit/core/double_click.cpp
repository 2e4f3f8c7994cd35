#include "toolkit/core/double_click.h"

#include <utility>

namespace zel {

// True when the presses mean something for the double click.
bool DoubleClicks::NotePress(int pressed) {
  struct Row {
    int button;
    State once;
  };
  static constexpr Row kRows[] = {{kLeftButton, State::kLeftOnce},
                                  {kRightButton, State::kRightOnce},
                                  {kMiddleButton, State::kMiddleOnce}};
  for (const Row& row : kRows) {
    if (!(pressed & row.button)) continue;
    if (state_ == State::kNone) {
      state_ = row.once;
      return true;
    }
    if (state_ == row.once) {
      state_ = State::kDetected;
      return true;
    }
  }
  return false;
}

bool DoubleClicks::Note(int pressed, bool inTick) {
  if (inTick && state_ == State::kDetected && !pressedSinceTick_) return true;
  if (NotePress(pressed)) pressedSinceTick_ = true;
  if (!inTick || std::exchange(pressedSinceTick_, false)) return false;
  if (state_ != State::kNone && ++counter_ >= window_) Forget();
  return false;
}

bool DoubleClicks::Take() {
  if (state_ != State::kDetected) return false;
  Forget();
  return true;
}

void DoubleClicks::Forget() {
  state_ = State::kNone;
  counter_ = 0;
  pressedSinceTick_ = false;
}

}  // namespace zel
