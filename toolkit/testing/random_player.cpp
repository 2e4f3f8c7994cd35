#include "toolkit/testing/random_player.h"

#include <algorithm>
#include <iterator>

#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/testing/fake_timers.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

constexpr int kAllEvents = 10000;

}  // namespace

RandomPlayer::RandomPlayer(FakeTimers& clock, unsigned seed) : clock_{clock}, random_{seed} {
  clock_.onSleep = [this] { Play(); };
}

RandomPlayer::~RandomPlayer() {
  clock_.onSleep = nullptr;
  for (volatile int* state : {&mouse_x, &mouse_y, &mouse_z, &mouse_b}) *state = 0;
}

bool RandomPlayer::Run(Dialog& root, const std::function<void()>& end) {
  root_ = &root;
  end_ = &end;
  isLost_ = false;
  root.Execute(nullptr);
  return !isLost_;
}

bool RandomPlayer::KnowsItsWidgets() const {
  for (Widget* widget : {root_->FocusWidget(), root_->MouseWidget()})
    if (widget && !root_->Contains(widget)) return false;
  return true;
}

// One event and, more often than not, one tick of the clock.
void RandomPlayer::Play() {
  isLost_ |= !KnowsItsWidgets();
  if (--eventsLeft > 0 && !isLost_)
    Act();
  else if (Dialog* over = AsDialog(root_->GetFocus()); over && over->TestFlag(kFlagPoppedUp))
    over->Close();
  else
    (*end_)();
  if (Below(3) == 0) return;
  const long logicPeriod = TIMERS_PER_SECOND / settings.UsableFrameRate();
  for (int i = 0; i < clock_.Count(); ++i)
    if (clock_.Period(i) == logicPeriod || Below(8) == 0) clock_.Tick(i, 1 + Below(2));
}

void RandomPlayer::Act() {
  // So often in all events; the rest is the program's own.
  using Player = RandomPlayer;
  static constexpr std::pair<int, void (Player::*)()> kKinds[] = {
      {2500, &Player::Jump},     {1000, &Player::Move},  {2400, &Player::Press},
      {400, &Player::Wheel},     {500, &Player::AnyKey}, {500, &Player::Type},
      {2400, &Player::UsualKey}, {200, &Player::Shift}};
  int chosen = Below(kAllEvents);
  for (const auto& [often, act] : kKinds)
    if ((chosen -= often) < 0) return (this->*act)();
  for (const auto& [often, act] : acts_)
    if ((chosen -= often) < 0) return act();
}

void RandomPlayer::Jump() {
  mouse_x = Below(settings.screenWidth);
  mouse_y = Below(settings.screenHeight);
}

void RandomPlayer::Move() {
  mouse_x = std::clamp(mouse_x + Below(17) - 8, 0, settings.screenWidth - 1);
  mouse_y = std::clamp(mouse_y + Below(17) - 8, 0, settings.screenHeight - 1);
}

// The mouse's driver calls back, unless it is one of those that are polled.
void RandomPlayer::ChangeMouse(volatile int& state, int value) {
  state = value;
  if (mouse_callback && Below(8)) mouse_callback(MOUSE_FLAG_LEFT_DOWN);
}

void RandomPlayer::Press() { ChangeMouse(mouse_b, mouse_b ? 0 : Below(4) ? 1 : 1 + Below(7)); }
void RandomPlayer::Wheel() { ChangeMouse(mouse_z, mouse_z + Below(7) - 3); }

void RandomPlayer::Key(int character, int scancode) {
  _handle_key_press(character, scancode);
  if (Below(4)) _handle_key_release(scancode);
}

void RandomPlayer::UsualKey() {
  static constexpr int kKeys[][2] = {
      {KEY_UP, 0},     {KEY_DOWN, 0},    {KEY_LEFT, 0}, {KEY_RIGHT, 0},    {KEY_TAB, 9},
      {KEY_ENTER, 13}, {KEY_HOME, 0},    {KEY_END, 0},  {KEY_PGUP, 0},     {KEY_PGDN, 0},
      {KEY_DEL, 0},    {KEY_SPACE, ' '}, {KEY_ESC, 27}, {KEY_BACKSPACE, 8}};
  const auto& usual = kKeys[Below(static_cast<int>(std::size(kKeys)))];
  Key(usual[1], usual[0]);
}

void RandomPlayer::AnyKey() { simulate_ukeypress(Below(2) ? 0 : Below(256), Below(KEY_MAX)); }
void RandomPlayer::Type() { Key(Below(20) ? ' ' + Below(95) : Below(0x3000), Below(KEY_MAX)); }
void RandomPlayer::Shift() { _key_shifts = Below(64); }

}  // namespace zel
