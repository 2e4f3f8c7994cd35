#include "launcher/language.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "launcher/code_pages.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
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

constexpr std::string_view kWhite = " \t\v\f";
constexpr std::size_t kLongestFile = 1 << 20;

std::string ReadLanguageFile() {
  const int file = open(paths.languageFile, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return {};
  std::string text;
  char block[4096];
  ssize_t count = 0;
  while (text.size() < kLongestFile && (count = read(file, block, sizeof block)) > 0)
    text.append(block, static_cast<std::size_t>(count));
  close(file);
  return text;
}

std::string_view TrimmedLine(std::string_view line) {
  const std::size_t start = line.find_first_not_of(kWhite);
  if (start == std::string_view::npos) return {};
  return line.substr(start, line.find_last_not_of(kWhite) - start + 1);
}

// The value of a line "LANG = value"; empty for any other line. Quotes belong to the value.
std::string_view LangValue(std::string_view line) {
  line = TrimmedLine(line);
  const std::size_t nameEnd = std::min(line.find_first_of(" \t\v\f=#"), line.size());
  if (line.substr(0, nameEnd) != "LANG") return {};
  const std::size_t start = line.find_first_not_of(" \t\v\f=", nameEnd);
  return start == std::string_view::npos ? std::string_view{} : line.substr(start);
}

void ReadLanguageCode() {
  std::fill(std::begin(launcherState.languageCode), std::end(launcherState.languageCode), '\0');
  const std::string text = ReadLanguageFile();
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    const std::string_view value = LangValue({text.data() + start, end - start});
    if (value.size() > 1) {
      value.copy(launcherState.languageCode, 2);
      return;
    }
    start = end + 1;
  }
}

const LanguageRow& FindLanguage(const char* code) {
  for (const LanguageRow& row : kLanguages)
    if (std::strcmp(row.code, code) == 0) return row;
  return kLanguages[0];
}

const LanguageRow& ReadLanguage() {
  ReadLanguageCode();
  return FindLanguage(launcherState.languageCode);
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
  const LanguageRow& language = FindLanguage(code);
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

void SetupEncoding() {
  const LanguageRow& language = ReadLanguage();
  set_uformat(U_ASCII);
  launcherState.hintsNeedConversion = language.codePage && WantsUnicode();
  const bool isUnicode = !language.codePage || launcherState.hintsNeedConversion;
  set_uformat(isUnicode ? U_UTF8 : U_ASCII_CP);
  if (language.codePage) set_ucodepage(language.codePage(), nullptr);
  SetTextLanguage(language.catalogue);
}

}  // namespace zel
