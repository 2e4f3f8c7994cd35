#include "tools/checker/texts.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/wait_dialog.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "toolkit/widgets/dialog_template.h"
#include "tools/checker/files.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

// All but English, which has none.
std::vector<std::string> Suffixes() {
  std::vector<std::string> suffixes;
  for (const LanguageRow& row : Languages())
    if (row.language != kEnglish) suffixes.emplace_back(row.code);
  return suffixes;
}

bool IsSuffix(const std::string& text) {
  const std::vector<std::string> suffixes = Suffixes();
  return std::find(suffixes.begin(), suffixes.end(), text) != suffixes.end();
}

std::string Listed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

bool IsInEncoding(const LanguageRow& language, int character) {
  if (!language.codePage || character < 0x80) return true;
  const unsigned short* page = language.codePage();
  return std::find(page, page + 256, character) != page + 256;
}

std::string Utf8(int character) {
  char bytes[8];
  const FormatGuard format{U_UTF8};
  return {bytes, static_cast<std::size_t>(usetc(bytes, character))};
}

bool IsControl(int character) { return character < ' ' || (0x7F <= character && character < 0xA0); }

// A letter for messages: its number where nothing of it shows.
std::string Named(int character) {
  constexpr std::pair<int, int> kBlank[] = {{0, ' '},         {0x7F, 0xA0},     {0xAD, 0xAD},
                                            {0x2000, 0x200F}, {0x2028, 0x202F}, {0x205F, 0x206F},
                                            {0x3000, 0x3000}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}};
  const bool isBlank = std::any_of(std::begin(kBlank), std::end(kBlank), [&](const auto& range) {
    return range.first <= character && character <= range.second;
  });
  if (!isBlank) return Utf8(character);
  char number[12];
  std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(character));
  return number;
}

// Calls back with each character of a text.
template <class Each>
void ForEachCharacter(const std::string& text, const Each& each) {
  const FormatGuard format{U_UTF8};
  const char* position = text.c_str();
  while (const int character = ugetxc(&position)) each(character);
}

// Looks for letters that do not show.
class Letters {
 public:
  // Where all letters are there, only the fonts may lack some.
  Letters(Findings& findings, const Skin* skin, bool areAllThere)
      : findings_{findings}, skin_{skin}, areAllThere_{areAllThere} {}

  void Check(const Place& place, const std::string& text, const LanguageRow& language, int font) {
    // Of a font that the skin does not have it is said.
    const std::string section = "FONT" + std::to_string(font);
    const bool isFont = skin_ && 0 <= font && font < Skin::kFonts &&
                        (font == 0 || !skin_->File().Find(section.c_str()).Heads().empty());
    const Font* drawn = isFont ? skin_->fonts[static_cast<std::size_t>(font)].get() : nullptr;
    std::vector<std::string> lost;
    std::string control;
    ForEachCharacter(text, [&](int character) {
      if (IsControl(character))
        control = character == '\t' ? "a tab" : "the control character " + Named(character);
      else if (!areAllThere_ && !IsInEncoding(language, character))
        lost.push_back(Named(character));
      else if (drawn && character > ' ' && !drawn->Has(character))
        missing_[{font, language.code}].emplace_back(character, place);
    });
    if (!control.empty()) findings_.Add(Msg::kControl, place, {control});
    if (!lost.empty())
      findings_.Add(Msg::kNoLetter, place, {Listed(lost), language.code, language.encoding});
  }

  // Says what fonts lack: one message for a font that is not meant for a language.
  void Finish() {
    constexpr std::size_t kFew = 3, kNamed = 8;
    for (const auto& [font, all] : missing_) {
      std::map<int, Place> letters;
      for (const auto& [letter, place] : all) letters.try_emplace(letter, place);
      std::vector<std::string> named;
      for (const auto& [letter, place] : letters) {
        if (named.size() < kNamed) named.push_back(Named(letter));
        if (letters.size() <= kFew)
          findings_.Add(Msg::kNoGlyph, place, {Named(letter), std::to_string(font.first)});
      }
      if (letters.size() > kNamed) named.emplace_back("...");
      if (letters.size() > kFew)
        findings_.Add(Msg::kNoGlyph, all.front().second,
                      {Listed(named), std::to_string(font.first)});
    }
  }

