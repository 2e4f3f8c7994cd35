#include "launcher/plain_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace zel {
namespace {

constexpr mode_t kFileMode = 0644;
constexpr std::string_view kTemporary = ".zel-XXXXXX";
constexpr int kSafely = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

bool IsPlain(const struct stat& status) { return S_ISREG(status.st_mode) && status.st_nlink <= 1; }

// A link that another user has moved here, or given a second name, is not trusted.
bool IsOwnLink(const struct stat& status) {
  return S_ISLNK(status.st_mode) && status.st_uid == geteuid() && status.st_nlink <= 1;
}

enum class Owner { kAny, kSelf };

class Descriptor {
 public:
  explicit Descriptor(int number) : number_{number} {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Get() const { return number_; }

  bool IsPlainFile(Owner owner) const {
    struct stat status;
    return fstat(number_, &status) == 0 && IsPlain(status) &&
           (owner == Owner::kAny || status.st_uid == geteuid());
  }

 private:
  int number_;
};

bool WriteAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(file, text.data(), text.size());
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::string Read(const char* path, std::size_t limit, Owner owner) {
  const Descriptor file{open(path, O_RDONLY | kSafely)};
  if (!file.IsPlainFile(owner)) return {};
  std::string text;
  char block[4096];
  while (const std::size_t room = std::min(sizeof block, limit - text.size())) {
    const ssize_t count = read(file.Get(), block, room);
    if (count <= 0) break;
    text.append(block, static_cast<std::size_t>(count));
  }
  return text;
}

// Whether `name` is that of a temporary file for the file `base`.
bool IsTemporary(std::string_view name, std::string_view base) {
  const std::string temporary = std::string{base} + std::string{kTemporary};
  const std::size_t fixed = temporary.find_last_not_of('X') + 1;
  return name.size() == temporary.size() && name.substr(0, fixed) == temporary.substr(0, fixed);
}

}  // namespace

std::string ReadPlainFile(const char* path, std::size_t limit) {
  return Read(path, limit, Owner::kAny);
}

std::string ReadOwnFile(const char* path, std::size_t limit) {
  return Read(path, limit, Owner::kSelf);
}

std::string BehindOwnLinks(const char* path) {
  constexpr int kMostLinks = 8;
  std::string name = path;
  for (int i = 0; i < kMostLinks; ++i) {
    // What is looked at is what is followed, whatever happens to the name meanwhile.
    const Descriptor link{open(name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC)};
    struct stat status;
    if (fstat(link.Get(), &status) != 0 || !IsOwnLink(status)) break;
    char target[4096];
    const ssize_t length = readlinkat(link.Get(), "", target, sizeof target);
    if (length <= 0) break;
    const bool isAbsolute = target[0] == '/';
    name.resize(isAbsolute ? 0 : name.rfind('/') + 1);  // 0 where there is no slash
    name.append(target, static_cast<std::size_t>(length));
  }
  return name;
}

FileStamp StampOf(const char* path) {
  struct stat status;
  if (lstat(path, &status) != 0) return {};
  return {status.st_size, status.st_dev, status.st_ino, status.st_ctim.tv_sec,
          status.st_ctim.tv_nsec};
}

int WritePlainFile(const char* path, const std::string& text) {
  std::string temporary = path + std::string{kTemporary};
  const Descriptor file{mkostemp(temporary.data(), O_CLOEXEC)};
  if (file.Get() < 0) return errno;
  // The name is replaced, never followed.
  if (WriteAll(file.Get(), text) && fchmod(file.Get(), kFileMode) == 0 &&
      rename(temporary.c_str(), path) == 0)
    return 0;
  const int error = errno;
  unlink(temporary.c_str());
  return error;
}

void RemoveTemporaryFiles(const char* path) {
  const std::string_view file{path};
  const std::size_t start = file.rfind('/') + 1;  // 0 where there is no slash
  const std::string_view base = file.substr(start);
  const std::string parent{start == 0 ? "." : file.substr(0, start)};
  const std::unique_ptr<DIR, int (*)(DIR*)> directory{opendir(parent.c_str()), closedir};
  if (!directory) return;
  const int place = dirfd(directory.get());
  while (const dirent* entry = readdir(directory.get())) {
    struct stat status;
    if (IsTemporary(entry->d_name, base) &&
        fstatat(place, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && IsPlain(status) &&
        status.st_uid == geteuid())
      unlinkat(place, entry->d_name, 0);
  }
}

}  // namespace zel
