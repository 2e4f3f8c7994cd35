#include "tools/support/menu_check.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "imageformats/load.h"
#include "launcher/default_start.h"
#include "launcher/hint_file.h"
#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/state.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/skin/skin.h"
#include "tools/support/language_check.h"

namespace zel {
namespace {

constexpr const char* kSettingsFile = "zel.cfg";
constexpr const char* kProgressPicture = "pic/progress.bmp";
constexpr const char* kGeneral = "MENU_CONFIGURATION";
constexpr char kForeign = '^';       // stands for a character beyond ASCII
constexpr int kLargestStatus = 255;  // what a process can end with
// What the launcher keeps of a text, of the name of a file and of an item's string, in bytes; most
// languages have one for each character.
constexpr std::size_t kLongestText = 1023, kLongestName = 259, kLongestOutput = 255;

enum class Kind { kText, kNumber, kColor, kZoom, kName, kFile, kPicture };
struct Key {
  const char* name;
  Kind kind;
  bool isTranslated = false;  // may be followed by a point and a language
};
constexpr Key kScreenKeys[] = {
    {"Background", Kind::kPicture, true},
    {"MenuLeft", Kind::kNumber},
    {"MenuTop", Kind::kNumber},
    {"MenuWidth", Kind::kNumber},
    {"MenuHeight", Kind::kNumber},
    {"HintLeft", Kind::kNumber},
    {"HintTop", Kind::kNumber},
    {"HintWidth", Kind::kNumber},
    {"HintHeight", Kind::kNumber},
    {"ProgressX", Kind::kNumber},
    {"ProgressY", Kind::kNumber},
    {"ProgressW", Kind::kNumber},
    {"HeadingLeft", Kind::kNumber},
    {"HeadingTop", Kind::kNumber},
    {"HeadingFont", Kind::kNumber},
    {"HeadingColor", Kind::kColor},
    {"KeyHelpLeft", Kind::kNumber},
    {"KeyHelpTop", Kind::kNumber},
    {"KeyHelpFont", Kind::kNumber},
    {"KeyHelpColor", Kind::kColor},
    {"Zoom", Kind::kZoom},
    {"MenuTitle", Kind::kText, true},
    {"HintTitle", Kind::kText, true},
    {"Heading", Kind::kText, true},
    {"KeyHelp", Kind::kText, true},
    {"HintFile", Kind::kFile, true},
    {"LinesNumber", Kind::kNumber},
    {"BacklineColor", Kind::kColor},
    {"Default", Kind::kNumber},
    {"DefaultTimeout", Kind::kNumber},
    {"DefaultAfterReturn", Kind::kNumber},
};
using Keys = std::span<const Key>;
constexpr Keys kGeneralKeys = kScreenKeys;
constexpr Keys kSizeKeys = kGeneralKeys.first(21);  // what a section for one size may have
constexpr Key kItemKeys[] = {
    {"Title", Kind::kText, true}, {"Icon", Kind::kPicture},
    {"Submenu", Kind::kFile},     {"ExCode", Kind::kNumber},
    {"ExString", Kind::kText},    {"HintSection", Kind::kText},
    {"WaitForFile", Kind::kName}, {"WaitWhileFile", Kind::kName},
    {"Timeout", Kind::kNumber},   {"ShowIfFileExists", Kind::kName},
    {"Disable", Kind::kNumber},   {"Color", Kind::kColor},
    {"Separator", Kind::kNumber}, {"WaitText", Kind::kText, true},
};

// Settings that are no numbers.
constexpr const char* kSettingTexts[] = {"zoom",    "skinPath",    "looks",
                                         "gfxMode", "soundDriver", "midiDriver"};

// A hint file, and the sections of it that items name.
struct Hints {
  explicit Hints(const std::string& name) : file{name.c_str()} {}
  HintFile file;
  std::set<std::string> used;
};

// What one check has come to know.
struct Knowledge {
  std::set<std::string> findings;
  std::map<std::string, Hints> hintFiles;
  std::map<std::string, std::vector<std::string>> submenus;  // that a menu file opens
};
Knowledge known;

// One line on standard output: what is wrong, and where.
class Place {
 public:
  explicit Place(std::string fileName, std::string section = {}, std::string key = {})
      : text_{std::move(fileName)} {
    if (!section.empty()) text_ += ": [" + section + "]";
    if (!key.empty()) text_ += (section.empty() ? ": " : " ") + key;
  }
  void Report(const std::string& what) const {
    const std::string line = text_ + ": " + what;
    if (known.findings.insert(line).second) std::puts(line.c_str());
  }

