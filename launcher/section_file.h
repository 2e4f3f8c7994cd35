// Configuration files of thousands of sections.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace zel {

// A file in Allegro's configuration format, taken apart once.
//
// Says what Allegro's get_config_string and get_config_int would say after set_config_file; but
// they walk the whole file for every value, which takes seconds for a menu of thousands of items.
// Like them it takes the file for UTF-8 and brings it to the current text format.
class SectionFile {
 public:
  // A missing file has no sections.
  explicit SectionFile(const char* fileName);

  // Makes a section the one that the Get operations read. Names compare without regard to case.
  void Select(const char* section);
  // Empty and unknown keys give the default. Texts live as long as the object.
  const char* GetText(const char* key, const char* defaultText = "") const;
  // Numbers are decimal, octal or hexadecimal as in C; what is too large is brought to the nearest
  // number that an int holds.
  int GetInt(const char* key, int defaultValue = 0) const;

  // The numbers n of the sections named `stem` and n, from 1 to `last`, in ascending order.
  std::vector<int> Numbered(const char* stem, int last) const;

 private:
  struct Entry {
    std::string key;  // in lower case
    std::string value;
  };
  using Section = std::vector<Entry>;  // in file order; the first entry of a key counts

  void TakeApart(const std::string& text);

  std::unordered_map<std::string, Section> sections_;  // by name in lower case
  const Section* current_ = nullptr;
};

}  // namespace zel
