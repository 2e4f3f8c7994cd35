#include "toolkit/base/section_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c; }

// Most characters are ASCII, which is itself in every format.
int CharacterAt(const char* at) { return IsAscii(*at) ? *at : ugetc(at); }
int WidthAt(const char* at) { return IsAscii(*at) ? 1 : uwidth(at); }

// The end of the characters that belong together, from `at` on.
template <class Belongs>
const char* Skip(const char* at, Belongs belongs) {
  for (int c = CharacterAt(at); c != 0 && belongs(c); c = CharacterAt(at)) at += WidthAt(at);
  return at;
}

bool IsSpace(int c) { return uisspace(c) != 0; }
bool IsInName(int c) { return !IsSpace(c) && c != '=' && c != '#'; }
bool IsBeforeValue(int c) { return IsSpace(c) || c == '='; }

std::string Lower(const std::string& name) {
  std::string lower;
  for (const char* at = name.c_str(); *at != '\0'; at += WidthAt(at)) {
    char bytes[8];
    if (IsAscii(*at))
      lower += LowerAscii(*at);
    else
      lower.append(bytes, static_cast<std::size_t>(usetc(bytes, utolower(ugetc(at)))));
  }
  return lower;
}

bool IsNamed(const std::string& name, const std::string& lower) {
  if (!std::all_of(name.begin(), name.end(), IsAscii)) return Lower(name) == lower;
  return name.size() == lower.size() &&
         std::equal(name.begin(), name.end(), lower.begin(),
                    [](char written, char c) { return LowerAscii(written) == c; });
}

bool IsHead(std::string_view name) { return name.starts_with('[') && name.ends_with(']'); }

}  // namespace

const SectionFile::Entry* SectionFile::Section::Find(const char* name) const {
  const auto found = std::find_if(
      entries_.begin(), entries_.end(),
      [lower = Lower(name)](const Entry& entry) { return IsNamed(entry.name, lower); });
  return found == entries_.end() ? nullptr : &*found;
}

const char* SectionFile::Section::GetText(const char* name, const char* defaultText) const {
  const Entry* entry = Find(name);
  return entry && !entry->value.empty() ? entry->value.c_str() : defaultText;
}

int SectionFile::Section::GetInt(const char* name, int defaultValue) const {
  const char* value = GetText(name, nullptr);
  if (!value) return defaultValue;
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(
      std::clamp<long>(ustrtol(value, nullptr, 0), Limits::min(), Limits::max()));
}

int SectionFile::Section::GetId(const char* name, int defaultValue) const {
  const char* value = GetText(name, nullptr);
  if (!value) return defaultValue;
  char* end = nullptr;
  ustrtol(value, &end, 0);
  if (ugetc(end) == 0) return GetInt(name);
  char letters[] = {' ', ' ', ' ', ' '};
  for (char& letter : letters) {
    if (ugetc(value) == 0) break;
    letter = static_cast<char>(utoupper(ugetxc(&value)));
  }
  return AL_ID(letters[0], letters[1], letters[2], letters[3]);
}

SectionFile::Line SectionFile::ReadLine(std::string_view line) {
  const std::string sound = Sound(std::string{line});
  const char* start = Skip(sound.c_str(), IsSpace);
  if (*start == '\0') return {};
  const char* end = Skip(start, IsInName);
  std::string name{start, end};
  if (name.empty()) return {Line::kNothing, {}, {}};
  const bool hasEquals = *Skip(end, IsSpace) == '=';
  std::string value = Trimmed(Skip(end, IsBeforeValue));
  if (!IsHead(name)) return {Line::kEntry, std::move(name), std::move(value), hasEquals};
  return {Line::kHead, name.substr(1, name.size() - 2), std::move(value), hasEquals};
}

SectionFile::SectionFile(std::string text) {
  std::replace(text.begin(), text.end(), '\0', ' ');
  Section* section = nullptr;
  bool grows = false;  // up to the first blank line
  int number = 0;
  for (std::size_t position = 0; position < text.size();) {
    Line line = ReadLine(NextLine(text, position));
    ++number;
    if (line.kind == Line::kHead) {
      section = &Begin(std::move(line.name), number);
      grows = section->heads_.size() == 1;
    } else if (line.kind == Line::kEntry) {
      auto& entries = section ? section->entries_ : loose_;
      entries.push_back({std::move(line.name), std::move(line.value), number});
    }
    grows = grows && line.kind != Line::kBlank;
    if (grows) section->lastLine_ = number;
  }
}

SectionFile SectionFile::FromUtf8(std::string stored) {
  // Before the conversion, which ends at a zero byte and makes line ends of some damage.
  std::replace(stored.begin(), stored.end(), '\0', ' ');
  stored = Sound(WithoutMark(std::move(stored)), U_UTF8);
  return SectionFile{Converted(stored, U_UTF8, U_CURRENT)};
}

SectionFile::Section& SectionFile::Begin(std::string name, int line) {
  const auto [place, isNew] = places_.try_emplace(Lower(name), sections_.size());
  if (isNew) sections_.emplace_back().name_ = std::move(name);
  Section& section = sections_[place->second];
  section.heads_.push_back(line);
  return section;
}

const SectionFile::Section& SectionFile::Find(const char* name) const {
  const auto found = places_.find(Lower(name));
  return found == places_.end() ? none_ : sections_[found->second];
}

std::vector<int> SectionFile::Numbered(const char* stem, int last) const {
  const std::string prefix = Lower(stem);
  std::vector<int> numbers;
  for (const auto& [name, place] : places_) {
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
