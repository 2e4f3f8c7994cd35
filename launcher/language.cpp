#include "launcher/language.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "launcher/code_pages.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr CodePage kUnicode = nullptr;
constexpr const char* kWestern = "ISO-8859-15";

constexpr LanguageRow kLanguages[] = {
    {"en", kEnglish, "en", WesternCodePage, kWestern},
    {"ru", kRussian, "ru_RU", RussianCodePage, "KOI8-R"},
    {"de", kGerman, "de_DE", WesternCodePage, kWestern},
    {"fr", kFrench, "fr_FR", WesternCodePage, kWestern},
    {"pl", kPolish, "pl_PL", CentralEuropeanCodePage, "WINDOWS-1250"},
    {"es", kSpanish, "es_ES", WesternCodePage, kWestern},
    {"it", kItalian, "it_IT", WesternCodePage, kWestern},
    {"cn", kChinese, "zh_CN", kUnicode, "UTF-8"},
    {"ja", kJapanese, "ja_JP", kUnicode, "UTF-8"},
};

// From the first line that says one. The file is one of shell variables and has no sections: what
// looks like the beginning of one means nothing. Quotes belong to the value.
void ReadLanguageCode() {
  std::fill(std::begin(launcherState.languageCode), std::end(launcherState.languageCode), '\0');
  const Bytes bytes = ReadBytes(paths.languageFile, kLongestWholeFile);
  const FormatGuard asBytes{U_ASCII};
  const SectionFile file{{bytes.begin(), bytes.end()}};
  int first = std::numeric_limits<int>::max();
  const auto look = [&first](const std::vector<SectionFile::Entry>& entries) {
    for (const auto& [name, value, line] : entries) {
      if (name != "LANG" || value.size() < 2 || line > first) continue;
      value.copy(launcherState.languageCode, 2);
      first = line;
    }
  };
  look(file.Loose());
  for (const SectionFile::Section& section : file.Sections()) look(section.Entries());
}

const LanguageRow& ReadLanguage() {
  ReadLanguageCode();
  return LanguageOf(launcherState.languageCode);
}

}  // namespace

bool WantsUnicode() {
  const SectionFile file{ReadWhole(paths.settings)};
  return Settings::SectionOf(file).GetInt(Settings::kUnicode) != 0;
}

std::string InTextFormat(const std::string& hints) {
  return launcherState.hintsNeedConversion ? Converted(hints, U_ASCII_CP, U_CURRENT) : hints;
}

std::string HintsInUtf8(const std::string& hints, const char* code) {
  const LanguageRow& language = LanguageOf(code);
  if (!language.codePage) return Sound(hints, U_UTF8);
  set_ucodepage(language.codePage(), nullptr);
  return Converted(hints, U_ASCII_CP, U_UTF8);
}

int LanguageIndex() { return launcherState.isInEnglish ? kEnglish : ReadLanguage().language; }

void UseEnglish() {
  launcherState.isInEnglish = true;
  SetTextLanguage(kLanguages[0].catalogue);
}

std::span<const LanguageRow> Languages() { return kLanguages; }

const LanguageRow& LanguageOf(const char* code) {
  for (const LanguageRow& row : kLanguages)
    if (std::strcmp(row.code, code) == 0) return row;
  return kLanguages[0];
}

bool IsInUnicode(const LanguageRow& language) { return !language.codePage || WantsUnicode(); }

void SetupEncoding() {
  const LanguageRow& language = ReadLanguage();
  set_uformat(U_ASCII);
  const bool isUnicode = IsInUnicode(language);
  launcherState.hintsNeedConversion = language.codePage && isUnicode;
  set_uformat(isUnicode ? U_UTF8 : U_ASCII_CP);
  if (language.codePage) set_ucodepage(language.codePage(), nullptr);
  SetTextLanguage(language.catalogue);
}

}  // namespace zel
