#include "tools/checker/languages.h"

#include <algorithm>
#include <set>

#include "launcher/language.h"

namespace zel {

std::vector<std::string> Suffixes() {
  std::vector<std::string> suffixes;
  for (const LanguageRow& row : Languages())
    if (row.language != kEnglish) suffixes.emplace_back(row.code);
  return suffixes;
}

bool IsSuffix(const std::string& text) {
  const std::vector<std::string> suffixes = Suffixes();
  return std::find(suffixes.begin(), suffixes.end(), text) != suffixes.end();
}

const MenuLine* Said(const MenuSection& section, const char* key, const std::string& language) {
  const MenuLine* own = language.empty() ? nullptr : section.Find(key, language);
  return own && !own->entry.value.empty() ? own : section.Find(key);
}

std::vector<std::string> LanguagesOf(const MenuFile& menu) {
  std::set<std::string> languages{""};
  const auto add = [&languages](const MenuSection& section) {
    for (const MenuLine& line : section.lines)
      if (IsSuffix(line.language)) languages.insert(line.language);
  };
  add(menu.General());
  for (const MenuSection& item : menu.items) add(item);
  return {languages.begin(), languages.end()};
}

}  // namespace zel
