// A key that would choose more than once because it is held.
#pragma once

#include <array>

namespace zel {

// What a key has opened must not be left or closed by the same key's repeats: a key that chooses
// (Enter, Enter on the numeric pad or Space) and is down at Hold(), by what has been told or in
// fact, counts no more until its release was told. All other keys count.
class HeldKey {
 public:
  static bool Chooses(int scancode);
  void Hold(int scancode);
  // Whichever of the keys is down.
  void HoldAny();
  // To be called in each tick.
  void Poll();
  // To be asked for every key that is read, in turn.
  bool Ignores(int scancode);

  // A key that was pressed when the program, or its console or window, was not there may be down
  // since then, and what is read one of its repeats, which must not choose. To be called when the
  // program begins; Poll notices when the console has come back.
  void Begin();
  // Whether it may be so with a key that chooses and comes within a second of that.
  bool MayBeOld(int scancode) const;
  // Whether it is one that is down and was never let go since Begin. Its release tells.
  bool IsStillDown(int scancode) const;

 private:
  int held_ = 0;                              // scancode, or 0
  unsigned releases_ = 0;                     // of that key, when it was held
  int newTicks_ = 0;                          // to come, in which a key may be old
  unsigned returns_ = 0;                      // of the keyboard, at Begin
  std::array<unsigned, 3> releasesBefore_{};  // of each key that chooses
};

}  // namespace zel
