// How the event loop sleeps, and what wakes it.
#pragma once

namespace zel {

// Ends the event loop's sleep, or the next one that begins. For any thread and any signal handler.
void WakeLoop();

// Sleeps until WakeLoop was called or the display has sent something, at most a tenth of a second;
// takes what the display has sent. Waiting for a tick itself costs a tenth of the wake-ups of
// looking for it every few microseconds.
void SleepUntilWoken();

}  // namespace zel
