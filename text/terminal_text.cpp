#include "text/terminal_text.h"

#include <linux/kd.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cwchar>
#include <cwctype>

#include "text/state.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr wchar_t kUnknown = L'?';
constexpr wchar_t kFirstLetter = 0x80;  // that may be missing

// clang-format off
constexpr wchar_t kFirstLatin = 0xA0;
constexpr const char* kLatin[] = {
    " ", "!", "c", "GBP", "EUR", "JPY", "|", "S", "\"", "(C)", "a", "\"", "-", "-", "(R)", "-",
    " degrees", "+/-", "2", "3", "'", "u", "P", "*", ",", "1", "o", "\"", "1/4", "1/2", "3/4", "?",
    "A", "A", "A", "A", "Ae", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I", "I",
    "D", "N", "O", "O", "O", "O", "Oe", "x", "O", "U", "U", "U", "Ue", "Y", "Th", "ss",
    "a", "a", "a", "a", "ae", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",
    "d", "n", "o", "o", "o", "o", "oe", "/", "o", "u", "u", "u", "ue", "y", "th", "y"};
constexpr wchar_t kFirstExtended = 0x100;
constexpr char kExtended[] =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiJjJjKkkLlLlLlLlLlNnNnNnnNn"
    "OoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
constexpr wchar_t kFirstCyrillic = 0x410;
constexpr const char* kCyrillic[] = {
    "A", "B", "V", "G", "D", "E", "Zh", "Z", "I", "J", "K", "L", "M", "N", "O", "P",
    "R", "S", "T", "U", "F", "Kh", "Ts", "Ch", "Sh", "Shch", "\"", "Y", "'", "E", "Yu", "Ya",
    "a", "b", "v", "g", "d", "e", "zh", "z", "i", "j", "k", "l", "m", "n", "o", "p",
    "r", "s", "t", "u", "f", "kh", "ts", "ch", "sh", "shch", "\"", "y", "'", "e", "yu", "ya"};
struct Sign {
  wchar_t sign;
  const char* near;
};
constexpr Sign kSigns[] = {
    {0x401, "Yo"}, {0x451, "yo"},
    {0x2010, "-"}, {0x2011, "-"}, {0x2012, "-"}, {0x2013, "-"}, {0x2014, "-"}, {0x2018, "'"},
    {0x2019, "'"}, {0x201A, ","}, {0x201C, "\""}, {0x201D, "\""}, {0x201E, "\""}, {0x2022, "*"},
    {0x2026, "..."}, {0x20AC, "EUR"}, {0x2122, "(TM)"}, {0x2190, "<-"}, {0x2192, "->"},
    {0x2212, "-"}, {0x3000, " "}, {0x3001, ","}, {0x3002, "."}};
// clang-format on

// In ASCII; empty for what has nothing near.
std::string Near(wchar_t letter) {
  const auto in = [letter](wchar_t first, std::size_t count) {
    return first <= letter && letter < first + static_cast<wchar_t>(count);
  };
  if (in(kFirstLatin, std::size(kLatin))) return kLatin[letter - kFirstLatin];
  if (in(kFirstExtended, sizeof kExtended - 1)) return {kExtended[letter - kFirstExtended]};
  if (in(kFirstCyrillic, std::size(kCyrillic))) return kCyrillic[letter - kFirstCyrillic];
  const auto found = std::find_if(std::begin(kSigns), std::end(kSigns),
                                  [letter](const Sign& row) { return row.sign == letter; });
  return found == std::end(kSigns) ? "" : found->near;
}

bool CanShow(wchar_t letter) {
  if (letter < kFirstLetter) return true;
  char bytes[MB_LEN_MAX];
  std::mbstate_t state{};
  if (wcwidth(letter) < 0 || std::wcrtomb(bytes, letter, &state) == static_cast<std::size_t>(-1))
    return false;
  const std::vector<bool>& known = textState.lettersOfFont;
  const std::size_t number = static_cast<std::uint32_t>(letter);
  return known.empty() || (number < known.size() && known[number]);
}

void Append(std::wstring& shown, wchar_t letter) {
  if (std::iswcntrl(static_cast<std::wint_t>(letter)) || letter < L' ' || letter == 0x7F) {
    shown += L' ';
  } else if (CanShow(letter)) {
    shown += letter;
  } else {
    const std::string near = Near(letter);
    if (near.empty()) shown += kUnknown;
    shown.append(near.begin(), near.end());
  }
}

int ColumnsOf(wchar_t letter) { return std::max(0, wcwidth(letter)); }

// Whether a line may end before the letter there, which is not the first.
bool MayEndBefore(const std::wstring& text, std::size_t at) {
  return text[at] == L' ' ||
         MayBreakBetween(static_cast<int>(text[at - 1]), static_cast<int>(text[at]));
}

}  // namespace

void KeepToFontOf(int terminal) {
  unimapdesc map{};
  ioctl(terminal, GIO_UNIMAP, &map);  // says how many there are
  if (map.entry_ct == 0) return;
  std::vector<unipair> pairs(map.entry_ct);
  map.entries = pairs.data();
  if (ioctl(terminal, GIO_UNIMAP, &map) != 0) return;
  textState.lettersOfFont.assign(std::size_t{1} << 16, false);
  for (const unipair& pair : pairs) textState.lettersOfFont[pair.unicode] = true;
}

std::wstring Shown(const char* text) {
  std::wstring shown;
  while (const int letter = ugetxc(&text)) Append(shown, static_cast<wchar_t>(letter));
  return shown;
}

std::vector<std::wstring> ShownLines(const char* text) {
  std::vector<std::wstring> lines(1);
  while (const int letter = ugetxc(&text)) {
    if (letter == '\n')
      lines.emplace_back();
    else
      Append(lines.back(), static_cast<wchar_t>(letter));
  }
  return lines;
}

int Columns(const std::wstring& text) {
  int columns = 0;
  for (const wchar_t letter : text) columns += ColumnsOf(letter);
  return columns;
}

std::wstring CutToColumns(const std::wstring& text, int columns) {
  std::size_t length = 0;
  while (length < text.size() && ColumnsOf(text[length]) <= columns)
    columns -= ColumnsOf(text[length++]);
  return text.substr(0, length);
}

std::vector<std::wstring> Wrapped(const std::wstring& text, int columns) {
  std::vector<std::wstring> lines;
  for (std::size_t start = text.find_first_not_of(L' '); start != std::wstring::npos;) {
    std::size_t length = std::max<std::size_t>(
        1, CutToColumns(text.substr(start, static_cast<std::size_t>(std::max(columns, 1))), columns)
               .size());
    if (start + length < text.size()) {
      std::size_t end = length;
      while (end > 0 && !MayEndBefore(text, start + end)) --end;
      if (end > 0) length = end;
    }
    std::wstring line = text.substr(start, length);
    line.erase(line.find_last_not_of(L' ') + 1);
    lines.push_back(std::move(line));
    start = text.find_first_not_of(L' ', start + length);
  }
  return lines;
}

std::string Encoded(const std::wstring& text) {
  std::string bytes;
  std::mbstate_t state{};
  for (const wchar_t letter : text) {
    char encoded[MB_LEN_MAX];
    const std::size_t count = std::wcrtomb(encoded, letter, &state);
    if (count != static_cast<std::size_t>(-1)) bytes.append(encoded, count);
  }
  return bytes;
}

}  // namespace zel
