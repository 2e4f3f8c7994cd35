// Keys that choose something more than once because they are held.
#pragma once

namespace zel {

// What a key has opened must not be left or closed by the same key's repeats: when one of the keys
// that choose is down at Hold(), they count no more until all of them are up.
class HeldKeys {
 public:
  // Enter, Enter on the numeric pad and Space.
  static bool Include(int scancode);

  void Hold();
  // To be called in each tick.
  void Poll();
  bool Ignores(int scancode) const { return held_ && Include(scancode); }

 private:
  bool held_ = false;
};

}  // namespace zel
