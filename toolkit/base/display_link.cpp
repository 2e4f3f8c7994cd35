#include "toolkit/base/display_link.h"

#include "toolkit/base/allegro.h"

#ifdef ALLEGRO_WITH_XWINDOWS
#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "toolkit/base/process.h"
// After Allegro itself.
#include <xalleg.h>
#endif

namespace zel {

#ifdef ALLEGRO_WITH_XWINDOWS
namespace {

bool IsToBeSent() {
  return NextRequest(_xwin.display) != LastKnownRequestProcessed(_xwin.display) + 1;
}

bool HasCome() {
  if (QLength(_xwin.display) > 0) return true;
  pollfd server{ConnectionNumber(_xwin.display), POLLIN, 0};
  return poll(&server, 1, 0) > 0;
}

// One round, with the connection locked: in Allegro's thread, or in the loop.
void DoRound() {
  if (!_xwin.display) return;
  // While Allegro holds the pointer in its place, it counts the rounds.
  if (IsToBeSent() || HasCome() || _xwin.mouse_warped != 0) _xwin_private_handle_input();
}

// Xlib would go through exit() here, in whichever thread has the connection locked: Allegro's
// shut-down would wait for the other one, and that for the lock.
[[noreturn]] void EndAtOnce(std::string_view message) {
  if (process.onDisplayLost) process.onDisplayLost();
  if (write(STDERR_FILENO, message.data(), message.size()) < 0) _exit(EXIT_FAILURE);
  _exit(EXIT_FAILURE);
}

int OnServerGone(Display*) { EndAtOnce("The X server is gone.\n"); }
int OnProtocolError(Display*, XErrorEvent*) { EndAtOnce("The X server refuses a request.\n"); }

// Of the library that Allegro has brought along.
void EndWithTheServer() {
  if (void* set = dlsym(RTLD_DEFAULT, "XSetIOErrorHandler"))
    reinterpret_cast<decltype(&XSetIOErrorHandler)>(set)(OnServerGone);
  if (void* set = dlsym(RTLD_DEFAULT, "XSetErrorHandler"))
    reinterpret_cast<decltype(&XSetErrorHandler)>(set)(OnProtocolError);
}

bool IsLinked() { return _xwin.display && _xwin_input_handler == DoRound; }

}  // namespace

void LinkDisplay() {
  // Another driver of Allegro's may have its own.
  if (!_xwin.display || _xwin_input_handler) return;
  EndWithTheServer();
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
