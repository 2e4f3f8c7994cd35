#include "launcher/result_files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/plain_file.h"
#include "launcher/state.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr std::size_t kLongestLine = 259;  // characters of the position file that count
constexpr std::size_t kLongestFile = 4096;

int ToIndex(const std::string& number) {
  using Limits = std::numeric_limits<int>;
  const long value = std::strtol(number.c_str(), nullptr, 10);
  return static_cast<int>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

}  // namespace

int DeleteOutputFile() {
  if (unlink(paths.outputFile) == 0) return 0;
  const int error = errno;
  struct stat left;
  const bool harmless = lstat(paths.outputFile, &left) == 0 ? S_ISDIR(left.st_mode)
                                                            : errno == ENOENT || errno == ENOTDIR;
  return harmless ? 0 : error;
}

void DeleteTemporaryFiles() {
  RemoveTemporaryFiles(paths.outputFile);
  RemoveTemporaryFiles(paths.positionFile);
  RemoveTemporaryFiles(paths.lookFile);
}

std::string PositionOf(const MenuConfig& config) {
  std::string text;
  for (const auto& level : config.levels) {
    const std::string next = (text.empty() ? "" : ",") + std::to_string(level->index);
    if (text.size() + next.size() > kLongestLine) break;
    text += next;
  }
  return text;
}

int WriteResultFiles(const MenuConfig& config) {
  WritePlainFile(paths.positionFile, launcherState.exitCode == 0 ? "0" : PositionOf(config));
  const std::string line = launcherState.outputString.c_str() + std::string{"\n"};
  const int error = WritePlainFile(paths.outputFile, line);
  if (error != 0) DeleteOutputFile();
  return error;
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
  return ParseMenuPosition(ReadOwnFile(paths.positionFile, kLongestFile));
}

}  // namespace zel
