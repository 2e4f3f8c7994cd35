// Text in Allegro's current text format.
//
// All text that the toolkit shows is in the format that set_uformat chose; names of files, sections
// and keys that the program itself knows are ASCII and are converted here, in one place.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "toolkit/base/allegro.h"

namespace zel {

// An ASCII constant in the current text format, for the length of one call:
//   get_config_string(Ascii("Skin"), Ascii("title"), Ascii(""))
class Ascii {
 public:
  explicit Ascii(const char* ascii);
  Ascii(const Ascii&) = delete;
  Ascii& operator=(const Ascii&) = delete;
  operator const char*() const { return text_; }  // valid while this object lives

 private:
  const char* text_;
  std::string converted_;  // only used when the format needs another form than ASCII
};

// Another current text format, for a while.
class FormatGuard {
 public:
  explicit FormatGuard(int format) { set_uformat(format); }
  FormatGuard(const FormatGuard&) = delete;
  FormatGuard& operator=(const FormatGuard&) = delete;
  ~FormatGuard() { set_uformat(before_); }

 private:
  int before_ = get_uformat();
};

// A byte that is a character by itself in every format but U_UNICODE.
constexpr bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

// A text of one of Allegro's text formats, either may be U_CURRENT, in another one. In code pages
// ASCII characters are taken to be themselves.
std::string Converted(const std::string& text, int from, int to);

// A text in a format whose terminator is one zero byte (all but U_UNICODE), cut at a whole
// character: to so many bytes, terminator not counted, or to so many characters. Bytes that are no
// character of the format come out as Allegro shows them, as "^", so that what was cut can be
// walked safely.
std::string CutToBytes(const char* text, std::size_t bytes);
std::string CutToChars(const char* text, int count);
// The same without cutting, for any of these formats.
std::string Sound(const std::string& text, int format = U_CURRENT);
// The line at `start`, without its end; `start` moves behind that, which is CR, LF or both in
// either order.
std::string_view NextLine(std::string_view text, std::size_t& start);
// Whether a line may end between two characters, by their code points, that no space parts: in
// Chinese and Japanese, but not before what closes or goes on, nor behind what opens.
bool MayBreakBetween(int before, int after);
// The parts of a list with commas, without white space at their ends; empty ones are left out.
std::vector<std::string> ListParts(const char* text);
// A text without white space (Allegro's uisspace) at its ends.
std::string Trimmed(const char* text);

// A text that takes no more than kBytes bytes, terminator included, in the current text format.
//
// A longer text is cut at a whole character. The storage grows with the text, so a list of
// thousands of items costs what the texts need and not what they may need.
template <std::size_t kBytes>
class FixedText {
 public:
  constexpr FixedText() = default;
  constexpr explicit FixedText(const char* text) {
    if (std::is_constant_evaluated())
      text_ = text;  // of the program's own, and short
    else
      Assign(text);
  }

  // Keeps what fits; a null text leaves the text empty.
  void Assign(const char* text) {
    if (text)
      text_ = CutToBytes(text, kBytes - kTerminator);
    else
      text_.clear();
  }
  void Clear() { text_.clear(); }
  bool IsEmpty() const { return text_.empty(); }
  const char* c_str() const { return text_.c_str(); }
  operator const char*() const { return text_.c_str(); }

 private:
  static constexpr std::size_t kTerminator = 1;
  std::string text_;
};

}  // namespace zel
