#include "tools/checker/items.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "launcher/default_start.h"
#include "launcher/menu_config.h"
#include "launcher/state.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "tools/checker/files.h"
#include "tools/checker/nearest.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

constexpr int kLargestStatus = 255;  // what a process can end with
constexpr int kLeastFailure = 126, kKilled = 137;
constexpr int kLongestWait = 3600;  // seconds that make sense

constexpr const char* kBetween[] = {" /", ",/", ";/", ":/"};  // two names of a list

// One of the keys that the item has; null for none.
const MenuLine* FirstOf(const MenuSection& item, std::initializer_list<const char*> keys) {
  const MenuLine* first = nullptr;
  for (const char* key : keys)
    if (const MenuLine* line = item.Find(key); line && !line->entry.value.empty())
      if (!first || line->entry.line < first->entry.line) first = line;
  return first;
}

// A pattern, a condition or a list of files.
bool IsMoreThanAName(const std::string& name) {
  const bool isList = std::any_of(std::begin(kBetween), std::end(kBetween), [&](const char* sign) {
    return name.find(sign) != std::string::npos;
  });
  return isList || name.find_first_of("*?$~") != std::string::npos || name.starts_with('!');
}

bool IsRelative(const std::string& name) {
  return !name.empty() && name.front() != '/' && !IsMoreThanAName(name);
}

// What of a word is meant for a shell: quotes, and the beginning of what it puts in their place; an
// apostrophe within a word may be one.
std::string Quoting(const std::string& word) {
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char next = i + 1 < word.size() ? word[i + 1] : '\0';
    const bool isName = next == '{' || next == '_' || std::isalpha(next & 0xFF);
    const bool isWithin = i > 0 && word[i - 1] != '=' && next != '\0';
    if (word[i] == '$' && isName) return word.substr(i);
    if (word[i] == '"' || (word[i] == '\'' && !isWithin)) return word.substr(i, 1);
  }
  return {};
}

// The same of a command, and signs between its words; empty for nothing.
std::string ShellSign(const std::string& command) {
  constexpr std::string_view kSigns[] = {"|", "||", "&", "&&", ";", "<", ">", ">>", "2>", "2>&1"};
  for (std::size_t start = 0; start < command.size();) {
    const std::size_t end = std::min(command.find(' ', start), command.size());
    const std::string word = command.substr(start, end - start);
    start = end + 1;
    const bool isSign = std::find(std::begin(kSigns), std::end(kSigns), word) != std::end(kSigns);
    const bool isRedirected = word.starts_with(">") || word.starts_with("2>");
    const bool isEnd = word.size() > 1 && word.back() == ';';
    if (isSign || isRedirected || isEnd || word.find("$(") != std::string::npos ||
        word.find('`') != std::string::npos)
      return isEnd ? ";" : word;
    if (std::string sign = Quoting(word); !sign.empty()) return sign;
  }
  return {};
}

// The system looks for an interpreter whose name ends with the carriage return.
bool EndsForeign(const char* script) {
  constexpr std::size_t kLongest = std::size_t{1} << 20;  // bytes; others are programs
  const std::string text = ReadText(script, kLongest);
  const std::size_t end = text.find("\r\n");
  return text.starts_with("#!") && end < text.find('\n');
}

// A word that rescue-menu does something for itself, where this is nearly one.
std::string MeantWord(const std::string& word) {
  constexpr const char* kKnown[] = {"desktop", "language", "log", "poweroff", "reboot", "shell"};
  constexpr std::size_t kShort = 3, kLongest = 10;  // letters
  for (const std::string known : kKnown)
    if (word.size() <= kLongest && Distance(word, known) <= (known.size() > kShort ? 1U : 0U))
      return word == known ? std::string{} : known;
  return {};
}

bool HasTitle(const MenuSection& item) {
  return std::any_of(item.lines.begin(), item.lines.end(), [](const MenuLine& line) {
    return std::string_view{line.key->name} == "Title" && !line.entry.value.empty();
  });
}

// The English title has a suffix, as if that were a language like the others.
bool IsEnglishMarked(const MenuSection& item) {
  return std::any_of(item.lines.begin(), item.lines.end(), [](const MenuLine& line) {
    return std::string_view{line.key->name} == "Title" && line.language.starts_with("en");
  });
}

bool IsSeparator(const MenuSection& item) { return item.Number("Separator") != 0; }
bool IsDisabled(const MenuSection& item) { return item.Number("Disable") > 0; }
// Choosing it ends the menu.
bool IsChoice(const MenuSection& item) {
  return !IsSeparator(item) && !IsDisabled(item) && !item.Has("Submenu");
}