 private:
  Findings& findings_;
  const Skin* skin_;
  const bool areAllThere_;  // in the text format
  std::map<std::pair<int, std::string>, std::vector<std::pair<int, Place>>> missing_;
};

// The font that a text of a menu is written in.
int FontOf(const Skin* skin, const MenuFile& menu, const std::string& key) {
  if (key == "Title" && skin) return skin->fontIndex[kListText][kNormal];
  if (key == "Heading" && menu.General().Has("HeadingFont"))
    return menu.General().Number("HeadingFont");
  if (key == "Heading") return MenuLevel{}.heading.font;
  return key == "KeyHelp" ? menu.General().Number("KeyHelpFont") : 0;
}

// The first letters that are UTF-8 in UTF-8; empty for none. No word has such signs behind such a
// letter.
std::string EncodedTwice(const std::string& text) {
  std::string letters, bytes;
  ForEachCharacter(text, [&](int character) {
    constexpr int kLead = 0xC2, kFirst = 0x80, kEnd = 0xC0, kLargest = 0xF4;
    if (!letters.empty()) return;
    const bool goesOn = !bytes.empty() && kFirst <= character && character < kEnd;
    if (!goesOn) bytes.clear();
    if (goesOn || (kLead <= character && character <= kLargest))
      bytes += static_cast<char>(character);
    if (goesOn && Sound(bytes, U_UTF8) == bytes) letters = Converted(bytes, U_ASCII, U_UTF8);
  });
  return letters;
}

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

// What looks like an entity, a tag or an escape, from `position` on, which then is behind it; empty
// for none.
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

// The same of an explanation, in which names in brackets may be meant.
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

// True where a line of the section is none that is read, which is said and may be what is missing.
bool HasLooseLine(const Findings& findings, const MenuFile& menu, const MenuSection& section) {
  int last = section.line;
  for (const MenuLine& line : section.lines) last = std::max(last, line.entry.line);
  for (int line = section.line; line <= last + 1; ++line)
    if (findings.Has(Msg::kNoEquals, menu.At(line))) return true;
  return false;
}

// Reports what one language lacks that is there in English and, next to it, in the language.
void CheckTranslation(Findings& findings, const MenuFile& menu, const std::string& language) {
  const std::vector<const MenuSection*> titled = TitledItems(menu);
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
    findings.Add(Msg::kUntranslated, menu.At(section.LineOf(key)),
                 {std::string{key} + '.' + language});
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

// One file of explanations as the languages of one encoding read it.
struct Hints {
  const LanguageRow& language;
  HintFile file;
  std::set<std::string> names;
  bool isRead;
};

bool IsIn(char c, int first, int last) { return first <= (c & 0xFF) && (c & 0xFF) <= last; }

// A letter of a code page, or a Latin one.
bool IsLetter(char c) { return IsIn(c, 0xC0, 0xFF) || IsIn(c, 'a', 'z') || IsIn(c, 'A', 'Z'); }

// Cyrillic in another code page has capitals within its words in KOI8-R, or signs before letters.
const char* InsteadOfKoi8(const std::string& line) {
  constexpr std::string_view kSigns = "\x95\x9A\x9C\x9D\x9E\xA3\xB3\xBF";  // that texts may have
  const auto isSign = [kSigns](char c) {
    return IsIn(c, 0x80, 0xBF) && kSigns.find(c) == std::string_view::npos;
  };
  const auto isSmall = [](char c) { return IsIn(c, 0xC0, 0xDF); };
  const auto isCapital = [](char c) { return IsIn(c, 0xE0, 0xFF); };
  const bool areCapitals =
      2 * std::count_if(line.begin(), line.end(), isCapital) >
      std::count_if(line.begin(), line.end(), [](char c) { return !IsAscii(c); });
  for (std::size_t i = 0; i + 2 < line.size(); ++i) {
    const bool isFirst = i == 0 || !IsLetter(line[i - 1]);
    if (isSign(line[i]) && IsIn(line[i + 1], 0xC0, 0xFF))
      return std::any_of(line.begin(), line.end(), [](char c) { return IsIn(c, 0x80, 0xAF); })
                 ? "CP866"
                 : "ISO-8859-5";
    if (areCapitals && isFirst && isSmall(line[i]) && isCapital(line[i + 1]) &&
        isCapital(line[i + 2]))
      return "WINDOWS-1251";
  }
  return nullptr;
}

// Umlauts and accents of another code page lie where Latin ones have nothing that shows. English
// has none, but quotes and dashes, which stand within words, too.
const char* InsteadOfLatin(const std::string& line, bool isEnglish) {
  const char* instead = nullptr;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (!IsIn(line[i], 0x80, 0x9F)) continue;
    const bool isWithin = !isEnglish && i > 0 && i + 1 < line.size() && IsLetter(line[i - 1]) &&
                          IsLetter(line[i + 1]) && !IsIn(line[i], 0x91, 0x92);
    constexpr char kNothing = '\x81';  // in Windows' code page
    if (isWithin || line[i] == kNothing) return "CP850";
    instead = "WINDOWS-1252";
  }
  return instead;
}

