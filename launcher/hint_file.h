// Explanations of menu items.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace zel {

inline constexpr std::size_t kHintLineBytes = 2047;  // a longer line is cut

// Whether a line, without white space at its ends, ends a section or begins one.
bool IsHintEnd(const std::string& line);
bool IsHintHead(const std::string& line);

// A hint file, read once for all items of a menu. Its sections begin with a line "[name]" and end
// with a line that begins with "[end:"; lines outside sections say nothing.
class HintFile {
 public:
  // A missing or empty file has no sections.
  explicit HintFile(const char* fileName);

  // The text of a section: its lines joined with spaces, an empty line giving a line feed, cut to
  // 4096 characters. Empty when there is no such section. A section without an end line loses the
  // last line of the file.
  std::string Fill(const char* section) const;

  struct Section {
    std::string name;
    bool isClosed;  // by an end line, before the next section
    int line;       // where it begins, from 1
  };
  std::vector<Section> Sections() const;  // in file order

 private:
  std::vector<std::string> lines_;                          // trimmed
  std::unordered_map<std::string, std::size_t> firstLine_;  // of every line in brackets
};

}  // namespace zel
