#include "launcher/plain_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace zel {
namespace {

constexpr mode_t kFileMode = 0644;
constexpr int kSafely = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

bool IsPlain(const struct stat& status) { return S_ISREG(status.st_mode) && status.st_nlink <= 1; }

// A link that another user has moved here, or given a second name, is not trusted.
bool IsOwnLink(const struct stat& status) {
  return S_ISLNK(status.st_mode) && status.st_uid == geteuid() && status.st_nlink <= 1;
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_{number} {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Get() const { return number_; }

  bool IsPlainFile() const {
    struct stat status;
    return number_ >= 0 && fstat(number_, &status) == 0 && IsPlain(status);
  }

 private:
  int number_;
};

bool WriteAll(int file, const std::string& text) {
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t count = write(file, text.data() + written, text.size() - written);
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

std::string ReadPlainFile(const char* path, std::size_t limit) {
  const Descriptor file{open(path, O_RDONLY | kSafely)};
  if (!file.IsPlainFile()) return {};
  std::string text;
  char block[4096];
  while (text.size() < limit) {
    const ssize_t count = read(file.Get(), block, std::min(sizeof block, limit - text.size()));
    if (count <= 0) break;
    text.append(block, static_cast<std::size_t>(count));
  }
  return text;
}

std::string BehindOwnLinks(const char* path) {
  constexpr int kMostLinks = 8;
  std::string name = path;
  for (int i = 0; i < kMostLinks; ++i) {
    // What is looked at is what is followed, whatever happens to the name meanwhile.
    const Descriptor link{open(name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC)};
    struct stat status;
    if (link.Get() < 0 || fstat(link.Get(), &status) != 0 || !IsOwnLink(status)) break;
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

void WritePlainFile(const char* path, const std::string& text) {
  struct stat present;
  if (lstat(path, &present) == 0 ? !IsPlain(present) : errno != ENOENT) return;
  std::string temporary = std::string{path} + ".XXXXXX";
  const Descriptor file{mkostemp(temporary.data(), O_CLOEXEC)};
  if (file.Get() < 0) return;
  // From here on the name can only be replaced, never followed.
  if (!WriteAll(file.Get(), text) || fchmod(file.Get(), kFileMode) != 0 ||
      rename(temporary.c_str(), path) != 0)
    unlink(temporary.c_str());
}

}  // namespace zel