const char* InsteadOfPolish(const std::string& line) {
  constexpr std::string_view kSigns = "\xA1\xA6\xAC\xB1\xB6\xBC";  // that are letters elsewhere
  for (std::size_t i = line.find_first_of(kSigns); i < line.size();
       i = line.find_first_of(kSigns, i + 1))
    if ((i > 0 && IsLetter(line[i - 1])) || (i + 1 < line.size() && IsLetter(line[i + 1])))
      return "ISO-8859-2";
  return nullptr;
}

// The encoding that a line is likely to be in instead of its language's code page; null for none.
const char* LikelyInstead(const std::string& line, const LanguageRow& language) {
  if (language.language == kRussian) return InsteadOfKoi8(line);
  if (language.language == kPolish) return InsteadOfPolish(line);
  return InsteadOfLatin(line, language.language == kEnglish);
}

std::string Decoded(const std::string& bytes, const LanguageRow& language) {
  return HintsInUtf8(bytes, language.code);
}

std::string Encoded(const std::string& text, const LanguageRow& language) {
  if (!language.codePage) return text;
  const unsigned short* page = language.codePage();
  std::string bytes;
  ForEachCharacter(text, [&](int character) {
    const auto* found = std::find(page, page + 256, character);
    bytes += found == page + 256 ? '^' : static_cast<char>(found - page);
  });
  return bytes;
}

class HintsCheck {
 public:
  // Says of explanations that nobody shows only where all menus are known.
  HintsCheck(Findings& findings, Letters& letters, const Skin* skin, bool areAll)
      : findings_{findings}, letters_{letters}, skin_{skin}, areAll_{areAll} {}

  void Take(const MenuFile& menu) {
    std::map<std::string, Hints*> files;  // that show the texts of this menu
    for (const std::string& language : LanguagesOf(menu))
      if (const MenuLine* line = Said(menu.General(), "HintFile", language);
          line && IsFile(line->entry.value.c_str())) {
        // One that is called like that of another language is read as that, so that it is one
        // fault.
        const std::string other =
            line->language == language ? CheckLanguage(menu, *line) : std::string{};
        if (Hints& hints =
                Open(line->entry.value, LanguageOf((other.empty() ? language : other).c_str()),
                     menu, menu.At(line->entry.line));
            hints.isRead)
          files.emplace(line->entry.value, &hints);
      }
    for (const MenuSection& item : menu.items)
      if (const MenuLine* line = item.Find("HintSection"); line && !line->entry.value.empty())
        CheckItem(menu, *line, files);
    used_.insert(menu.hints.begin(), menu.hints.end());
  }

