// Keeps the Linux console usable, whatever becomes of the program that uses it.
//
// Graphics mode and a keyboard that sends codes instead of characters are states of the console,
// not of the process: a program that is killed leaves the person at the machine with neither
// picture nor keys. So it runs as a child, and its parent sees to it that the console has text and
// a working keyboard again, after every end.
#pragma once

namespace zel {

// Runs `program` and answers its exit status. When standard input or the controlling terminal is a
// virtual console, that runs in a child process, which gets this console as both. A signal that
// would end this process ends the child; one that ends the child ends this process, too, after
// `cleanUp` was called and the console put right. Elsewhere it is just a call.
int RunGuarded(int (*program)(), void (*cleanUp)());

// Takes the signals that end a program back from Allegro, whose handlers run its whole shut-down
// inside whatever was interrupted and may hang there. Does nothing outside of a guarded program.
void LeaveSignalsToGuard();

}  // namespace zel
