#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fb.h>
#include <linux/kd.h>
#include <linux/landlock.h>
#include <linux/vt.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <string_view>
#include <thread>

#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/confinement.h"
#include "toolkit/base/console_guard.h"
#include "toolkit/base/console_switch.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/process.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/startup.h"
#include "toolkit/testing/fake_machine.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

// A pseudo terminal with the modes of a console, for all processes of a test.
struct FakeConsole {
  long mode = KD_GRAPHICS, keyboard = K_RAW, leds = 0, switching = VT_PROCESS, cleanUps = 0;
  char path[64] = {};
};
static FakeConsole* fakeConsole = nullptr;
static fb_var_screeninfo* fakeFramebuffer = nullptr;

// These stand in for the C library's, which take their last argument as one of many.
extern "C" {
int FakeOpen(const char* path, int flags, int permissions) __asm__("open");
int FakeIoctl(int file, unsigned long request, long argument) __asm__("ioctl");
}

int FakeOpen(const char* path, int flags, int permissions) {
  const bool isConsole = fakeConsole && std::string_view{path}.starts_with("/dev/tty") && path[8];
  const char* const found = isConsole ? fakeConsole->path : path;
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, found, flags, permissions));
}

int FakeIoctl(int file, unsigned long request, long argument) {
  const bool isConsole = fakeConsole && isatty(file);
  const auto get = [argument](long value) {
    return *reinterpret_cast<int*>(argument) = static_cast<int>(value), 0;
  };
  if (isConsole && request == KDGETMODE) return get(fakeConsole->mode);
  if (isConsole && request == KDGKBMODE) return get(fakeConsole->keyboard);
  if (isConsole && request == KDSETMODE) return fakeConsole->mode = argument, 0;
  if (isConsole && request == KDSKBMODE) return fakeConsole->keyboard = argument, 0;
  if (isConsole && request == KDSETLED) return fakeConsole->leds = argument, 0;
  if (isConsole && request == VT_SETMODE)
    return fakeConsole->switching = reinterpret_cast<vt_mode*>(argument)->mode, 0;
  if (fakeFramebuffer && request == FBIOGET_VSCREENINFO)
    return *reinterpret_cast<fb_var_screeninfo*>(argument) = *fakeFramebuffer, 0;
  if (fakeFramebuffer && request == FBIOPUT_VSCREENINFO) return fakeFramebuffer->nonstd - 1;
  return static_cast<int>(syscall(SYS_ioctl, file, request, argument));
}

