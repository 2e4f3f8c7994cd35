// The keys of menu files, for who reads them and for who looks for mistakes in them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "launcher/layout.h"

namespace zel {

struct MenuKey {
  enum Kind { kText, kNumber, kColor, kZoom, kName, kFile, kPicture };
  const char* name;
  Kind kind;
  bool isTranslated = false;                    // may be followed by a point and a language
  std::int32_t LayoutValues::*place = nullptr;  // that it says
};
using MenuKeys = std::span<const MenuKey>;

// Of the general section.
inline constexpr MenuKey kScreenKeys[] = {
    {"Background", MenuKey::kPicture, true},
    {"MenuLeft", MenuKey::kNumber, false, &LayoutValues::menuLeft},
    {"MenuTop", MenuKey::kNumber, false, &LayoutValues::menuTop},
    {"MenuWidth", MenuKey::kNumber, false, &LayoutValues::menuWidth},
    {"MenuHeight", MenuKey::kNumber, false, &LayoutValues::menuHeight},
    {"HintLeft", MenuKey::kNumber, false, &LayoutValues::hintLeft},
    {"HintTop", MenuKey::kNumber, false, &LayoutValues::hintTop},
    {"HintWidth", MenuKey::kNumber, false, &LayoutValues::hintWidth},
    {"HintHeight", MenuKey::kNumber, false, &LayoutValues::hintHeight},
    {"ProgressX", MenuKey::kNumber, false, &LayoutValues::progressX},
    {"ProgressY", MenuKey::kNumber, false, &LayoutValues::progressY},
    {"ProgressW", MenuKey::kNumber, false, &LayoutValues::progressW},
    {"HeadingLeft", MenuKey::kNumber},
    {"HeadingTop", MenuKey::kNumber},
    {"HeadingFont", MenuKey::kNumber},
    {"HeadingColor", MenuKey::kColor},
    {"KeyHelpLeft", MenuKey::kNumber},
    {"KeyHelpTop", MenuKey::kNumber},
    {"KeyHelpFont", MenuKey::kNumber},
    {"KeyHelpColor", MenuKey::kColor},
    {"Zoom", MenuKey::kZoom},
    {"MenuTitle", MenuKey::kText, true},
    {"HintTitle", MenuKey::kText, true},
    {"Heading", MenuKey::kText, true},
    {"KeyHelp", MenuKey::kText, true},
    {"HintFile", MenuKey::kFile, true},
    {"LinesNumber", MenuKey::kNumber},
    {"BacklineColor", MenuKey::kColor},
    {"Default", MenuKey::kNumber},
    {"DefaultTimeout", MenuKey::kNumber},
    {"DefaultAfterReturn", MenuKey::kNumber},
};
inline constexpr MenuKeys kGeneralKeys = kScreenKeys;
// Of the sections for one size: those up to "Zoom".
inline constexpr MenuKeys kSizeKeys = kGeneralKeys.first(21);
static_assert(std::string_view{kSizeKeys.back().name} == "Zoom");

// Of "LINE1" and so on.
inline constexpr MenuKey kItemKeys[] = {
    {"Title", MenuKey::kText, true}, {"Icon", MenuKey::kPicture},
    {"Submenu", MenuKey::kFile},     {"ExCode", MenuKey::kNumber},
    {"ExString", MenuKey::kText},    {"HintSection", MenuKey::kText},
    {"WaitForFile", MenuKey::kName}, {"WaitWhileFile", MenuKey::kName},
    {"Timeout", MenuKey::kNumber},   {"ShowIfFileExists", MenuKey::kName},
    {"Disable", MenuKey::kNumber},   {"Color", MenuKey::kColor},
    {"Separator", MenuKey::kNumber}, {"WaitText", MenuKey::kText, true},
};

}  // namespace zel
