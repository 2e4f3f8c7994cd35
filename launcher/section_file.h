// Configuration files of thousands of sections.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/core/text.h"

namespace zel {

// A file in Allegro's configuration format, taken apart once.
//
// Allegro walks the whole file for every value, which takes seconds for a menu of thousands of
// items; here it is shown only the section that is being read. Its current configuration is put
// aside while this object lives.
class SectionFile {
 public:
  // A missing file has no sections.
  explicit SectionFile(const char* fileName);
  SectionFile(const SectionFile&) = delete;
  SectionFile& operator=(const SectionFile&) = delete;
  ~SectionFile();

  // Makes a section the one that the Get operations read. Names compare without regard to case.
  void Select(const char* section);
  // Empty and unknown keys give the default. Texts are valid until the next Select.
  const char* GetText(const char* key, const char* defaultText = "") const;
  int GetInt(const char* key, int defaultValue = 0) const;

  // The numbers n of the sections named `stem` and n, from 1 to `last`, in ascending order.
  std::vector<int> Numbered(const char* stem, int last) const;

 private:
  void TakeApart(const std::string& text);

  std::unordered_map<std::string, std::string> sections_;  // text by lower-case name
  std::string current_;
};

}  // namespace zel
