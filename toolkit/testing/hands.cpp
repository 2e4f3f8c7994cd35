#include "toolkit/testing/hands.h"

#include "toolkit/base/allegro.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>  // _key_shifts

namespace zel {

void TypeKey(int character, int scancode) { simulate_ukeypress(character, scancode); }

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

}  // namespace zel
