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
