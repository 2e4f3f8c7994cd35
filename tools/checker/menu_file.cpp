#include "tools/checker/menu_file.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>
#include <string_view>

#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/menu_keys.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "tools/checker/files.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"
#include "tools/checker/settings_check.h"
#include "tools/checker/skin_check.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

using Entry = SectionFile::Entry;
using Section = SectionFile::Section;
using Keys = MenuKeys;

constexpr int kMostGuessed = 500;  // sections, and numbers of items

// The number of a section "LINE12", without zeros before it; 0 for any other section.
int ItemNumber(const std::string& section) {
  constexpr std::size_t kStem = 4;
  int number = 0;
  if (section.size() > kStem)
    std::from_chars(section.data() + kStem, section.data() + section.size(), number);
  return number > 0 && Upper(section) == "LINE" + std::to_string(number) ? number : 0;
}

// Puts the key of a name, and the language behind its point, into `line`.
bool FindKey(Keys keys, const std::string& name, MenuLine& line) {
  for (const MenuKey& key : keys) {
    const std::string_view stem = key.name;
    const bool isKey = Upper(name.substr(0, stem.size())) == Upper(key.name);
    if (!isKey || (name.size() > stem.size() && !(key.isTranslated && name[stem.size()] == '.')))
      continue;
    line.key = &key;
    line.language = name.size() > stem.size() ? name.substr(stem.size() + 1) : std::string{};
    return true;
  }
  return false;
}

// "Title_de" and "Title[de]" mean "Title.de".
std::string WithPoint(std::string name) {
  const std::size_t end = name.find_last_not_of("])");
  const std::size_t sign = name.find_last_of("_-[(", end);
  if (sign == std::string::npos || end - sign != 2) return name;
  name.erase(end + 1);
  name[sign] = '.';
  return name;
}

std::string NearestKey(Keys keys, const std::string& said) {
  const std::string name = WithPoint(said);
  MenuLine line;
  if (name != said && FindKey(keys, name, line))
    return line.key->name + name.substr(name.find('.'));
  std::vector<std::string> names;
  for (const MenuKey& key : keys) names.emplace_back(key.name);
  const std::size_t point = name.find('.');
  const std::string nearest = Nearest(name.substr(0, point), names);
  return nearest.empty() || point == std::string::npos ? nearest : nearest + name.substr(point);
}

// The one key that begins with the name, which may have another value; empty for none.
std::string LongerKey(Keys keys, const std::string& name) {
  constexpr std::size_t kShort = 4;
  std::string longer;
  for (const MenuKey& key : keys) {
    if (name.size() < kShort || !Upper(key.name).starts_with(Upper(name))) continue;
    if (!longer.empty()) return {};
    longer = key.name;
  }
  return longer;
}

// Reads one file.
class Reader {
 public:
  Reader(Findings& findings, Pictures& pictures, const std::string& name, bool takesSizes)
      : findings_{findings}, pictures_{pictures}, takesSizes_{takesSizes} {
    file_.name = name;
  }

  MenuFile Read(const Place* link) {
    std::string text;
    file_.isRead = ReadChecked(findings_, file_.name, kLongestWholeFile, &text, link);
    if (!file_.isRead) return std::move(file_);
    if (!IsMenu(text)) {
      if (link && HoldsText(text))
        findings_.Add(Msg::kNoMenu, *link, {file_.name});
      else
        findings_.Add(Msg::kEmptyMenu, file_.At(1));
      file_.isRead = false;
      return std::move(file_);
    }
    CheckEncoding(text);
    FindNames(text);
    const SectionFile content = CheckLines(findings_, file_.name, text, kGeneralSection);
    for (const Section& section : content.Sections()) names_.insert(Upper(section.Name()));
    for (const Section& section : content.Sections()) Take(section);
    TakeStrays();
    return std::move(file_);
  }

 private:
  // False for another file, of which each line would be wrong.
  bool IsMenu(const std::string& text) const {
    const SectionFile content = SectionFile::FromUtf8("[all]\n" + text);
    const auto has = [&content](const auto& isSo) {
      return std::any_of(content.Sections().begin(), content.Sections().end(), isSo);
    };
    if (has([this](const Section& section) { return IsKnown(section.Name()); })) return true;
    const bool isOther = has([](const Section& section) {
      return Upper(section.Name()) == Upper(kSettingsSection) || IsSkinSection(section.Name());
    });
    return !isOther && has([](const Section& section) {
      return std::any_of(
          section.Entries().begin(), section.Entries().end(), [](const Entry& entry) {
            MenuLine line;
            return FindKey(kItemKeys, entry.name, line) || FindKey(kGeneralKeys, entry.name, line);
          });
    });
  }

