#include "toolkit/base/confinement.h"

#include <fcntl.h>
#include <linux/kd.h>
#include <linux/landlock.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "tests/support/temp_files.h"

namespace zel {
namespace {

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

int Error(long result) { return result < 0 ? errno : 0; }
int Call(long call) { return Error(syscall(call, -1, 0, 0, 0, 0, 0)); }
int Open(const std::string& path, int flags) { return Error(open(path.c_str(), flags, 0600)); }

TEST(Confinement, LeavesFewRights) {
  if (geteuid() != 0) GTEST_SKIP() << "only root has rights to lose";
  InChild([] {
    DropRights();
    const char* left =
        "CapInh:\t0000000000000000\nCapPrm:\t000000000400000a\nCapEff:\t000000000400000a\n"
        "CapBnd:\t000000000400000a\nCapAmb:\t0000000000000000\nNoNewPrivs:\t1\n";
    EXPECT_NE(ReadFile("/proc/self/status").find(left), std::string::npos);
  });
}

TEST(Confinement, WritesPlainFilesWhereItMay) {
  if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 1)
    GTEST_SKIP() << "this kernel limits no places";
  const TempDir inside, outside;
  const std::string in = inside.Write("file", "a"), out = outside.Write("file", "a");
  const std::string made = inside.Path("new");
  InChild([&] {
    LimitWriting({inside.Path(), outside.Path("missing")}, {});
    EXPECT_EQ(Open(out, O_WRONLY), 0) << "a result could not be written when it comes";
    LimitWriting({inside.Path()}, {"/dev", "/missing"});
    for (const int permitted : {Open(in, O_WRONLY | O_TRUNC), Open(made, O_RDWR | O_CREAT),
                                Error(rename(made.c_str(), in.c_str())), Open(out, O_RDONLY),
                                Open("/dev/null", O_WRONLY)})
      EXPECT_EQ(permitted, 0);
    LimitWriting({inside.Path()}, {});
    for (const int denied : {Open(out, O_WRONLY), Open(outside.Path("new"), O_RDWR | O_CREAT),
                             Error(unlink(out.c_str())), Error(mkdir(made.c_str(), 0700)),
                             Error(symlink("/", made.c_str())), Open("/dev/null", O_WRONLY)})
      EXPECT_EQ(denied, EACCES);
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
      EXPECT_EQ(Error(ioctl(go[0], static_cast<unsigned long>(request), &byte)),
                request == TCGETS ? ENOTTY : EPERM)
          << request;
    EXPECT_EQ(Error(kill(getppid(), 0)), EPERM);
    EXPECT_EQ(Error(kill(getpid(), 0)), 0);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(Error(fork()), EPERM);
    EXPECT_EQ(Call(SYS_ptrace), EPERM);
#endif
#if defined(__x86_64__)
    EXPECT_EQ(Call(SYS_getpid | 0x40000000), EPERM);  // of the x32 interface
    long result = 20;                                 // getpid, for 32-bit programs
    asm volatile("int $0x80" : "+a"(result)::"memory");
    EXPECT_EQ(result, -EPERM);
#endif
    EXPECT_EQ(write(go[1], &byte, 1), 1);
    elder.join();
    std::thread{[] { EXPECT_EQ(Call(SYS_socket), EPERM); }}.join();
  });
}

}  // namespace
}  // namespace zel