class ItemCheck {
 public:
  ItemCheck(Findings& findings, const MenuFile& menu, const MenuSection& item)
      : findings_{findings}, menu_{menu}, item_{item} {}

  void Run() const {
    CheckShown();
    if (const std::string name = item_.Text("ShowIfFileExists");
        IsRelative(name) && !FileExists(name.c_str()))
      Add(Msg::kWaitRelative, "ShowIfFileExists", {name, "ShowIfFileExists"});
    for (const char* key : {"ShowIfFileExists", "WaitForFile", "WaitWhileFile"})
      if (const std::string name = item_.Text(key); IsMoreThanAName(name))
        Add(Msg::kWildcard, key, {name, key});
      else if (name.size() > 1 && name.back() == '/')
        Add(Msg::kWaitSlash, key, {name, key});
    if (IsSeparator(item_))
      CheckEffect({"Title", "Icon", "Submenu", "ExCode", "ExString", "HintSection", "WaitForFile",
                   "WaitWhileFile", "Timeout", "WaitText", "Disable"},
                  "on a separator");
    else if (item_.Has("Submenu"))
      CheckSubmenu();
    else if (IsDisabled(item_))
      CheckEffect({"WaitForFile", "WaitWhileFile", "Timeout", "WaitText"},
                  "on an item that is disabled");
    else
      CheckChoice();
  }

 private:
  void Add(Msg id, const char* key, std::vector<std::string> words = {}) const {
    findings_.Add(id, menu_.At(item_.LineOf(key)), std::move(words));
  }

  void CheckShown() const {
    if (IsSeparator(item_) || item_.Has("Icon") || item_.Has("Title")) return;
    if (item_.Has("Separator") && !IsNumber(item_.Text("Separator"))) return;  // which is said
    if (IsEnglishMarked(item_)) return;                                        // which is said
    if (HasLooseLine(findings_, menu_, item_)) return;
    if (HasTitle(item_))
      Add(Msg::kNotInEnglish, "", {item_.name, "Title"});
    else
      Add(Msg::kNeverShown, "", {item_.name});
  }

  void CheckEffect(std::initializer_list<const char*> keys, const char* where) const {
    if (const MenuLine* line = FirstOf(item_, keys))
      findings_.Add(Msg::kNoEffect, menu_.At(line->entry.line), {line->key->name, where});
  }

  void CheckSubmenu() const {
    if (const MenuLine* line = FirstOf(item_, {"ExCode", "ExString"}))
      findings_.Add(Msg::kSubmenuChoice, menu_.At(line->entry.line), {line->key->name});
    CheckEffect({"WaitForFile", "WaitWhileFile", "Timeout", "WaitText"}, "beside Submenu");
  }

  void CheckStatus() const {
    const int code = item_.Number("ExCode");
    const int seen = code & kLargestStatus;
    // A number that is none or too large is said to be.
    if (!IsNumber(item_.Text("ExCode")) || code == INT_MAX || code == INT_MIN) return;
    if (code != seen)
      Add(Msg::kStatusCut, "ExCode", {std::to_string(code), std::to_string(seen)});
    else if (code == 1)
      Add(Msg::kStatusFailure, "ExCode", {"1", "a failure"});
    else if (code == kKilled)
      Add(Msg::kStatusFailure, "ExCode", {std::to_string(code), "a menu that was killed"});
    else if (code >= kLeastFailure)
      Add(Msg::kStatusFailure, "ExCode",
          {std::to_string(code),
           code < kLeastFailure + 2 ? "a menu that could not be started" : "the end by a signal"});
  }

  void CheckChoice() const {
    const bool hasString = item_.Has("ExString");
    if (item_.Has("ExCode"))
      CheckStatus();
    else if (hasString)
      Add(Msg::kNoStatus, "ExString");
    else if (item_.Has("Title") || item_.Has("Icon"))
      Add(Msg::kNoChoice, "", {item_.name});
    if (item_.Has("ExCode") && item_.Number("ExCode") == 0 && !hasString)
      Add(Msg::kStatusZero, "ExCode");
    const std::string text = item_.Text("ExString");
    if (text.size() >= kOutputBytes) Add(Msg::kStringLong, "ExString");
    if (!std::all_of(text.begin(), text.end(), IsAscii)) Add(Msg::kStringAscii, "ExString");
    if (const std::string sign = ShellSign(text); !sign.empty())
      Add(Msg::kStringShell, "ExString", {sign});
    // A script of the disc's own, beside those of the example.
    const std::string script = "actions/" + text.substr(0, text.find(' '));
    if (const std::string meant = MeantWord(text); !meant.empty() && !IsThere(script))
      Add(Msg::kStringWord, "ExString", {text, meant});
    if (IsFile(script.c_str()) && access(script.c_str(), X_OK) != 0)
      Add(Msg::kNotExecutable, "ExString", {script});
    if (IsFile(script.c_str()) && EndsForeign(script.c_str()))
      Add(Msg::kScriptEnds, "ExString", {script});
    CheckWaiting();
  }

