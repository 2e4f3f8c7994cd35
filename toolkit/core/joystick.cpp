#include "toolkit/core/joystick.h"

#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

int ActiveKey() {
  const JOYSTICK_INFO& stick = joy[0];
  if (stick.stick[0].axis[0].d1) return KEY_LEFT;
  if (stick.stick[0].axis[0].d2) return KEY_RIGHT;
  if (stick.stick[0].axis[1].d1) return KEY_UP;
  if (stick.stick[0].axis[1].d2) return KEY_DOWN;
  if (stick.button[0].b || stick.button[1].b) return KEY_SPACE;
  return 0;
}

}  // namespace

int Joystick::Poll() {
  if (!settings.useJoystick || num_joysticks < 1) return 0;
  const unsigned tick = 1000u / static_cast<unsigned>(settings.UsableFrameRate());
  if (isHeld_) rest(tick);
  poll_joystick();
  const int scancode = ActiveKey();
  const bool wasHeld = std::exchange(isHeld_, scancode != 0);
  if (wasHeld && !isHeld_) rest(tick);
  return wasHeld ? 0 : scancode;
}

}  // namespace zel
