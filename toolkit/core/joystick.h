// The first joystick as keys.
#pragma once

namespace zel {

// A direction or a button counts once, until all are let go.
class Joystick {
 public:
  // Looks at it. The scan code of the key that it stands for (arrows, Space); 0 for none. While
  // something is held it waits for a tick, so that it is not asked too often.
  int Poll();

 private:
  bool isHeld_ = false;
};

}  // namespace zel
