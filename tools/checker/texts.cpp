#include "tools/checker/texts.h"

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/wait_dialog.h"
#include "toolkit/base/settings.h"
#include "toolkit/widgets/dialog_template.h"
#include "tools/checker/hint_texts.h"
#include "tools/checker/languages.h"
#include "tools/checker/letters.h"
#include "tools/checker/markup.h"
#include "tools/checker/nearest.h"

namespace zel {
namespace {

// The font that a text of a menu is written in.
int FontOf(const Skin* skin, const MenuFile& menu, const std::string& key) {
  if (key == "Title" && skin) return skin->fontIndex[kListText][kNormal];
  if (key == "Heading" && menu.General().Has("HeadingFont"))
    return menu.General().Number("HeadingFont");
  if (key == "Heading") return MenuLevel{}.heading.font;
  return key == "KeyHelp" ? menu.General().Number("KeyHelpFont") : 0;
}

bool IsShown(const std::string& key) { return key != "ExString" && key != "HintSection"; }

// The window that waits has room for two lines.
void CheckWaitText(Findings& findings, const Place& place, const MenuLine& line, const Skin& skin) {
  const auto fontOf = [&skin](TextSet set) -> const Font& {
    const int number = std::clamp(skin.fontIndex[set][kNormal], 0, Skin::kFonts - 1);
    return *skin.fonts[static_cast<std::size_t>(number)];
  };
  const int room = 2 * DialogUnits{fontOf(kWindowText)}.X(kWaitMessageWidth);
  const int width = fontOf(kPlainText).TextLength(line.entry.value.c_str());
  if (width > room)
    findings.Add(Msg::kWaitTextLong, place,
                 {line.entry.name, std::to_string(width), std::to_string(room)});
}

// What is meant by a suffix that is none: a language, or the key without one; empty where it is not
// plain.
std::string MeantSuffix(const MenuLine& line) {
  std::string code = line.language.substr(0, line.language.find_first_of("_-@"));
  if (code == "en") return line.key->name;
  if (code == "zh") return "cn";
  if (IsSuffix(code)) return code;
  return line.language.size() > 1 ? Nearest(line.language, Suffixes()) : std::string{};
}

void CheckSectionTexts(Findings& findings, Letters& letters, const MenuFile& menu,
                       const MenuSection& section, const Skin* skin) {
  for (const MenuLine& line : section.lines) {
    const Place place = menu.At(line.entry.line);
    if (!line.language.empty() && !IsSuffix(line.language)) {
      findings.Add(Msg::kNoLanguage, place, {line.entry.name, line.language, Listed(Suffixes())},
                   MeantSuffix(line));
      continue;
    }
    if (line.key->kind != MenuKey::kText || !IsShown(line.key->name)) continue;
    if (const std::string twice = EncodedTwice(line.entry.value); !twice.empty()) {
      findings.Add(Msg::kEncodedTwice, place, {twice});
      continue;
    }
    std::size_t position = 0;
    if (const std::string markup = Markup(line.entry.value, position); !markup.empty())
      findings.Add(Msg::kMarkup, place, {markup});
    if (skin && !line.isCut && std::string_view{line.key->name} == "WaitText")
      CheckWaitText(findings, place, line, *skin);
    letters.Check(place, line.entry.value, LanguageOf(line.language.c_str()),
                  FontOf(skin, menu, line.key->name));
  }
}

// Keys that do nothing as the settings are.
void CheckKeyHelp(Findings& findings, const MenuFile& menu) {
  const struct {
    const char *key, *setting;
    bool isThere;
  } kKeys[] = {{"F1", "help = 1", settings.help},
               {"F2", "looks = SKIN, SKIN", settings.looks.c_str()[0] != '\0'}};
  for (const MenuLine& line : menu.General().lines) {
    if (std::string_view{line.key->name} != "KeyHelp") continue;
    for (const auto& [key, setting, isThere] : kKeys) {
      const std::size_t at = line.entry.value.find(key);
      const bool isNamed =
          at != std::string::npos && !std::isalnum(line.entry.value[at + 2] & 0xFF);
      if (isNamed && !isThere && findings.IsFirst(Msg::kKeyHelp, key))
        findings.Add(Msg::kKeyHelp, menu.At(line.entry.line), {key, setting});
    }
  }
}

// The items that have a title of their own.
std::vector<const MenuSection*> TitledItems(const MenuFile& menu) {
  std::vector<const MenuSection*> titled;
  for (const MenuSection& item : menu.items)
    if (item.Has("Title") && item.Number("Separator") == 0) titled.push_back(&item);
  return titled;
}

// Whether a menu has words in a language, and not only files.
bool HasTexts(const MenuFile& menu, const std::string& language) {
  const auto has = [&language](const MenuSection& section) {
    return std::any_of(section.lines.begin(), section.lines.end(), [&language](const auto& line) {
      return line.key->kind == MenuKey::kText && line.language == language;
    });
  };
  return has(menu.General()) || std::any_of(menu.items.begin(), menu.items.end(), has);
}

// True where a title is in a language that there is not, which is said.
bool HasStrayTitle(const MenuSection& item) {
  return std::any_of(item.lines.begin(), item.lines.end(), [](const MenuLine& line) {
    return !line.language.empty() && !IsSuffix(line.language);
  });
}

// Whether a title is hardly the same in two languages: no name, and no single word.
bool IsSaying(const std::string& title, const LanguageRow& language) {
  const bool isLatin = language.language != kRussian && language.language != kChinese &&
                       language.language != kJapanese;
  std::istringstream text{title};
  int words = 0, small = 0;
  for (std::string word; text >> word; ++words)
    if (words > 0 && word.front() >= 'a' && word.front() <= 'z') ++small;
  return small > 0 && words > (isLatin ? 2 : 1);
}

// Says which titles were copied and stayed as they are, where most others were translated.
void CheckCopied(Findings& findings, const MenuFile& menu, const std::string& language) {
  std::vector<const MenuLine*> copied;
  int translated = 0;
  for (const MenuSection* item : TitledItems(menu)) {
    const MenuLine* line = item->Find("Title", language);
    if (line && line->entry.value != item->Text("Title")) ++translated;
    if (line && line->entry.value == item->Text("Title") &&
        IsSaying(line->entry.value, LanguageOf(language.c_str())))
      copied.push_back(line);
  }
  if (translated <= std::ssize(copied)) return;
  for (const MenuLine* line : copied)
    findings.Add(Msg::kLeftInEnglish, menu.At(line->entry.line), {line->entry.name});
}

bool IsTranslated(const MenuSection& section, const std::string& key) {
  return std::any_of(section.lines.begin(), section.lines.end(), [&key](const MenuLine& line) {
    return line.key->name == key && IsSuffix(line.language);
  });
}

// A word that no language has one of its own for, as "Memtest86+".
bool IsName(const std::string& title) {
  const auto isOfName = [](char c) { return ('A' <= c && c <= 'Z') || ('0' <= c && c <= '9'); };
  return title.find(' ') == std::string::npos &&
         std::any_of(title.begin() + !title.empty(), title.end(), isOfName);
}

// Languages that a text lacks, by its place and key.
using Lacking = std::map<std::pair<int, std::string>, std::vector<std::string>>;

// Finds what one language lacks that is there in English and, next to it, in the language.
void FindLacking(Findings& findings, const MenuFile& menu, const std::string& language,
                 Lacking& lacking) {
  std::vector<const MenuSection*> titled = TitledItems(menu);
  std::erase_if(titled, [&language](const MenuSection* item) {
    return IsName(item->Text("Title")) && !item->Find("Title", language);
  });
  std::vector<const MenuLine*> found;
  for (const MenuSection* item : titled)
    if (const MenuLine* line = item->Find("Title", language)) found.push_back(line);
  const MenuSection& general = menu.General();
  const MenuLine* first = found.empty() ? general.Find("MenuTitle", language) : found.front();
  const bool areOthers = std::any_of(titled.begin(), titled.end(), [](const MenuSection* item) {
    return IsTranslated(*item, "Title");
  });
  // Where most are missing, that is one thing and not many.
  if (first && areOthers && 2 * found.size() < titled.size()) {
    findings.Add(Msg::kFewTranslated, menu.At(first->entry.line),
                 {language, std::to_string(found.size()), std::to_string(titled.size()), "titles"});
    return;
  }
  const auto add = [&](const MenuSection& section, const char* key) {
    if (HasLooseLine(findings, menu, section)) return;
    lacking[{section.LineOf(key), key}].push_back('.' + language);
  };
  for (const MenuSection* item : titled) {
    if (found.empty()) break;
    if (!item->Find("Title", language) && !HasStrayTitle(*item)) add(*item, "Title");
    if (item->Has("WaitText") && IsTranslated(*item, "WaitText") &&
        !item->Find("WaitText", language))
      add(*item, "WaitText");
  }
  for (const char* key : {"MenuTitle", "HintTitle", "Heading", "KeyHelp", "HintFile"})
    if (general.Has(key) && general.Text(key) != kNoText && !general.Find(key, language) &&
        !HasStrayTitle(general))
      add(general, key);
}

// A text is one thing, whatever languages lack it.
void CheckTranslations(Findings& findings, const MenuFile& menu) {
  Lacking lacking;
  for (const std::string& language : LanguagesOf(menu))
    if (!language.empty() && HasTexts(menu, language)) {
      FindLacking(findings, menu, language, lacking);
      CheckCopied(findings, menu, language);
    }
  for (const auto& [text, languages] : lacking)
    findings.Add(Msg::kUntranslated, menu.At(text.first),
                 {text.second + Listed(languages), languages.size() > 1 ? "them" : "one"});
}

}  // namespace

void CheckTexts(Findings& findings, const std::vector<MenuFile>& menus, const Skin* skin,
                bool areSettingsRead) {
  Letters letters{findings, skin, !areSettingsRead || WantsUnicode()};
  for (const MenuFile& menu : menus) {
    if (areSettingsRead) CheckKeyHelp(findings, menu);
    for (const auto& [name, section] : menu.screens)
      CheckSectionTexts(findings, letters, menu, section, skin);
    for (const MenuSection& item : menu.items)
      CheckSectionTexts(findings, letters, menu, item, skin);
    CheckTranslations(findings, menu);
  }
  CheckHints(findings, letters, menus, skin);
  letters.Finish();
}

}  // namespace zel
