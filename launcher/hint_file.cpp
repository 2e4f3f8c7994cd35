#include "launcher/hint_file.h"

#include <strings.h>

#include <string_view>

#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr int kRoom = 4095;  // what joined pieces may fill

// Joins lines to a text of limited length.
class Paragraph {
 public:
  void Add(const std::string& line) {
    if (line.empty()) {
      Append("\n", 1);
      return;
    }
    if (!text_.empty()) Append(" ", 1);
    const int length = ustrlen(line.c_str());
    if (!Append(line, length)) {
      text_ += CutToChars(line.c_str(), kHintCharacters - count_);
      count_ = kHintCharacters;
    }
  }

  // Nothing more can be added.
  bool IsFull() const { return count_ == kHintCharacters; }

  std::string Finish() {
    std::string text = CutToChars(text_.c_str(), kHintCharacters);
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
  }

 private:
  bool Append(const std::string& piece, int length) {
    if (count_ + length > kRoom) return false;
    text_ += piece;
    count_ += length;
    return true;
  }

  std::string text_;
  int count_ = 0;  // characters
};

}  // namespace

bool IsHintEnd(const std::string& line) {
  constexpr std::string_view kEnd = "[END:";
  return strncasecmp(line.c_str(), kEnd.data(), kEnd.size()) == 0;
}

bool IsHintHead(const std::string& line) {
  return line.size() > 2 && line.front() == '[' && line.back() == ']';
}

HintFile::HintFile(const char* fileName) {
  const std::string content = ReadWhole(fileName);
  const std::string text = InTextFormat(content.substr(0, content.find('\0')));
  for (std::size_t start = 0; start < text.size();) {
    const std::string whole{NextLine(text, start)};
    std::string line = CutToBytes(Trimmed(whole.c_str()).c_str(), kHintLineBytes);
    if (!line.empty() && line.front() == '[') firstLine_.emplace(line, lines_.size());
    lines_.push_back(std::move(line));
  }
}

std::string HintFile::Fill(const char* section) const {
  const auto found = firstLine_.find("[" + std::string{section} + "]");
  if (found == firstLine_.end()) return {};
  Paragraph paragraph;
  for (std::size_t i = found->second + 1; i + 1 < lines_.size() && !IsHintEnd(lines_[i]); ++i) {
    if (paragraph.IsFull()) break;
    paragraph.Add(lines_[i]);
  }
  return paragraph.Finish();
}

std::vector<HintFile::Section> HintFile::Sections() const {
  std::vector<Section> sections;
  int number = 0;
  for (const std::string& line : lines_) {
    ++number;
    if (IsHintEnd(line)) {
      if (!sections.empty()) sections.back().isClosed = true;
    } else if (IsHintHead(line)) {
      sections.push_back({line.substr(1, line.size() - 2), false, number});
    }
  }
  return sections;
}

}  // namespace zel