  void CheckWaiting() const {
    if (item_.Has("WaitForFile") && item_.Has("WaitWhileFile")) Add(Msg::kBothWaits, "WaitForFile");
    for (const char* key : {"WaitForFile", "WaitWhileFile"})
      if (const std::string name = item_.Text(key); IsRelative(name))
        Add(Msg::kWaitRelative, key, {name, key});
    const bool waits = item_.Has("WaitForFile") || item_.Has("WaitWhileFile");
    if (!waits) CheckEffect({"WaitText"}, "without a file to wait for");
    if (!item_.Has("Timeout")) return;
    if (!waits)
      Add(Msg::kTimeoutAlone, "Timeout");
    else if (item_.Number("Timeout") < 1 && IsNumber(item_.Text("Timeout")))
      Add(Msg::kTimeoutEndless, "Timeout", {item_.Text("Timeout")});
    else if (item_.Number("Timeout") > kLongestWait)
      Add(Msg::kTimeoutLong, "Timeout", {item_.Text("Timeout")});
  }

  Findings& findings_;
  const MenuFile& menu_;
  const MenuSection& item_;
};

void CheckNumbers(Findings& findings, const MenuFile& menu) {
  const MenuSection* beyond = nullptr;
  int largest = 0;
  for (const MenuSection& item : menu.items) {
    if (item.number > menu.linesNumber && (!beyond || item.number < beyond->number)) beyond = &item;
    largest = std::max(largest, item.number);
  }
  const std::string said = menu.General().Text("LinesNumber");
  if (beyond && (said.empty() ? menu.isLayoutKnown : IsNumber(said)))
    findings.Add(
        Msg::kLinesNumber, menu.At(std::max(1, menu.General().LineOf("LinesNumber"))),
        {std::to_string(menu.linesNumber), '[' + beyond->name + ']', std::to_string(largest)});
  if (menu.items.empty() && menu.isRead) findings.Add(Msg::kEmptyMenu, menu.At(1));
}

void CheckTitles(Findings& findings, const MenuFile& menu) {
  std::map<std::pair<std::string, std::string>, const MenuSection*> titles;  // with the language
  for (const MenuSection& item : menu.items) {
    if (IsSeparator(item) || item.Has("ShowIfFileExists")) continue;
    for (const MenuLine& line : item.lines) {
      if (std::string_view{line.key->name} != "Title" || line.entry.value.empty()) continue;
      const auto [first, isNew] = titles.try_emplace({line.language, line.entry.value}, &item);
      // What is alike in English is likely to be so in others.
      const MenuSection& other = *first->second;
      if (!isNew && (line.language.empty() || other.Text("Title") != item.Text("Title")))
        findings.Add(Msg::kSameTitle, menu.At(line.entry.line), {item.name, other.name});
    }
  }
}

// What is to be chosen by itself. Time is counted from the beginning only, and then a submenu is
// open where an earlier choice was in it.
void CheckDefault(Findings& findings, const MenuFile& menu) {
  const MenuSection& general = menu.General();
  const auto add = [&](Msg id, const char* key, std::vector<std::string> words) {
    const Place place = menu.At(general.LineOf(key));
    // One that nobody reads where it stands has no effect for that reason, which is said.
    if (id != Msg::kNoEffect || !findings.Has(Msg::kWrongSection, place))
      findings.Add(id, place, std::move(words));
  };
  if (!general.Has("Default")) {
    for (const char* key : {"DefaultTimeout", "DefaultAfterReturn"})
      if (general.Has(key)) return add(Msg::kNoEffect, key, {key, "without Default"});
    return;
  }
  const int number = general.Number("Default");
  if (number != 0 && menu.name != kMainMenu && general.Number("DefaultAfterReturn") == 0)
    return add(Msg::kNoEffect, "Default", {"Default", "in a submenu without DefaultAfterReturn"});
  const auto item =
      std::find_if(menu.items.begin(), menu.items.end(), [number](const MenuSection& item) {
        return item.number == number && !IsSeparator(item) && !IsDisabled(item);
      });
  if (item == menu.items.end() && number != 0)
    add(Msg::kNoDefault, "Default", {general.Text("Default")});
  if (item != menu.items.end() && item->Has("Submenu"))
    add(Msg::kDefaultSubmenu, "Default", {general.Text("Default")});
  const int seconds = general.Number("DefaultTimeout");
  if (number != 0 && !general.Has("DefaultTimeout"))
    add(Msg::kNoEffect, "Default", {"Default", "without DefaultTimeout"});
  else if (number != 0 && (seconds < 1 || seconds > DefaultStart::kLongest))
    add(Msg::kRange, "DefaultTimeout",
        {"DefaultTimeout", general.Text("DefaultTimeout"), "1",
         std::to_string(DefaultStart::kLongest)});
}

