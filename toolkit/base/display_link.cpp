#include "toolkit/base/display_link.h"

#include "toolkit/base/allegro.h"

#ifdef ALLEGRO_WITH_XWINDOWS
#include <dlfcn.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "toolkit/base/process.h"
// After Allegro itself.
#include <xalleg.h>

#include <X11/XKBlib.h>

// Exported, but in none of the headers that are installed.
extern "C" void _xwin_keyboard_handler(XKeyEvent* event, int isFromDga);
#endif

namespace zel {

#ifdef ALLEGRO_WITH_XWINDOWS
// Of the library that Allegro has brought along.
struct DisplayCalls {
  decltype(&XFlush) flush;
  decltype(&XEventsQueued) eventsQueued;
  decltype(&XPeekEvent) peekEvent;
  decltype(&XNextEvent) nextEvent;
  decltype(&XSetIOErrorHandler) setIoErrorHandler;
  decltype(&XSetErrorHandler) setErrorHandler;
  decltype(&XkbSetDetectableAutoRepeat) setDetectableAutoRepeat;
  unsigned long firstUnsent;  // the number of the first request that may not be on its way yet
  bool roundsAreRare;         // those of Allegro's thread
  bool leavesOutReleases;     // the server, while a key is held
};

namespace {

constexpr int kMostRounds = 100;  // at once, against a server that never stops

template <class Function>
bool Find(Function*& function, const char* name) {
  function = reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
  return function != nullptr;
}

bool FindCalls(DisplayCalls& calls) {
  return Find(calls.flush, "XFlush") && Find(calls.eventsQueued, "XEventsQueued") &&
         Find(calls.peekEvent, "XPeekEvent") && Find(calls.nextEvent, "XNextEvent") &&
         Find(calls.setIoErrorHandler, "XSetIOErrorHandler") &&
         Find(calls.setErrorHandler, "XSetErrorHandler") &&
         Find(calls.setDetectableAutoRepeat, "XkbSetDetectableAutoRepeat");
}

// True when there were any.
bool SendRequests(DisplayCalls& calls) {
  if (NextRequest(_xwin.display) == calls.firstUnsent) return false;
  calls.flush(_xwin.display);
  calls.firstUnsent = NextRequest(_xwin.display);
  return true;
}

// Asks the kernel alone, which costs less than Xlib's look at the connection.
bool HasCome() {
  pollfd server{ConnectionNumber(_xwin.display), POLLIN, 0};
  return QLength(_xwin.display) > 0 || poll(&server, 1, 0) > 0;
}

// A held key comes as releases and presses of the same moment where the server cannot leave out the
// releases; only the presses count.
bool IsOfRepeat(const DisplayCalls& calls, const XKeyEvent& release) {
  if (QLength(_xwin.display) == 0) return false;
  XEvent next;
  calls.peekEvent(_xwin.display, &next);
  return next.type == KeyPress && next.xkey.keycode == release.keycode &&
         next.xkey.time == release.time;
}

// Has Allegro handle the keys at the head of the queue.
void TakeKeys(const DisplayCalls& calls) {
  while (QLength(_xwin.display) > 0) {
    XEvent event;
    calls.peekEvent(_xwin.display, &event);
    if (event.type != KeyPress && event.type != KeyRelease) return;
    calls.nextEvent(_xwin.display, &event);
    if (event.type == KeyPress || !IsOfRepeat(calls, event.xkey))
      _xwin_keyboard_handler(&event.xkey, FALSE);
  }
}

// Lets the rounds of Allegro's thread come up to 20 ms later than it asks for, and with them the
// few times that it wakes for each: the loop takes at once what the server sends.
void MakeRoundsRare(DisplayCalls& calls) {
  constexpr unsigned long kNanoseconds = 20'000'000;
  if (calls.roundsAreRare || gettid() == getpid()) return;
  prctl(PR_SET_TIMERSLACK, kNanoseconds, 0, 0, 0);
  calls.roundsAreRare = true;
}

// The pairs of a repeat may come apart, and a release alone looks like one.
void LeaveOutReleases(DisplayCalls& calls) {
  if (!std::exchange(calls.leavesOutReleases, true))
    calls.setDetectableAutoRepeat(_xwin.display, True, nullptr);
}

// One round, with the connection locked: in Allegro's thread, or in the loop. Allegro's own one
// waits until the server has answered.
void DoRound() {
  if (!_xwin.display) return;
  DisplayCalls& calls = *process.displayCalls;
  MakeRoundsRare(calls);
  LeaveOutReleases(calls);
  // Sending reads, too.
  if (!SendRequests(calls) && HasCome()) calls.eventsQueued(_xwin.display, QueuedAfterReading);
  TakeKeys(calls);
  // While Allegro holds the pointer in its place, it counts the rounds.
  if (QLength(_xwin.display) > 0 || _xwin.mouse_warped != 0) _xwin_private_handle_input();
  // It takes a few events in each, and the rest would wake nobody.
  for (int i = 0; i < kMostRounds && QLength(_xwin.display) > 0; ++i) {
    TakeKeys(calls);
    _xwin_private_handle_input();
  }
}

// Xlib would go through exit() here, in whichever thread has the connection locked: Allegro's
// shut-down would wait for the other one, and that for the lock.
[[noreturn]] void EndWithoutDisplay(const char* message) {
  if (process.onDisplayLost) process.onDisplayLost();
  EndAtOnce(message);
}

int OnServerGone(Display*) { EndWithoutDisplay("The X server is gone.\n"); }
int OnProtocolError(Display*, XErrorEvent*) {
  EndWithoutDisplay("The X server refuses a request.\n");
}

bool IsLinked() { return _xwin.display && _xwin_input_handler == DoRound; }

}  // namespace

void LinkDisplay() {
  // Another driver of Allegro's may have its own.
  if (!_xwin.display || _xwin_input_handler) return;
  if (!process.displayCalls) process.displayCalls = new DisplayCalls{};
  DisplayCalls& calls = *process.displayCalls;
  if (!FindCalls(calls)) return;
  calls.setIoErrorHandler(OnServerGone);
  calls.setErrorHandler(OnProtocolError);
  calls.roundsAreRare = calls.leavesOutReleases = false;
  _xwin_input_handler = DoRound;
}

int DisplayDescriptor() { return IsLinked() ? ConnectionNumber(_xwin.display) : -1; }

void TalkToDisplay() {
  if (IsLinked()) _xwin_handle_input();
}
#else
void LinkDisplay() {}
int DisplayDescriptor() { return -1; }
void TalkToDisplay() {}
#endif

}  // namespace zel
