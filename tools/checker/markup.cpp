#include "tools/checker/markup.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zel {
namespace {

// Whether "\\n" or "\\t" there are part of a path, as in "C:\\new", rather than an escape.
bool IsInPath(const std::string& text, std::size_t sign) {
  const std::size_t before = text.find_last_of(" \t(\"'", sign);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  const std::string word = text.substr(start, text.find_first_of(" \t", sign) - start);
  if (word.size() > 1 && (word[1] == ':' || word.starts_with("\\\\"))) return true;
  for (std::size_t i = word.find('\\'); i < word.size(); i = word.find('\\', i + 1))
    if (word[i + 1] != 'n' && word[i + 1] != 't' && word[i + 1] != 'r') return true;
  // "dos\\net.exe", but not "Done.\\nnext."
  const std::size_t point = word.find('.', sign - start);
  return sign > start && text[sign - 1] >= '0' && point != std::string::npos &&
         point + 1 < word.size();
}

}  // namespace

std::string Markup(const std::string& text, std::size_t& position) {
  for (std::size_t i = text.find_first_of("&<\\", position); i < text.size();
       i = text.find_first_of("&<\\", i + 1)) {
    const char close = text[i] == '&' ? ';' : text[i] == '<' ? '>' : '\0';
    const bool isEscape = text[i] == '\\' && i + 1 < text.size() &&
                          (text[i + 1] == 'n' || text[i + 1] == 't') && !IsInPath(text, i);
    const std::size_t end =
        isEscape ? i + 1
                 : text.find_first_not_of(
                       "#/abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", i + 1);
    if (!isEscape && (close == '\0' || end >= text.size() || end == i + 1 || text[end] != close))
      continue;
    position = end + 1;
    return text.substr(i, position - i);
  }
  position = text.size();
  return {};
}

std::string MarkupOfHint(const std::string& text) {
  constexpr std::string_view kTags[] = {"b",  "i",  "u",  "p",    "br",   "em",    "strong",
                                        "li", "ul", "tt", "code", "font", "center"};
  for (std::size_t i = 0; i < text.size();) {
    std::string found = Markup(text, i);
    if (found.empty() || found.front() != '<') return found;
    std::string tag = found.substr(1, found.size() - 2);
    std::erase(tag, '/');
    if (std::find(std::begin(kTags), std::end(kTags), tag) != std::end(kTags)) return found;
  }
  return {};
}

}  // namespace zel
