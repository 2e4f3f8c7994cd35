// Allegro reads the keyboard and the mouse in a thread of its own, and takes them away without
// waiting for it: a key in that moment is handled by a driver that is there no longer.
#pragma once

namespace zel {

// While it lives, nothing reads the keyboard and the mouse.
class InputRest {
 public:
  InputRest();
  ~InputRest();
  InputRest(const InputRest&) = delete;
  InputRest& operator=(const InputRest&) = delete;
};

// Has Allegro's shut-down, whoever begins it, take the keyboard and the mouse away at rest. To be
// called whenever one of them was installed.
void RemoveInputAtRest();

}  // namespace zel
