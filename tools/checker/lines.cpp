#include "tools/checker/lines.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr const char* kNobody = "[?]";
constexpr const char* kBlanks = " \t\v\f";

std::string Strip(const std::string& text) {
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

bool IsComment(const std::string& stripped) {
  return stripped.empty() || stripped.front() == '#' || stripped.front() == ';';
}

// "[NAME]" for a line that is meant as a head but is none; empty for any other line.
std::string MeantHead(const std::string& stripped) {
  if (stripped.front() != '[') {
    const bool hasEnd = stripped.find_first_of(" \t=[]") == stripped.size() - 1;
    return hasEnd && stripped.back() == ']' ? '[' + stripped : std::string{};
  }
  const std::size_t end = std::min(stripped.find(']'), stripped.size());
  std::string name = stripped.substr(1, end - 1);
  const bool isHead =
      end < stripped.size() && !name.empty() && name.find_first_of(" \t=#") == std::string::npos &&
      std::string{"\0 \t\v\f=#", 7}.find(stripped.c_str()[end + 1]) != std::string::npos;
  if (isHead) return {};
  std::erase_if(name, [](char c) { return c == ' ' || c == '\t' || c == '=' || c == '#'; });
  return '[' + name + ']';
}

// A key that its section has already.
struct TwiceKey {
  std::string name;
  int line, first;
};

// Where many keys come again, they are those of a section whose head is missing.
void AddTwice(Findings& findings, const std::string& file, const std::vector<TwiceKey>& keys) {
  constexpr std::size_t kFew = 2;
  if (keys.size() > kFew)
    findings.Add(Msg::kHeadMissing, {file, keys.front().line},
                 {keys.front().name, std::to_string(keys.size() - 1)});
  else
    for (const TwiceKey& key : keys)
      findings.Add(Msg::kKeyTwice, {file, key.line}, {key.name, std::to_string(key.first)});
}

}  // namespace

std::string Upper(std::string text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return text;
}

SectionFile CheckLines(Findings& findings, const std::string& file, std::string text,
                       const char* home) {
  std::string mended, section;
  std::map<std::string, int> heads, keys;
  std::vector<TwiceKey> twice;  // in the section so far
  bool isLoose = false;         // which is said once
  int number = 0;
  for (std::size_t position = 0; position < text.size(); mended += '\n') {
    const std::string line{NextLine(text, position)};
    const std::string stripped = Strip(line);
    const Place place{file, ++number};
    if (IsComment(stripped)) continue;
    std::string head = MeantHead(stripped);
    if (!head.empty()) {
      findings.Add(Msg::kBadHead, place, {stripped, head.substr(1, head.size() - 2)});
      if (head == "[]") head = kNobody;
    } else if (stripped.front() == '[') {
      head = stripped.substr(0, stripped.find(']') + 1);
      const std::string rest = Strip(stripped.substr(head.size()));
      if (!IsComment(rest)) findings.Add(Msg::kBehindHead, place, {rest, head});
    }
    if (!head.empty()) {
      section = Upper(head);
      keys.clear();
      AddTwice(findings, file, std::exchange(twice, {}));
      const auto [first, isNew] = heads.try_emplace(section, number);
      if (!isNew)
        findings.Add(Msg::kSectionTwice, place,
                     {head.substr(1, head.size() - 2), std::to_string(first->second)});
      // What it says again is no slip of its own.
      if (!isNew) section = kNobody;
      mended += isNew ? head : kNobody;
      continue;
    }
    const std::size_t nameEnd = stripped.find_first_of(" \t\v\f=#");
    const std::string name = stripped.substr(0, nameEnd);
    const std::size_t sign =
        stripped.find_first_not_of(kBlanks, std::min(nameEnd, stripped.size()));
    if (section == kNobody || name.empty()) continue;
    if (section.empty()) {
      if (!isLoose) findings.Add(Msg::kLooseKey, place, {name, home});
      isLoose = true;
      continue;
    }
    if (sign == std::string::npos || stripped[sign] != '=') {
      const bool isBehind = stripped.find('=') != std::string::npos;
      findings.Add(Msg::kNoEquals, place, {isBehind ? name : stripped, isBehind ? "behind" : "in"});
      continue;
    }
    const auto [first, isNew] = keys.try_emplace(Upper(name), number);
    if (!isNew) {
      twice.push_back({name, number, first->second});
      continue;
    }
    if (sign + 1 == stripped.size()) findings.Add(Msg::kEmptyValue, place, {name});
    mended += line;
  }
  AddTwice(findings, file, twice);
  return SectionFile::FromUtf8(std::move(mended));
}

}  // namespace zel
