#include "launcher/section_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "launcher/whole_file.h"
#include "toolkit/core/allegro.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr int kLastCharacter = 0x10FFFF;

void Append(std::string& text, int character) {
  // Allegro itself has no end writing the largest numbers that a damaged text may hold.
  if (character < 0 || character > kLastCharacter) character = '^';
  char bytes[8];
  text.append(bytes, static_cast<std::size_t>(usetc(bytes, character)));
}

// The line at `position`, which moves behind it and its end. A damaged character is what Allegro
// takes it for and ends where Allegro believes that it ends; a zero one ends the line's text.
std::string NextLine(const std::string& text, std::size_t& position) {
  std::string line;
  while (position < text.size()) {
    const char* at = text.c_str() + position;
    const int character = ugetc(at);
    position += static_cast<std::size_t>(uwidth(at));
    if (character == '\r' || character == '\n') break;
    Append(line, character);
  }
  line.resize(std::min(line.find('\0'), line.size()));
  return line;
}

// The end of the characters that belong together, from `at` on.
const char* Skip(const char* at, bool (*belongs)(int)) {
  for (int character = ugetc(at); character != 0 && belongs(character); character = ugetc(at))
    at += uwidth(at);
  return at;
}

std::string Lower(std::string_view name) {
  std::string lower;
  const std::string copy{name};
  const char* at = copy.c_str();
  for (int character = ugetxc(&at); character != 0; character = ugetxc(&at))
    Append(lower, utolower(character));
  return lower;
}

bool IsSection(std::string_view name) {
  return !name.empty() && name.front() == '[' && name.back() == ']';
}

}  // namespace

SectionFile::SectionFile(const char* fileName) {
  TakeApart(Converted(ReadWhole(fileName), U_UTF8, U_CURRENT));
}

void SectionFile::TakeApart(const std::string& text) {
  Section* section = nullptr;
  for (std::size_t position = 0; position < text.size();) {
    const std::string line = NextLine(text, position);
    const char* start = Skip(line.c_str(), [](int c) { return uisspace(c) != 0; });
    const char* end = Skip(start, [](int c) { return !uisspace(c) && c != '=' && c != '#'; });
    const std::string_view name{start, end};
    if (IsSection(name)) {
      // A section may be continued later in the file.
      section = &sections_[Lower(name.substr(1, name.size() - 2))];
    } else if (section && !name.empty()) {
      const char* value = Skip(end, [](int c) { return uisspace(c) || c == '='; });
      section->push_back({Lower(name), Trimmed(value)});
    }
  }
}

void SectionFile::Select(const char* section) {
  const auto found = sections_.find(Lower(section));
  current_ = found == sections_.end() ? nullptr : &found->second;
}

const char* SectionFile::GetText(const char* key, const char* defaultText) const {
  if (!current_) return defaultText;
  const auto found =
      std::find_if(current_->begin(), current_->end(),
                   [name = Lower(key)](const Entry& entry) { return entry.key == name; });
  return found == current_->end() || found->value.empty() ? defaultText : found->value.c_str();
}

int SectionFile::GetInt(const char* key, int defaultValue) const {
  const char* value = GetText(key, nullptr);
  if (!value) return defaultValue;
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(
      std::clamp<long>(ustrtol(value, nullptr, 0), Limits::min(), Limits::max()));
}

std::vector<int> SectionFile::Numbered(const char* stem, int last) const {
  const std::string prefix = Lower(stem);
  std::vector<int> numbers;
  for (const auto& [name, section] : sections_) {
    if (name.compare(0, prefix.size(), prefix) != 0) continue;
    const std::string_view digits = std::string_view{name}.substr(prefix.size());
    int number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    const bool plain = error == std::errc{} && end == digits.end() && digits.front() != '0';
    if (plain && number >= 1 && number <= last) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

}  // namespace zel
