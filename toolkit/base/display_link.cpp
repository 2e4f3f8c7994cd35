#include "toolkit/base/display_link.h"

#include "toolkit/base/allegro.h"

#ifdef ALLEGRO_WITH_XWINDOWS
#include <poll.h>

#include <atomic>
#include <cstdlib>
// After Allegro itself.
#include <xalleg.h>
#endif

namespace zel {

#ifdef ALLEGRO_WITH_XWINDOWS
namespace {

std::atomic<bool> isOver = false;  // the process ends

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
  if (!_xwin.display || isOver) return;
  // While Allegro holds the pointer in its place, it counts the rounds.
  if (IsToBeSent() || HasCome() || _xwin.mouse_warped != 0) _xwin_private_handle_input();
}

// Xlib ends the process where the server is gone, here while the loop has the connection locked.
// Allegro's shut-down would then wait for its thread, and that for the lock.
void LetGo() {
  XLOCK();
  isOver = true;
  for (int held = _xwin.lock_count; held > 0; --held) XUNLOCK();
}

bool IsLinked() { return _xwin.display && _xwin_input_handler == DoRound; }

}  // namespace

void LinkDisplay() {
  // Another driver of Allegro's may have its own.
  if (!_xwin.display || _xwin_input_handler) return;
  // Called before Allegro's own, which was registered earlier.
  static const bool letsGo = std::atexit(LetGo) == 0;
  if (letsGo) _xwin_input_handler = DoRound;
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