 private:
  std::string text_;
};

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(utolower(static_cast<unsigned char>(c)));
  return text;
}

using Section = SectionFile::Section;

void ReportUnread(const Place& place, const std::string& key) {
  place.Report(key.rfind('[', 0) == 0 ? "is no section head" : "nobody reads this key");
}

// What stands there twice, and what stands before the first section.
void CheckTwice(const std::string& file, const SectionFile& content) {
  for (const SectionFile::Entry& entry : content.Loose())
    ReportUnread(Place{file, {}, entry.name}, entry.name);
  for (const Section& section : content.Sections()) {
    if (section.Heads().size() > 1)
      Place{file, section.Name()}.Report("begins more than once; of each key the first counts");
    for (const SectionFile::Entry& entry : section.Entries())
      if (section.Find(entry.name.c_str()) != &entry)
        Place{file, section.Name(), entry.name}.Report("stands there twice; the first counts");
  }
}

// One byte for each character.
std::string ReadMenuFile(const std::string& name) {
  std::string text = ReadWhole(name.c_str());
  std::erase_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; });
  std::replace_if(
      text.begin(), text.end(), [](char c) { return !IsAscii(c); }, kForeign);
  return text;
}

const Key* FindKey(Keys keys, const std::string& name) {
  for (const Key& key : keys) {
    if (Lower(name) == Lower(key.name)) return &key;
    const std::string stem = std::string{key.name} + ".";
    if (key.isTranslated && Lower(name).compare(0, stem.size(), Lower(stem)) == 0) return &key;
  }
  return nullptr;
}

void CheckNumber(const Place& place, const std::string& value) {
  char* end = nullptr;
  const long long number = std::strtoll(value.c_str(), &end, 0);
  if (*end != '\0')
    place.Report("\"" + value + "\" is no number");
  else if (!std::in_range<int>(number))
    place.Report("\"" + value + "\" is too large");
}

void CheckZoom(const Place& place, const std::string& value) {
  char* end = nullptr;
  const double number = std::strtod(value.c_str(), &end);
  if (*end != '\0' || !(number >= kLeastZoom && number <= kLargestZoom))
    place.Report("\"" + value + "\" is no zoom from 1 to 8");
}

void CheckColor(const Place& place, const std::string& value) {
  int rest = 0, r = 0, g = 0, b = 0;
  const bool isWhole = std::sscanf(value.c_str(), "%d,%d,%d%n", &r, &g, &b, &rest) == 3 &&
                       rest == static_cast<int>(value.size());
  if (!isWhole || std::min({r, g, b}) < 0 || std::max({r, g, b}) > 255)
    place.Report("\"" + value + "\" is no colour of the form 255,255,255");
}

void CheckPicture(const Place& place, const std::string& name) {
  if (!FileExists(name.c_str()))
    place.Report("there is no file " + name);
  else if (!BitmapPtr{LoadPicture(name.c_str(), nullptr)})
    place.Report(name + " is no readable picture");
}

void CheckLength(const Place& place, std::size_t longest, const std::string& value) {
  if (value.size() > longest) place.Report("cut to " + std::to_string(longest) + " bytes");
}

