// A person's hands on the keyboard and the mouse of a FakeMachine.
//
// What they do is told to the dialog that runs as if devices had done it: with the loop's next
// pass.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

// Types a character, or with 0 a key that has none. Scan codes are Allegro's, such as KEY_ENTER.
void TypeKey(int character, int scancode);
// The same in two steps, for those who ask how long it is held. Needs an installed keyboard.
void PressKey(int character, int scancode);
void ReleaseKey(int scancode);
// Holds the modifier keys of these bits, such as KB_SHIFT_FLAG, and lets go of the others.
void HoldShifts(int shifts);
void PutMouse(Point place);
// Holds the buttons of these bits, 1 for the left one, and lets go of the others.
void HoldButtons(int buttons);
// Turns the wheel, away from the person for a positive number.
void TurnWheel(int steps);

}  // namespace zel
