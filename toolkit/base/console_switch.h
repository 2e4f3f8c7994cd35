// The person's way from the program's console to another one and back.
//
// The kernel asks for each switch by a signal, and Allegro answers in its handler: it allocates
// bitmaps, copies the screen and waits for locks. In the middle of an allocation, or with one of
// the locks taken, that never ends, and the console is lost. So these signals are held back from
// the thread that works, and let through where it holds nothing. Elsewhere than on a Linux console,
// nothing here does anything.
#pragma once

namespace zel {

// Holds the switches back, from now to the end of the program: after Allegro's end nobody handles
// their signals. To be called with Allegro installed, before it knows the console.
void HoldConsoleSwitches();

// Makes the switches that were asked for meanwhile. The kernel waits for that as long as it takes.
void MakeConsoleSwitches();

}  // namespace zel
