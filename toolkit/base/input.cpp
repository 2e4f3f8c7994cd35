#include "toolkit/base/input.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/record_queue.h"
#include "toolkit/base/wakeup.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

constexpr std::size_t kMostWaiting = 1024;  // records
constexpr int kReleased = 0x80;             // in the scan codes that Allegro calls back with
constexpr int kKeyBuffer = 64;              // Allegro's

RecordQueue<InputRecord, kMostWaiting> queue;

// Only the loop has to do with these.
std::array<unsigned, KEY_MAX> releases;
std::array<bool, KEY_MAX> isDown;    // after the records taken so far
std::optional<InputRecord> putBack;  // comes before the queue
std::size_t forgotten = 0;           // records to come whose keys are not told
const int* handledShifts = nullptr;  // null while nothing is handled

// Who was called back before, and is called first still.
struct Callbacks {
  int (*character)(int, int*) = nullptr;
  void (*key)(int) = nullptr;
  void (*mouse)(int) = nullptr;
};
Callbacks previous;
bool isStarted = false;

bool Note(InputRecord::Kind kind, int scancode = 0, int character = 0, bool isLate = false) {
  InputRecord record;
  record.kind = kind;
  record.isLate = isLate;
  record.mouse.position = {mouse_x, mouse_y};
  if (kind == InputRecord::kMouse) {
    record.mouse.buttons = mouse_b;
    record.mouse.wheel = mouse_z;
  }
  record.shifts = _key_shifts;  // key_shifts follows only after the callback
  record.scancode = scancode;
  record.character = character;
  const bool fits = queue.Put(record);
  WakeLoop();
  return fits;
}

// Allegro asks the older one of its callbacks only while it has no other.
int AskOlderCallback(int character, int* scancode) {
  const int code = (character <= 0xFF ? character : '^') | *scancode << 8;
  const int answer = keyboard_callback(code);
  if (answer == code) return character;
  *scancode = answer >> 8;
  return answer & 0xFF;
}

int OnCharacter(int character, int* scancode) {
  if (previous.character)
    character = previous.character(character, scancode);
  else if (keyboard_callback)
    character = AskOlderCallback(character, scancode);
  if (character == 0 && *scancode == 0) return 0;
  // Without both, Allegro keeps nothing. What a full queue has left to its buffer comes first.
  if (!keypressed() && Note(InputRecord::kCharacter, *scancode, character))
    character = *scancode = 0;
  return character;
}

void OnKey(int scancode) {
  if (previous.key) previous.key(scancode);
  if (scancode & kReleased) Note(InputRecord::kKeyUp, scancode & ~kReleased);
}

void OnMouse(int changes) {
  if (previous.mouse) previous.mouse(changes);
  if ((changes & ~(MOUSE_FLAG_MOVE | MOUSE_FLAG_MOVE_W)) == 0) return;
  Note(InputRecord::kMouse);
}

}  // namespace

void StartInput() {
  // What was called back late is told no more.
  for (InputRecord late; queue.Take(late);)
    if (late.kind == InputRecord::kCharacter) GiveBack(late);
  if (!isStarted) previous = {keyboard_ucallback, keyboard_lowlevel_callback, mouse_callback};
  isStarted = true;
  forgotten = 0;
  isDown.fill(false);
  for (int i = 0; i < kKeyBuffer && keyboard_driver && keypressed(); ++i) {
    int scancode = 0;
    const int character = ureadkey(&scancode);
    Note(InputRecord::kCharacter, scancode, character, true);
  }
  keyboard_ucallback = OnCharacter;
  keyboard_lowlevel_callback = OnKey;
  mouse_callback = OnMouse;
}

void EndInput() {
  if (!isStarted) return;
  isStarted = false;
  keyboard_ucallback = previous.character;
  keyboard_lowlevel_callback = previous.key;
  mouse_callback = previous.mouse;
  for (InputRecord record; TakeInput(record);)
    if (record.kind == InputRecord::kCharacter) GiveBack(record);
}

bool InputWaits() { return putBack || !queue.IsEmpty(); }

int WaitingInput() { return static_cast<int>(queue.Count()) + (putBack ? 1 : 0); }

bool TakeInput(InputRecord& record) {
  if (putBack) {
    record = *std::exchange(putBack, std::nullopt);
    return true;
  }
  while (queue.Take(record)) {
    const bool isForgotten = forgotten > 0;
    if (isForgotten) --forgotten;
    if (record.kind == InputRecord::kCharacter && isForgotten) continue;
    if (record.kind == InputRecord::kMouse) return true;
    const auto key = static_cast<std::size_t>(record.scancode % KEY_MAX);
    isDown[key] = record.kind == InputRecord::kCharacter && !record.isLate;
    if (record.kind == InputRecord::kKeyUp) ++releases[key];
    return true;
  }
  return false;
}

void PutBack(const InputRecord& record) { putBack = record; }

void GiveBack(const InputRecord& key) {
  // Both have been asked about it.
  const auto callback = std::exchange(keyboard_ucallback, nullptr);
  const auto olderCallback = std::exchange(keyboard_callback, nullptr);
  simulate_ukeypress(key.character, key.scancode);
  keyboard_callback = olderCallback;
  keyboard_ucallback = callback;
}

void ForgetKeys() {
  clear_keybuf();
  if (putBack && putBack->kind == InputRecord::kCharacter) putBack.reset();
  forgotten = queue.Count();
}

unsigned Releases(int scancode) { return releases[scancode % KEY_MAX]; }

bool IsDown(int scancode) { return key[scancode] != 0 || isDown[scancode % KEY_MAX]; }

int Shifts() { return handledShifts ? *handledShifts : key_shifts; }

HandledInput::HandledInput() : around_{std::exchange(handledShifts, nullptr)} {}

HandledInput::HandledInput(const InputRecord& record)
    : around_{std::exchange(handledShifts, &record.shifts)} {}

HandledInput::~HandledInput() { handledShifts = around_; }

}  // namespace zel
