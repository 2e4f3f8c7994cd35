#include "toolkit/testing/hands.h"

#include "toolkit/base/allegro.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>  // _key_shifts, _handle_key_press

namespace zel {

void TypeKey(int character, int scancode) { simulate_ukeypress(character, scancode); }

void PressKey(int character, int scancode) { _handle_key_press(character, scancode); }

void ReleaseKey(int scancode) { _handle_key_release(scancode); }

void HoldShifts(int shifts) {
  key_shifts = shifts;
  _key_shifts = shifts;
}

void PutMouse(Point place) {
  mouse_x = place.x;
  mouse_y = place.y;
}

void HoldButtons(int buttons) {
  mouse_b = buttons;
  // Allegro calls it with one flag for each change; which one it is makes no difference here.
  if (mouse_callback) mouse_callback(MOUSE_FLAG_LEFT_DOWN);
}

void TurnWheel(int steps) {
  mouse_z = mouse_z + steps;
  if (mouse_callback) mouse_callback(MOUSE_FLAG_MOVE_Z);
}

}  // namespace zel
