#include "tools/checker/settings_check.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/hint_file.h"
#include "launcher/menu_config.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/geometry.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "tools/checker/files.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"
#include "tools/checker/skin_check.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

using Section = SectionFile::Section;

// What is said of menus depends on them.
constexpr const char* kForMenus[] = {"zoom", "skinPath", "screenWidth", "screenHeight", "unicode"};

// Sections that Allegro itself reads from its configuration.
constexpr const char* kOfAllegro[] = {"graphics", "mouse",    "keyboard", "joystick", "sound",
                                      "midimap",  "language", "system",   "allegro"};

// The modes of panels and of the firmware of graphics cards.
constexpr Size kModes[] = {
    {320, 200},   {320, 240},   {400, 300},   {512, 384},   {640, 350},   {640, 400},
    {640, 480},   {720, 400},   {720, 480},   {720, 576},   {768, 576},   {800, 480},
    {800, 600},   {832, 624},   {848, 480},   {854, 480},   {960, 540},   {960, 600},
    {960, 720},   {1024, 576},  {1024, 600},  {1024, 768},  {1152, 864},  {1152, 900},
    {1280, 720},  {1280, 768},  {1280, 800},  {1280, 960},  {1280, 1024}, {1360, 768},
    {1366, 768},  {1400, 1050}, {1440, 900},  {1440, 960},  {1440, 1080}, {1536, 864},
    {1600, 900},  {1600, 1200}, {1680, 1050}, {1792, 1344}, {1856, 1392}, {1920, 1080},
    {1920, 1200}, {1920, 1440}, {2048, 1152}, {2048, 1536}, {2160, 1440}, {2256, 1504},
    {2560, 1080}, {2560, 1440}, {2560, 1600}, {2560, 2048}, {2736, 1824}, {2880, 1800},
    {3000, 2000}, {3200, 1800}, {3440, 1440}, {3840, 1600}, {3840, 2160}, {3840, 2400},
    {4096, 2160}, {5120, 1440}, {5120, 2160}, {5120, 2880}, {7680, 4320}};

// Allegro's for Linux.
constexpr int kDrivers[] = {GFX_XWINDOWS, GFX_XWINDOWS_FULLSCREEN,
                            GFX_XDGA,     GFX_XDGA_FULLSCREEN,
                            GFX_XDGA2,    GFX_XDGA2_SOFT,
                            GFX_FBCON,    GFX_VGA,
                            GFX_MODEX,    GFX_VBEAF,
                            GFX_SVGALIB};
constexpr int kMostFound = 2;  // any other number is a driver

using KeyInfo = Settings::KeyInfo;

// The number for a word that other programs have for it; null for none.
const char* MeantSwitch(const std::string& value) {
  const auto isAny = [word = Upper(value)](std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&](const char* w) { return word == w; });
  };
  if (isAny({"YES", "ON", "TRUE"})) return "1";
  return isAny({"NO", "OFF", "FALSE"}) ? "0" : nullptr;
}

class SettingsCheck {
 public:
  explicit SettingsCheck(Findings& findings) : findings_{findings} {
    for (const KeyInfo& key : keys_) names_.emplace_back(key.name);
  }

  SkinLines Run() {
    std::string text;
    if (!ReadChecked(findings_, kSettingsFile, kLongestConfigFile, &text)) return {.isRead = false};
    const char* other = HoldsText(text) ? OtherKind(text) : nullptr;
    if (!HoldsText(text) || other) {
      settings = {};  // whatever is found in it
      findings_.Add(Msg::kEmptyFile, {kSettingsFile}, {other ? other : "says nothing"});
      return {.isRead = false};
    }
    const SectionFile content = CheckLines(findings_, kSettingsFile, text, kSettingsSection);
    for (const Section& section : content.Sections()) CheckSection(section);
    CheckMode(content);
    SkinLines lines;
    // Without a section no key is read, which is said, and nothing of the look is meant so.
    lines.isRead = isRead_ && !content.Sections().empty();
    const Section& section = content.Find(settings.Section().c_str());
    if (const auto* entry = section.Find("skinPath")) lines.skinPath = entry->line;
    if (const auto* entry = section.Find("looks")) lines.looks = entry->line;
    return lines;
  }

