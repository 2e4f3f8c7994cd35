#include "launcher/held_keys.h"

#include <algorithm>
#include <iterator>

#include "toolkit/core/allegro.h"

namespace zel {
namespace {

constexpr int kChoosingKeys[] = {KEY_ENTER, KEY_ENTER_PAD, KEY_SPACE};

bool AnyIsDown() {
  return std::any_of(std::begin(kChoosingKeys), std::end(kChoosingKeys),
                     [](int scancode) { return key[scancode] != 0; });
}

}  // namespace

bool HeldKeys::Include(int scancode) {
  return std::find(std::begin(kChoosingKeys), std::end(kChoosingKeys), scancode) !=
         std::end(kChoosingKeys);
}

void HeldKeys::Hold() { held_ = held_ || AnyIsDown(); }

void HeldKeys::Poll() {
  // A repeat that is still to be read belongs to the keys that have just come up.
  held_ = held_ && (AnyIsDown() || keypressed());
}

}  // namespace zel
