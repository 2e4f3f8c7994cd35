#include "toolkit/base/input.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/process.h"
#include "toolkit/base/wakeup.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

constexpr int kReleased = 0x80;  // in the scan codes that Allegro calls back with
constexpr int kKeyBuffer = 64;   // Allegro's
// Those that are held, not those that are switched.
constexpr int kModifiers = KB_SHIFT_FLAG | KB_CTRL_FLAG | KB_ALT_FLAG | KB_LWIN_FLAG |
                           KB_RWIN_FLAG | KB_MENU_FLAG | KB_COMMAND_FLAG;

constexpr InputState& input = process.input;

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
  const bool fits = input.queue->Put(record);
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
  if (input.previous.character)
    character = input.previous.character(character, scancode);
  else if (keyboard_callback)
    character = AskOlderCallback(character, scancode);
  if (character == 0 && *scancode == 0) return 0;
  // Without both, Allegro keeps nothing. What a full queue has left to its buffer comes first.
  if (!keypressed() && Note(InputRecord::kCharacter, *scancode, character))
    character = *scancode = 0;
  return character;
}

void OnKey(int scancode) {
  if (input.previous.key) input.previous.key(scancode);
  if (scancode & kReleased) Note(InputRecord::kKeyUp, scancode & ~kReleased);
}

void OnMouse(int changes) {
  if (input.previous.mouse) input.previous.mouse(changes);
  if ((changes & ~(MOUSE_FLAG_MOVE | MOUSE_FLAG_MOVE_W)) == 0) return;
  Note(InputRecord::kMouse);
}

}  // namespace

void StartInput() {
  if (!input.queue) input.queue = new RecordQueue<InputRecord, InputState::kMostWaiting>;
  // What was called back late is told no more.
  for (InputRecord late; input.queue->Take(late);)
    if (late.kind == InputRecord::kCharacter) GiveBack(late);
  if (!input.isStarted)
    input.previous = {keyboard_ucallback, keyboard_lowlevel_callback, mouse_callback};
  input.isStarted = true;
  input.forgotten = 0;
  input.isDown.fill(false);
  for (int i = 0; i < kKeyBuffer && keyboard_driver && keypressed(); ++i) {
    int scancode;
    const int character = ureadkey(&scancode);
    Note(InputRecord::kCharacter, scancode, character, true);
  }
  keyboard_ucallback = OnCharacter;
  keyboard_lowlevel_callback = OnKey;
  mouse_callback = OnMouse;
}

void EndInput() {
  if (!input.isStarted) return;
  input.isStarted = false;
  keyboard_ucallback = input.previous.character;
  keyboard_lowlevel_callback = input.previous.key;
  mouse_callback = input.previous.mouse;
  for (InputRecord record; TakeInput(record);)
    if (record.kind == InputRecord::kCharacter) GiveBack(record);
}

bool InputWaits() { return input.putBack || (input.queue && !input.queue->IsEmpty()); }

int WaitingInput() {
  const std::size_t recorded = input.queue ? input.queue->Count() : 0;
  return static_cast<int>(recorded) + (input.putBack ? 1 : 0);
}

bool TakeInput(InputRecord& record) {
  if (input.putBack) {
    record = *std::exchange(input.putBack, std::nullopt);
    return true;
  }
  while (input.queue && input.queue->Take(record)) {
    const bool isForgotten = input.forgotten > 0;
    if (isForgotten) --input.forgotten;
    if (record.kind == InputRecord::kCharacter && isForgotten) continue;
    if (record.kind == InputRecord::kMouse) return true;
    const auto key = static_cast<std::size_t>(record.scancode % KEY_MAX);
    input.isDown[key] = record.kind == InputRecord::kCharacter && !record.isLate;
    if (record.kind == InputRecord::kKeyUp) ++input.releases[key];
    return true;
  }
  return false;
}

void PutBack(const InputRecord& record) { input.putBack = record; }

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
  if (input.putBack && input.putBack->kind == InputRecord::kCharacter) input.putBack.reset();
  input.forgotten = input.queue ? input.queue->Count() : 0;
}

unsigned Releases(int scancode) { return input.releases[scancode % KEY_MAX]; }

unsigned AllReleases() { return std::accumulate(input.releases.begin(), input.releases.end(), 0U); }

bool IsDown(int scancode) { return key[scancode] != 0 || input.isDown[scancode % KEY_MAX]; }

bool IsLate() { return input.handled && input.handled->isLate; }

unsigned Returns() { return input.returns; }

void NoteReturn() {
  _key_shifts = _key_shifts & ~kModifiers;
  ++input.returns;
}

int Shifts() { return input.handled ? input.handled->shifts : key_shifts; }

HandledInput::HandledInput() : around_{std::exchange(input.handled, nullptr)} {}

HandledInput::HandledInput(const InputRecord& record)
    : around_{std::exchange(input.handled, &record)} {}

HandledInput::~HandledInput() { input.handled = around_; }

}  // namespace zel