  void CheckEncoding(const std::string& text) {
    int number = 0;
    for (std::size_t position = 0; position < text.size();) {
      const std::string line{NextLine(text, position)};
      ++number;
      if (Sound(line, U_UTF8) == line) continue;
      // The others are written alike.
      findings_.Add(Msg::kMenuEncoding, file_.At(number));
      return;
    }
  }

  // What was written instead of a key, as far as that is plain: also "Hint" for the name of a file.
  static std::string MeantKey(Keys keys, const Entry& entry) {
    const bool isFile = Upper(entry.name).starts_with("HINT") && IsFile(entry.value.c_str());
    if (isFile && keys.data() == kGeneralKeys.data() && keys.size() == kGeneralKeys.size())
      return "HintFile";
    return NearestKey(keys, entry.name);
  }

  void FindNames(const std::string& text) {
    const SectionFile content = SectionFile::FromUtf8("[all]\n" + text);
    for (const Section& section : content.Sections())
      for (Entry entry : section.Entries()) {
        entry.value = WithoutComment(entry.value, false);
        --entry.line;
        // Of a misspelt one it is said.
        if (Upper(entry.name).starts_with("HINT")) file_.hints.insert(entry.value);
        if (Upper(entry.name) == "SUBMENU") file_.submenus.push_back(std::move(entry));
      }
  }

  // What a section is meant for by the keys that it has; empty where that is not plain.
  std::string MeantByKeys(const Section& section) const {
    const auto has = [&section](Keys keys) {
      return std::any_of(section.Entries().begin(), section.Entries().end(), [keys](const auto& e) {
        MenuLine line;
        return FindKey(keys, e.name, line);
      });
    };
    if (has(kGeneralKeys)) return names_.contains(kGeneralSection) ? "" : kGeneralSection;
    const std::string& name = section.Name();
    // [LINE1.de] is none of its own.
    const std::size_t point = name.find('.');
    if (!has(kItemKeys) ||
        (point != std::string::npos && names_.contains(Upper(name.substr(0, point)))))
      return {};
    const std::string item = "LINE" + name.substr(name.find_last_not_of("0123456789") + 1);
    if (ItemNumber(item) > 0) return names_.contains(item) ? std::string{} : item;
    for (int n = 1; n <= kMostGuessed; ++n)
      if (std::string next = "LINE" + std::to_string(n); !names_.contains(next)) return next;
    return {};
  }

  // What the section may be called; empty for nothing.
  std::string Known(const Section& section, int line) {
    const std::string& name = section.Name();
    if (IsKnown(name)) return name;
    if (name == kNoName) return {};
    Size size;
    if (ReadSectionSize(name, &size)) {
      findings_.Add(Msg::kSizeUnread, file_.At(line), {name});
      return {};
    }
    // Looking for names takes its time, and nobody reads that many messages.
    if (findings_.IsFull(Msg::kUnknownSection, file_.name) || ++guessed_ > kMostGuessed) return {};
    std::vector<std::string> missing, there;
    const int last = std::min<int>(kMostGuessed, static_cast<int>(names_.size()) + 1);
    for (int n = 1; n <= last; ++n) {
      const std::string item = "LINE" + std::to_string(n);
      (names_.contains(item) ? there : missing).push_back(item);
    }
    for (const Size usual : kUsualScreens) missing.push_back(SectionFor(usual));
    missing.push_back(kGeneralSection);
    std::string meant = Nearest(name, missing);
    if (meant.empty() && name.size() > 4 && std::string{kGeneralSection}.starts_with(Upper(name)))
      meant = kGeneralSection;
    if (meant.empty()) meant = MeantByKeys(section);
    const bool isFree = !meant.empty() && !names_.contains(Upper(meant));
    if (meant.empty()) meant = Nearest(name, there);
    // Of [ENTRY1], [ENTRY2] and so on it is said once.
    const std::string stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    if (stem == name || findings_.IsFirst(Msg::kUnknownSection, file_.name + stem))
      findings_.Add(Msg::kUnknownSection, file_.At(line), {name}, meant);
    if (isFree) names_.insert(Upper(meant));
    if (ItemNumber(meant) == 0) file_.isLayoutKnown = false;
    return isFree ? meant : std::string{};
  }

  bool IsKnown(const std::string& name) const {
    Size size;
    return ItemNumber(name) > 0 || Upper(name) == kGeneralSection ||
           (ReadSectionSize(name, &size) && (takesSizes_ || IsUsual(size)));
  }

  void Take(const Section& section) {
    const int line = section.Heads().front();
    const std::string name = Known(section, line);
    if (name.empty()) return;
    MenuSection taken{name, line, ItemNumber(name), {}};
    const bool isGeneral = Upper(name) == kGeneralSection;
    const Keys keys = taken.number > 0 ? kItemKeys : isGeneral ? kGeneralKeys : kSizeKeys;
    for (const Entry& entry : section.Entries()) TakeLine(taken, keys, entry);
    if (isGeneral) file_.linesNumber = taken.Number("LinesNumber");
    if (taken.number > 0)
      file_.items.push_back(std::move(taken));
    else
      file_.screens.emplace(Upper(name), std::move(taken));
  }

