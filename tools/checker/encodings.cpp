#include "tools/checker/encodings.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

bool IsIn(char c, int first, int last) { return first <= (c & 0xFF) && (c & 0xFF) <= last; }

// A letter of a code page, or a Latin one.
bool IsLetter(char c) { return IsIn(c, 0xC0, 0xFF) || IsIn(c, 'a', 'z') || IsIn(c, 'A', 'Z'); }

// Cyrillic in another code page has capitals within its words in KOI8-R, or signs before letters.
const char* InsteadOfKoi8(const std::string& line) {
  constexpr std::string_view kSigns = "\x95\x9A\x9C\x9D\x9E\xA3\xB3\xBF";  // that texts may have
  const auto isSign = [kSigns](char c) {
    return IsIn(c, 0x80, 0xBF) && kSigns.find(c) == std::string_view::npos;
  };
  const auto isSmall = [](char c) { return IsIn(c, 0xC0, 0xDF); };
  const auto isCapital = [](char c) { return IsIn(c, 0xE0, 0xFF); };
  const bool areCapitals =
      2 * std::count_if(line.begin(), line.end(), isCapital) >
      std::count_if(line.begin(), line.end(), [](char c) { return !IsAscii(c); });
  for (std::size_t i = 0; i + 2 < line.size(); ++i) {
    const bool isFirst = i == 0 || !IsLetter(line[i - 1]);
    if (isSign(line[i]) && IsIn(line[i + 1], 0xC0, 0xFF))
      return std::any_of(line.begin(), line.end(), [](char c) { return IsIn(c, 0x80, 0xAF); })
                 ? "CP866"
                 : "ISO-8859-5";
    if (areCapitals && isFirst && isSmall(line[i]) && isCapital(line[i + 1]) &&
        isCapital(line[i + 2]))
      return "WINDOWS-1251";
  }
  return nullptr;
}

// Between letters, a byte that is no letter in Latin code pages, and no apostrophe.
bool IsOddWithin(const std::string& text, std::size_t i) {
  const bool isOdd = IsIn(text[i], 0x80, 0x9F) || IsIn(text[i], 0xA1, 0xA4);
  if (!isOdd || IsIn(text[i], 0x91, 0x92) || i == 0 || i + 1 >= text.size()) return false;
  // A dash has a blank on both sides, or none.
  return IsLetter(text[i - 1]) &&
         (IsLetter(text[i + 1]) || (IsIn(text[i], 0x96, 0x97) && text[i + 1] == ' '));
}

// Umlauts and accents of another code page lie where Latin ones have nothing that shows. English
// has none, but quotes and dashes, which stand within words, too.
const char* InsteadOfLatin(const std::string& line, bool isEnglish) {
  const char* instead = nullptr;
  for (std::size_t i = 0; i < line.size(); ++i) {
    // In Windows' code page nothing, or no letter of these languages.
    constexpr std::string_view kNothing = "\x81\x8A\x8D\x8F\x90\x9D";
    if (kNothing.find(line[i]) != std::string_view::npos || (!isEnglish && IsOddWithin(line, i)))
      return "CP850";
    if (IsIn(line[i], 0x80, 0x9F)) instead = "WINDOWS-1252";
  }
  return instead;
}

// Whether lines have more letters of Windows' code page than odd bytes.
bool HasWindowsLetters(const std::string& lines) {
  std::size_t letters = 0, odd = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    odd += IsOddWithin(lines, i);
    letters += IsIn(lines[i], 0xC0, 0xFF);
  }
  return letters > odd;
}

// The encoding in which most bytes of Cyrillic lines are letters.
const char* LikelyCyrillic(const std::string& lines) {
  const auto count = [&lines](int first, int last) {
    return std::count_if(lines.begin(), lines.end(), [=](char c) { return IsIn(c, first, last); });
  };
  const std::pair<std::ptrdiff_t, const char*> encodings[] = {
      {count(0x80, 0xAF) + count(0xE0, 0xEF), "CP866"},
      {count(0xC0, 0xFF), "WINDOWS-1251"},
      {count(0xB0, 0xEF), "ISO-8859-5"},
      {count(0x80, 0x9F) + count(0xDF, 0xFE), "MAC-CYRILLIC"}};
  return std::max_element(std::begin(encodings), std::end(encodings),
                          [](const auto& a, const auto& b) { return a.first < b.first; })
      ->second;
}

