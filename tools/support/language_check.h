// What a menu file says in its languages.
#pragma once

#include <string>
#include <vector>

namespace zel {

class Skin;

struct LanguageFinding {
  std::string file, section, key;  // the last two are empty for a hint file
  std::string what;
};

// The texts that are missing in a language which other texts of the file have, and those with
// letters that neither the skin's font nor its fallbacks have; those of the hint files that it
// names, too. Texts without any language are the same in all.
std::vector<LanguageFinding> CheckLanguages(const std::string& menuFile, const Skin& skin);

}  // namespace zel
