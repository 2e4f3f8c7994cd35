#include "toolkit/base/text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zel {
namespace {

struct Character {
  int bytes;
  bool isDamaged;
};

// Whether UTF-8 has no shorter form for a character of 2 to 4 bytes. A longer one could be a zero
// or the end of a line.
bool NeedsBytes(int character, int bytes) {
  constexpr int kLast = 0x10FFFF;
  constexpr int kFirst[] = {0x80, 0x800, 0x10000};
  return character >= kFirst[bytes - 2] && character <= kLast;
}

// The character at `text`, never reaching past the terminator: Allegro takes the length that a
// UTF-8 lead byte announces for granted, a damaged text may end before. Stray tail bytes belong to
// the damage before them, as they do for Allegro.
Character CharacterAt(const char* text) {
  if (IsAscii(*text)) return {1, false};
  const int announced = uwidth(text);
  const bool isUtf8 = get_uformat() == U_UTF8;
  const auto belongs = [isUtf8](char byte) {
    return isUtf8 ? (byte & 0xC0) == 0x80 : byte != '\0';
  };
  int bytes = 1;
  while (bytes < announced && belongs(text[bytes])) ++bytes;
  const auto lead = static_cast<unsigned char>(*text);
  const bool isLead = lead >= 0xC2 && lead <= 0xF4;
  if (!isUtf8 || (isLead && bytes == announced && NeedsBytes(ugetc(text), bytes)))
    return {bytes, false};
  while (belongs(text[bytes])) ++bytes;
  return {bytes, true};
}

// Appends one character, or what Allegro shows for a damaged one; answers the bytes taken from
// `text`.
int AppendCharacter(std::string& kept, const char* text) {
  const Character character = CharacterAt(text);
  if (character.isDamaged)
    kept += '^';
  else
    kept.append(text, static_cast<std::size_t>(character.bytes));
  return character.bytes;
}

std::string ConvertedWhole(const std::string& text, int from, int to) {
  const int size = uconvert_size(text.c_str(), from, to);
  std::string converted(static_cast<std::size_t>(size), '\0');
  do_uconvert(text.c_str(), from, converted.data(), to, size);
  converted.resize(static_cast<std::size_t>(size - (to == U_UNICODE ? 2 : 1)));  // the terminator
  return converted;
}

}  // namespace

Ascii::Ascii(const char* ascii) : text_{ascii} {
  if (get_uformat() != U_UNICODE) return;
  converted_ = ConvertedWhole(ascii, U_ASCII, U_UNICODE) + '\0';  // and a second zero byte
  text_ = converted_.c_str();
}

std::string Converted(const std::string& text, int from, int to) {
  if (from == U_CURRENT) from = get_uformat();
  if (to == U_CURRENT) to = get_uformat();
  if (!need_uconvert(text.c_str(), from, to)) return text;
  if (from == U_UNICODE || to == U_UNICODE) return ConvertedWhole(text, from, to);
  // Allegro looks every character up in all of a code page; most are the same in both.
  std::string converted;
  const auto end = std::find(text.begin(), text.end(), '\0');
  for (auto at = text.begin(); at != end;) {
    const auto other = std::find_if_not(at, end, IsAscii);
    converted.append(at, other);
    at = std::find_if(other, end, IsAscii);
    if (other == at) break;
    const std::string run{other, at};
    const std::string part = ConvertedWhole(run, from, to);
    converted += part;
    // Damaged characters can come to zero, which ends the text.
    if (ConvertedWhole(run + 'x', from, to).size() == part.size()) break;
  }
  return converted;
}

std::string Sound(const std::string& text, int format) {
  if (std::all_of(text.begin(), text.end(), IsAscii)) return text;
  const FormatGuard guard{format == U_CURRENT ? get_uformat() : format};
  return CutToBytes(text.c_str(), std::string::npos);
}

std::string CutToBytes(const char* text, std::size_t bytes) {
  std::string kept;
  while (*text != '\0') {
    const std::size_t before = kept.size();
    text += AppendCharacter(kept, text);
    if (kept.size() > bytes) {
      kept.resize(before);
      break;
    }
  }
  return kept;
}

std::string CutToChars(const char* text, int count) {
  std::string kept;
  for (; count > 0 && *text != '\0'; --count) text += AppendCharacter(kept, text);
  return kept;
}

std::string_view NextLine(std::string_view text, std::size_t& start) {
  const auto isEnd = [](char c) { return c == '\r' || c == '\n'; };
  const std::string_view rest = text.substr(start);
  const auto end = std::find_if(rest.begin(), rest.end(), isEnd);
  const auto other = end == rest.end() ? end : end + 1;
  const bool isPair = other != rest.end() && isEnd(*other) && *other != *end;
  start += static_cast<std::size_t>(other - rest.begin()) + (isPair ? 1 : 0);
  return {rest.begin(), end};
}

bool MayBreakBetween(int before, int after) {
  // Marks, small kana and what repeats begin no line; what opens ends none.
  static constexpr std::u32string_view kNeverFirst =
      U",.:;!?)]}%"
      U"\u2019\u201D\u2026\u3001\u3002\u3005\u3009\u300B\u300D\u300F\u3011\u3015\u3041\u3043"
      U"\u3045\u3047\u3049\u3063\u3083\u3085\u3087\u308E\u30A1\u30A3\u30A5\u30A7\u30A9\u30C3\u30E3"
      U"\u30E5\u30E7\u30EE\u30F5\u30F6\u30FB\u30FC\uFF01\uFF05\uFF09\uFF0C\uFF0E\uFF1A\uFF1B\uFF1F"
      U"\uFF3D\uFF5D";
  static constexpr std::u32string_view kNeverLast =
      U"([{\u2018\u201C\u3008\u300A\u300C\u300E\u3010\u3014\uFF08\uFF3B\uFF5B";
  const auto isIn = [](std::u32string_view set, int character) {
    return set.find(static_cast<char32_t>(character)) != set.npos;
  };
  const auto isWide = [](int c) {
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFF00 && c <= 0xFF60) || (c >= 0x20000 && c <= 0x3FFFF);
  };
  return before > ' ' && after > ' ' && (isWide(before) || isWide(after)) &&
         !isIn(kNeverFirst, after) && !isIn(kNeverLast, before);
}

std::vector<std::string> ListParts(const char* text) {
  std::vector<std::string> parts;
  std::string list = text;
  char* position = nullptr;
  for (const char* part = ustrtok_r(list.data(), Ascii(","), &position); part;
       part = ustrtok_r(nullptr, Ascii(","), &position))
    if (std::string name = Trimmed(part); !name.empty()) parts.push_back(std::move(name));
  return parts;
}

std::string Trimmed(const char* text) {
  while (uisspace(ugetc(text))) text += CharacterAt(text).bytes;
  const std::size_t length = std::strlen(text);
  if (length > 0 && IsAscii(text[length - 1]) && !uisspace(text[length - 1])) return text;
  const char* end = text;
  for (const char* next = text; *next != '\0';) {
    const bool isSpace = uisspace(ugetc(next));
    next += CharacterAt(next).bytes;
    if (!isSpace) end = next;
  }
  return {text, end};
}

}  // namespace zel
