// Looks for mistakes in a menu tree: zel-check [DIR]
//
// Reads the settings, the skin and every menu file that can be reached from menu.cfg, for each of
// the three screen sizes that menus can be laid out for, and says what the launcher would silently
// leave out, cut or misunderstand. Shows nothing, needs no display and writes nothing.
//
// The exit status is 0 without findings, 1 with findings and 2 when DIR is no directory.
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "imageformats/load.h"
#include "imageformats/register.h"
#include "launcher/hint_file.h"
#include "launcher/menu_config.h"
#include "toolkit/core/bitmap_guard.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/engine_font.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr const char* kMainMenu = "menu.cfg";
constexpr const char* kSettingsFile = "zel.cfg";
constexpr const char* kGeneral = "MENU_CONFIGURATION";
constexpr int kDecimal = 10;
constexpr int kLargestStatus = 255;  // what a process can end with
constexpr std::size_t kLongestOutput = 255;

constexpr Size kScreens[] = {{640, 480}, {800, 600}, {1024, 768}};

enum class Kind { kText, kNumber, kColor, kFile, kPicture };
struct Key {
  const char* name;
  Kind kind;
  bool isTranslated = false;  // may be followed by a point and a language
};
constexpr Key kScreenKeys[] = {
    {"Background", Kind::kPicture},  {"MenuLeft", Kind::kNumber},
    {"MenuTop", Kind::kNumber},      {"MenuWidth", Kind::kNumber},
    {"MenuHeight", Kind::kNumber},   {"HintLeft", Kind::kNumber},
    {"HintTop", Kind::kNumber},      {"HintWidth", Kind::kNumber},
    {"HintHeight", Kind::kNumber},   {"ProgressX", Kind::kNumber},
    {"ProgressY", Kind::kNumber},    {"ProgressW", Kind::kNumber},
    {"MenuTitle", Kind::kText},      {"HintTitle", Kind::kText},
    {"HintFile", Kind::kFile, true}, {"LinesNumber", Kind::kNumber},
    {"BacklineColor", Kind::kColor},
};
constexpr Key kItemKeys[] = {
    {"Title", Kind::kText, true},      {"Icon", Kind::kPicture},       {"Submenu", Kind::kFile},
    {"ExCode", Kind::kNumber},         {"ExString", Kind::kText},      {"HintSection", Kind::kText},
    {"WaitForFile", Kind::kText},      {"WaitWhileFile", Kind::kText}, {"Timeout", Kind::kNumber},
    {"ShowIfFileExists", Kind::kText}, {"Disable", Kind::kNumber},     {"Color", Kind::kColor},
    {"Separator", Kind::kNumber},
};

int findings = 0;

// One line on standard output: what is wrong, and where.
class Place {
 public:
  explicit Place(std::string fileName, std::string section = {}, std::string key = {})
      : text_{std::move(fileName)} {
    if (!section.empty()) text_ += ": [" + section + "]";
    if (!key.empty()) text_ += " " + key;
  }
  void Report(const std::string& what) const {
    static std::set<std::string> said;
    const std::string line = text_ + ": " + what;
    if (!said.insert(line).second) return;
    std::puts(line.c_str());
    ++findings;
  }

 private:
  std::string text_;
};

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(utolower(static_cast<unsigned char>(c)));
  return text;
}

// Names of sections, or of the keys of one section, of the current configuration file.
std::vector<std::string> Names(const char* section) {
  const char** names = nullptr;
  const int count = section ? list_config_entries(section, &names) : list_config_sections(&names);
  std::vector<std::string> found{names, names + std::max(0, count)};
  free_config_entries(&names);
  for (std::string& name : found)
    if (!section && name.size() > 2) name = name.substr(1, name.size() - 2);  // Allegro's brackets
  return found;
}

template <std::size_t kCount>
const Key* FindKey(const Key (&keys)[kCount], const std::string& name) {
  for (const Key& key : keys) {
    if (Lower(name) == Lower(key.name)) return &key;
    const std::string stem = std::string{key.name} + ".";
    if (key.isTranslated && Lower(name).compare(0, stem.size(), Lower(stem)) == 0) return &key;
  }
  return nullptr;
}