 private:
  const KeyInfo* Find(const std::string& name) const {
    const auto found = std::find_if(keys_.begin(), keys_.end(), [&name](const KeyInfo& key) {
      return Upper(key.name) == Upper(name);
    });
    return found == keys_.end() ? nullptr : &*found;
  }

  bool HoldsSettings(const Section& section) const {
    const auto& entries = section.Entries();
    return std::any_of(entries.begin(), entries.end(),
                       [this](const auto& entry) { return Find(entry.name); });
  }

  // What a file is that was copied here and has no settings; null for one that may have some.
  const char* OtherKind(const std::string& text) const {
    const SectionFile file = SectionFile::FromUtf8(text);
    if (!file.Find(kSettingsSection).Heads().empty()) return nullptr;
    for (std::size_t position = 0; position < text.size();)
      if (IsHintEnd(Trimmed(std::string{NextLine(text, position)}.c_str())))
        return "is a file of explanations and no settings";
    for (const Section& section : file.Sections()) {
      if (Upper(section.Name()) == kGeneralSection) return "is a menu and no settings";
      if (HoldsSettings(section)) return nullptr;
      if (IsSkinSection(section.Name())) return "is a skin and no settings";
    }
    return nullptr;
  }

  void CheckSection(const Section& section) {
    const Place place{kSettingsFile, section.Heads().front()};
    const std::string name = Upper(section.Name());
    if (name == kNoName) return;  // which is said
    const bool isSettings = name == Upper(settings.Section());
    const bool isAllegros = std::any_of(std::begin(kOfAllegro), std::end(kOfAllegro),
                                        [&name](const char* own) { return Upper(own) == name; });
    const bool holdsSettings = HoldsSettings(section);
    if (!isSettings && std::any_of(std::begin(kForMenus), std::end(kForMenus),
                                   [&section](const char* key) { return section.Find(key); }))
      isRead_ = false;
    if (isSettings && name != Upper(kSettingsSection))
      findings_.Add(Msg::kUnnamedSection, place, {section.Name()});
    else if (!isSettings && (!isAllegros || holdsSettings))
      findings_.Add(Msg::kUnknownSection, place, {section.Name()},
                    holdsSettings ? std::string{"[Toolkit] for its keys"}
                                  : Nearest(section.Name(), {kSettingsSection}));
    if (isSettings)
      for (const SectionFile::Entry& entry : section.Entries()) CheckEntry(entry);
  }

  void CheckEntry(const SectionFile::Entry& entry) {
    const Place place{kSettingsFile, entry.line};
    const KeyInfo* key = Find(entry.name);
    const bool isText = key && (key->kind <= KeyInfo::kFiles);
    const std::string value = WithoutComment(entry.value, !isText);
    if (!key) {
      if (findings_.Has(Msg::kNoEquals, place)) return;
      findings_.Add(Msg::kUnknownKey, place, {entry.name}, Nearest(entry.name, names_));
      return;
    }
    const bool isZoom = key->kind == KeyInfo::kZoom;
    const bool isQuoted = !value.empty() && CheckQuotes(findings_, place, value);
    // What was meant for a zoom is one, so that nothing follows from it.
    if (isZoom &&
        (isQuoted || value.empty() || !CheckZoom(findings_, place, entry.name, value, true)))
      settings.zoom = kZoomToFit;
    if (value.empty() || isQuoted) return;
    const bool isFound = 0 <= settings.gfxMode && settings.gfxMode <= kMostFound;
    if (Upper(key->name) == "GFXMODE" && !isFound &&
        std::find(std::begin(kDrivers), std::end(kDrivers), settings.gfxMode) == std::end(kDrivers))
      findings_.Add(Msg::kNoDriver, place, {value});
    if (const char* meant = key->kind == KeyInfo::kSwitch ? MeantSwitch(value) : nullptr) {
      findings_.Add(Msg::kNoNumber, place, {entry.name, value, "0"}, meant);
      return;
    }
    const bool isNumber = key->kind == KeyInfo::kNumber || key->kind == KeyInfo::kSwitch;
    if (!isNumber || !CheckNumber(findings_, place, entry.name, value, false)) return;
    const int number = ParsedNumber(value);
    if (number == 0 && std::string_view{key->name} == "useKeyboard")
      findings_.Add(Msg::kNoKeyboard, place);
    if (number == 0 && std::string_view{key->name} == "fullscreen")
      findings_.Add(Msg::kNoWindow, place);
    if (key->kind == KeyInfo::kSwitch && number != 0 && number != 1)
      findings_.Add(Msg::kNoSwitch, place, {entry.name, value});
    if (const auto& [least, most] = key->range; !key->range.Has(number))
      findings_.Add(Msg::kRange, place,
                    {entry.name, value, std::to_string(least), std::to_string(most)});
  }

