#include "toolkit/core/console_guard.h"

#include <fcntl.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace zel {
namespace {

constexpr int kNone = -1;
constexpr int kLedsShowLocks = 8;
constexpr char kEmptyScreen[] = "\033[0m\033[H\033[J";

constexpr int kTakenByAllegro[] = {SIGABRT, SIGFPE, SIGILL, SIGSEGV, SIGTERM, SIGINT, SIGQUIT};

bool guarded = false;

// The number of the virtual console behind a descriptor, also behind names like /dev/console.
int ConsoleNumber(int descriptor) {
  int mode = 0;
  unsigned device = 0;
  if (ioctl(descriptor, KDGETMODE, &mode) != 0 || ioctl(descriptor, TIOCGDEV, &device) != 0)
    return kNone;
  return static_cast<int>(device & 0xff);
}

int ControllingConsole() {
  const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
  if (terminal < 0) return kNone;
  const int number = ConsoleNumber(terminal);
  close(terminal);
  return number;
}

// Opens it by its own name, the only one that Allegro knows.
int OpenConsole(int number) {
  char path[32];
  std::snprintf(path, sizeof path, "/dev/tty%d", number);
  return open(path, O_RDWR | O_CLOEXEC | O_NOCTTY);
}

class Console {
 public:
  explicit Console(int descriptor) : descriptor_{descriptor} {
    tcgetattr(descriptor_, &line_);
    ioctl(descriptor_, KDGKBMODE, &keyboard_);
    // A program that was killed together with its guard leaves graphics and codes.
    if (keyboard_ != K_XLATE) keyboard_ = K_UNICODE;
    LeaveGraphics();
  }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  ~Console() { close(descriptor_); }

  void PutRight() const {
    LeaveGraphics();
    ioctl(descriptor_, KDSETLED, kLedsShowLocks);
    tcsetattr(descriptor_, TCSANOW, &line_);
  }

  // Makes it standard input and the controlling terminal of the calling process.
  void TakeOver() const {
    dup2(descriptor_, STDIN_FILENO);
    if (ControllingConsole() == ConsoleNumber(descriptor_)) return;
    setsid();
    ioctl(descriptor_, TIOCSCTTY, 0);
  }

 private:
  void LeaveGraphics() const {
    vt_mode switching{};
    switching.mode = VT_AUTO;
    ioctl(descriptor_, VT_SETMODE, &switching);
    int mode = KD_TEXT;
    if (ioctl(descriptor_, KDGETMODE, &mode) == 0 && mode != KD_TEXT) {
      ioctl(descriptor_, KDSETMODE, KD_TEXT);
      tcflush(descriptor_, TCIFLUSH);  // what was typed are codes
      if (write(descriptor_, kEmptyScreen, sizeof kEmptyScreen - 1) < 0) return;
    }
    ioctl(descriptor_, KDSKBMODE, keyboard_);
  }

  int descriptor_;
  int keyboard_ = K_UNICODE;
  termios line_{};
};

// The end of the child, and what would end the guard.
sigset_t WatchedSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGCHLD);
  sigaddset(&set, SIGHUP);
  for (const int signal : kTakenByAllegro) sigaddset(&set, signal);
  return set;
}

[[noreturn]] void RunChild(int (*program)(), const Console& console, const sigset_t& signals) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  sigprocmask(SIG_SETMASK, &signals, nullptr);
  guarded = true;
  console.TakeOver();
  std::exit(program());
}

// Passes on what would end this process. Answers how the child ended.
int WaitFor(pid_t child, const sigset_t& watched) {
  for (int signal = 0, status = 0;;) {
    sigwait(&watched, &signal);
    if (signal != SIGCHLD) kill(child, signal);
    if (waitpid(child, &status, WNOHANG) != 0) return status;
  }
}

[[noreturn]] void EndBySignal(int signal, const sigset_t& signals) {
  const rlimit none{};
  setrlimit(RLIMIT_CORE, &none);  // the child's core is the one that tells something
  std::signal(signal, SIG_DFL);
  sigprocmask(SIG_SETMASK, &signals, nullptr);
  raise(signal);
  std::_Exit(128 + signal);
}

}  // namespace

int RunGuarded(int (*program)(), void (*cleanUp)()) {
  int number = ConsoleNumber(STDIN_FILENO);
  if (number == kNone) number = ControllingConsole();
  const int descriptor = number == kNone ? kNone : OpenConsole(number);
  if (descriptor < 0) return program();

  const Console console{descriptor};
  const sigset_t watched = WatchedSignals();
  sigset_t blocked = watched, signals;
  sigaddset(&blocked, SIGTTOU);  // so that a guard in the background may put the console right
  std::signal(SIGCHLD, SIG_DFL);
  sigprocmask(SIG_BLOCK, &blocked, &signals);
  const pid_t child = fork();
  if (child == 0) RunChild(program, console, signals);
  if (child < 0) {
    sigprocmask(SIG_SETMASK, &signals, nullptr);
    return program();
  }
  const int status = WaitFor(child, watched);
  console.PutRight();
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  cleanUp();
  EndBySignal(WTERMSIG(status), signals);
}

void LeaveSignalsToGuard() {
  if (!guarded) return;
  for (const int signal : kTakenByAllegro) std::signal(signal, SIG_DFL);
}

}  // namespace zel
