#include "tools/checker/hint_texts.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/whole_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "tools/checker/encodings.h"
#include "tools/checker/files.h"
#include "tools/checker/languages.h"
#include "tools/checker/lines.h"
#include "tools/checker/markup.h"
#include "tools/checker/nearest.h"

namespace zel {
namespace {

// One file of explanations as the languages of one encoding read it.
struct Hints {
  const LanguageRow& language;
  HintFile file;
  std::set<std::string> names;
  bool isRead;
};

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
    CheckCopied();
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
    const bool isRead = ReadChecked(findings_, name, kLongestWholeFile, &text, &named);
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

  // False for another encoding than that of the language, which is said.
  bool IsWellEncoded(const std::string& name, const std::string& text,
                     const LanguageRow& language) {
    const std::optional<OtherEncoding> other = FindOtherEncoding(text, language);
    if (other)
      findings_.Add(Msg::kHintEncoding, {name, other->line},
                    {other->seen, language.code, language.encoding, other->likely});
    return !other;
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

  // Each text by its name.
  static std::map<std::string, std::string> TextsOf(const Hints& hints) {
    std::map<std::string, std::string> texts;
    for (const std::string& name : hints.names)
      texts.emplace(name, Decoded(hints.file.Fill(name.c_str()), hints.language));
    return texts;
  }

  // Of two files in different languages that mostly say the same, the one that is not English.
  void CheckCopied() {
    struct File {
      const std::string& name;
      Language language;
      std::map<std::string, std::string> texts;
    };
    std::vector<File> files;
    for (const bool isEnglish : {true, false})
      for (const auto& [name, hints] : files_)
        if (hints.isRead && (hints.language.language == kEnglish) == isEnglish)
          files.push_back({name, hints.language.language, TextsOf(hints)});
    for (auto copy = files.begin(); copy != files.end(); ++copy)
      for (auto file = files.begin(); file != copy; ++file) {
        const auto [same, both] = CountSame(file->texts, copy->texts);
        constexpr int kFew = 2;
        if (file->language == copy->language || same <= kFew || 2 * same <= both) continue;
        findings_.Add(Msg::kHintCopied, {copy->name},
                      {file->name, std::to_string(same), std::to_string(both)});
        break;
      }
  }

  static std::pair<int, int> CountSame(const std::map<std::string, std::string>& a,
                                       const std::map<std::string, std::string>& b) {
    int same = 0, both = 0;
    for (const auto& [name, text] : a)
      if (const auto found = b.find(name); found != b.end()) {
        ++both;
        if (found->second == text && !text.empty()) ++same;
      }
    return {same, both};
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

void CheckHints(Findings& findings, Letters& letters, const std::vector<MenuFile>& menus,
                const Skin* skin) {
  const bool areAll = std::all_of(menus.begin(), menus.end(), [](const MenuFile& menu) {
    return !menu.items.empty() &&
           std::all_of(menu.submenus.begin(), menu.submenus.end(),
                       [](const SectionFile::Entry& link) { return IsFile(link.value.c_str()); });
  });
  HintsCheck check{findings, letters, skin, areAll};
  for (const MenuFile& menu : menus) check.Take(menu);
  check.Finish();
}

}  // namespace zel
