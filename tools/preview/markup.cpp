#include "tools/preview/markup.h"

#include <cstdint>

namespace zel {

std::string HtmlText(std::string_view text) {
  std::string html;
  for (const char c : text)
    if (c == '&')
      html += "&amp;";
    else if (c == '<')
      html += "&lt;";
    else if (c == '"')
      html += "&quot;";
    else
      html += c;
  return html;
}

std::string JsonText(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < ' ') {
      quoted += "\\u00";
      quoted += kDigits[code >> 4];
      quoted += kDigits[code & 15];
      continue;
    }
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kLetters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view part = bytes.substr(i, 3);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k)
      bits = bits << 8 | (k < part.size() ? static_cast<unsigned char>(part[k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k)
      text += k <= part.size() ? kLetters[bits >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

}  // namespace zel
