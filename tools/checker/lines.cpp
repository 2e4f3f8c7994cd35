#include "tools/checker/lines.h"

#include <map>
#include <utility>
#include <vector>

#include "launcher/language.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr const char* kNobody = "[?]";

// White space outside of the value that the code pages of languages do not have; empty for none.
std::string ForeignBlank(std::string line, const std::string& value) {
  if (!value.empty()) line.erase(line.rfind(value), value.size());
  for (const char* at = line.c_str(); *at != '\0';) {
    const char* const start = at;
    if (const int c = ugetxc(&at); !IsAscii(*start) && uisspace(c)) return {start, at};
  }
  return {};
}

// The name in a line that is meant as a head but is none.
std::string MeantName(const std::string& line) {
  const std::string inside = line.substr(line.front() == '[' ? 1 : 0);
  std::string name;
  for (const char* at = inside.c_str(); *at != '\0' && *at != ']';) {
    const char* const start = at;
    if (const int c = ugetxc(&at); !uisspace(c) && c != '=' && c != '#') name.append(start, at);
  }
  return name;
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

bool IsComment(const std::string& trimmed) {
  return trimmed.empty() || trimmed.front() == '#' || trimmed.front() == ';';
}

bool HoldsText(const std::string& text) {
  for (std::size_t position = 0; position < text.size();)
    if (!IsComment(Trimmed(Sound(std::string{NextLine(text, position)}).c_str()))) return true;
  return false;
}

SectionFile CheckLines(Findings& findings, const std::string& file, const std::string& text,
                       const char* home) {
  using Line = SectionFile::Line;
  const bool isUnicode = WantsUnicode();
  const LanguageRow& english = Languages().front();
  std::string mended, section;
  std::map<std::string, int> heads, keys;
  std::vector<TwiceKey> twice;  // in the section so far
  bool isLoose = false;         // which is said once
  int number = 0;
  for (std::size_t position = 0; position < text.size(); mended += '\n') {
    const std::string line = Sound(std::string{NextLine(text, position)});
    const std::string trimmed = Trimmed(line.c_str());
    const Place place{file, ++number};
    if (IsComment(trimmed)) continue;
    const auto [kind, name, value, hasEquals] = SectionFile::ReadLine(line);
    const std::string foreign = isUnicode ? std::string{} : ForeignBlank(line, value);
    // "NAME]" is meant as a head, too.
    if (kind == Line::kHead || trimmed.front() == '[' ||
        (name == trimmed && name.find_first_of("[]") == name.size() - 1)) {
      const bool isHead =
          kind == Line::kHead && !name.empty() && name.find(']') == std::string::npos;
      const std::string meant = isHead ? name : MeantName(trimmed);
      std::string head = meant.empty() ? kNobody : '[' + meant + ']';
      if (!isHead || !foreign.empty())
        findings.Add(Msg::kBadHead, place, {foreign.empty() ? trimmed : line, meant});
      else if (!IsComment(value))
        findings.Add(Msg::kBehindHead, place, {value, head});
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
    if (section == kNobody || kind != Line::kEntry) continue;
    if (section.empty()) {
      if (!isLoose) findings.Add(Msg::kLooseKey, place, {name, home});
      isLoose = true;
      continue;
    }
    if (!hasEquals) {
      const bool isBehind = trimmed.find('=') != std::string::npos;
      findings.Add(Msg::kNoEquals, place, {isBehind ? name : trimmed, isBehind ? "behind" : "in"});
      if (value.empty()) continue;
    }
    const auto [first, isNew] = keys.try_emplace(Upper(name), number);
    if (!isNew) {
      if (hasEquals) twice.push_back({name, number, first->second});
      continue;
    }
    if (!foreign.empty())
      findings.Add(Msg::kNoLetter, place, {foreign, english.code, english.encoding});
    if (value.empty()) findings.Add(Msg::kEmptyValue, place, {name});
    mended += line;
  }
  AddTwice(findings, file, twice);
  return SectionFile::FromUtf8(std::move(mended));
}

}  // namespace zel
