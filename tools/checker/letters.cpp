#include "tools/checker/letters.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace zel {
namespace {

bool IsInEncoding(const LanguageRow& language, int character) {
  if (!language.codePage || character < 0x80) return true;
  const unsigned short* page = language.codePage();
  return std::find(page, page + 256, character) != page + 256;
}

// A letter for messages: its number where nothing of it shows.
std::string Named(int character) {
  constexpr std::pair<int, int> kBlank[] = {{0, ' '},         {0x7F, 0xA0},     {0xAD, 0xAD},
                                            {0x2000, 0x200F}, {0x2028, 0x202F}, {0x205F, 0x206F},
                                            {0x3000, 0x3000}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}};
  const bool isBlank = std::any_of(std::begin(kBlank), std::end(kBlank), [&](const auto& range) {
    return range.first <= character && character <= range.second;
  });
  if (!isBlank) return Utf8(character);
  char number[12];
  std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(character));
  return number;
}

}  // namespace

std::string Utf8(int character) {
  char bytes[8];
  const FormatGuard format{U_UTF8};
  return {bytes, static_cast<std::size_t>(usetc(bytes, character))};
}

std::string Listed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

bool IsControl(int character) { return character < ' ' || (0x7F <= character && character < 0xA0); }

void Letters::Check(const Place& place, const std::string& text, const LanguageRow& language,
                    int font) {
  // Of a font that the skin does not have it is said.
  const std::string section = "FONT" + std::to_string(font);
  const bool isFont = skin_ && 0 <= font && font < Skin::kFonts &&
                      (font == 0 || !skin_->File().Find(section.c_str()).Heads().empty());
  const Font* drawn = isFont ? skin_->fonts[static_cast<std::size_t>(font)].get() : nullptr;
  std::vector<std::string> lost;
  std::string control;
  ForEachCharacter(text, [&](int character) {
    if (IsControl(character))
      control = character == '\t' ? "a tab" : "the control character " + Named(character);
    else if (!areAllThere_ && !IsInEncoding(language, character))
      lost.push_back(Named(character));
    else if (drawn && character > ' ' && !drawn->Has(character))
      missing_[{font, language.code}].emplace_back(character, place);
  });
  if (!control.empty()) findings_.Add(Msg::kControl, place, {control});
  if (!lost.empty())
    findings_.Add(Msg::kNoLetter, place, {Listed(lost), language.code, language.encoding});
}

void Letters::Finish() {
  constexpr std::size_t kFew = 3, kNamed = 8;
  for (const auto& [font, all] : missing_) {
    std::map<int, Place> letters;
    for (const auto& [letter, place] : all) letters.try_emplace(letter, place);
    std::vector<std::string> named;
    for (const auto& [letter, place] : letters) {
      if (named.size() < kNamed) named.push_back(Named(letter));
      if (letters.size() <= kFew)
        findings_.Add(Msg::kNoGlyph, place, {Named(letter), std::to_string(font.first)});
    }
    if (letters.size() > kNamed) named.emplace_back("...");
    if (letters.size() > kFew)
      findings_.Add(Msg::kNoGlyph, all.front().second, {Listed(named), std::to_string(font.first)});
  }
}

// No word has such signs behind such a letter.
std::string EncodedTwice(const std::string& text) {
  std::string letters, bytes;
  ForEachCharacter(text, [&](int character) {
    constexpr int kLead = 0xC2, kFirst = 0x80, kEnd = 0xC0, kLargest = 0xF4;
    if (!letters.empty()) return;
    const bool goesOn = !bytes.empty() && kFirst <= character && character < kEnd;
    if (!goesOn) bytes.clear();
    if (goesOn || (kLead <= character && character <= kLargest))
      bytes += static_cast<char>(character);
    if (goesOn && Sound(bytes, U_UTF8) == bytes) letters = Converted(bytes, U_ASCII, U_UTF8);
  });
  return letters;
}

}  // namespace zel
