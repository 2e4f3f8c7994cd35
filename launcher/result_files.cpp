#include "launcher/result_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr mode_t kFileMode = 0644;
constexpr std::size_t kLongestLine = 259;  // characters of the position file that count

class Descriptor {
 public:
  explicit Descriptor(int number) : number_{number} {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Get() const { return number_; }

  // Other users may write to /tmp: a link, a pipe or a second name of another file must not be
  // used.
  bool IsPlainFile() const {
    struct stat status;
    return number_ >= 0 && fstat(number_, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_nlink == 1;
  }

 private:
  int number_;
};

constexpr int kSafely = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

void WriteFile(const char* path, const std::string& text) {
  const Descriptor file{open(path, O_WRONLY | O_CREAT | kSafely, kFileMode)};
  if (!file.IsPlainFile() || ftruncate(file.Get(), 0) != 0) return;
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t count = write(file.Get(), text.data() + written, text.size() - written);
    if (count <= 0) return;
    written += static_cast<std::size_t>(count);
  }
}

std::string PositionText(const MenuConfig& config) {
  if (launcherState.exitCode == 0) return "0";
  std::string text;
  for (const auto& level : config.levels) {
    if (!text.empty()) text += ',';
    text += std::to_string(level->index);
  }
  return text;
}

int ToIndex(const std::string& number) {
  using Limits = std::numeric_limits<int>;
  const long value = std::strtol(number.c_str(), nullptr, 10);
  return static_cast<int>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

}  // namespace

void DeleteOutputFile() { unlink(paths.outputFile); }

void WriteResultFiles(const MenuConfig& config) {
  WriteFile(paths.outputFile, launcherState.outputString.c_str() + std::string{"\n"});
  WriteFile(paths.positionFile, PositionText(config));
}

std::vector<int> ParseMenuPosition(const std::string& text) {
  const std::string firstLine = text.substr(0, text.find_first_of("\r\n"));
  const std::string line = CutToChars(Trimmed(firstLine.c_str()).c_str(), kLongestLine);
  std::vector<int> indices;
  for (std::size_t start = 0; start < line.size();) {
    const std::size_t end = std::min(line.find(',', start), line.size());
    if (end > start) indices.push_back(ToIndex(line.substr(start, end - start)));
    start = end + 1;
  }
  return indices;
}

std::vector<int> ReadMenuPosition() {
  const Descriptor file{open(paths.positionFile, O_RDONLY | kSafely)};
  if (!file.IsPlainFile()) return {};
  char block[4096];
  const ssize_t count = read(file.Get(), block, sizeof block);
  if (count <= 0) return {};
  return ParseMenuPosition({block, static_cast<std::size_t>(count)});
}

}  // namespace zel
