#include "toolkit/base/wakeup.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <iterator>

#include "toolkit/base/display_link.h"
#include "toolkit/base/input.h"
#include "toolkit/base/process.h"

namespace zel {
namespace {

constexpr int kLongestSleep = 100;  // milliseconds

constexpr int kShortestSleep = 1;  // where nothing can wake

// Never one of the standard ones, which a console takes the place of where they are closed.
int MakeWakeDescriptor() {
  const int made = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (made < 0 || made > STDERR_FILENO) return made;
  const int moved = fcntl(made, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(made);
  return moved;
}

// Readable from WakeLoop until the loop has read it.
const int wakeDescriptor = MakeWakeDescriptor();

}  // namespace

void WakeLoop() {
  // The loop looks for what there is after it has stopped taking, or this sees that it has.
  std::atomic_thread_fence(std::memory_order_seq_cst);
  if (process.isTakingInput) return;
  const std::uint64_t one = 1;
  // Where it cannot be written it is readable already.
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &one, sizeof one);
}

void SleepUntilWoken() {
  bool& listens = process.listensToDisplay;
  pollfd watched[] = {{wakeDescriptor, POLLIN, 0}, {listens ? DisplayDescriptor() : -1, POLLIN, 0}};
  poll(watched, std::size(watched), wakeDescriptor < 0 ? kShortestSleep : kLongestSleep);
  if (watched[1].revents != 0) {
    process.isTakingInput = true;
    TalkToDisplay();
    process.isTakingInput = false;
    listens = InputWaits();
  }
  std::uint64_t calls;
  if (watched[0].revents != 0 && read(wakeDescriptor, &calls, sizeof calls) > 0) listens = true;
}

}  // namespace zel