  void Finish() {
    CheckTranslations();
    std::map<std::string, std::vector<std::pair<Place, bool>>> unused;
    for (auto& [name, hints] : files_) {
      if (!hints.isRead) continue;
      std::map<std::string, int> seen;
      const std::vector<HintFile::Section> sections = hints.file.Sections();
      for (const HintFile::Section& section : sections) {
        const Place place{name, section.line};
        const std::string shown = Decoded(section.name, hints.language);
        const auto [first, isNew] = seen.try_emplace(section.name, section.line);
        const bool isUsed = used_.contains(shown);
        // One that is to close another text is none.
        const std::string start = Upper(Trimmed(shown.c_str()));
        if (!isUsed && (start.starts_with("END") || start.starts_with('/'))) continue;
        if (!isNew)
          findings_.Add(Msg::kHintTwice, place, {shown, std::to_string(first->second)});
        else if (areAll_ && !isUsed)
          unused[shown].emplace_back(place, hints.language.language == kEnglish);
        if (!section.isClosed)
          findings_.Add(Msg::kHintOpen, place,
                        {shown, &section == &sections.back() ? ", and the last line is lost" : ""});
      }
    }
    // The text and its translations are one thing, which is said in the English file.
    for (auto& [name, places] : unused) {
      std::stable_partition(places.begin(), places.end(), [](const auto& at) { return at.second; });
      std::vector<std::string> others;
      for (const auto& [place, isEnglish] : places) others.push_back(place.file);
      others.erase(others.begin());
      findings_.Add(Msg::kHintUnused, places.front().first,
                    {name, others.empty() ? "" : ", nor that in " + Listed(others)});
    }
  }

 private:
  Hints& Open(const std::string& name, const LanguageRow& language, const MenuFile& menu,
              const Place& named) {
    const auto found = files_.find(name);
    if (found != files_.end()) return found->second;
    std::string text;
    const bool isRead = ReadChecked(findings_, name, kLongestWholeFile, &text);
    const FormatGuard format{language.codePage ? U_ASCII : U_UTF8};
    Hints& hints =
        files_.emplace(name, Hints{language, HintFile{name.c_str()}, {}, isRead}).first->second;
    if (!isRead) return hints;
    const std::vector<HintFile::Section> sections = hints.file.Sections();
    const bool isMenu = std::any_of(sections.begin(), sections.end(), [](const auto& section) {
      return Upper(section.name) == kGeneralSection;
    });
    const bool isOther = std::none_of(sections.begin(), sections.end(), [&](const auto& section) {
      return section.isClosed || menu.hints.contains(Decoded(section.name, language));
    });
    if (isMenu || isOther) {
      findings_.Add(Msg::kNoHints, named, {name, isMenu ? "a menu" : "no file of explanations"});
      hints.isRead = false;
      return hints;
    }
    for (const HintFile::Section& section : sections) {
      if (!hints.names.insert(section.name).second) twice_.insert(name);
      if (ustrlen(hints.file.Fill(section.name.c_str()).c_str()) >= kHintCharacters)
        findings_.Add(Msg::kHintLong, {name, section.line}, {Decoded(section.name, language)});
    }
    CheckOutside(name, text, hints);
    if (IsWellEncoded(name, text, language)) CheckHintLetters(name, text, language);
    return hints;
  }

  // Lines outside are comments, unless something closes them like a text.
  void CheckOutside(const std::string& name, const std::string& text, Hints& hints) {
    int number = 0, head = 0;
    int first = 0;  // outside
    bool isInside = false;
    for (std::size_t position = 0; position < text.size();) {
      const std::string line = Trimmed(std::string{NextLine(text, position)}.c_str());
      ++number;
      const bool isEnd = IsHintEnd(line);
      if (isEnd && !isInside && first > 0) {
        const std::size_t start = line.find(':') + 1;
        const std::string meant = line.substr(start, line.find(']') - start);
        findings_.Add(Msg::kHintOutside, {name, first}, {Decoded(meant, hints.language)});
        hints.names.insert(meant);  // which is missing for no other reason
      }
      if (isEnd && isInside) findings_.AllowInText(name, head, number);
      if (isEnd || IsHintHead(line)) {
        isInside = !isEnd;
        head = number;
        first = 0;
      } else if (!line.empty() && first == 0) {
        first = number;
      }
    }
  }

  // "hints.ru.txt" for German, where there is Russian. Answers that.
  std::string CheckLanguage(const MenuFile& menu, const MenuLine& line) const {
    const std::string& name = line.entry.value;
    for (const std::string& other : Suffixes())
      if (other != line.language && name.find('.' + other + '.') != std::string::npos) {
        findings_.Add(Msg::kOtherLanguage, menu.At(line.entry.line),
                      {line.entry.name, name, other});
        return other;
      }
    return {};
  }

