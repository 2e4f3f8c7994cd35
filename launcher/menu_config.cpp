#include "launcher/menu_config.h"

#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/menu_keys.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"

namespace zel {

namespace {

using Section = SectionFile::Section;

constexpr int kUnset = -1;

Color SeparatorColor() { return {140, 140, 140}; }
Color DisabledColor() { return {150, 150, 150}; }

// A key in the interface language: "Title.de" where there is one, else "Title".
std::string Translated(const Section& section, const char* key, bool translates,
                       const char* fallback = "") {
  std::string plain = section.GetText(key, fallback);
  if (!translates) return plain;
  return section.GetText((std::string{key} + "." + LanguageSuffix()).c_str(), plain.c_str());
}

void ReadScreenText(const SectionFile& file, const char* layoutSection, const std::string& key,
                    bool translates, ScreenText& text) {
  const Section& general = file.Find(kGeneralSection);
  const Section& own = file.Find(layoutSection);
  const auto number = [&](const char* part, std::int32_t& value) {
    const std::string name = key + part;
    value = own.GetInt(name.c_str(), general.GetInt(name.c_str(), value));
  };
  number("Left", text.left);
  number("Top", text.top);
  number("Font", text.font);
  const std::string color = key + "Color";
  const Color said = ReadColor(own.GetText(color.c_str(), general.GetText(color.c_str())));
  if (said.IsSet()) text.color = said;
  const std::string words = Translated(general, key.c_str(), translates);
  if (words == kNoText)
    text.text.Clear();
  else if (!words.empty())
    text.text.Assign(words.c_str());
}

void ReadLook(const Section& section, MenuItem& item) {
  item.color = ReadColor(section.GetText("Color"));
  item.hasOwnColor = item.color.IsSet();
  if (section.GetInt("Separator") != 0) {
    item.flags |= kItemSeparator;
    if (!item.color.IsSet()) item.color = SeparatorColor();
  }
  if (!item.submenu.IsEmpty()) item.flags |= kItemSubmenu;
  if (section.GetInt("Disable") > 0) {
    item.flags |= kItemDisabled;
    item.hasOwnColor = false;
    item.color = DisabledColor();
  }
  if (!item.color.IsSet()) item.color = Color{0, 0, 0};
}

std::unique_ptr<MenuItem> ReadItem(const Section& section, bool translates) {
  auto item = std::make_unique<MenuItem>();
  item->title.Assign(Translated(section, "Title", translates).c_str());
  item->icon.Assign(section.GetText("Icon"));
  item->submenu.Assign(section.GetText("Submenu"));
  item->exitCode = section.GetInt("ExCode");
  item->exitString.Assign(section.GetText("ExString"));
  item->hintSection.Assign(section.GetText("HintSection"));
  item->waitForFile.Assign(section.GetText("WaitForFile"));
  item->waitWhileFile.Assign(section.GetText("WaitWhileFile"));
  item->waitText.Assign(Translated(section, "WaitText", translates).c_str());
  item->timeout = section.GetInt("Timeout");
  item->showIfFile.Assign(section.GetText("ShowIfFileExists"));
  ReadLook(section, *item);
  return item;
}

bool IsKept(const MenuItem& item) {
  const bool shows = !item.title.IsEmpty() || !item.icon.IsEmpty() || (item.flags & kItemSeparator);
  return shows && (item.showIfFile.IsEmpty() || ItemFileExists(item.showIfFile));
}

}  // namespace

const char* TitleOf(const MenuItem& item) {
  return item.flags & kItemBack ? Text(kBackText) : item.title.c_str();
}

bool FileExists(const char* name) {
  struct stat status;
  return *name != '\0' && stat(name, &status) == 0;
}

bool ItemFileExists(const char* name) {
  const auto assumed = paths.assumed.find(name);
  return assumed == paths.assumed.end() ? FileExists(name) : assumed->second;
}

std::string LayoutSection() {
  if (const std::string& fitted = launcherState.layout.section; !fitted.empty()) return fitted;
  const Size screen{settings.screenWidth, settings.screenHeight};
  return IsUsual(screen) ? SectionFor(screen) : kGeneralSection;
}

ColorText ReadColor(const char* text) {
  ColorText color;
  std::sscanf(text, "%d,%d,%d%n", &color.r, &color.g, &color.b, &color.length);
  return color;
}

LayoutValues ReadLayout(const SectionFile& file, const char* section, LayoutValues values) {
  const Section& general = file.Find(kGeneralSection);
  const Section& own = file.Find(section);
  for (const MenuKey& key : kSizeKeys) {
    if (!key.place) continue;
    std::int32_t& value = values.*key.place;
    const int said = own.GetInt(key.name, kUnset);
    value = said != kUnset ? said : general.GetInt(key.name, value);
  }
  return values;
}

MenuConfig::MenuConfig() = default;
MenuConfig::~MenuConfig() = default;

void MenuConfig::Read(const char* menuFile) {
  ReadWithoutHints(menuFile);
  ReadHints();
}

void MenuConfig::ReadWithoutHints(const char* menuFile) {
  if (menuFile) {
    levels.push_back(std::make_unique<MenuLevel>());
    if (levels.size() > 1) {
      const MenuLevel& outer = *levels[levels.size() - 2];
      CurrentLevel().heading = outer.heading;
      CurrentLevel().keyHelp = outer.keyHelp;
    }
    CurrentLevel().fileName.Assign(menuFile);
  } else if (levels.size() > 1) {
    levels.pop_back();
  }
  lineCount = 0;
  items.clear();

  const SectionFile file = SectionFile::FromUtf8(ReadWhole(CurrentLevel().fileName));
  ReadScreen(file, CurrentLevel());
  ReadItems(file);
}

void MenuConfig::ReadScreenAgain() {
  launcherState.layoutValues = {};
  const MenuLevel* outer = nullptr;
  for (const auto& level : levels) {
    const MenuLevel unread;
    level->heading = outer ? outer->heading : unread.heading;
    level->keyHelp = outer ? outer->keyHelp : unread.keyHelp;
    ReadScreen(SectionFile::FromUtf8(ReadWhole(level->fileName)), *level);
    outer = level.get();
  }
}

void MenuConfig::ReadScreen(const SectionFile& file, MenuLevel& level) {
  const Section& general = file.Find(kGeneralSection);
  const std::string layoutSection = LayoutSection();
  const char* const own = layoutSection.c_str();
  const Section& resolution = file.Find(own);
  const bool translates = LanguageIndex() != 0;
  const std::string usual = Translated(general, "Background", translates);
  background.Assign(Translated(resolution, "Background", translates, usual.c_str()).c_str());
  launcherState.layoutValues = ReadLayout(file, own, launcherState.layoutValues);
  menuTitle.Assign(Translated(general, "MenuTitle", translates).c_str());
  hintTitle.Assign(Translated(general, "HintTitle", translates).c_str());
  ReadScreenText(file, own, "Heading", translates, level.heading);
  ReadScreenText(file, own, "KeyHelp", translates, level.keyHelp);
  const std::string plainHintFile = general.GetText("HintFile");
  hintFile.Assign(Translated(general, "HintFile", translates).c_str());
  if (!FileExists(hintFile)) hintFile.Assign(plainHintFile.c_str());
  lineCount = general.GetInt("LinesNumber", lineCount);
  defaultLine = general.GetInt("Default");
  defaultTimeout = general.GetInt("DefaultTimeout");
  defaultAfterReturn = general.GetInt("DefaultAfterReturn") != 0;
  const Color backLine = ReadColor(general.GetText("BacklineColor"));
  launcherState.backLineColor = backLine.IsSet() ? backLine : DefaultBackLineColor();
  launcherState.hasBackLineColor = backLine.IsSet();
}

void MenuConfig::ReadItems(const SectionFile& file) {
  const bool translates = LanguageIndex() != 0;
  // Only lines that the file holds can give an item, however many it declares.
  for (const int n : file.Numbered("LINE", lineCount)) {
    const Section& section = file.Find(("LINE" + std::to_string(n)).c_str());
    std::unique_ptr<MenuItem> item = ReadItem(section, translates);
    item->line = n;
    if (IsKept(*item)) items.push_back(std::move(item));
  }
}

void MenuConfig::ReadHints() {
  const HintFile hints{hintFile};
  for (const auto& item : items)
    if (!item->hintSection.IsEmpty()) item->hintText.Assign(hints.Fill(item->hintSection).c_str());
}

}  // namespace zel
