#include "launcher/plain_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace zel {
namespace {

constexpr mode_t kFileMode = 0644;
constexpr int kSafely = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

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
    return number_ >= 0 && fstat(number_, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_nlink == 1;
  }

 private:
  int number_;
};

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
  const Descriptor file{open(path, O_WRONLY | O_CREAT | kSafely, kFileMode)};
  if (!file.IsPlainFile() || ftruncate(file.Get(), 0) != 0) return;
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t count = write(file.Get(), text.data() + written, text.size() - written);
    if (count <= 0) return;
    written += static_cast<std::size_t>(count);
  }
}

}  // namespace zel
