#include "toolkit/base/console_guard.h"

#include <fcntl.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "toolkit/base/process.h"

namespace zel {
namespace {

constexpr int kNone = -1;
constexpr int kLedsShowLocks = 8;
constexpr char kEmptyScreen[] = "\033[0m\033[H\033[J";

constexpr int kTakenByAllegro[] = {SIGABRT, SIGFPE, SIGILL, SIGSEGV, SIGTERM, SIGINT, SIGQUIT};
constexpr int kHarmless[] = {SIGCHLD, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU, SIGURG, SIGWINCH};

// What the child needs when it does its guard's work.
constexpr GuardState& orphan = process.guard;

// The number of the virtual console behind a descriptor, also behind names like /dev/console.
int ConsoleNumber(int descriptor) {
  int mode;
  unsigned device;
  if (ioctl(descriptor, KDGETMODE, &mode) != 0 || ioctl(descriptor, TIOCGDEV, &device) != 0)
    return kNone;
  return static_cast<int>(device & 0xff);
}

int ControllingConsole() {
  const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
  const int number = ConsoleNumber(terminal);
  close(terminal);
  return number;
}

}  // namespace

class GuardedConsole {
 public:
  // Opens it by its own name, the only one that Allegro knows.
  explicit GuardedConsole(int number) {
    std::snprintf(path_, sizeof path_, "/dev/tty%d", number);
    descriptor_ = Open();
    if (!IsOpen()) return;
    tcgetattr(descriptor_, &line_);
    ioctl(descriptor_, KDGKBMODE, &keyboard_);
    // A program that was killed together with its guard leaves graphics and codes.
    if (keyboard_ != K_XLATE) keyboard_ = K_UNICODE;
    LeaveGraphics();
  }
  GuardedConsole(const GuardedConsole&) = delete;
  GuardedConsole& operator=(const GuardedConsole&) = delete;
  ~GuardedConsole() { close(descriptor_); }

  bool IsOpen() const { return descriptor_ >= 0; }

  // Only calls that a signal handler may make. The end of the session's leader hangs up every
  // descriptor of the terminal; then a new one is used.
  void PutRight() {
    if (TryPutRight()) return;
    const int anew = Open();
    dup3(anew, descriptor_, O_CLOEXEC);
    close(anew);
    TryPutRight();
  }

  // Makes it standard input and the controlling terminal of the calling process.
  void TakeOver() const {
    dup2(descriptor_, STDIN_FILENO);
    if (ControllingConsole() == ConsoleNumber(descriptor_)) return;
    setsid();
    ioctl(descriptor_, TIOCSCTTY, 0);
  }

 private:
  bool TryPutRight() const {
    LeaveGraphics();
    ioctl(descriptor_, KDSETLED, kLedsShowLocks);
    return tcsetattr(descriptor_, TCSANOW, &line_) == 0;
  }

  int Open() const { return open(path_, O_RDWR | O_CLOEXEC | O_NOCTTY); }

  void LeaveGraphics() const {
    vt_mode switching{};
    switching.mode = VT_AUTO;
    ioctl(descriptor_, VT_SETMODE, &switching);
    int mode = KD_TEXT;
    ioctl(descriptor_, KDGETMODE, &mode);
    if (mode != KD_TEXT) {
      ioctl(descriptor_, KDSETMODE, KD_TEXT);
      tcflush(descriptor_, TCIFLUSH);  // what was typed are codes
      [[maybe_unused]] const ssize_t cleared =
          write(descriptor_, kEmptyScreen, sizeof kEmptyScreen - 1);
    }
    ioctl(descriptor_, KDSKBMODE, keyboard_);
  }

