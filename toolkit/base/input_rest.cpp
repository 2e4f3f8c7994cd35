#include "toolkit/base/input_rest.h"

#include <unistd.h>

#include "toolkit/base/allegro.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>
#include <allegro/platform/aintunix.h>

namespace zel {
namespace {

// Allegro's thread may itself come to end the program, and would wait for itself.
bool Rests() { return system_driver && system_driver->id != SYSTEM_NONE && gettid() == getpid(); }

void RemoveInput() {
  const InputRest rest;
  remove_keyboard();
  remove_mouse();
}

}  // namespace

InputRest::InputRest() {
  if (Rests()) _unix_bg_man->disable_interrupts();
}

InputRest::~InputRest() {
  if (Rests()) _unix_bg_man->enable_interrupts();
}

// The shut-down begins with what was added last.
void RemoveInputAtRest() {
  _remove_exit_func(RemoveInput);
  _add_exit_func(RemoveInput, "RemoveInput");
}

}  // namespace zel
