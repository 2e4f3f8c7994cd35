#include "text/terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <new>

#include "launcher/result_files.h"
#include "text/state.h"
#include "toolkit/base/console_guard.h"

namespace zel {
namespace {

constexpr int kEnding[] = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM, SIGPIPE, SIGALRM, SIGUSR1, SIGUSR2,
                           SIGSEGV, SIGABRT, SIGBUS,  SIGFPE,  SIGILL,  SIGXCPU, SIGXFSZ, SIGSYS};

// Says that the full screen is left, unless the terminal takes nothing: the end must not wait for
// it.
void Leave() {
  constexpr int kLongest = 1000;  // milliseconds
  pollfd output{STDOUT_FILENO, POLLOUT, 0};
  if (poll(&output, 1, kLongest) < 1) return;
  [[maybe_unused]] const ssize_t count =
      write(STDOUT_FILENO, textState.leaving, textState.leavingSize);
}

void PutBack() {
  if (textState.hasModes) {
    // What Ctrl+S has stopped goes on.
    termios modes = textState.modes;
    modes.c_iflag &= ~static_cast<tcflag_t>(IXON);
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
  }
  if (textState.leavingSize != 0) Leave();
  if (textState.hasModes) tcsetattr(STDIN_FILENO, TCSANOW, &textState.modes);
}

[[noreturn]] void EndForLackOfMemory() {
  PutBack();
  EndAtOnce("zel-text: out of memory\n");
}

void EndBySignal(int signal) {
  DeleteOutputFile();
  PutBack();
  std::signal(signal, SIG_DFL);
  raise(signal);
}

sigset_t ResizeOnly() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGWINCH);
  return set;
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = signal == SIGWINCH ? 0 : SA_NODEFER;
  sigaction(signal, &action, nullptr);
}

}  // namespace

Terminal::Terminal() {
  textState.leavingSize = 0;
  textState.hasModes = tcgetattr(STDIN_FILENO, &textState.modes) == 0;
  for (const int signal : kEnding) Handle(signal, EndBySignal);
  std::set_new_handler(EndForLackOfMemory);
  // Only Wait may be interrupted.
  const sigset_t resize = ResizeOnly();
  sigprocmask(SIG_BLOCK, &resize, nullptr);
  Handle(SIGWINCH, [](int) { textState.isResized = 1; });
  // A background process that has a console of its own to write to must not stop.
  std::signal(SIGTTOU, SIG_IGN);
  if (!textState.hasModes) return;
  termios modes = textState.modes;
  modes.c_lflag &= static_cast<tcflag_t>(~ISIG);
  // None of them in the moment either in which curses takes signals from keys again.
  for (const int key : {VINTR, VQUIT, VSUSP, VEOF}) modes.c_cc[key] = _POSIX_VDISABLE;
  // Serial terminals may need it that Ctrl+S stops what is shown. Who presses it by mistake presses
  // any key then.
  modes.c_iflag |= IXANY;
  tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

Terminal::~Terminal() {
  textState.leavingSize = 0;
  PutBack();
}

void Terminal::LeaveWith(const std::string& text) {
  textState.leavingSize = 0;
  textState.leaving = text.c_str();
  textState.leavingSize = text.size();
}

Terminal::Event Terminal::Wait(std::int64_t milliseconds) {
  constexpr std::int64_t kSecond = 1000, kNanoseconds = 1000000;
  milliseconds = std::max<std::int64_t>(milliseconds, 0);
  const timespec limit{static_cast<time_t>(milliseconds / kSecond),
                       static_cast<long>(milliseconds % kSecond * kNanoseconds)};
  sigset_t mask;
  sigprocmask(SIG_BLOCK, nullptr, &mask);
  sigdelset(&mask, SIGWINCH);
  pollfd input{STDIN_FILENO, POLLIN, 0};
  const int count = ppoll(&input, 1, &limit, &mask);
  if (textState.isResized != 0) {
    textState.isResized = 0;
    return Event::kResized;
  }
  if (count == 0 || (count < 0 && errno == EINTR)) return Event::kNone;
  if (count < 0) return Event::kGone;
  // What was typed before a hang-up is nothing that somebody could still see the answer of; from a
  // pipe it is.
  if (input.revents & (POLLERR | POLLNVAL)) return Event::kGone;
  if (textState.hasModes && (input.revents & POLLHUP)) return Event::kGone;
  return Event::kInput;
}

bool Terminal::Write(const std::string& text) {
  for (std::size_t start = 0; start < text.size();) {
    const ssize_t count = write(STDOUT_FILENO, text.data() + start, text.size() - start);
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) start += static_cast<std::size_t>(count);
  }
  return true;
}

Terminal::Size Terminal::GetSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return {};
  return {size.ws_col, size.ws_row};
}

}  // namespace zel
