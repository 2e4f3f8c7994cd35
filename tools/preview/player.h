// The process in which a live preview's menu runs.
#pragma once

#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"

namespace zel {

// What it tells, and in the end what it is told: a line that Act understands.
inline constexpr char kFrameMessage = 'f';      // width, height (int32_t), pixels of three bytes
inline constexpr char kPositionMessage = 'p';   // where the person is, as position files say it
inline constexpr char kChoiceMessage = 'r';     // lines: exit status, position, string
inline constexpr char kComplaintMessage = 'c';  // why there is no menu
inline constexpr char kInputMessage = 'i';

// Shows a scene in the current directory, in real time, until an item is chosen or the other end of
// the channel is closed. What is done to it is one line each:
//
//   down SCANCODE CHARACTER SHIFTS, up SCANCODE SHIFTS    a key, Allegro's numbers
//   mouse X Y BUTTONS, wheel STEPS, leave                 the mouse, and that it is elsewhere
[[noreturn]] void Play(const Scene& scene, Scratch& scratch, int descriptor);

}  // namespace zel
