// Keeps the Linux console usable, whatever becomes of the program that uses it.
//
// Graphics mode and a keyboard that sends codes instead of characters are states of the console,
// not of the process: a program that is killed leaves the person at the machine with neither
// picture nor keys. So it runs as a child, and its parent sees to it that the console has text and
// a working keyboard again, after every end.
#pragma once

#include <array>
#include <csignal>

namespace zel {

class GuardedConsole;

// What the child needs when it does its guard's work.
struct GuardState {
  bool isGuarded = false;
  GuardedConsole* console = nullptr;  // null without a guard
  void (*cleanUp)() = nullptr;
};

// Runs `program` and answers its exit status. When standard input or the controlling terminal is a
// virtual console, that runs in a child process, which gets this console as both. A signal that
// would end this process ends the child; one that ends the child ends this process, too, after
// `cleanUp` was called and the console put right. When this process is killed, the child does both
// and ends. A child that ends by itself has the last word, whatever signal came meanwhile.
// Elsewhere it is just a call. `cleanUp` makes only calls that a signal handler may make.
int RunGuarded(int (*program)(), void (*cleanUp)());

// Ends this process with status 1 and a message on standard error, without anything that a program
// does at its end but `cleanUp`. The console has text before, so that the message shows. For when
// there is no going on: it makes only calls that a signal handler may make, and needs no memory.
[[noreturn]] void EndAtOnce(const char* message);

// Whether this is a program whose guard puts the console right.
bool IsGuarded();

// Holds back every signal until the process ends by itself; only SIGKILL and the end of the guard
// still end it.
void HoldSignals();

// Holds back every signal while it lives, and knows how those that end a program were handled
// before.
class SignalKeeper {
 public:
  SignalKeeper();
  SignalKeeper(const SignalKeeper&) = delete;
  SignalKeeper& operator=(const SignalKeeper&) = delete;
  ~SignalKeeper();

  // Makes them be handled like that again.
  void PutBack();

 private:
  sigset_t mask_;
  std::array<struct sigaction, 7> actions_;
};

}  // namespace zel
