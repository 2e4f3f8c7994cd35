// What a dialog has only once it has run by itself.
#pragma once

#include "toolkit/core/joystick.h"
#include "toolkit/core/tooltip.h"

namespace zel {

struct DialogRun {
  DialogRun() { tooltip.Hide(); }

  Tooltip tooltip;    // a child while the dialog runs
  Joystick joystick;  // what is held when a popup begins or ends goes on being held
};

}  // namespace zel
