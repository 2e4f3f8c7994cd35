// A key that would choose more than once because it is held.
#pragma once

namespace zel {

// What a key has opened must not be left or closed by the same key's repeats: a key that chooses
// (Enter, Enter on the numeric pad or Space) and is down at Hold(), by what has been told or in
// fact, counts no more until its release was told. All other keys count.
class HeldKey {
 public:
  void Hold(int scancode);
  // Whichever of the keys is down.
  void HoldAny();
  // To be called in each tick.
  void Poll();
  // To be asked for every key that is read, in turn.
  bool Ignores(int scancode);

  // Whether a key that chooses is down and was never let go: then it may be down since before the
  // program began, and what was read one of its repeats. Its release tells.
  static bool MayBeOld(int scancode);

 private:
  int held_ = 0;           // scancode, or 0
  unsigned releases_ = 0;  // of that key, when it was held
};

}  // namespace zel
