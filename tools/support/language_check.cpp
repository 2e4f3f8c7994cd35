#include "tools/support/language_check.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// The keys of texts, and the one that says their font; those of the items are written in the
// font of lists, the others in the first.
struct TextKey {
  const char* name;
  const char* font = nullptr;
  bool isItem = false;
};
constexpr const char* kHintFile = "HintFile";
constexpr TextKey kTextKeys[] = {
    {"Title", nullptr, true},
    {"WaitText"},
    {"MenuTitle"},
    {"HintTitle"},
    {"Heading", "HeadingFont"},
    {kHintFile},
    {"KeyHelp", "KeyHelpFont"},
};
constexpr const char* kEnglishCode = "en";
constexpr int kFirstLetter = 0xA0;  // beyond ASCII and what controls terminals

const TextKey* FindTextKey(const std::string& name) {
  const auto* found =
      std::find_if(std::begin(kTextKeys), std::end(kTextKeys),
                   [&name](const TextKey& key) { return ustricmp(key.name, name.c_str()) == 0; });
  return found != std::end(kTextKeys) ? found : nullptr;
}

const Font& FontOf(const TextKey& key, const SectionFile::Section& section, const Skin& skin) {
  int index = key.isItem ? skin.fontIndex[kListText][kNormal] : 0;
  if (key.font) index = section.GetInt(key.font, ScreenText{}.font);
  return *skin.fonts[static_cast<std::size_t>(std::clamp(index, 0, Skin::kFonts - 1))];
}

// Each once, in the order of the text, which is UTF-8.
std::string Lacking(const std::string& text, const Font& font) {
  std::string lacking;
  for (const char* next = text.c_str(); *next != '\0';) {
    const char* const start = next;
    const int letter = ugetxc(&next);
    const std::string bytes{start, next};
    if (letter >= kFirstLetter && !uisspace(letter) && !font.Has(letter) &&
        lacking.find(bytes) == lacking.npos)
      lacking += bytes;
  }
  return lacking;
}

class LanguageCheck {
 public:
  LanguageCheck(const std::string& menuFile, const Skin& skin)
      : file_{menuFile},
        skin_{skin},
        content_{SectionFile::FromUtf8(ReadWhole(menuFile.c_str()))} {}

  std::vector<LanguageFinding> Run() {
    for (const SectionFile::Section& section : content_.Sections())
      for (const SectionFile::Entry& entry : section.Entries()) TakeEntry(section, entry);
    for (const auto& [text, have] : languagesOf_)
      for (const std::string& language : languages_)
        if (!have.contains(language))
          findings_.push_back({file_, text.first, text.second + "." + language,
                               "is missing in a language that other texts have"});
    return std::move(findings_);
  }

 private:
  void TakeEntry(const SectionFile::Section& section, const SectionFile::Entry& entry) {
    const std::size_t point = std::min(entry.name.find('.'), entry.name.size());
    const TextKey* key = FindTextKey(entry.name.substr(0, point));
    if (!key || entry.value.empty()) return;
    std::string language;
    if (point < entry.name.size()) {
      language = entry.name.substr(point + 1);
      languages_.insert(language);
      languagesOf_[{section.Name(), key->name}].insert(language);
    }
    if (key->name == kHintFile)
      CheckLetters({entry.value, {}, {}, {}}, *skin_.fonts[0],
                   HintsInUtf8(ReadWhole(entry.value.c_str()),
                               language.empty() ? kEnglishCode : language.c_str()));
    else
      CheckLetters({file_, section.Name(), entry.name, {}}, FontOf(*key, section, skin_),
                   entry.value);
  }

  void CheckLetters(LanguageFinding finding, const Font& font, const std::string& text) {
    const std::string lacking = Lacking(text, font);
    if (lacking.empty()) return;
    finding.what = "the font has no " + lacking;
    findings_.push_back(std::move(finding));
  }

  std::string file_;
  const Skin& skin_;
  SectionFile content_;
  std::vector<LanguageFinding> findings_;
  std::set<std::string> languages_;
  using Text = std::pair<std::string, std::string>;  // section and key
  std::map<Text, std::set<std::string>> languagesOf_;
};

}  // namespace

std::vector<LanguageFinding> CheckLanguages(const std::string& menuFile, const Skin& skin) {
  const FormatGuard format{U_UTF8};
  return LanguageCheck{menuFile, skin}.Run();
}

}  // namespace zel
