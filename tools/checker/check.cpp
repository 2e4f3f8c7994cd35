#include "tools/checker/check.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/menu_widgets.h"
#include "launcher/paths.h"
#include "launcher/progress.h"
#include "launcher/state.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/list_view.h"
#include "tools/checker/files.h"
#include "tools/checker/items.h"
#include "tools/checker/layout_check.h"
#include "tools/checker/menu_file.h"
#include "tools/checker/settings_check.h"
#include "tools/checker/skin_check.h"
#include "tools/checker/texts.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

// menu.cfg first, then in the order in which they are named.
std::vector<MenuFile> ReadMenus(Findings& findings, Pictures& pictures) {
  std::vector<MenuFile> menus;
  if (!IsThere(kMainMenu)) {
    findings.Add(Msg::kMissingMenu, {kMainMenu}, {kMainMenu}, NearestFile(kMainMenu));
    return menus;
  }
  if (!CheckFile(findings, {kMainMenu}, kMainMenu)) return menus;
  const bool takesSizes = settings.zoom != 1;
  std::set<std::string> seen{kMainMenu};
  menus.push_back(ReadMenuFile(findings, pictures, nullptr, kMainMenu, takesSizes));
  for (std::size_t i = 0; i < menus.size(); ++i) {
    const std::vector<SectionFile::Entry> links = menus[i].submenus;
    for (const SectionFile::Entry& link : links)
      if (IsFile(link.value.c_str()) && seen.insert(link.value).second) {
        const Place place = menus[i].At(link.line);
        menus.push_back(ReadMenuFile(findings, pictures, &place, link.value, takesSizes));
      }
  }
  return menus;
}

void CheckProgressPicture(Findings& findings, Pictures& pictures) {
  if (!IsThere(kProgressPicture))
    findings.Add(Msg::kMissingProgress, {kMainMenu}, {kProgressPicture});
  else
    CheckPicture(findings, pictures, {kProgressPicture}, kProgressPicture);
}

// Those that F2 goes round.
void CheckLooks(Findings& findings, const SkinLines& lines, const std::string& skin, bool isLook) {
  const Place place{kSettingsFile, lines.looks};
  std::set<std::string> looks;
  bool areParted = true;
  for (const std::string& look : ListParts(settings.looks)) {
    std::string commas = look;
    std::replace(commas.begin(), commas.end(), ';', ',');
    constexpr std::string_view kEnd = ".skin";
    for (std::size_t i = commas.find(kEnd); i != std::string::npos; i = commas.find(kEnd, i + 1))
      if (commas.substr(i + kEnd.size(), 1) == " ") commas.insert(i + kEnd.size(), 1, ',');
    const bool isList = commas != look && !IsFile(look.c_str());
    if (!looks.insert(look).second)
      findings.Add(Msg::kLookTwice, place, {look});
    else if (isList)
      findings.Add(Msg::kMissingFile, place, {look}, commas);
    else if (look != skin)
      CheckSkin(findings, place, look);
    areParted = areParted && !isList;
  }
  const bool isNamed = isLook && lines.skinPath > 1 && !skin.empty();
  if (isNamed && areParted && !looks.empty() && !looks.contains(skin))
    findings.Add(Msg::kLookLeft, place, {skin});
}

// Without settings only those that the menu itself names.
std::vector<Size> Screens(const std::vector<MenuFile>& menus, bool areSettingsRead) {
  std::vector<Size> screens;
  const auto add = [&screens](Size size) {
    if (std::find(screens.begin(), screens.end(), size) == screens.end()) screens.push_back(size);
  };
  if (areSettingsRead) {
    std::for_each(std::begin(kUsualScreens), std::end(kUsualScreens), add);
    add({settings.screenWidth, settings.screenHeight});
  }
  // With a zoom any size may have its section; each takes its time.
  constexpr std::size_t kMost = 200;
  if (settings.zoom == 1 || menus.empty()) return screens;
  for (const auto& [name, section] : menus.front().screens)
    if (Size size; screens.size() < kMost && ReadSectionSize(name, &size)) add(size);
  return screens;
}

}  // namespace

std::vector<Finding> CheckTree() {
  const FormatGuard format{U_UTF8};
  Findings findings;
  Pictures pictures;
  settings = {};
  paths.languageFile = "";
  const SkinLines lines = CheckSettings(findings);
  // Of menus only what is wrong whatever the settings say is to be said.
  if (!lines.isRead) settings.zoom = kZoomToFit;
  if (!EngineInit()) return findings.Finish();
  constexpr int kDepth = 32;
  set_color_depth(kDepth);
  RecomputeNamedColors();
  set_color_conversion(PictureConversion());
  SetZoom(1);
  const std::string skin{settings.skinPath};
  const bool isLook = lines.isRead && CheckSkin(findings, {kSettingsFile, lines.skinPath}, skin);
  CheckLooks(findings, lines, skin, isLook);
  SetCurrentSkin(std::make_unique<Skin>(settings.skinPath));
  if (CurrentSkin()->GetError().IsError()) CurrentSkin()->Reset();
  const std::vector<MenuFile> menus = ReadMenus(findings, pictures);
  if (!menus.empty()) CheckProgressPicture(findings, pictures);
  if (!menus.empty()) CheckAnyChoice(findings, menus.front());
  for (const MenuFile& menu : menus) CheckItems(findings, menu);
  CheckChoices(findings, menus);
  CheckCircles(findings, menus);
  CheckTexts(findings, menus, isLook ? CurrentSkin() : nullptr, lines.isRead);
  const Size own{settings.screenWidth, settings.screenHeight};
  // What is wrong with a screen that cannot be is said.
  Size read;
  if (!lines.isRead || ReadSectionSize(SectionFor(own), &read))
    CheckLayouts(findings, pictures, menus, Screens(menus, lines.isRead), own, isLook);
  SetCurrentSkin(nullptr);
  EngineExit();
  SetZoom(1);
  return findings.Finish();
}

}  // namespace zel
