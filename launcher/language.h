// The language of the interface, chosen by the rescue system and not by the process's environment.
#pragma once

namespace zel {

enum Language : int {
  kEnglish,
  kGerman,
  kRussian,
  kFrench,
  kSpanish,
  kPolish,
  kItalian,
  kChinese,
  kJapanese,
};

// The language of the LANG line in the language file, read anew at every call; kEnglish when there
// is none or it is not known. Keeps its code in launcherState.
int LanguageIndex();

// Sets Allegro's text format and code page, and what texts are translated to, for the language.
void SetupEncoding();

}  // namespace zel