void CheckValue(const Place& place, Kind kind, const std::string& value) {
  if (value.empty()) return;
  CheckLength(place, kind >= Kind::kName ? kLongestName : kLongestText, value);
  switch (kind) {
    case Kind::kNumber:
      return CheckNumber(place, value);
    case Kind::kColor:
      return CheckColor(place, value);
    case Kind::kZoom:
      return CheckZoom(place, value);
    case Kind::kPicture:
      return CheckPicture(place, value);
    case Kind::kFile:
      if (!FileExists(value.c_str())) place.Report("there is no file " + value);
      return;
    case Kind::kText:
    case Kind::kName:
      return;
  }
}

void CheckKeys(const std::string& file, const Section& section, Keys keys) {
  for (const auto& [name, value, line] : section.Entries()) {
    const Place place{file, section.Name(), name};
    if (const Key* key = FindKey(keys, name))
      CheckValue(place, key->kind, value);
    else
      ReportUnread(place, name);
  }
}

// What a section says for a key, in all languages.
std::vector<std::string> Values(const Section& section, Keys keys, const char* name) {
  std::vector<std::string> values;
  for (const SectionFile::Entry& entry : section.Entries())
    if (const Key* key = FindKey(keys, entry.name); key && std::string_view{key->name} == name)
      if (!entry.value.empty()) values.push_back(entry.value);
  return values;
}

// The number of a section "LINE12", without zeros before it; below 1 for any other section.
int LineNumber(const std::string& section) {
  constexpr std::size_t kStem = 4;
  int number = 0;
  if (section.size() > kStem)
    std::from_chars(section.data() + kStem, section.data() + section.size(), number);
  return Lower(section) == "line" + std::to_string(number) ? number : 0;
}

// The keys of a section that describes the screen; none for any other.
Keys ScreenKeys(const std::string& section) {
  if (Lower(section) == Lower(kGeneral)) return kGeneralKeys;
  Size size;
  if (!ReadSectionSize(section, &size)) return {};
  // Without a zoom the launcher knows the usual ones only.
  return IsUsual(size) || settings.zoom != 1 ? kSizeKeys : Keys{};
}

// The explanation of an item in all languages.
void CheckHint(const Place& place, const SectionFile& content, const std::string& hint) {
  const std::vector<std::string> names = Values(content.Find(kGeneral), kScreenKeys, "HintFile");
  if (names.empty()) place.Report("there is no HintFile");
  // The hint files of a menu may each write the name in an encoding of their own.
  if (hint.find(kForeign) != std::string::npos) return;
  for (const std::string& name : names) {
    if (!FileExists(name.c_str())) continue;  // which is another finding
    Hints& hints = known.hintFiles.try_emplace(name, name).first->second;
    hints.used.insert(hint);
    if (hints.file.Fill(hint.c_str()).empty()) place.Report(name + " has no text for " + hint);
  }
}

void CheckHintFiles() {
  for (const auto& [name, hints] : known.hintFiles) {
    std::set<std::string> seen;
    for (const HintFile::Section& section : hints.file.Sections()) {
      const Place place{name, section.name};
      const bool isAscii = std::all_of(section.name.begin(), section.name.end(), IsAscii);
      if (isAscii && !hints.used.contains(section.name)) place.Report("no item shows this text");
      if (!seen.insert(section.name).second)
        place.Report("begins more than once; the first counts");
      if (!section.isClosed) place.Report("no line [end:...] closes it");
    }
  }
}

// Answers the menu file that the item opens, or nothing.
std::string CheckItem(const std::string& file, const SectionFile& content, const Section& item) {
  const std::string& section = item.Name();
  const auto text = [&item](const char* key) { return std::string{item.GetText(key)}; };
  const auto number = [&item](const char* key) { return item.GetInt(key); };
  const std::string hint = text("HintSection"), submenu = text("Submenu");
  const bool isSeparator = number("Separator") != 0;
  if (!hint.empty()) CheckHint(Place{file, section, "HintSection"}, content, hint);
  if (!isSeparator && text("Icon").empty() && text("Title").empty())
    Place{file, section}.Report(Values(item, kItemKeys, "Title").empty()
                                    ? "never shown: neither title nor icon nor separator"
                                    : "not shown in English");
  if (number("Disable") > 0) return {};
  if (isSeparator || !submenu.empty()) return submenu;
  if (const int code = number("ExCode"); code < 0 || code > kLargestStatus)
    Place{file, section, "ExCode"}.Report("scripts see the exit status " +
                                          std::to_string(code & kLargestStatus));
  if (text("ExCode").empty() && !text("ExString").empty())
    Place{file, section}.Report("without ExCode the exit status is 0, as after a failure");
  CheckLength(Place{file, section, "ExString"}, kLongestOutput, text("ExString"));
  if (number("Timeout") > 0 && text("WaitForFile").empty() && text("WaitWhileFile").empty())
    Place{file, section, "Timeout"}.Report("there is no file to wait for");
  return {};
}