void CheckNumber(const Place& place, const std::string& value) {
  char* end = nullptr;
  std::strtol(value.c_str(), &end, 0);
  if (*end != '\0') place.Report("\"" + value + "\" is no number");
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

void CheckValue(const Place& place, Kind kind, const std::string& value) {
  if (value.empty()) return;
  switch (kind) {
    case Kind::kNumber:
      return CheckNumber(place, value);
    case Kind::kColor:
      return CheckColor(place, value);
    case Kind::kPicture:
      return CheckPicture(place, value);
    case Kind::kFile:
      if (!FileExists(value.c_str())) place.Report("there is no file " + value);
      return;
    case Kind::kText:
      return;
  }
}

template <std::size_t kCount>
void CheckKeys(const std::string& file, const std::string& section, const Key (&keys)[kCount]) {
  for (const std::string& name : Names(section.c_str())) {
    const Place place{file, section, name};
    if (const Key* key = FindKey(keys, name))
      CheckValue(place, key->kind, get_config_string(section.c_str(), name.c_str(), ""));
    else
      place.Report("nobody reads this key");
  }
}

// The number of a section "LINE12", or 0.
int LineNumber(const std::string& section) {
  const std::string name = Lower(section);
  const std::string digits = name.compare(0, 4, "line") == 0 ? name.substr(4) : "";
  const bool isNumber =
      !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
  return isNumber ? static_cast<int>(std::strtol(digits.c_str(), nullptr, kDecimal)) : 0;
}

bool IsScreenSection(const std::string& section) {
  if (Lower(section) == Lower(kGeneral)) return true;
  return std::any_of(std::begin(kScreens), std::end(kScreens), [&section](const Size& size) {
    return Lower(section) == Lower(std::string{kGeneral} + "_" + std::to_string(size.w) + "x" +
                                   std::to_string(size.h));
  });
}

// What the file says, whether the launcher looks there or not.
void CheckSections(const std::string& file) {
  set_config_file(file.c_str());
  const int lines = get_config_int(kGeneral, "LinesNumber", 0);
  for (const std::string& section : Names(nullptr)) {
    if (const int number = LineNumber(section); number > 0) {
      CheckKeys(file, section, kItemKeys);
      if (number > lines)
        Place{file, section}.Report("never shown: LinesNumber is " + std::to_string(lines));
    } else if (IsScreenSection(section)) {
      CheckKeys(file, section, kScreenKeys);
    } else if (!section.empty()) {
      Place{file, section}.Report("nobody reads this section");
    }
  }
}

void CheckItem(const std::string& file, const MenuItem& item, const MenuConfig& menu) {
  const bool isSeparator = item.flags & kItemSeparator;
  const Place place{file, item.title.IsEmpty() ? "separator" : item.title.c_str()};
  if (!item.hintSection.IsEmpty() && item.hintText.IsEmpty())
    place.Report(menu.hintFile.IsEmpty()
                     ? "HintSection without a HintFile"
                     : std::string{menu.hintFile} + " has no text for the section " +
                           item.hintSection.c_str());
  if (isSeparator || (item.flags & (kItemSubmenu | kItemDisabled))) return;
  if (item.exitCode < 0 || item.exitCode > kLargestStatus)
    place.Report("scripts see the exit status " + std::to_string(item.exitCode & kLargestStatus));
  if (ustrlen(item.exitString) > static_cast<int>(kLongestOutput))
    place.Report("ExString is cut to 255 characters");
  if (item.timeout > 0 && item.waitForFile.IsEmpty() && item.waitWhileFile.IsEmpty())
    place.Report("Timeout without a file to wait for");
}

void CheckPanel(const Place& place, const char* name, const Rect& panel) {
  const std::string size =
      std::to_string(settings.screenWidth) + " x " + std::to_string(settings.screenHeight);
  if (panel.x < 0 || panel.y < 0 || panel.Right() > settings.screenWidth ||
      panel.Bottom() > settings.screenHeight)
    place.Report(std::string{"the "} + name + " does not fit a screen of " + size);
}

void CheckLayout(const std::string& file) {
  const LayoutValues& at = layoutValues;
  const Place place{file};
  constexpr int kBarHeight = 30;
  CheckPanel(place, "menu", {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight});
  CheckPanel(place, "explanation", {at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight});
  CheckPanel(place, "progress bar", {at.progressX, at.progressY, at.progressW, kBarHeight});
}

// Walks the tree of menus as a user would. `open` are the files that led here.
void CheckMenu(MenuConfig& menu, const std::string& file, std::set<std::string> open) {
  menu.Read(file.c_str());
  CheckSections(file);
  CheckLayout(file);
  if (menu.items.empty()) Place{file}.Report("the menu is empty");
  open.insert(file);
  std::vector<std::string> submenus;
  for (const auto& item : menu.items) {
    CheckItem(file, *item, menu);
    if ((item->flags & kItemSubmenu) && !(item->flags & kItemDisabled))
      submenus.emplace_back(item->submenu);
  }
  for (const std::string& submenu : submenus) {
    if (open.contains(submenu))
      Place{file}.Report("opens " + submenu + ", which leads here");
    else if (FileExists(submenu.c_str()))
      CheckMenu(menu, submenu, open);
  }
  if (menu.Depth() > 1) menu.Read(nullptr);
}

void CheckSettings() {
  if (!FileExists(kSettingsFile)) {
    Place{kSettingsFile}.Report("there is no such file, the defaults hold");
    return;
  }
  settings.Load(kSettingsFile);
  for (const std::string& section : Names(nullptr))
    for (const std::string& name : Names(section.c_str()))
      if (!Settings::IsKey(name.c_str()))
        Place{kSettingsFile, section, name}.Report("nobody reads this key");
}

void CheckSkin() {
  set_color_depth(32);
  RecomputeNamedColors();
  if (!EngineInit()) return;
  {
    const Skin skin{settings.skinPath};
    std::string what = skin.GetError().GetDescription();
    what.pop_back();  // the line feed
    if (skin.GetError().IsError()) Place{settings.skinPath.c_str()}.Report(what);
  }
  EngineExit();
}

int CheckTree(const char* directory) {
  if (chdir(directory) != 0) {
    std::fprintf(stderr, "zel-check: there is no directory %s\n", directory);
    return 2;
  }
  // Byte by byte: the files of one tree may be written in several encodings.
  set_uformat(U_ASCII);
  install_allegro(SYSTEM_NONE, &errno, std::atexit);
  set_color_conversion(kPictureConversion);
  InstallBitmapGuard();
  RegisterPictureFormats();
  CheckSettings();
  CheckSkin();
  if (!FileExists(kMainMenu)) Place{kMainMenu}.Report("there is no such file");
  for (const Size& size : kScreens) {
    settings.screenWidth = size.w;
    settings.screenHeight = size.h;
    layoutValues = {};
    MenuConfig menu;
    if (FileExists(kMainMenu)) CheckMenu(menu, kMainMenu, {});
  }
  return findings == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace zel

int main(int argc, char** argv) {
  if (argc > 2 || (argc == 2 && argv[1][0] == '-')) {
    std::fputs("usage: zel-check [DIR]    DIR is /etc/zel by default\n", stderr);
    return 2;
  }
  return zel::CheckTree(argc == 2 ? argv[1] : "/etc/zel");
}
