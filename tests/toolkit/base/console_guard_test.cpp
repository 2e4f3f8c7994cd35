#include "toolkit/base/console_guard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fb.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "tests/support/reference.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/testing/fake_machine.h"

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

int (*programUnderTest)();

// What a program with a display does to its console.
int SpoilAndRun() {
  fakeConsole->mode = KD_GRAPHICS;
  fakeConsole->keyboard = K_MEDIUMRAW;
  fakeConsole->switching = VT_PROCESS;
  return programUnderTest();
}

// Runs it on a console or elsewhere: how the guard and what it leaves behind end, how often was
// cleaned up, and the console after that.
std::string Outcome(int (*program)(), int keyboard, bool onConsole = true) {
  programUnderTest = program;
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  *fakeConsole = {.keyboard = keyboard};
  grantpt(master);
  unlockpt(master);
  ptsname_r(master, fakeConsole->path, sizeof fakeConsole->path);
  std::fflush(stdout);  // or the program's end would do it
  if (fork() == 0) {
    setsid();
    dup2(open(onConsole ? "/dev/tty1" : "/dev/null", O_RDWR | O_NOCTTY), STDIN_FILENO);
    _exit(RunGuarded(SpoilAndRun, [] { ++fakeConsole->cleanUps; }));
  }
  std::string text;
  for (int status = 0; wait(&status) > 0;)
    text += WIFEXITED(status) ? "exit " + Join(WEXITSTATUS(status))
                              : "signal " + Join(WTERMSIG(status));
  text += Join(fakeConsole->cleanUps, fakeConsole->mode, fakeConsole->keyboard, fakeConsole->leds,
               fakeConsole->switching);
  char shown[64] = {};
  pollfd output{master, POLLIN, 0};
  if (poll(&output, 1, onConsole ? 1000 : 0) > 0 && read(master, shown, sizeof shown - 1) > 0)
    text += std::string_view{shown}.starts_with("\033[0m\033[H\033[J") ? "cleared" : shown;
  close(master);
  return text;
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
      {[]() -> int { dup2(STDIN_FILENO, STDERR_FILENO), EndAtOnce("message"); }, "exit 1 1"}};
  for (const auto& [program, ends] : cases)
    for (const auto& [before, after] :
         {std::pair{K_XLATE, " 0 1 8 0 cleared"}, {K_RAW, " 0 3 8 0 cleared"}})
      EXPECT_EQ(Outcome(program, before), std::string{ends} + after);
  EXPECT_EQ(Outcome([] { return IsGuarded() ? 4 : 3; }, K_RAW, false), "exit 3 0 1 2 0 1 ")
      << "elsewhere it is just a call";
  munmap(std::exchange(fakeConsole, nullptr), sizeof(FakeConsole));
  prctl(PR_SET_CHILD_SUBREAPER, 0, 0, 0, 0);
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
                               {101, 90, 16}, {100, 91, 16}, {64, 64, 32},  {64, 64, 12}};
  std::string seen;
  for (const auto& [w, h, depth] : kModes) {
    seen += SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, w, h, depth) ? "set " : "refused ";
    seen += screen ? Join(screen->x_ofs, screen->y_ofs) : "";
  }
  EXPECT_EQ(seen, "set 18 13 set 0 0 set 0 10 set 18 0 refused refused refused refused ");
  mode.nonstd = 1;  // it changes its mode as is wished
  EXPECT_TRUE(SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, 200, 100, 32));
  fakeFramebuffer = nullptr;
  EXPECT_TRUE(SetGraphicsMode(GFX_AUTODETECT_FULLSCREEN, 200, 100, 8))
      << "nothing is known about it";
  unsetenv("FRAMEBUFFER");
}

}  // namespace
}  // namespace zel
