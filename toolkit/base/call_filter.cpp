// Which system calls a confined program may not make any more, and the program for the kernel that
// refuses them. A list of what is denied, not of what is allowed: the libraries that draw, convert
// texts and speak to X make calls that differ from one release to the next.
#include "toolkit/base/confinement.h"

#if defined(__x86_64__) || defined(__i386__)

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/kd.h>
#include <linux/net.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <vector>

namespace zel {
namespace {

#if defined(__x86_64__)
constexpr unsigned kArchitecture = AUDIT_ARCH_X86_64;
#else
constexpr unsigned kArchitecture = AUDIT_ARCH_I386;
#endif

// LeakSanitizer traces the program from a process of its own.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kTraced = true;
#else
constexpr bool kTraced = false;
#endif

constexpr unsigned kRefused = SECCOMP_RET_ERRNO | EPERM;
constexpr unsigned kFirstForeignCall = 0x40000000;  // of the x32 interface

// Numbers of calls that the C library may not know yet; from here on all architectures share them.
constexpr int kSetMountAttributes = 442, kChangeModeAt = 452, kOpenTreeAttributes = 467;
constexpr int kSetAttributeAt = 463, kRemoveAttributeAt = 466, kSetFileAttributes = 469;

// clang-format off
constexpr int kDeniedCalls[] = {
    // programs and processes
    SYS_execve, SYS_execveat, SYS_fork, SYS_vfork,
    // other processes
    SYS_process_vm_readv, SYS_process_vm_writev, SYS_process_madvise, SYS_kcmp, SYS_tkill,
    SYS_rt_sigqueueinfo, SYS_rt_tgsigqueueinfo, SYS_pidfd_open, SYS_pidfd_getfd,
    SYS_pidfd_send_signal,
    // mounts and name spaces
    SYS_mount, SYS_umount2, SYS_pivot_root, SYS_chroot, SYS_unshare, SYS_setns, SYS_open_tree,
    SYS_move_mount, SYS_fsopen, SYS_fsconfig, SYS_fsmount, SYS_fspick, kSetMountAttributes,
    kOpenTreeAttributes,
    // the kernel itself
    SYS_init_module, SYS_finit_module, SYS_delete_module, SYS_kexec_load, SYS_reboot, SYS_bpf,
    SYS_perf_event_open, SYS_userfaultfd, SYS_swapon, SYS_swapoff, SYS_iopl, SYS_ioperm,
    SYS_modify_ldt, SYS_add_key, SYS_request_key, SYS_keyctl,
    // sockets, and the queue that makes other calls unseen
    SYS_socket, SYS_socketpair, SYS_connect, SYS_bind, SYS_listen, SYS_accept4, SYS_io_uring_setup,
    SYS_io_uring_enter, SYS_io_uring_register,
    // what the limit of places does not watch, or not in every kernel
    SYS_chmod, SYS_fchmodat, kChangeModeAt, SYS_chown, SYS_lchown, SYS_fchown, SYS_fchownat,
    SYS_setxattr, SYS_lsetxattr, SYS_fsetxattr, kSetAttributeAt, SYS_removexattr, SYS_lremovexattr,
    SYS_fremovexattr, kRemoveAttributeAt, kSetFileAttributes, SYS_truncate, SYS_open_by_handle_at,
#if defined(__x86_64__)
    SYS_accept, SYS_kexec_file_load,
#else
    SYS_umount, SYS_chown32, SYS_lchown32, SYS_fchown32, SYS_truncate64, SYS_vm86, SYS_vm86old,
#endif
};
// clang-format on

// Calls that one of their arguments decides about.
enum class Denied { kIfEqual, kIfOther, kIfLacking };
struct Choice {
  int call, argument;
  Denied denied;
  unsigned value;
};

constexpr Choice kDeniedArguments[] = {
    // keystrokes for whoever reads the console next: typed, pasted, or put behind a key
    {SYS_ioctl, 1, Denied::kIfEqual, TIOCSTI},
    {SYS_ioctl, 1, Denied::kIfEqual, TIOCLINUX},
    {SYS_ioctl, 1, Denied::kIfEqual, KDSKBENT},
    {SYS_ioctl, 1, Denied::kIfEqual, KDSKBSENT},
#if defined(__i386__)
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_SOCKET},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_SOCKETPAIR},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_CONNECT},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_BIND},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_LISTEN},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_ACCEPT},
    {SYS_socketcall, 0, Denied::kIfEqual, SYS_ACCEPT4},
