// The language of the interface, chosen by the rescue system and not by the process's environment.
#pragma once

#include <span>
#include <string>

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

// How the texts of a language are written: a code page of Allegro's, or null for UTF-8.
using CodePage = const unsigned short* (*)();

struct LanguageRow {
  const char* code;  // in the language file, and what menu keys of the language end with
  Language language;
  const char* catalogue;  // gettext takes "ru" where there is no "ru_RU"
  CodePage codePage;
  const char* encoding;  // its name
};
std::span<const LanguageRow> Languages();
// The row of a code; that of English for one that is not known.
const LanguageRow& LanguageOf(const char* code);

// The language of the LANG line in the language file, read anew at every call; kEnglish when there
// is none or it is not known. Keeps its code in launcherState.
int LanguageIndex();

// Has texts and menu keys in English from now on.
void UseEnglish();

// Sets Allegro's text format and code page, and what texts are translated to, for the language. The
// settings may want UTF-8 for all.
void SetupEncoding();

// Whether they do.
bool WantsUnicode();
// Whether the texts of a language are in UTF-8 then; else they are in its code page.
bool IsInUnicode(const LanguageRow& language);

// The content of a hint file, which is in the encoding of the language, in the text format.
std::string InTextFormat(const std::string& hints);
// The content of a hint file of the language with this code, or of an unknown one, in UTF-8. For
// tools: afterwards the code page is that of the language.
std::string HintsInUtf8(const std::string& hints, const char* code);

}  // namespace zel