// What is to be chosen by itself.
void CheckDefault(const std::string& file, const SectionFile& content, int lines) {
  const Section& general = content.Find(kGeneral);
  const int line = general.GetInt("Default");
  if (line == 0) return;
  const Section& item = content.Find(("LINE" + std::to_string(line)).c_str());
  if (line < 1 || line > lines || item.Heads().empty() || item.GetInt("Separator") != 0 ||
      item.GetInt("Disable") > 0)
    Place{file, kGeneral, "Default"}.Report("no item of this number can be chosen");
  if (const int seconds = general.GetInt("DefaultTimeout");
      seconds < 1 || seconds > DefaultStart::kLongest)
    Place{file, kGeneral, "DefaultTimeout"}.Report("waits for ever");
}

// What the file says, whether the launcher looks there or not. Answers the menu files that it
// opens.
std::vector<std::string> CheckSections(const std::string& file, int lines) {
  const SectionFile content{ReadMenuFile(file)};
  CheckTwice(file, content);
  CheckDefault(file, content, lines);
  std::vector<std::string> submenus;
  for (const Section& section : content.Sections()) {
    const Place place{file, section.Name()};
    if (const int number = LineNumber(section.Name()); number > 0) {
      CheckKeys(file, section, kItemKeys);
      if (number > lines)
        place.Report("never shown: LinesNumber is " + std::to_string(lines));
      else if (std::string submenu = CheckItem(file, content, section); !submenu.empty())
        submenus.push_back(std::move(submenu));
    } else if (const Keys keys = ScreenKeys(section.Name()); !keys.empty()) {
      CheckKeys(file, section, keys);
    } else if (!section.Name().empty()) {
      place.Report("nobody reads this section");
    }
  }
  return submenus;
}

// Any number may be in the file, so no sum may overflow.
bool Fits(int from, int length, int room) {
  return from >= 0 && length >= 0 && length <= room && from <= room - length;
}

void CheckPanel(const Place& place, const char* name, const Rect& panel) {
  const ScreenLayout& fitted = launcherState.layout;
  const Size room =
      fitted.section.empty() ? Size{settings.screenWidth, settings.screenHeight} : fitted.size;
  if (!Fits(panel.x, panel.w, room.w) || !Fits(panel.y, panel.h, room.h))
    place.Report(std::string{"the "} + name + " does not fit a screen of " +
                 std::to_string(room.w) + " x " + std::to_string(room.h));
}

void CheckLayout(const std::string& file, bool hasHints) {
  const LayoutValues& at = layoutValues;
  const Place place{file};
  constexpr int kBarHeight = 30;
  CheckPanel(place, "menu", {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight});
  if (hasHints)
    CheckPanel(place, "explanation", {at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight});
  CheckPanel(place, "progress bar", {at.progressX, at.progressY, at.progressW, kBarHeight});
}

// A walk through the tree of menus.
struct Walk {
  MenuConfig menu;
  std::set<std::string> seen;
  std::set<std::string> open;  // the files that led here
};