  char path_[32];
  int descriptor_;
  int keyboard_ = K_UNICODE;
  termios line_{};
};

namespace {

// Tells the child of the guard's end. Nothing else uses it.
int GuardEnded() { return SIGRTMAX; }

// Does in a signal handler what the guard can do no longer.
void EndAsOrphan(int signal) {
  orphan.cleanUp();
  orphan.console->PutRight();
  raise(signal);
}

sigset_t AllSignals() {
  sigset_t set;
  sigfillset(&set);
  return set;
}

// Whether a signal would have ended this process.
bool Ends(int signal) {
  if (std::find(std::begin(kHarmless), std::end(kHarmless), signal) != std::end(kHarmless))
    return false;
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler != SIG_IGN;
}

// Makes this process do its guard's work when it has none any more. The end of the session, which
// may follow that of the guard, comes as another signal and must not forestall it.
void WatchGuard(pid_t guard) {
  struct sigaction action {};
  action.sa_handler = EndAsOrphan;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  action.sa_mask = AllSignals();
  sigdelset(&action.sa_mask, GuardEnded());
  sigdelset(&action.sa_mask, SIGHUP);
  sigaction(GuardEnded(), &action, nullptr);
  if (Ends(SIGHUP)) sigaction(SIGHUP, &action, nullptr);
  prctl(PR_SET_PDEATHSIG, GuardEnded());
  if (getppid() != guard) raise(GuardEnded());  // it ended before it could be asked for
}

[[noreturn]] void RunChild(int (*program)(), pid_t guard, const sigset_t& signals) {
  WatchGuard(guard);
  std::signal(SIGTERM, SIG_DFL);
  sigprocmask(SIG_SETMASK, &signals, nullptr);
  orphan.isGuarded = true;
  orphan.console->TakeOver();
  std::exit(program());
}

struct ChildEnd {
  int status;  // as the system tells it
  int signal;  // of the guard, that ended the child instead; 0 for none
};

// Ends the child when a signal would end this process. The child gets another one: it uses some
// signals itself.
ChildEnd WaitFor(pid_t child) {
  const sigset_t all = AllSignals();
  for (int asked = 0;;) {
    int signal, status;
    sigwait(&all, &signal);
    if (Ends(signal)) {
      if (asked == 0) asked = signal;
      kill(child, SIGTERM);
    }
    if (waitpid(child, &status, WNOHANG) == 0) continue;
    const bool obeyed = WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM;
    return {status, obeyed ? asked : 0};
  }
}

[[noreturn]] void EndBySignal(int signal, const sigset_t& signals) {
  const rlimit none{};
  setrlimit(RLIMIT_CORE, &none);  // the child's core is the one that tells something
  std::signal(signal, SIG_DFL);
  sigprocmask(SIG_SETMASK, &signals, nullptr);
  raise(signal);
  std::_Exit(128 + signal);  // the first process of a system survives
}

}  // namespace

int RunGuarded(int (*program)(), void (*cleanUp)()) {
  orphan.cleanUp = cleanUp;
  int number = ConsoleNumber(STDIN_FILENO);
  if (number == kNone) number = ControllingConsole();
  if (number == kNone) return program();
  GuardedConsole console{number};
  if (!console.IsOpen()) return program();

  orphan.console = &console;
  std::signal(SIGCHLD, SIG_DFL);
  sigset_t signals;
  const sigset_t all = AllSignals();
  sigprocmask(SIG_BLOCK, &all, &signals);
  const pid_t guard = getpid(), child = fork();
  if (child == 0) RunChild(program, guard, signals);
  if (child < 0) {
    sigprocmask(SIG_SETMASK, &signals, nullptr);
    return program();
  }
  const ChildEnd end = WaitFor(child);
  if (WIFSIGNALED(end.status)) cleanUp();
  console.PutRight();
  if (WIFEXITED(end.status)) return WEXITSTATUS(end.status);
  EndBySignal(end.signal != 0 ? end.signal : WTERMSIG(end.status), signals);
}

void EndAtOnce(const char* message) {
  if (orphan.cleanUp) orphan.cleanUp();
  if (orphan.isGuarded) orphan.console->PutRight();
  [[maybe_unused]] const ssize_t said = write(STDERR_FILENO, message, std::strlen(message));
  std::_Exit(EXIT_FAILURE);
}

bool IsGuarded() { return orphan.isGuarded; }

void HoldSignals() {
  sigset_t held = AllSignals();
  if (orphan.isGuarded) sigdelset(&held, GuardEnded());
  sigprocmask(SIG_BLOCK, &held, nullptr);
}

SignalKeeper::SignalKeeper() {
  static_assert(std::size(kTakenByAllegro) == std::tuple_size_v<decltype(actions_)>);
  const sigset_t all = AllSignals();
  sigprocmask(SIG_BLOCK, &all, &mask_);
  auto action = actions_.begin();
  for (const int signal : kTakenByAllegro) sigaction(signal, nullptr, &*action++);
}

void SignalKeeper::PutBack() {
  auto action = actions_.cbegin();
  for (const int signal : kTakenByAllegro) sigaction(signal, &*action++, nullptr);
}

SignalKeeper::~SignalKeeper() { sigprocmask(SIG_SETMASK, &mask_, nullptr); }

}  // namespace zel
