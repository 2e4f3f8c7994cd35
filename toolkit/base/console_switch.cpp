#include "toolkit/base/console_switch.h"

#include <csignal>

#include "toolkit/base/allegro.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>
#include <allegro/platform/aintlnx.h>

namespace zel {
namespace {

// In the order in which they were sent when both wait: nobody leaves a console before he is there.
constexpr int kSwitches[] = {SIGACQVT, SIGRELVT};

bool OnConsole() { return system_driver && system_driver->id == SYSTEM_LINUX; }

void Mask(int how, int signal) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, signal);
  pthread_sigmask(how, &set, nullptr);
}

}  // namespace

void HoldConsoleSwitches() {
  if (!OnConsole()) return;
  for (const int signal : kSwitches) Mask(SIG_BLOCK, signal);
}

void MakeConsoleSwitches() {
  sigset_t waiting;
  if (!OnConsole() || sigpending(&waiting) != 0) return;
  for (const int signal : kSwitches) {
    if (sigismember(&waiting, signal) != 1) continue;
    // One at a time: the handler forgets the other one when it is interrupted by it.
    Mask(SIG_UNBLOCK, signal);
    Mask(SIG_BLOCK, signal);
  }
}

}  // namespace zel