  // False for another encoding than that of the language, which is said of the first such line.
  bool IsWellEncoded(const std::string& name, const std::string& text,
                     const LanguageRow& language) {
    int number = 0;
    for (std::size_t position = 0; position < text.size();) {
      const std::string line{NextLine(text, position)};
      ++number;
      if (std::all_of(line.begin(), line.end(), IsAscii)) continue;
      // Text in a code page is hardly ever UTF-8 by chance.
      const bool isUtf8 = Sound(line, U_UTF8) == line;
      const char* instead = language.codePage && !isUtf8 ? LikelyInstead(line, language) : nullptr;
      if (isUtf8 == !language.codePage && !instead) continue;
      const bool isShifted = std::any_of(line.begin(), line.end(), [](char c) {
        return IsIn(c, 0x81, 0x9F) && !IsIn(c, 0x8E, 0x8F);
      });
      const char* likely = instead                         ? instead
                           : isUtf8                        ? "UTF-8"
                           : language.language == kChinese ? "GB18030"
                           : isShifted                     ? "SHIFT_JIS"
                                                           : "EUC-JP";
      const std::string seen = instead  ? std::string{"rather "} + instead
                               : isUtf8 ? "UTF-8"
                                        : "not UTF-8";
      findings_.Add(Msg::kHintEncoding, {name, number},
                    {seen, language.code, language.encoding, likely});
      return false;
    }
    return true;
  }

  void CheckHintLetters(const std::string& name, const std::string& text,
                        const LanguageRow& language) {
    const int font = skin_ ? skin_->fontIndex[kEditText][kNormal] : 0;
    int line = 0, first = 0;  // of a list
    for (std::size_t position = 0; position < text.size();) {
      const std::string stored{NextLine(text, position)};
      std::string read = Decoded(stored.substr(0, kHintLineBytes), language);
      ++line;
      const bool isInList = read.starts_with("- ") || read.starts_with("* ");
      if (isInList && first > 0) findings_.Add(Msg::kHintList, {name, first});
      if (isInList != (first > 0)) first = isInList ? line : 0;
      if (stored.size() > kHintLineBytes) findings_.Add(Msg::kHintLineLong, {name, line});
      if (const std::string markup = MarkupOfHint(read); !markup.empty())
        findings_.Add(Msg::kMarkup, {name, line}, {markup});
      std::replace(read.begin(), read.end(), '\t', ' ');  // as which it shows
      if (std::all_of(read.begin(), read.end(),
                      [](char c) { return IsAscii(c) && !IsControl(c & 0xFF); }))
        continue;
      // The others are written alike.
      if (const std::string twice = EncodedTwice(read); !twice.empty())
        return findings_.Add(Msg::kEncodedTwice, {name, line}, {twice});
      letters_.Check({name, line}, read, language, font);
    }
  }

  void CheckItem(const MenuFile& menu, const MenuLine& line,
                 const std::map<std::string, Hints*>& files) {
    const std::string& wanted = line.entry.value;
    const Place place = menu.At(line.entry.line);
    if (!menu.General().Find("HintFile")) {
      // A misspelt key may be meant for it, which is said.
      if (menu.isLayoutKnown && findings_.IsFirst(Msg::kNoHintFile, menu.name))
        findings_.Add(Msg::kNoHintFile, place, {wanted});
      return;
    }
    // Looking for names takes its time.
    constexpr std::size_t kMostGuessed = 1000;
    const bool guesses = !findings_.IsFull(Msg::kHintMissing, menu.name);
    std::vector<std::string> with, without;
    std::string nearest;
    for (const auto& [name, hints] : files) {
      const bool has = hints->names.contains(Encoded(wanted, hints->language));
      (has ? with : without).push_back(name);
      if (!has && nearest.empty() && guesses && hints->names.size() <= kMostGuessed)
        nearest = Nearest(wanted, {hints->names.begin(), hints->names.end()});
    }
    // What is missing where is one thing, however many items name it.
    if (!wanted_.emplace(wanted, Listed(without)).second) return;
    if (!with.empty())
      for (const auto& [name, hints] : files) ++counts_[name];
    if (without.empty()) return;
    meant_.insert(nearest);
    if (with.empty())
      findings_.Add(Msg::kHintMissing, place, {wanted, Listed(without)}, nearest);
    else
      untranslated_.push_back({place, wanted, nearest, std::move(without), std::move(with)});
  }

