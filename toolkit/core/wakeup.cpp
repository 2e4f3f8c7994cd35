#include "toolkit/core/wakeup.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace zel {
namespace {

constexpr int kLongestSleep = 100;  // milliseconds

// Readable from WakeLoop until the loop has read it.
const int wakeDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);

}  // namespace

void WakeLoop() {
  const std::uint64_t one = 1;
  // Where it cannot be written it is readable already.
  if (write(wakeDescriptor, &one, sizeof one) < 0) return;
}

void SleepUntilWoken() {
  pollfd wake{wakeDescriptor, POLLIN, 0};
  std::uint64_t calls;
  if (poll(&wake, 1, kLongestSleep) > 0 && read(wakeDescriptor, &calls, sizeof calls) < 0) return;
}

}  // namespace zel
