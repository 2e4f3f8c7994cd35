// The letters of texts, and whether they show.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "launcher/language.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"
#include "toolkit/skin/skin.h"
#include "tools/checker/findings.h"

namespace zel {

// Names with commas between them.
std::string Listed(const std::vector<std::string>& names);

bool IsControl(int character);

// A character as bytes.
std::string Utf8(int character);

// Calls back with each character of a text in UTF-8.
template <class Each>
void ForEachCharacter(const std::string& text, const Each& each) {
  const FormatGuard format{U_UTF8};
  const char* position = text.c_str();
  while (const int character = ugetxc(&position)) each(character);
}

// Looks for letters that do not show.
class Letters {
 public:
  // Where all letters are there, only the fonts may lack some. Without a skin nothing is said of
  // fonts.
  Letters(Findings& findings, const Skin* skin, bool areAllThere)
      : findings_{findings}, skin_{skin}, areAllThere_{areAllThere} {}

  // Of a text in a language, which is written in that font of the skin.
  void Check(const Place& place, const std::string& text, const LanguageRow& language, int font);
  // Says what fonts lack: one message for a font that is not meant for a language.
  void Finish();

 private:
  Findings& findings_;
  const Skin* skin_;
  const bool areAllThere_;  // in the text format
  // By font and language.
  std::map<std::pair<int, std::string>, std::vector<std::pair<int, Place>>> missing_;
};

// The first letters that are UTF-8 in UTF-8; empty for none.
std::string EncodedTwice(const std::string& text);

}  // namespace zel