  void CheckMode(const SectionFile& content) {
    const Section& section = content.Find(settings.Section().c_str());
    if (const auto* depth = section.Find("colorDepth");
        depth && settings.colorDepth > 0 && !IsColorDepth(settings.colorDepth))
      findings_.Add(Msg::kNoDepth, {kSettingsFile, depth->line},
                    {std::to_string(settings.colorDepth)});
    const auto* width = section.Find("screenWidth");
    const auto* height = section.Find("screenHeight");
    if ((!width && !height) || IsSaid(width) || IsSaid(height)) return;
    const Size size{settings.screenWidth, settings.screenHeight};
    const auto isMode = [size](Size mode) { return mode == size || mode == Size{size.h, size.w}; };
    if (std::any_of(std::begin(kModes), std::end(kModes), isMode)) return;
    const auto distance = [&](Size mode) {
      return (width ? Distance(size.w, mode.w) : 0) + (height ? Distance(size.h, mode.h) : 0);
    };
    const Size nearest =
        *std::min_element(std::begin(kModes), std::end(kModes),
                          [&](Size a, Size b) { return distance(a) < distance(b); });
    const bool canBe = std::min(size.w, size.h) > 0 && std::max(size.w, size.h) <= kMostPixels;
    findings_.Add(Msg::kNoMode, {kSettingsFile, width ? width->line : height->line},
                  {NameOf(size), NameOf(nearest), canBe ? "hardly a" : "no"});
  }

  // Whether it was said of a number that it is none.
  bool IsSaid(const SectionFile::Entry* entry) const {
    if (!entry) return false;
    const Place place{kSettingsFile, entry->line};
    return findings_.Has(Msg::kEmptyValue, place) || findings_.Has(Msg::kQuotes, place) ||
           findings_.Has(Msg::kLargeNumber, place) ||
           (findings_.Has(Msg::kNoNumber, place) && ParsedNumber(entry->value) == 0);
  }

  // Of a side of a screen from one that there is: one that is right says more than one that is not
  // quite so far off.
  static double Distance(int side, int real) {
    constexpr double kFar = 0.3, kShare = 0.01;
    const double factor = std::abs(std::log(std::max(1.0, std::abs(1.0 * side)) / real));
    return std::min(kFar, factor) + kShare * factor;
  }

  Findings& findings_;
  const std::vector<KeyInfo> keys_ = Settings::Keys();
  std::vector<std::string> names_;
  bool isRead_ = true;  // nothing that menus depend on is where nobody reads it
};

}  // namespace

SkinLines CheckSettings(Findings& findings) {
  if (!IsThere(kSettingsFile)) {
    findings.Add(Msg::kMissingSettings, {kSettingsFile}, {kSettingsFile},
                 NearestFile(kSettingsFile));
    return {.isRead = false};
  }
  if (!CheckFile(findings, {kSettingsFile}, kSettingsFile)) return {.isRead = false};
  settings.Load(kSettingsFile);
  return SettingsCheck{findings}.Run();
}

}  // namespace zel
