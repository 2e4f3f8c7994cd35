#include "toolkit/base/confinement.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>

namespace zel {
namespace {

constexpr int kSetExecutableMemory = 65;  // PR_SET_MDWE and
constexpr unsigned long kNeverGains = 1;  // its PR_MDWE_REFUSE_EXEC_GAIN, of Linux 6.3

// Console modes, on a console that is not the controlling terminal; menus and /root that belong to
// others or are closed even to their owner; and replacing others' files in /tmp.
constexpr std::uint64_t kKeptCapabilities =
    1U << CAP_SYS_TTY_CONFIG | 1U << CAP_DAC_OVERRIDE | 1U << CAP_FOWNER;

void LimitCapabilities() {
  for (int capability = 0; prctl(PR_CAPBSET_READ, capability) >= 0; ++capability)
    if ((kKeptCapabilities >> capability & 1) == 0) prctl(PR_CAPBSET_DROP, capability);
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct sets[_LINUX_CAPABILITY_U32S_3] = {};
  if (syscall(SYS_capget, &header, sets) != 0) return;
  const auto permitted = static_cast<unsigned>(sets[0].permitted & kKeptCapabilities);
  sets[0] = {permitted, permitted, 0};
  sets[1] = {};
  syscall(SYS_capset, &header, sets);
}

using Access = std::uint64_t;

constexpr int kWithReferring = 2;  // versions of the kernel's interface
constexpr int kWithTruncating = 3;
constexpr Access kTruncate = Access{1} << 14;  // LANDLOCK_ACCESS_FS_TRUNCATE

constexpr Access kMakeOrRemove =
    LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
    LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK |
    LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;
constexpr Access kPlainFiles = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                               LANDLOCK_ACCESS_FS_MAKE_REG | kTruncate;

// What the kernel can watch of all that is watched.
Access WatchedBy(long version) {
  Access watched = LANDLOCK_ACCESS_FS_WRITE_FILE | kMakeOrRemove;
  if (version >= kWithReferring) watched |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= kWithTruncating) watched |= kTruncate;
  return watched;
}

// The places of one limit.
class Places {
 public:
  explicit Places(Access watched) : watched_{watched} {
    landlock_ruleset_attr attributes{};
    attributes.handled_access_fs = watched;
    rules_ = static_cast<int>(
        syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0));
  }
  Places(const Places&) = delete;
  Places& operator=(const Places&) = delete;
  ~Places() { close(rules_); }

  bool Permit(const std::string& path, Access access) const {
    const int place = open(path.c_str(), O_PATH | O_CLOEXEC);
    landlock_path_beneath_attr rule{};
    rule.allowed_access = access & watched_;
    rule.parent_fd = place;
    const long result =
        syscall(SYS_landlock_add_rule, rules_, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    close(place);
    return result == 0;
  }

  void BecomeTheLimit() const { syscall(SYS_landlock_restrict_self, rules_, 0); }

 private:
  Access watched_;
  int rules_;
};

}  // namespace

void DropRights() {
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  prctl(kSetExecutableMemory, kNeverGains, 0, 0, 0);
  LimitCapabilities();
}

void LimitWriting(const std::vector<std::string>& directories,
                  const std::vector<std::string>& devices) {
  const long version =
      syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (version < 1) return;
  const Places places{WatchedBy(version)};
  for (const std::string& directory : directories)
    if (!places.Permit(directory, kPlainFiles)) return;
  for (const std::string& device : devices) places.Permit(device, LANDLOCK_ACCESS_FS_WRITE_FILE);
  places.BecomeTheLimit();
}

}  // namespace zel