void CheckMenu(Walk& walk, const std::string& file) {
  walk.menu.Read(file.c_str());
  CheckLayout(file, !walk.menu.hintFile.IsEmpty());
  if (walk.menu.items.empty()) Place{file}.Report("the menu is empty");
  const auto [found, isUnknown] = known.submenus.try_emplace(file);
  if (isUnknown) found->second = CheckSections(file, walk.menu.lineCount);
  if (walk.seen.insert(file).second) {
    walk.open.insert(file);
    for (const std::string& submenu : found->second) {
      if (walk.open.contains(submenu))
        Place{file}.Report("opens " + submenu + ", which leads here");
      else if (FileExists(submenu.c_str()))
        CheckMenu(walk, submenu);
    }
    walk.open.erase(file);
  }
  if (walk.menu.Depth() > 1) walk.menu.Read(nullptr);
}

void CheckLooks(const Place& place) {
  for (const std::string& look : ListParts(settings.looks))
    if (look != "default" && !FileExists(look.c_str())) place.Report("there is no file " + look);
}

void CheckSetting(const std::string& section, const SectionFile::Entry& entry) {
  const Place place{kSettingsFile, section, entry.name};
  const bool isText =
      std::any_of(std::begin(kSettingTexts), std::end(kSettingTexts),
                  [&entry](const char* text) { return Lower(text) == Lower(entry.name); });
  if (!Settings::IsKey(entry.name.c_str()))
    ReportUnread(place, entry.name);
  else if (Lower(entry.name) == "zoom" && Lower(entry.value) != "auto")
    CheckZoom(place, entry.value);
  else if (Lower(entry.name) == "looks")
    CheckLooks(place);
  else if (!isText)
    CheckNumber(place, entry.value);
}

void CheckSettings() {
  if (!FileExists(kSettingsFile)) {
    Place{kSettingsFile}.Report("there is no such file, the defaults hold");
    return;
  }
  settings.Load(kSettingsFile);
  const SectionFile content{ReadMenuFile(kSettingsFile)};
  for (const Section& section : content.Sections()) {
    if (Lower(section.Name()) != Lower(settings.Section())) {
      Place{kSettingsFile, section.Name()}.Report("nobody reads this section");
      continue;
    }
    for (const SectionFile::Entry& entry : section.Entries()) CheckSetting(section.Name(), entry);
  }
  CheckTwice(kSettingsFile, content);
}

void CheckSkin() {
  set_color_depth(32);
  RecomputeNamedColors();
  set_color_conversion(PictureConversion());
  if (!EngineInit()) return;
  {
    const Skin skin{settings.skinPath};
    std::string what = skin.GetError().GetDescription();
    what.pop_back();  // the line feed
    if (skin.GetError().IsError()) Place{settings.skinPath.c_str()}.Report(what);
    for (const auto& [menuFile, submenus] : known.submenus)
      for (const auto& [file, section, key, fault] : CheckLanguages(menuFile, skin))
        Place{file, section, key}.Report(fault);
  }
  EngineExit();
}

// With a zoom any size may have its section.
void AddSectionSizes(std::vector<Size>& screens) {
  const SectionFile content{ReadMenuFile(kMainMenu)};
  for (const Section& section : content.Sections())
    if (Size size; ReadSectionSize(section.Name(), &size)) screens.push_back(size);
}

}  // namespace

bool CheckMenuTree() {
  known = {};
  settings = {};
  CheckSettings();
  CheckPicture(Place{"progress bar"}, kProgressPicture);
  if (!FileExists(kMainMenu)) Place{kMainMenu}.Report("there is no such file");
  std::vector<Size> screens(std::begin(kUsualScreens), std::end(kUsualScreens));
  screens.push_back({settings.screenWidth, settings.screenHeight});
  if (settings.zoom != 1) AddSectionSizes(screens);
  for (const Size& size : screens) {
    settings.screenWidth = size.w;
    settings.screenHeight = size.h;
    layoutValues = {};
    const double zoom = settings.zoom == 1 || IsUsual(size) ? 1 : kZoomToFit;
    launcherState.layout = FitLayout(kMainMenu, size, zoom);
    Walk walk;
    if (FileExists(kMainMenu)) CheckMenu(walk, kMainMenu);
  }
  CheckHintFiles();
  CheckSkin();
  return known.findings.empty();
}

}  // namespace zel
