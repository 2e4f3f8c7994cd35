// Somebody who does everything that the devices of a FakeMachine can do, in no order.
//
// A dialog stands him when it neither crashes nor stops, best under sanitizers.
#pragma once

#include <functional>
#include <random>
#include <utility>
#include <vector>

#include "toolkit/base/geometry.h"

namespace zel {

class Dialog;
class FakeTimers;

// Plays whenever a loop would wait, and lets the clock go on now and then. Needs a running toolkit
// without a mouse of Allegro's (remove_mouse), since the pointer moves as he says.
class RandomPlayer {
 public:
  // The seed chooses the events.
  RandomPlayer(FakeTimers& clock, unsigned seed);
  ~RandomPlayer();
  RandomPlayer(const RandomPlayer&) = delete;
  RandomPlayer& operator=(const RandomPlayer&) = delete;

  // Something of the program's own that happens, too: so often in 10,000 events, 100 together.
  void Also(int often, std::function<void()> act) { acts_.emplace_back(often, std::move(act)); }
  // Runs a root until it is closed, by him or, after as many events as are left, by `end`. What is
  // popped up above it then is closed first. False when the root has lost sight of its widgets.
  bool Run(Dialog& root, const std::function<void()>& end);

  // A number from 0 to limit - 1.
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  int eventsLeft = 0;

 private:
  void Play();
  void Act();
  bool KnowsItsWidgets() const;

  void Jump();
  void Move();
  void ChangeMouse(volatile int& state, int value);
  void Press();
  void Wheel();
  void Key(int character, int scancode);
  void UsualKey();
  void AnyKey();
  void Type();
  void Shift();

  FakeTimers& clock_;
  std::mt19937 random_;
  std::vector<std::pair<int, std::function<void()>>> acts_;
  Dialog* root_ = nullptr;
  const std::function<void()>* end_ = nullptr;
  bool isLost_ = false;
};

}  // namespace zel
