// What mouse and keyboard have done, in the order in which they did it.
//
// Allegro notices it in threads of its own or in the loop's, and calls back. Whoever is called back
// only puts a record into a queue and wakes the loop; see RecordQueue for why that is safe. The
// loop takes the records one by one and tells them (InputRouter), whether a tick has
// passed or not. So a button that goes down and up between two ticks is told twice, and a key has
// the modifiers that it was typed with.
//
// Not recorded is what does not get lost: where the pointer is, and what comes another way, such as
// the keys of install_keyboard_hooks or a mouse that is polled. The loop finds it when it looks at
// the devices in each tick, and what a full queue refused as well: buttons are as they are then,
// keys wait in Allegro's buffer.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

struct MouseState {
  Point position;
  int buttons = 0;
  int wheel = 0;

  friend bool operator==(const MouseState&, const MouseState&) = default;
};

struct InputRecord {
  enum Kind { kMouse, kKeyUp, kCharacter };

  Kind kind = kMouse;
  // After what happened. Keys know the position alone.
  MouseState mouse;
  int shifts = 0;       // modifiers, as in key_shifts
  int scancode = 0;     // kKeyUp, kCharacter
  int character = 0;    // kCharacter; 0 for keys without one
  bool isLate = false;  // typed before there were records, so that nobody tells of the release
};

// From StartInput to EndInput there are records. Keys that were typed before are the first; those
// that nobody has taken wait in Allegro's buffer again afterwards.
void StartInput();
void EndInput();

bool InputWaits();
// How many records can be taken at least.
int WaitingInput();
// The next one; false when there is none.
bool TakeInput(InputRecord& record);
// The record that was taken last is the next one again, with nothing lost or counted twice.
void PutBack(const InputRecord& record);
// Leaves a key to whoever reads Allegro's buffer.
void GiveBack(const InputRecord& key);
// Forgets the keys that were typed and not taken, as clear_keybuf does with Allegro's.
void ForgetKeys();

// How often the key was let go, among the records taken so far.
unsigned Releases(int scancode);
// How often any key was.
unsigned AllReleases();
// Whether the key is down, or was when the record was made that was taken last.
bool IsDown(int scancode);

// Whether the key that is handled was typed before there were records, when nothing could be seen.
bool IsLate();

// How often the keyboard has come back from another console or window: a key may be held since
// then.
unsigned Returns();
// To be called when it does. Modifiers that were let go there are down no more.
void NoteReturn();

// The modifiers that a key was typed with while it is handled; else those of now.
int Shifts();

// While it lives, this is handled.
class HandledInput {
 public:
  // Nothing.
  HandledInput();
  explicit HandledInput(const InputRecord& record);
  ~HandledInput();
  HandledInput(const HandledInput&) = delete;
  HandledInput& operator=(const HandledInput&) = delete;

 private:
  const InputRecord* around_;
};

}  // namespace zel
