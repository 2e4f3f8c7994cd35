#include "launcher/menu_config.h"

#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/section_file.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "toolkit/core/settings.h"

namespace zel {

LayoutValues layoutValues;

namespace {

constexpr const char* kGeneral = "MENU_CONFIGURATION";
constexpr int kUnset = -1;

struct Resolution {
  int width, height;
  const char* section;
};
constexpr Resolution kResolutions[] = {
    {640, 480, "MENU_CONFIGURATION_640x480"},
    {800, 600, "MENU_CONFIGURATION_800x600"},
    {1024, 768, "MENU_CONFIGURATION_1024x768"},
};

struct LayoutKey {
  const char* key;
  std::int32_t LayoutValues::*value;
};
constexpr LayoutKey kLayoutKeys[] = {
    {"MenuLeft", &LayoutValues::menuLeft},   {"MenuTop", &LayoutValues::menuTop},
    {"MenuWidth", &LayoutValues::menuWidth}, {"MenuHeight", &LayoutValues::menuHeight},
    {"HintLeft", &LayoutValues::hintLeft},   {"HintTop", &LayoutValues::hintTop},
    {"HintWidth", &LayoutValues::hintWidth}, {"HintHeight", &LayoutValues::hintHeight},
    {"ProgressX", &LayoutValues::progressX}, {"ProgressY", &LayoutValues::progressY},
    {"ProgressW", &LayoutValues::progressW},
};

const char* ResolutionSection() {
  for (const Resolution& row : kResolutions)
    if (row.width == settings.screenWidth && row.height == settings.screenHeight)
      return row.section;
  return kGeneral;
}

Color DefaultBackLineColor() { return {200, 100, 100}; }
Color SeparatorColor() { return {140, 140, 140}; }
Color DisabledColor() { return {150, 150, 150}; }

// "r,g,b" in decimal; no colour when a number is missing.
Color ParseColor(const char* text) {
  int r = kUnset, g = kUnset, b = kUnset;
  std::sscanf(text, "%d,%d,%d", &r, &g, &b);
  if (r == kUnset || g == kUnset || b == kUnset) return {};
  return {r, g, b};
}

// A key in the interface language: "Title.de" where there is one, else "Title".
std::string Translated(const SectionFile& file, const char* key, bool translates) {
  std::string plain = file.GetText(key);
  if (!translates) return plain;
  return file.GetText((std::string{key} + "." + LanguageSuffix()).c_str(), plain.c_str());
}

void ReadLook(const SectionFile& file, MenuItem& item) {
  item.color = ParseColor(file.GetText("Color"));
  if (file.GetInt("Separator") != 0) {
    item.flags |= kItemSeparator;
    if (!item.color.IsSet()) item.color = SeparatorColor();
  }
  if (!item.submenu.IsEmpty()) item.flags |= kItemSubmenu;
  if (file.GetInt("Disable") > 0) {
    item.flags |= kItemDisabled;
    item.color = DisabledColor();
  }
  if (!item.color.IsSet()) item.color = Color{0, 0, 0};
}

std::unique_ptr<MenuItem> ReadItem(const SectionFile& file, bool translates) {
  auto item = std::make_unique<MenuItem>();
  item->title.Assign(Translated(file, "Title", translates).c_str());
  item->icon.Assign(file.GetText("Icon"));
  item->submenu.Assign(file.GetText("Submenu"));
  item->exitCode = file.GetInt("ExCode");
  item->exitString.Assign(file.GetText("ExString"));
  item->hintSection.Assign(file.GetText("HintSection"));
  item->waitForFile.Assign(file.GetText("WaitForFile"));
  item->waitWhileFile.Assign(file.GetText("WaitWhileFile"));
  item->timeout = file.GetInt("Timeout");
  item->showIfFile.Assign(file.GetText("ShowIfFileExists"));
  ReadLook(file, *item);
  return item;
}

bool IsKept(const MenuItem& item) {
  const bool shows = !item.title.IsEmpty() || !item.icon.IsEmpty() || (item.flags & kItemSeparator);
  return shows && (item.showIfFile.IsEmpty() || FileExists(item.showIfFile));
}

}  // namespace

bool FileExists(const char* name) {
  struct stat status;
  return *name != '\0' && stat(name, &status) == 0;
}

MenuConfig::MenuConfig() = default;
MenuConfig::~MenuConfig() = default;

void MenuConfig::Read(const char* menuFile) {
  if (menuFile) {
    levels.push_back(std::make_unique<MenuLevel>());
    CurrentLevel().fileName.Assign(menuFile);
  } else if (levels.size() > 1) {
    levels.pop_back();
  }
  background.Assign("back.bmp");
  menuTitle.Clear();
  hintTitle.Clear();
  hintFile.Clear();
  lineCount = 0;
  launcherState.backLineColor = DefaultBackLineColor();
  items.clear();

  SectionFile file{CurrentLevel().fileName};
  ReadScreen(file);
  ReadItems(file);
}

void MenuConfig::ReadScreen(SectionFile& file) {
  const char* resolution = ResolutionSection();
  file.Select(resolution);
  background.Assign(file.GetText("Background"));
  LayoutValues found;
  for (const LayoutKey& row : kLayoutKeys) found.*row.value = file.GetInt(row.key, kUnset);

  file.Select(kGeneral);
  if (background.IsEmpty()) background.Assign(file.GetText("Background"));
  for (const LayoutKey& row : kLayoutKeys)
    layoutValues.*row.value = found.*row.value != kUnset
                                  ? found.*row.value
                                  : file.GetInt(row.key, layoutValues.*row.value);
  menuTitle.Assign(file.GetText("MenuTitle"));
  hintTitle.Assign(file.GetText("HintTitle"));
  const std::string plainHintFile = file.GetText("HintFile");
  hintFile.Assign(Translated(file, "HintFile", LanguageIndex() != 0).c_str());
  if (!FileExists(hintFile)) hintFile.Assign(plainHintFile.c_str());
  lineCount = file.GetInt("LinesNumber", lineCount);
  const Color backLine = ParseColor(file.GetText("BacklineColor"));
  if (backLine.IsSet()) launcherState.backLineColor = backLine;
}

void MenuConfig::ReadItems(SectionFile& file) {
  const HintFile hints{hintFile};
  const bool translates = LanguageIndex() != 0;
  // Only lines that the file holds can give an item, however many it declares.
  for (const int n : file.Numbered("LINE", lineCount)) {
    file.Select(("LINE" + std::to_string(n)).c_str());
    std::unique_ptr<MenuItem> item = ReadItem(file, translates);
    if (!IsKept(*item)) continue;
    if (!item->hintSection.IsEmpty()) item->hintText.Assign(hints.Fill(item->hintSection).c_str());
    items.push_back(std::move(item));
  }
}

}  // namespace zel
