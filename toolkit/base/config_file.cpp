#include "toolkit/base/config_file.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

// Whether Allegro's own reader sees in a file of this content what SectionFile sees.
bool SuitsAllegro(const std::string& stored) {
  constexpr std::size_t kLongestLine = 240;  // fits the first buffer, which then never grows
  for (std::size_t position = 0; position < stored.size();)
    if (NextLine(stored, position).size() > kLongestLine) return false;
  return stored.find('\0') == std::string::npos && WithoutMark(stored) == stored &&
         Sound(stored, U_UTF8) == stored;
}

bool IsPlain(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAscii); }

std::string Stored(const std::string& text) { return Converted(text, U_CURRENT, U_UTF8); }

std::string Plain(const SectionFile& file) {
  std::string text;
  for (const SectionFile::Section& section : file.Sections()) {
    text.append("[").append(section.Name()).append("]\n");
    for (const auto& [name, value, line] : section.Entries())
      text.append(name).append("=").append(value).append("\n");
  }
  return text;
}

void UseWithoutName(const std::string& text) {
  // Byte by byte, so that no character meets the end of the buffer for a line.
  const FormatGuard bytes{U_ASCII};
  set_config_data(text.c_str(), static_cast<int>(text.size()));
}

// A file as lines, each with its end.
class StoredLines {
 public:
  explicit StoredLines(std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
      const std::size_t start = position;
      const std::size_t length = NextLine(text, position).size();
      lines_.emplace_back(text.substr(start, position - start));
      if (end_.empty()) end_ = lines_.back().substr(length);
    }
    if (end_.empty()) end_ = "\n";
  }

  int Count() const { return static_cast<int>(lines_.size()); }
  // Numbers count from 1; the end of the line stays.
  void Replace(int number, const std::string& text) {
    std::string& line = lines_[number - 1];
    std::size_t end = 0;
    line.replace(0, NextLine(line, end).size(), text);
  }
  // Behind the line of that number, or before all with 0.
  void Insert(int number, const std::string& text) {
    if (number > 0) {
      std::string& before = lines_[number - 1];
      if (!before.ends_with('\r') && !before.ends_with('\n')) before += end_;
    }
    lines_.insert(lines_.begin() + number, text + end_);
  }
  std::string Text() const {
    std::string text;
    for (const std::string& line : lines_) text += line;
    return text;
  }

 private:
  std::vector<std::string> lines_;
  std::string end_;  // of the first line that has one
};

}  // namespace

SectionFile UseConfigFile(const char* path) {
  const Bytes bytes = ReadBytes(path, kLongestConfigFile);
  const std::string stored{bytes.begin(), bytes.end()};
  SectionFile file = SectionFile::FromUtf8(stored);
  // Before Allegro is installed it takes every file for empty, and a "#" leads into datafiles.
  const bool isFound = system_driver && !ustrchr(path, '#') && file_size_ex(path) == stored.size();
  if (isFound && SuitsAllegro(stored)) {
    // ASCII is itself in every format, but in a code page Allegro searches for each character.
    const bool isPlain = get_uformat() != U_UNICODE && IsPlain(stored) && IsPlain(path);
    const FormatGuard format{isPlain ? U_ASCII : get_uformat()};
    set_config_file(path);
  } else {
    UseWithoutName(Plain(file));
  }
  return file;
}

void SaveConfigFile(const char* path, const char* section, const std::vector<ConfigValue>& values) {
  const Bytes bytes = ReadBytes(path, kNoLimit);
  const std::string stored{bytes.begin(), bytes.end()};
  const SectionFile file = SectionFile::FromUtf8(stored);
  const SectionFile::Section& old = file.Find(section);
  StoredLines lines{stored};
  int last = old.LastLine();
  std::vector<std::string> added;
  if (old.Heads().empty()) {
    last = lines.Count();
    if (last > 0) added.emplace_back();
    added.push_back('[' + Stored(section) + ']');
  }
  for (const auto& [name, value] : values) {
    const std::string line = Stored(std::string{name}.append(" = ").append(value));
    if (const SectionFile::Entry* entry = old.Find(name.c_str()))
      lines.Replace(entry->line, line);
    else
      added.push_back(line);
  }
  for (const std::string& line : added) lines.Insert(last++, line);
  WriteBytes(path, lines.Text());
}

}  // namespace zel
