#include "launcher/section_file.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <string_view>

#include "toolkit/core/allegro.h"

namespace zel {
namespace {

constexpr long kLongestFile = 32L << 20;

struct PackfileCloser {
  void operator()(PACKFILE* file) const { pack_fclose(file); }
};

std::string ReadWhole(const char* fileName) {
  if (!exists(fileName)) return {};
  const std::unique_ptr<PACKFILE, PackfileCloser> file{pack_fopen(fileName, F_READ)};
  if (!file) return {};
  std::string text;
  char block[1 << 14];
  for (long count = pack_fread(block, sizeof block, file.get()); count > 0;
       count = pack_fread(block, sizeof block, file.get())) {
    text.append(block, static_cast<std::size_t>(count));
    if (static_cast<long>(text.size()) > kLongestFile) break;
  }
  // A zero byte would end what follows it for every text function.
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

std::string Lower(std::string_view name) {
  std::string lower{name};
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

// The name that a line begins with, ended as Allegro ends it.
std::string_view NameOf(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t\f\v");
  if (start == std::string_view::npos) return {};
  line.remove_prefix(start);
  return line.substr(0, line.find_first_of(" \t\f\v=#"));
}

bool IsSection(std::string_view name) {
  return name.size() >= 2 && name.front() == '[' && name.back() == ']';
}

}  // namespace

SectionFile::SectionFile(const char* fileName) {
  push_config_state();
  TakeApart(ReadWhole(fileName));
}

SectionFile::~SectionFile() { pop_config_state(); }

void SectionFile::TakeApart(const std::string& text) {
  std::string* section = nullptr;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    const std::string_view line{text.data() + start, end - start};
    const std::string_view name = NameOf(line);
    if (IsSection(name)) {
      // A section may be continued later in the file; its first value for a key counts.
      section = &sections_[Lower(name.substr(1, name.size() - 2))];
    } else if (section && !name.empty()) {
      section->append(line);
      section->push_back('\n');
    }
    start = end + 1;
  }
}

void SectionFile::Select(const char* section) {
  current_ = section;
  std::string text;
  const auto found = sections_.find(Lower(section));
  if (found != sections_.end()) {
    text = "[" + current_ + "]\n";
    text += CutToBytes(found->second.c_str(), found->second.size());
  }
  set_config_data(text.c_str(), static_cast<int>(text.size()));
}

const char* SectionFile::GetText(const char* key, const char* defaultText) const {
  const char* value = get_config_string(current_.c_str(), Ascii(key), defaultText);
  return value && *value != '\0' ? value : defaultText;
}

int SectionFile::GetInt(const char* key, int defaultValue) const {
  return get_config_int(current_.c_str(), Ascii(key), defaultValue);
}

std::vector<int> SectionFile::Numbered(const char* stem, int last) const {
  const std::string prefix = Lower(stem);
  std::vector<int> numbers;
  for (const auto& [name, text] : sections_) {
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