// Which of the two the text of a file is rather in: inside words, other bytes are usual in the
// Mac's encoding.
const char* RatherMacs(const std::string& text) {
  constexpr std::string_view kMacs = "\x8E\x8F\x90\x92\x99\x9A\x9C\x9D\x9E\x9F";
  constexpr std::string_view kOthers = "\x81\x82\x83\x84\x85\x93\x95\xA1\xA2\xA3\xA4";
  std::size_t macs = 0, others = 0;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (!IsLetter(text[i - 1])) continue;
    macs += kMacs.find(text[i]) != std::string_view::npos;
    others += kOthers.find(text[i]) != std::string_view::npos;
  }
  return macs > others ? "MACINTOSH" : "CP850";
}

const char* InsteadOfPolish(const std::string& line) {
  constexpr std::string_view kSigns = "\xA1\xA6\xAC\xB1\xB6\xBC";  // that are letters elsewhere
  constexpr std::string_view kOfDos = "\x86\x98\xA2\xA9";          // likewise
  for (std::size_t i = line.find_first_of(kSigns); i < line.size();
       i = line.find_first_of(kSigns, i + 1))
    if ((i > 0 && IsLetter(line[i - 1])) || (i + 1 < line.size() && IsLetter(line[i + 1])))
      return "ISO-8859-2";
  for (std::size_t i = 1; i + 1 < line.size(); ++i)
    if (kOfDos.find(line[i]) != std::string_view::npos && IsLetter(line[i - 1]) &&
        IsLetter(line[i + 1]))
      return "CP852";
  return nullptr;
}

// The encoding that a line is likely to be in instead of its language's code page; null for none.
const char* LikelyInstead(const std::string& line, const LanguageRow& language) {
  if (language.language == kRussian) return InsteadOfKoi8(line);
  if (language.language == kPolish) return InsteadOfPolish(line);
  return InsteadOfLatin(line, language.language == kEnglish);
}

// Likewise by all lines of a text that look wrong.
const char* LikelyOfAll(const char* likely, const std::string& text, const LanguageRow& language) {
  std::string lines;
  for (std::size_t position = 0; position < text.size();) {
    const std::string line{NextLine(text, position)};
    if (Sound(line, U_UTF8) != line && LikelyInstead(line, language)) lines += line + '\n';
  }
  if (language.language == kRussian) return LikelyCyrillic(lines);
  if (language.language == kPolish) return likely;
  const bool isEnglish = language.language == kEnglish;
  const std::string_view best = isEnglish ? likely : InsteadOfLatin(lines, false);
  const bool isWindows = best != "CP850" || (!isEnglish && HasWindowsLetters(lines));
  return isWindows ? "WINDOWS-1252" : RatherMacs(text);
}

// What a line that is not in UTF-8 is likely to be in instead, of languages with many encodings.
const char* LikelyEastern(const std::string& line, const LanguageRow& language) {
  const bool isShifted = std::any_of(
      line.begin(), line.end(), [](char c) { return IsIn(c, 0x81, 0x9F) && !IsIn(c, 0x8E, 0x8F); });
  if (language.language == kChinese) return "GB18030";
  return isShifted ? "SHIFT_JIS" : "EUC-JP";
}

}  // namespace

std::optional<OtherEncoding> FindOtherEncoding(const std::string& text,
                                               const LanguageRow& language) {
  int number = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::string line{NextLine(text, position)};
    ++number;
    if (std::all_of(line.begin(), line.end(), IsAscii)) continue;
    // Text in a code page is hardly ever UTF-8 by chance.
    if (Sound(line, U_UTF8) == line) {
      if (!language.codePage) continue;
      return OtherEncoding{number, "UTF-8", "UTF-8"};
    }
    if (!language.codePage)
      return OtherEncoding{number, "not UTF-8", LikelyEastern(line, language)};
    if (const char* instead = LikelyInstead(line, language)) {
      instead = LikelyOfAll(instead, text, language);
      return OtherEncoding{number, std::string{"rather "} + instead, instead};
    }
  }
  return std::nullopt;
}

}  // namespace zel