#endif
};

// A program for the kernel, that answers for each call what becomes of it.
class Filter {
 public:
  Filter() {
    Load(offsetof(seccomp_data, arch));
    ReturnUnless(BPF_JEQ, kArchitecture, kRefused);
    LoadCall();
    if (kArchitecture == AUDIT_ARCH_X86_64) ReturnIf(BPF_JGE, kFirstForeignCall, kRefused);
  }

  void Deny(int call, unsigned answer = kRefused) {
    ReturnIf(BPF_JEQ, static_cast<unsigned>(call), answer);
  }

  void Deny(const Choice& choice) {
    constexpr unsigned char kRest = 4;
    Add({BPF_JMP | BPF_JEQ | BPF_K, 0, kRest, static_cast<unsigned>(choice.call)});
    // The lower half, which comes first; the kernel ignores the upper one.
    Load(offsetof(seccomp_data, args) + static_cast<unsigned>(choice.argument) * sizeof(__u64));
    const unsigned short test = choice.denied == Denied::kIfLacking ? BPF_JSET : BPF_JEQ;
    if (choice.denied == Denied::kIfEqual)
      ReturnIf(test, choice.value, kRefused);
    else
      ReturnUnless(test, choice.value, kRefused);
    LoadCall();
  }

  // For all threads of the process.
  void Install() {
    Return(SECCOMP_RET_ALLOW);
    sock_fprog program{static_cast<unsigned short>(code_.size()), code_.data()};
    // Kernels that think of a filtered program as one of many tenants slow its memory down.
    constexpr unsigned kFlags[] = {SECCOMP_FILTER_FLAG_TSYNC | SECCOMP_FILTER_FLAG_SPEC_ALLOW,
                                   SECCOMP_FILTER_FLAG_TSYNC};
    for (const unsigned flags : kFlags)
      if (syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &program) == 0) return;
  }

 private:
  void Add(const sock_filter& instruction) { code_.push_back(instruction); }
  void Load(unsigned offset) { Add(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset)); }
  void LoadCall() { Load(offsetof(seccomp_data, nr)); }
  void Return(unsigned action) { Add(BPF_STMT(BPF_RET | BPF_K, action)); }
  void ReturnIf(unsigned short test, unsigned value, unsigned action) {
    Add({static_cast<unsigned short>(BPF_JMP | test | BPF_K), 0, 1, value});
    Return(action);
  }
  void ReturnUnless(unsigned short test, unsigned value, unsigned action) {
    Add({static_cast<unsigned short>(BPF_JMP | test | BPF_K), 1, 0, value});
    Return(action);
  }

  std::vector<sock_filter> code_;
};

}  // namespace

void LimitCalls() {
  Filter filter;
  for (const int call : kDeniedCalls) filter.Deny(call);
  for (const Choice& choice : kDeniedArguments) filter.Deny(choice);
  const auto self = static_cast<unsigned>(getpid());
  filter.Deny({SYS_kill, 0, Denied::kIfOther, self});
  filter.Deny({SYS_tgkill, 0, Denied::kIfOther, self});
  if (!kTraced) {
    filter.Deny(SYS_ptrace);
    filter.Deny({SYS_clone, 0, Denied::kIfLacking, CLONE_THREAD});
    // Its arguments are out of sight; without it the C library makes threads by the call before.
    filter.Deny(SYS_clone3, SECCOMP_RET_ERRNO | ENOSYS);
  }
  filter.Install();
}

}  // namespace zel

#else

// Their numbers differ, and nobody has tried others.
void zel::LimitCalls() {}

#endif
