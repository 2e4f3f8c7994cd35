// The languages of menus.
#pragma once

#include <string>
#include <vector>

#include "tools/checker/menu_file.h"

namespace zel {

// What keys of menus name languages with: all but English, which has none.
std::vector<std::string> Suffixes();
bool IsSuffix(const std::string& text);

// What an item or a menu says for a key in a language: its own words, else those without a
// language; null for none.
const MenuLine* Said(const MenuSection& section, const char* key, const std::string& language);

// The languages that the keys of a menu name, as far as the launcher knows them, and English as "".
std::vector<std::string> LanguagesOf(const MenuFile& menu);

}  // namespace zel