  // Where a file lacks most, that is one thing and not many.
  void CheckTranslations() {
    std::map<std::string, std::size_t> lacking;
    for (const Untranslated& text : untranslated_)
      for (const std::string& name : text.without) ++lacking[name];
    std::erase_if(lacking, [this](const auto& file) {
      constexpr std::size_t kFew = 3;
      return file.second <= kFew || 2 * file.second <= counts_[file.first];
    });
    for (const auto& [name, count] : lacking)
      findings_.Add(Msg::kFewTranslated, {name, 1},
                    {name, std::to_string(counts_[name] - count), std::to_string(counts_[name]),
                     "explanations"});
    for (Untranslated& text : untranslated_) {
      // A text that is there twice may be meant for one that is missing.
      std::erase_if(text.without, [&](const std::string& name) {
        return lacking.contains(name) || twice_.contains(name);
      });
      // What other items name is not meant.
      const bool isMeant = !text.meant.empty() && !used_.contains(text.meant);
      if (!text.without.empty())
        findings_.Add(Msg::kHintUntranslated, text.place,
                      {text.name, Listed(text.without), Listed(text.with),
                       isMeant ? "correct [" + text.meant + "] there" : "write it there too"});
    }
    used_.merge(meant_);
  }

  // A text that some files have and some lack.
  struct Untranslated {
    Place place;
    std::string name, meant;
    std::vector<std::string> without, with;
  };

  Findings& findings_;
  Letters& letters_;
  const Skin* skin_;
  bool areAll_;
  std::map<std::string, Hints> files_;
  std::set<std::string> used_, meant_;  // texts that items name, or mean
  std::set<std::string> twice_;         // files of those with a text that is there twice
  std::set<std::pair<std::string, std::string>> wanted_;  // texts, and the files without them
  std::map<std::string, std::size_t> counts_;  // of texts that a file or its translations have
  std::vector<Untranslated> untranslated_;
};

}  // namespace

const MenuLine* Said(const MenuSection& section, const char* key, const std::string& language) {
  const MenuLine* own = language.empty() ? nullptr : section.Find(key, language);
  return own && !own->entry.value.empty() ? own : section.Find(key);
}

std::vector<std::string> LanguagesOf(const MenuFile& menu) {
  std::set<std::string> languages{""};
  const auto add = [&languages](const MenuSection& section) {
    for (const MenuLine& line : section.lines)
      if (IsSuffix(line.language)) languages.insert(line.language);
  };
  add(menu.General());
  for (const MenuSection& item : menu.items) add(item);
  return {languages.begin(), languages.end()};
}

void CheckTexts(Findings& findings, const std::vector<MenuFile>& menus, const Skin* skin,
                bool areSettingsRead) {
  Letters letters{findings, skin, !areSettingsRead || WantsUnicode()};
  for (const MenuFile& menu : menus) {
    for (const auto& [name, section] : menu.screens)
      CheckSectionTexts(findings, letters, menu, section, skin);
    for (const MenuSection& item : menu.items)
      CheckSectionTexts(findings, letters, menu, item, skin);
    for (const std::string& language : LanguagesOf(menu))
      if (!language.empty() && HasTexts(menu, language)) {
        CheckTranslation(findings, menu, language);
        CheckCopied(findings, menu, language);
      }
  }
  const bool areAll = std::all_of(menus.begin(), menus.end(), [](const MenuFile& menu) {
    return !menu.items.empty() &&
           std::all_of(menu.submenus.begin(), menu.submenus.end(),
                       [](const SectionFile::Entry& link) { return IsFile(link.value.c_str()); });
  });
  HintsCheck hints{findings, letters, skin, areAll};
  for (const MenuFile& menu : menus) hints.Take(menu);
  hints.Finish();
  letters.Finish();
}

}  // namespace zel
