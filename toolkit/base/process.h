// The owner of all that lives once per process.
#pragma once

#include <array>
#include <atomic>

#include "toolkit/base/allegro.h"
#include "toolkit/base/console_guard.h"
#include "toolkit/base/input_state.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/timers.h"

namespace zel {

struct DisplayCalls;

// There is one, `process`. It exists, without being made, from the program's start to its end: what
// this layer has once lies in it, at a fixed address for the sake of signal handlers and of
// Allegro's callbacks.
//
// What a layer above has once lies in a part, a struct of that layer, which only that layer knows.
// The owner makes it with its defaults when it is first asked for; shut-down destroys all parts,
// those of upper layers first. What is left at the end of the program is not destroyed: Allegro may
// have ended before.
class Process {
 public:
  // The numbers of the layers that have a part.
  static constexpr int kDraw = 0, kSkin = 1, kCore = 2, kParts = 3;

  constexpr Process() = default;
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // A part has the number of its layer in kLayer.
  template <class Part>
  Part& Of() {
    Held& held = held_[Part::kLayer];
    if (!held.part) held = {new Part, [](void* part) { delete static_cast<Part*>(part); }};
    return *static_cast<Part*>(held.part);
  }

  // From the end to the next beginning no dialog can run: those that there are may have kept what
  // is gone.
  void Begin() { hasEnded_ = false; }
  void End();
  bool HasEnded() const { return hasEnded_; }
  // As the program's start finds it. For tests.
  void Renew();

  Settings settings;
  double zoom = 1;  // see zoom.h

  std::array<TimerSlot, kTimerSlots> timers;
  TimerDriver timerDriver;

  InputState input;
  // A mouse on its way sends more within a tick than is to be told. Once there was nothing to tell,
  // the display is left to Allegro's rounds until the next tick.
  bool listensToDisplay = true;
  // While the loop takes input itself, and looks at all that there is before it sleeps again.
  std::atomic<bool> isTakingInput = false;
  // Made when there is a display, and left as it is at the end of the program; see
  // display_link.cpp.
  DisplayCalls* displayCalls = nullptr;

  // Called, where not null, before the process ends with status 1 because the X server is gone or
  // refuses a request: at once, in whichever thread has noticed it, and without what std::atexit
  // has registered.
  void (*onDisplayLost)() = nullptr;

  GuardState guard;

  // The screen of the graphics mode, while a video page or a part of it stands for it.
  BITMAP* replacedScreen = nullptr;
  BitmapPtr middlePart;  // of that screen, where it is too large
  bool putsScreenBackAtExit = false;

 private:
  struct Held {
    void* part = nullptr;
    void (*destroy)(void* part) = nullptr;
  };

  std::array<Held, kParts> held_{};
  bool hasEnded_ = false;
};

extern Process process;

}  // namespace zel