  // True for a key of other sections, which is said. What the general one lacks is taken for it.
  bool IsOfOther(const MenuSection& section, Keys keys, const Entry& entry) {
    MenuLine line{nullptr, {}, entry, false};
    const bool isItems = keys.data() != kItemKeys && FindKey(kItemKeys, entry.name, line);
    if (isItems ? !LongerKey(keys, entry.name).empty() : !FindKey(kGeneralKeys, entry.name, line))
      return false;
    const Place place = file_.At(entry.line);
    // Where no section is for them, it is its head that is missing.
    if (names_.contains(kGeneralSection) || findings_.IsFirst(Msg::kWrongSection, file_.name))
      findings_.Add(Msg::kWrongSection, place,
                    {entry.name, section.name,
                     isItems ? "the head of its item, such as [LINE1]" : "[MENU_CONFIGURATION]"});
    if (line.key->place) file_.isLayoutKnown = false;
    if (!isItems) strays_.push_back(std::move(line));
    return true;
  }

  void TakeStrays() {
    const auto general = file_.screens.find(kGeneralSection);
    if (general == file_.screens.end()) return;
    for (MenuLine& line : strays_) {
      if (general->second.Find(line.key->name, line.language)) continue;
      CheckValue(findings_, pictures_, file_.At(line.entry.line), line);
      general->second.lines.push_back(std::move(line));
    }
    file_.linesNumber = general->second.Number("LinesNumber");
  }

  void TakeLine(MenuSection& section, Keys keys, const Entry& entry) {
    const Place place = file_.At(entry.line);
    MenuLine line{nullptr, {}, entry, false};
    if (!FindKey(keys, entry.name, line)) {
      if (IsOfOther(section, keys, entry)) return;
      if (findings_.Has(Msg::kNoEquals, place) || findings_.IsFull(Msg::kUnknownKey, file_.name))
        return;
      const std::string nearest = MeantKey(keys, entry);
      findings_.Add(Msg::kUnknownKey, place, {entry.name},
                    nearest.empty() ? LongerKey(keys, entry.name) : nearest);
      if (section.number == 0) file_.isLayoutKnown = false;
      if (nearest.empty() || !FindKey(keys, nearest, line)) return;
      if (section.Find(line.key->name, line.language)) return;
      line.entry.name = nearest;
    }
    CheckValue(findings_, pictures_, place, line);
    // A place or a zoom that is none says nothing of where things lie.
    if (findings_.Has(Msg::kNoZoom, place)) file_.isLayoutKnown = false;
    if (section.number == 0 && line.key->kind == MenuKey::kNumber && !line.entry.value.empty() &&
        !IsNumber(line.entry.value))
      file_.isLayoutKnown = false;
    section.lines.push_back(std::move(line));
  }

  Findings& findings_;
  Pictures& pictures_;
  bool takesSizes_;
  std::set<std::string> names_;
  std::vector<MenuLine> strays_;  // of the general section in others
  int guessed_ = 0;               // sections that nobody knows
  MenuFile file_;
};

}  // namespace

const MenuLine* MenuSection::Find(const char* key, const std::string& language) const {
  const auto found = std::find_if(lines.begin(), lines.end(), [&](const MenuLine& line) {
    return std::string_view{line.key->name} == key && line.language == language;
  });
  return found == lines.end() ? nullptr : &*found;
}

std::string MenuSection::Text(const char* key) const {
  const MenuLine* found = Find(key);
  return found ? found->entry.value : std::string{};
}

int MenuSection::Number(const char* key) const { return ParsedNumber(Text(key)); }

int MenuSection::LineOf(const char* key) const {
  const MenuLine* found = Find(key);
  return found ? found->entry.line : line;
}

const MenuSection& MenuFile::General() const {
  static const MenuSection kNone;
  const auto found = screens.find(kGeneralSection);
  return found == screens.end() ? kNone : found->second;
}

bool HasLooseLine(const Findings& findings, const MenuFile& menu, const MenuSection& section) {
  int last = section.line;
  for (const MenuLine& line : section.lines) last = std::max(last, line.entry.line);
  for (int line = section.line; line <= last + 1; ++line)
    if (findings.Has(Msg::kNoEquals, menu.At(line))) return true;
  return false;
}

MenuFile ReadMenuFile(Findings& findings, Pictures& pictures, const Place* link,
                      const std::string& name, bool takesSizes) {
  return Reader{findings, pictures, name, takesSizes}.Read(link);
}

}  // namespace zel
