#include "tools/preview/channel.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace zel {
namespace {

// Before each message: its kind, and the length of its body.
constexpr std::size_t kHead = 1 + sizeof(std::uint32_t);
constexpr std::uint32_t kLongest = 1U << 30;

bool MayTryAgain() { return errno == EAGAIN || errno == EINTR; }

}  // namespace

Channel::Channel(PollLoop& loop, int descriptor) : loop_{loop}, descriptor_{descriptor} { Watch(); }

Channel::~Channel() {
  loop_.Forget(descriptor_);
  close(descriptor_);
}

void Channel::Watch() {
  const auto events = static_cast<short>(out_.empty() ? POLLIN : POLLIN | POLLOUT);
  loop_.Watch(descriptor_, events, [this] { Exchange(); });
}

void Channel::Send(char kind, std::string_view body) {
  const auto length = static_cast<std::uint32_t>(body.size());
  char head[kHead] = {kind};
  std::memcpy(head + 1, &length, sizeof length);
  out_.append(head, kHead).append(body);
  Write();
  Watch();
}

void Channel::Write() {
  std::size_t sent = 0;
  while (sent < out_.size()) {
    const ssize_t count =
        send(descriptor_, out_.data() + sent, out_.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0 && !MayTryAgain()) sent = out_.size();  // reading tells of the end
    if (count < 0) break;
    sent += static_cast<std::size_t>(count);
  }
  out_.erase(0, sent);
}

bool Channel::Read() {
  char block[1 << 16];
  for (;;) {
    const ssize_t count = recv(descriptor_, block, sizeof block, MSG_DONTWAIT);
    if (count < 0 && MayTryAgain()) return true;
    if (count <= 0) return false;
    in_.append(block, static_cast<std::size_t>(count));
  }
}

void Channel::Tell() {
  const std::weak_ptr<bool> alive = alive_;
  std::size_t start = 0;
  while (!alive.expired() && in_.size() - start >= kHead) {
    std::uint32_t length = 0;
    std::memcpy(&length, in_.data() + start + 1, sizeof length);
    if (length > kLongest || in_.size() - start - kHead < length) break;
    const char kind = in_[start];
    const std::string body = in_.substr(start + kHead, length);
    start += kHead + length;
    if (onMessage) onMessage(kind, body);
  }
  if (!alive.expired()) in_.erase(0, start);
}

void Channel::Exchange() {
  const std::weak_ptr<bool> alive = alive_;
  if (!out_.empty()) Write();
  const bool goesOn = Read();
  Tell();
  if (alive.expired()) return;
  if (goesOn) return Watch();
  loop_.Forget(descriptor_);
  if (onEnd) onEnd();
}

bool MakeChannelEnds(int ends[2]) {
  return socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0;
}

int StartProcess(PollLoop& loop, pid_t* process, const std::function<void(int end)>& act) {
  int ends[2];
  if (!MakeChannelEnds(ends)) return -1;
  *process = fork();
  if (*process == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    close(ends[0]);
    loop.CloseAll();
    act(ends[1]);
    _exit(EXIT_SUCCESS);
  }
  close(ends[1]);
  if (*process > 0) return ends[0];
  close(ends[0]);
  return -1;
}

}  // namespace zel
