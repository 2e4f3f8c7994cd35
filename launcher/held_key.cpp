#include "launcher/held_key.h"

#include <algorithm>

#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr std::array kChoosingKeys{KEY_ENTER, KEY_ENTER_PAD, KEY_SPACE};

}  // namespace

bool HeldKey::Chooses(int scancode) {
  return std::find(kChoosingKeys.begin(), kChoosingKeys.end(), scancode) != kChoosingKeys.end();
}

void HeldKey::Begin() {
  newTicks_ = settings.UsableFrameRate();
  returns_ = Returns();
  std::transform(kChoosingKeys.begin(), kChoosingKeys.end(), releasesBefore_.begin(), Releases);
}

bool HeldKey::MayBeOld(int scancode) const { return newTicks_ > 0 && IsStillDown(scancode); }

bool HeldKey::IsStillDown(int scancode) const {
  const auto found = std::find(kChoosingKeys.begin(), kChoosingKeys.end(), scancode);
  return found != kChoosingKeys.end() && IsDown(scancode) &&
         Releases(scancode) == releasesBefore_[found - kChoosingKeys.begin()];
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
  if (Returns() != returns_)
    Begin();
  else if (newTicks_ > 0)
    --newTicks_;
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
