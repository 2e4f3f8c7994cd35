#include "launcher/result_files.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/plain_file.h"
#include "launcher/state.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr std::size_t kLongestLine = 259;  // characters of the position file that count
constexpr std::size_t kLongestFile = 4096;

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
  WritePlainFile(paths.outputFile, launcherState.outputString.c_str() + std::string{"\n"});
  WritePlainFile(paths.positionFile, PositionText(config));
}

std::vector<int> ParseMenuPosition(const std::string& text) {
  // The first line that says something: white space before it is trimmed away.
  std::string line = Trimmed(text.c_str());
  line = CutToChars(line.substr(0, line.find_first_of("\r\n")).c_str(), kLongestLine);
  std::vector<int> indices;
  for (std::size_t start = 0; start < line.size();) {
    const std::size_t end = std::min(line.find(',', start), line.size());
    if (end > start) indices.push_back(ToIndex(line.substr(start, end - start)));
    start = end + 1;
  }
  return indices;
}

std::vector<int> ReadMenuPosition() {
  return ParseMenuPosition(ReadPlainFile(paths.positionFile, kLongestFile));
}

}  // namespace zel