namespace zel {
namespace {

const std::string kCleared = "\033[0m\033[H\033[J";
int (*programUnderTest)();

void SetEcho(bool isOn) {
  termios line{};
  tcgetattr(STDIN_FILENO, &line);
  line.c_lflag = (line.c_lflag & ~tcflag_t{ECHO}) | (isOn ? ECHO : 0);
  tcsetattr(STDIN_FILENO, TCSANOW, &line);
}

// What a program with a display does to its console.
int SpoilAndRun() {
  if (IsGuarded() && (fakeConsole->mode != KD_TEXT || fakeConsole->switching != VT_AUTO)) return 99;
  fakeConsole->mode = KD_GRAPHICS;
  fakeConsole->keyboard = K_MEDIUMRAW;
  fakeConsole->switching = VT_PROCESS;
  SetEcho(true);
  return programUnderTest();
}

// Runs it on a console, which does not echo, or elsewhere, with a guard that is the first process
// of a system or not: what is shown but for clearing, how the guard and what it leaves behind end,
// how often was cleaned up, and the console after that.
std::string Outcome(int (*program)(), int keyboard, bool onConsole = true, bool isFirst = false) {
  programUnderTest = program;
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  *fakeConsole = {.keyboard = keyboard};
  grantpt(master);
  unlockpt(master);
  ptsname_r(master, fakeConsole->path, sizeof fakeConsole->path);
  std::fflush(stdout);  // or the program's end would do it
  const long guard = isFirst ? syscall(SYS_clone, CLONE_NEWPID | SIGCHLD, 0, 0, 0, 0) : fork();
  if (guard < 0) return close(master), "not permitted";
  if (guard == 0) {
    std::signal(SIGHUP, SIG_DFL);  // nohup has it ignored
    setsid();
    dup2(open(onConsole ? "/dev/tty1" : "/dev/null", O_RDWR | O_NOCTTY), STDIN_FILENO);
    SetEcho(false);
    _exit(RunGuarded(SpoilAndRun, [] { ++fakeConsole->cleanUps; }));
  }
  std::string text;
  for (int status = 0; wait(&status) > 0;)
    text += WIFEXITED(status) ? "exit " + Join(WEXITSTATUS(status))
                              : "signal " + Join(WTERMSIG(status));
  text += Join(fakeConsole->cleanUps, fakeConsole->mode, fakeConsole->keyboard, fakeConsole->leds,
               fakeConsole->switching);
  termios line{};
  tcgetattr(master, &line);
  if (line.c_lflag & ECHO) text += "echoes ";
  std::string shown;
  pollfd output{master, POLLIN, 0};
  for (char part[64]; poll(&output, 1, onConsole ? 1000 : 0) > 0;) {
    const ssize_t length = read(master, part, sizeof part);
    if (length <= 0) break;
    shown.append(part, static_cast<std::size_t>(length));
  }
  close(master);
  for (; shown.starts_with(kCleared); shown.erase(0, kCleared.size())) text += "cleared ";
  return shown + text;
}

TEST(ConsoleGuard, PutsTheConsoleRightWhateverEndsTheProgram) {
  prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
  fakeConsole = static_cast<FakeConsole*>(mmap(nullptr, sizeof(FakeConsole), PROT_READ | PROT_WRITE,
                                               MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  const std::pair<int (*)(), const char*> cases[] = {
      {[] { return IsGuarded() && isatty(open("/dev/tty", O_RDWR)) ? 3 : 4; }, "exit 3 0"},
      {[] { return raise(SIGKILL); }, "signal 9 1"},
      {[] { return kill(getppid(), SIGHUP), pause(); }, "signal 1 1"},
      {[] { return kill(getppid(), SIGWINCH), usleep(1000), 5; }, "exit 5 0"},
      {[] { return kill(getppid(), SIGKILL), pause(); }, "signal 9 signal 64 1"},
      {[] { return raise(SIGHUP); }, "signal 1 2"},
      {[] { return HoldSignals(), raise(SIGTERM), 6; }, "exit 6 0"},
      {[] { return HoldSignals(), kill(getppid(), SIGKILL), pause(); }, "signal 9 signal 64 1"},
      {[]() -> int { dup2(STDIN_FILENO, STDERR_FILENO), EndAtOnce("said "); }, "said exit 1 1"}};
  for (const auto& [program, ends] : cases)
    for (const auto& [before, after] :
         {std::pair{K_XLATE, " 0 1 8 0 cleared cleared "}, {K_RAW, " 0 3 8 0 cleared cleared "}})
      EXPECT_EQ(Outcome(program, before), std::string{ends} + after);
  EXPECT_EQ(Outcome([] { return IsGuarded() ? 4 : 3; }, K_RAW, false), "exit 3 0 1 2 0 1 echoes ")
      << "elsewhere it is just a call";
  const std::string first = Outcome([] { return raise(SIGKILL); }, K_RAW, true, true);
  EXPECT_TRUE(first == "exit 137 1 0 3 8 0 cleared cleared " || first == "not permitted") << first;
  munmap(std::exchange(fakeConsole, nullptr), sizeof(FakeConsole));
  prctl(PR_SET_CHILD_SUBREAPER, 0, 0, 0, 0);
}

TEST(SignalKeeper, HoldsSignalsAndPutsBackHowTheyWereHandled) {
  static int heard = 0;
  static constexpr int kTaken[] = {SIGABRT, SIGFPE, SIGILL, SIGSEGV, SIGTERM, SIGINT, SIGQUIT};
  const auto handle = [](void (*handler)(int)) {
    for (const int signal : kTaken) std::signal(signal, handler);
  };
  handle([](int) { ++heard; });
  {
    SignalKeeper keeper;
    handle(SIG_IGN);
    keeper.PutBack();
    for (const int signal : kTaken) raise(signal);
    EXPECT_EQ(heard, 0);
  }
  EXPECT_EQ(heard, 7);
  handle(SIG_DFL);
}

// What cannot be taken back is done in a process of its own.
template <class Body>
void InChild(Body body) {
  if (const pid_t child = fork(); child == 0) {
    body();
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = -1;
  wait(&status);
  EXPECT_EQ(status, 0);
}

TEST(ConsoleSwitch, WaitsUntilItIsMadeAndNobodyLeavesBeforeHeIsThere) {
  InChild([] {
    static std::string seen;
    FakeMachine machine;
    std::signal(SIGUSR1, [](int) { seen += "leaves "; });  // as Allegro's console driver takes them
    std::signal(SIGUSR2, [](int) { seen += "comes "; });
    for (const int system : {SYSTEM_NONE, SYSTEM_LINUX}) {
      system_driver->id = system;
      HoldConsoleSwitches();
      for (const int signals : {2, 1, 0}) {
        if (signals > 0) raise(SIGUSR1);
        if (signals > 1) raise(SIGUSR2);
        seen += "and ";
        MakeConsoleSwitches();
      }
    }
    EXPECT_EQ(seen, "leaves comes and leaves and and and comes leaves and leaves and ");
  });
}

TEST(Framebuffer, ShowsModesInItsMiddleAndRefusesThoseThatDoNotFit) {
  FakeMachine machine;
  machine.least = {100, 90};
  system_driver->id = AL_ID('L', 'N', 'X', 'C');
  setenv("FRAMEBUFFER", "/dev/null", 1);
  fb_var_screeninfo mode{};
  mode.xres = 100;
  mode.yres = 90;
  mode.bits_per_pixel = 16;
  fakeFramebuffer = &mode;
  constexpr int kModes[][3] = {{64, 64, 16},  {100, 90, 16}, {100, 70, 16}, {9, 90, 16},
                               {101, 90, 16}, {100, 91, 16}, {64, 64, 32},  {64, 64, 12},
                               {80, 70, 16},  {98, 90, 16}};
  std::string seen;
  for (const auto& [w, h, depth] : kModes) {
    seen += SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, w, h, depth) ? "set " : "refused ";
    seen += screen ? Join(screen->x_ofs, screen->y_ofs) : "";
  }
  EXPECT_EQ(
      seen,
      "set 18 13 set 0 0 set 0 10 set 18 0 refused refused refused refused set 10 10 set 1 0 ");
  constexpr int kOther = AL_ID('F', 'A', 'K', 'E');
  for (const int card : {GFX_FBCON, GFX_AUTODETECT, GFX_AUTODETECT_WINDOWED, kOther})
    EXPECT_EQ(SetGraphicsMode(card, 200, 100, 16), card == kOther) << card;
  mode.nonstd = 1;  // it changes its mode as is wished
  EXPECT_TRUE(SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, 200, 100, 32));
  fakeFramebuffer = nullptr;
  EXPECT_TRUE(SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, 200, 100, 8))
      << "nothing is known about it";
  unsetenv("FRAMEBUFFER");
}

TEST(Framebuffer, IsTakenAsItIsByWhatIsToFitIt) {
  InChild([] {
    FakeMachine machine;
    system_driver->id = SYSTEM_LINUX;
    setenv("FRAMEBUFFER", "/dev/null", 1);
    fb_var_screeninfo mode{};
    mode.bits_per_pixel = 16;
    fakeFramebuffer = &mode;
    std::string seen;
    for (const auto& [zoom, w, h] : {std::tuple{"auto", 320u, 200u},
                                     {"auto", 0u, 200u},
                                     {"auto", 320u, 0u},
                                     {"auto", 1u, 1u},
                                     {"2", 320u, 200u}}) {
      mode.xres = w, mode.yres = h;
      settings = {};
      const std::string file = "[Toolkit]\nfullscreen=0\ncolorDepth=32\nzoom=";
      InstallToolkit(TempFile{file + zoom}.Path());
      seen += Join(settings.fullscreen, settings.screenWidth, settings.screenHeight,
                   settings.colorDepth, CurrentZoom());
    }
    EXPECT_EQ(seen, "1 320 200 16 1 0 640 480 32 1 0 640 480 32 1 1 1 1 16 1 0 640 480 32 2 ");
    sigset_t held;
    sigprocmask(SIG_BLOCK, nullptr, &held);
    EXPECT_EQ(sigismember(&held, SIGUSR1), 1) << "switches of the console wait";
  });
}

TEST(Allegro, IsFoundAndKeepsSignalsOnlyForAnUnguardedConsole) {
  InChild([] {
    FakeMachine machine;
    set_config_file("none.cfg");  // which is read again
    static SYSTEM_DRIVER found = *system_driver;
    found.init = [] { return std::signal(SIGTERM, SIG_IGN), 0; };
    std::string seen;
    for (const int id : {0, SYSTEM_LINUX, SYSTEM_XWINDOWS}) {
      _system_driver_list[0] = {id, id != 0 ? &found : nullptr, TRUE};
      _system_driver_list[1].driver = system_driver = nullptr;
      found.id = id;
      found.create_bitmap = nullptr;
      std::signal(SIGTERM, SIG_DFL);
      seen += Join(InstallToolkit(nullptr) == kNoError);
      seen += Join(found.create_bitmap != nullptr, std::signal(SIGTERM, SIG_DFL) == SIG_IGN);
    }
    EXPECT_EQ(seen, "0 0 0 1 1 1 1 1 0 ");
  });
}

int ErrorOf(long result) { return result < 0 ? errno : 0; }
int Call(long call) { return ErrorOf(syscall(call, -1, 0, 0, 0, 0, 0)); }
int Open(const std::string& path, int flags) { return ErrorOf(open(path.c_str(), flags, 0600)); }

TEST(Confinement, LeavesFewRights) {
  if (geteuid() != 0) GTEST_SKIP() << "only root has rights to lose";
  InChild([] {
    DropRights();
    const char* left =
        "CapInh:\t0000000000000000\nCapPrm:\t000000000400000a\nCapEff:\t000000000400000a\n"
        "CapBnd:\t000000000400000a\nCapAmb:\t0000000000000000\nNoNewPrivs:\t1\n";
    EXPECT_NE(ReadFile("/proc/self/status").find(left), std::string::npos);
    constexpr int kGetExecutableMemory = 66;  // PR_GET_MDWE
    EXPECT_NE(prctl(kGetExecutableMemory, 0, 0, 0, 0), 0) << "1, or unknown to the kernel";
  });
}

TEST(Confinement, WritesPlainFilesWhereItMay) {
  const long version =
      syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (version < 1) GTEST_SKIP() << "this kernel limits no places";
  const TempDir inside, outside;
  const std::string in = inside.Write("file", "a"), out = outside.Write("file", "a");
  const std::string made = inside.Path("new");
  InChild([&] {
    LimitWriting({inside.Path(), outside.Path("missing")}, {});
    EXPECT_EQ(Open(out, O_WRONLY), 0) << "a result could not be written when it comes";
    const int unused = dup(STDIN_FILENO);
    close(unused);
    LimitWriting({inside.Path()}, {"/dev", "/missing"});
    EXPECT_EQ(dup(STDIN_FILENO), unused) << "it leaves none open";
    for (const int permitted : {Open(in, O_WRONLY | O_TRUNC), Open(made, O_RDWR | O_CREAT),
                                ErrorOf(rename(made.c_str(), in.c_str())), Open(out, O_RDONLY),
                                Open("/dev/null", O_WRONLY)})
      EXPECT_EQ(permitted, 0);
    LimitWriting({inside.Path()}, {});
    for (const int denied : {Open(out, O_WRONLY), Open(outside.Path("new"), O_RDWR | O_CREAT),
                             ErrorOf(unlink(out.c_str())), ErrorOf(mkdir(made.c_str(), 0700)),
                             ErrorOf(symlink("/", made.c_str())), Open("/dev/null", O_WRONLY)})
      EXPECT_EQ(denied, EACCES);
    EXPECT_EQ(Open(out, O_RDONLY | O_TRUNC), version < 3 ? 0 : EACCES);
    EXPECT_EQ(unlink(in.c_str()), 0);
  });
}

TEST(Confinement, MakesNoDeniedCallInAnyThread) {
  InChild([] {
    int go[2];
    ASSERT_EQ(pipe(go), 0);
    char byte = 'a';
    std::thread elder{[&] {
      EXPECT_EQ(read(go[0], &byte, 1), 1);
      EXPECT_EQ(Call(SYS_execve), EPERM);
    }};
    LimitCalls();
    for (const long call :
         {SYS_execve, SYS_mount, SYS_socket, SYS_bpf, SYS_init_module, SYS_unshare,
          SYS_io_uring_setup, SYS_chmod, SYS_tkill, 442, 452, 463, 466, 467, 469})
      EXPECT_EQ(Call(call), EPERM) << call;
    for (const int request : {TIOCSTI, TIOCLINUX, KDSKBENT, KDSKBSENT, TCGETS})
      EXPECT_EQ(ErrorOf(ioctl(go[0], static_cast<unsigned long>(request), &byte)),
                request == TCGETS ? ENOTTY : EPERM)
          << request;
    EXPECT_EQ(ErrorOf(kill(getppid(), 0)), EPERM);
    EXPECT_EQ(ErrorOf(kill(getpid(), 0)), 0);
    EXPECT_EQ(ErrorOf(syscall(SYS_tgkill, getppid(), getppid(), 0)), EPERM);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(ErrorOf(fork()), EPERM);
    EXPECT_EQ(Call(SYS_ptrace), EPERM);
    EXPECT_EQ(Call(SYS_clone3), ENOSYS) << "so that libraries try the one before";
#endif
#if defined(__x86_64__)
    EXPECT_EQ(Call(SYS_getpid | 0x40000000), EPERM);  // of the x32 interface
    long result = 20;                                 // getpid, for 32-bit programs
    asm volatile("int $0x80" : "+a"(result)::"memory");
    EXPECT_EQ(result, -EPERM);
#endif
    EXPECT_EQ(write(go[1], &byte, 1), 1);
    elder.join();
    std::thread{[] {
      EXPECT_TRUE(Call(SYS_socket) == EPERM && pthread_kill(pthread_self(), 0) == 0);
    }}.join();
  });
}

}  // namespace
}  // namespace zel