// An item that can be chosen, and the menu that it is in.
struct Choice {
  const MenuFile* menu;
  const MenuSection* item;

  std::string Where() const { return menu->name + ':' + std::to_string(item->line); }
};

}  // namespace

void CheckAnyChoice(Findings& findings, const MenuFile& menu) {
  const auto& items = menu.items;
  if (items.empty() || std::any_of(items.begin(), items.end(), [](const MenuSection& item) {
        return !IsSeparator(item) && !IsDisabled(item);
      }))
    return;
  findings.Add(Msg::kAllDisabled, menu.At(std::max(1, menu.General().line)));
}

void CheckItems(Findings& findings, const MenuFile& menu) {
  CheckNumbers(findings, menu);
  CheckTitles(findings, menu);
  CheckDefault(findings, menu);
  for (const MenuSection& item : menu.items) ItemCheck{findings, menu, item}.Run();
}

void CheckChoices(Findings& findings, const std::vector<MenuFile>& menus) {
  std::map<std::pair<int, std::string>, Choice> choices;
  std::map<int, std::vector<Choice>> byStatus;
  for (const MenuFile& menu : menus)
    for (const MenuSection& item : menu.items) {
      if (!IsChoice(item) || !IsNumber(item.Text("ExCode"))) continue;
      const Choice choice{&menu, &item};
      const auto key = std::pair{item.Number("ExCode"), item.Text("ExString")};
      const auto [first, isNew] = choices.try_emplace(key, choice);
      if (isNew) {
        byStatus[key.first].push_back(choice);
        continue;
      }
      // The same item may well stand in two menus.
      const Choice& other = first->second;
      if (other.menu != &menu && other.item->Text("Title") == item.Text("Title")) continue;
      findings.Add(Msg::kSameChoice, menu.At(item.LineOf("ExCode")),
                   {item.name, other.item->name, other.Where()});
    }
  // Where the status alone says what was chosen, one that says it not is a slip.
  constexpr std::size_t kFew = 4;
  const auto shared = std::count_if(byStatus.begin(), byStatus.end(),
                                    [](const auto& entry) { return entry.second.size() > 1; });
  if (shared != 1 || byStatus.size() < kFew) return;
  for (const auto& [status, same] : byStatus)
    if (same.size() == 2)
      findings.Add(Msg::kSameStatus, same[1].menu->At(same[1].item->LineOf("ExCode")),
                   {same[1].item->name, same[0].item->name, same[0].Where()});
}

void CheckCircles(Findings& findings, const std::vector<MenuFile>& menus) {
  std::map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < menus.size(); ++i) places.emplace(menus[i].name, i);
  struct Step {
    std::size_t menu, next;
  };
  enum State { kNew, kOpen, kDone };
  std::vector<State> states(menus.size(), kNew);
  std::vector<Step> way;
  if (!menus.empty()) way.push_back({0, 0});
  while (!way.empty()) {
    const std::size_t current = way.back().menu;
    const MenuFile& menu = menus[current];
    states[current] = kOpen;
    if (way.back().next == menu.submenus.size()) {
      states[current] = kDone;
      way.pop_back();
      continue;
    }
    const SectionFile::Entry& link = menu.submenus[way.back().next++];
    const auto found = places.find(link.value);
    if (found == places.end()) continue;
    if (states[found->second] == kOpen)
      findings.Add(Msg::kCircle, menu.At(link.line), {link.value});
    else if (states[found->second] == kNew)
      way.push_back({found->second, 0});
  }
}

}  // namespace zel
