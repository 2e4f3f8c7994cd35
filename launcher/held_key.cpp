#include "launcher/held_key.h"

#include <algorithm>
#include <iterator>

#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"

namespace zel {
namespace {

constexpr int kChoosingKeys[] = {KEY_ENTER, KEY_ENTER_PAD, KEY_SPACE};

bool Chooses(int scancode) {
  return std::find(std::begin(kChoosingKeys), std::end(kChoosingKeys), scancode) !=
         std::end(kChoosingKeys);
}

}  // namespace

bool HeldKey::MayBeOld(int scancode) {
  return Chooses(scancode) && IsDown(scancode) && Releases(scancode) == 0;
}

void HeldKey::Hold(int scancode) {
  if (!Chooses(scancode) || !IsDown(scancode)) return;
  held_ = scancode;
  releases_ = Releases(scancode);
}

void HeldKey::HoldAny() {
  for (const int scancode : kChoosingKeys) Hold(scancode);
}

void HeldKey::Poll() {
  // A repeat that is still to be read belongs to the key that has just come up.
  if (key[held_] == 0 && !InputWaits() && !keypressed()) held_ = 0;
}

bool HeldKey::Ignores(int scancode) {
  if (Releases(held_) != releases_) held_ = 0;
  // A key that is up repeats no more once another has been read.
  if (scancode != held_ && key[held_] == 0) held_ = 0;
  return held_ != 0 && scancode == held_;
}

}  // namespace zel
