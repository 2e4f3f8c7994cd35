#include "toolkit/core/config_file.h"

#include <algorithm>
#include <limits>

#include "toolkit/core/bytes.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr std::size_t kLongestFile = 128 << 10;
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max() / 2;
constexpr std::size_t kLongestLine = 4096;

std::string WithoutZeros(std::string text) {
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

// What a file says, in the current format.
std::string Read(const std::string& stored) {
  return Converted(WithoutZeros(stored), U_UTF8, U_CURRENT);
}

std::string Stored(const std::string& text) { return Converted(text, U_CURRENT, U_UTF8); }

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

std::string TrimmedLine(const std::string& stored) { return Trimmed(Read(stored).c_str()); }

// Whether a stored line sets `name`, or begins the section of that name.
bool IsFor(const std::string& line, const char* name) {
  const std::string trimmed = TrimmedLine(line);
  return ustricmp(trimmed.substr(0, trimmed.find_first_of(" \t\f\v=#")).c_str(), name) == 0;
}

bool EndsSection(const std::string& line) { return TrimmedLine(line).starts_with('['); }

}  // namespace

void UseConfigFile(const char* path) { UseConfigText(Read(ReadText(path, kLongestFile))); }

void SaveConfigFile(const char* path, const char* section, const std::vector<const char*>& names) {
  std::vector<std::string> lines = SplitLines(ReadText(path, kNoLimit));
  auto head = std::find_if(lines.begin(), lines.end(),
                           [section](const std::string& line) { return IsFor(line, section); });
  if (head == lines.end()) {
    if (!lines.empty()) lines.emplace_back();
    head = lines.insert(lines.end(), Stored(section));
  }
  const auto first = head - lines.begin() + 1;
  for (const char* name : names) {
    const std::string line =
        Stored(std::string{name} + " = " + get_config_string(section, name, ""));
    const auto begin = lines.begin() + first;
    const auto end = std::find_if(begin, lines.end(), EndsSection);
    const auto old = std::find_if(
        begin, end, [name](const std::string& candidate) { return IsFor(candidate, name); });
    // What is new comes before the blank lines that part the sections.
    const auto isBlank = [](const std::string& text) { return TrimmedLine(text).empty(); };
    if (old != end)
      *old = line;
    else
      lines.insert(std::find_if(begin, end, isBlank), line);
  }
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  WriteBytes(path, text);
}

void UseConfigText(const std::string& text) {
  std::string sound;
  for (const std::string& line : SplitLines(WithoutZeros(text)))
    sound += CutToBytes(Trimmed(line.c_str()).c_str(), kLongestLine) + '\n';
  // Byte by byte, so that no character meets the end of the buffer for a line.
  const int format = get_uformat();
  set_uformat(U_ASCII);
  set_config_data(sound.c_str(), static_cast<int>(sound.size()));
  set_uformat(format);
}

}  // namespace zel
