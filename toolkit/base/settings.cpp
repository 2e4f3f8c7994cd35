#include "toolkit/base/settings.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/base/config_file.h"
#include "toolkit/base/zoom.h"

namespace zel {
namespace {

enum class Kind { kInt, kBool, kDriverId };

struct Key {
  const char* name;
  Kind kind;
  int Settings::*number = nullptr;
  bool Settings::*flag = nullptr;
  Settings::Range range = {};  // what makes sense, and no more: see the Usable... operations
};

constexpr Key Int(const char* name, int Settings::*field, Settings::Range range = {}) {
  return {name, Kind::kInt, field, nullptr, range};
}
constexpr Key Driver(const char* name, int Settings::*field) {
  return {name, Kind::kDriverId, field};
}
constexpr Key Bool(const char* name, bool Settings::*field) {
  return {name, Kind::kBool, nullptr, field};
}

constexpr const char* kSection = "Toolkit";
constexpr const char* kSkinPath = "skinPath";
constexpr const char* kZoom = "zoom";
constexpr const char* kLooks = "looks";

constexpr Settings::Range kFrameRates{1, 1000};  // what Allegro's timers can keep up with

// In the order in which files have them; "skinPath" comes before all of them.
constexpr Key kKeys[] = {
    Int("screenWidth", &Settings::screenWidth),
    Int("screenHeight", &Settings::screenHeight),
    Int("refreshRate", &Settings::refreshRate, {0, 1000}),
    Int("colorDepth", &Settings::colorDepth),
    Driver("gfxMode", &Settings::gfxMode),
    Bool("fullscreen", &Settings::fullscreen),
    Bool("useVideoMemory", &Settings::useVideoMemory),
    Bool("fullDrag", &Settings::fullDrag),
    Bool("fullResize", &Settings::fullResize),
    Int("logicFrameRate", &Settings::logicFrameRate, kFrameRates),
    Bool("unlimitedFrameRate", &Settings::unlimitedFrameRate),
    Bool("showFrameRate", &Settings::showFrameRate),
    Bool("antialiasing", &Settings::antialiasing),
    Bool("guiSound", &Settings::guiSound),
    Int("soundVolume", &Settings::soundVolume, {0, 255}),
    Driver("soundDriver", &Settings::soundDriver),
    Driver("midiDriver", &Settings::midiDriver),
    Bool("showMouse", &Settings::showMouse),
    Bool("mouseShadow", &Settings::mouseShadow),
    Int("doubleClickDelay", &Settings::doubleClickDelay, {0, 10000}),
    Int("mouseSpeed", &Settings::mouseSpeed, {1, 100}),
    Bool("useKeyboard", &Settings::useKeyboard),
    Int("keyDelay", &Settings::keyDelay, {-1, 10000}),
    Int("keyRepeat", &Settings::keyRepeat, {-1, 10000}),
    Bool("useJoystick", &Settings::useJoystick),
    Int("screenUpdateMethod", &Settings::screenUpdateMethod, {0, 3}),
    Bool("vsync", &Settings::vsync),
    Bool("yield", &Settings::yield),
    Bool("runInBackground", &Settings::runInBackground),
    Int("maxFrameSkip", &Settings::maxFrameSkip, {1, 1000}),
    Int("tooltipDelay", &Settings::tooltipDelay, {0, 100000}),
    Int("tooltipAutohideDelay", &Settings::tooltipAutohideDelay, {0, 10000000}),
};

// These a file has only where they are on.
constexpr Key kAdditions[] = {
    Bool("help", &Settings::help),
    Bool("typeAhead", &Settings::typeAhead),
};

bool IsIn(std::span<const Key> keys, const char* name) {
  return std::any_of(keys.begin(), keys.end(),
                     [name](const Key& key) { return ustricmp(name, Ascii(key.name)) == 0; });
}

bool HoldsAKey(const SectionFile::Section& section) {
  return std::any_of(section.Entries().begin(), section.Entries().end(),
                     [](const auto& entry) { return Settings::IsKey(entry.name.c_str()); });
}

// As Allegro's set_config_id writes it.
std::string DriverText(int id) {
  if (id < 256) return std::to_string(id);
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(id >> shift & 0xFF);
  using namespace std::string_view_literals;
  return text.substr(0, text.find_first_of(" \0"sv));
}

}  // namespace

const SectionFile::Section& Settings::SectionOf(const SectionFile& file) {
  const SectionFile::Section& named = file.Find(Ascii(kSection));
  if (!named.Heads().empty()) return named;
  const auto found = std::find_if(file.Sections().begin(), file.Sections().end(), HoldsAKey);
  return found != file.Sections().end() ? *found : named;
}

bool Settings::IsKey(const char* name) {
  for (const char* text : {kSkinPath, kZoom, kLooks, kUnicode})
    if (ustricmp(name, Ascii(text)) == 0) return true;
  return IsIn(kKeys, name) || IsIn(kAdditions, name);
}

std::vector<Settings::KeyInfo> Settings::Keys() {
  std::vector<KeyInfo> keys{{kSkinPath, KeyInfo::kText},
                            {kZoom, KeyInfo::kZoom},
                            {kLooks, KeyInfo::kFiles},
                            {kUnicode, KeyInfo::kSwitch}};
  for (const Key& key : kAdditions) keys.push_back({key.name, KeyInfo::kSwitch});
  for (const Key& key : kKeys)
    keys.push_back({key.name,
                    key.kind == Kind::kInt    ? KeyInfo::kNumber
                    : key.kind == Kind::kBool ? KeyInfo::kSwitch
                                              : KeyInfo::kDriver,
                    key.range});
  return keys;
}

void Settings::Load(const char* file) {
  if (!file) return;
  fileLoaded = true;
  fileName.Assign(file);
  const SectionFile content = UseConfigFile(fileName);
  const SectionFile::Section& section = SectionOf(content);
  section_ = section.Heads().empty() ? kSection : section.Name();
  skinPath.Assign(section.GetText(Ascii(kSkinPath), skinPath));
  if (const char* text = section.GetText(Ascii(kZoom), nullptr))
    zoom = ParseZoom(Converted(text, U_CURRENT, U_UTF8).c_str());
  looks.Assign(section.GetText(Ascii(kLooks), looks));
  for (const Key& key : kAdditions)
    this->*key.flag = section.GetInt(Ascii(key.name), this->*key.flag) != 0;
  for (const Key& key : kKeys) {
    const Ascii name{key.name};
    switch (key.kind) {
      case Kind::kInt:
        this->*key.number = section.GetInt(name, this->*key.number);
        break;
      case Kind::kDriverId:
        this->*key.number = section.GetId(name, this->*key.number);
        break;
      case Kind::kBool:
        this->*key.flag = section.GetInt(name, this->*key.flag) != 0;
        break;
    }
  }
}

void Settings::Save() const {
  if (!fileLoaded) return;
  std::vector<ConfigValue> values{{kSkinPath, skinPath.c_str()}};
  for (const Key& key : kKeys) {
    switch (key.kind) {
      case Kind::kInt:
        values.push_back({key.name, std::to_string(this->*key.number)});
        break;
      case Kind::kDriverId:
        values.push_back({key.name, DriverText(this->*key.number)});
        break;
      case Kind::kBool:
        values.push_back({key.name, this->*key.flag ? "1" : "0"});
        break;
    }
  }
  for (const Key& key : kAdditions)
    if (this->*key.flag) values.push_back({key.name, "1"});
  if (!looks.IsEmpty()) values.push_back({kLooks, looks.c_str()});
  if (zoom == kZoomToFit) values.push_back({kZoom, "auto"});
  if (zoom > 1) values.push_back({kZoom, std::to_string(zoom)});
  SaveConfigFile(fileName, section_.c_str(), values);
  UseConfigFile(fileName);
}

int Settings::UsableFrameRate() const { return kFrameRates.Nearest(logicFrameRate); }

int Settings::UsableMouseSpeed() const {
  // Allegro's console mouse drivers compute 256 * width / 320 / speed and divide by the outcome.
  const int highest = static_cast<int>(256LL * screenWidth / 320);
  return std::clamp(mouseSpeed, 1, std::max(1, highest));
}

int Settings::UsableFrameSkip() const {
  // Noticing a tick while waiting for it counts as one already, working it off as another.
  return std::max(yield ? 2 : 1, maxFrameSkip);
}

int Settings::Ticks(int milliseconds) const {
  const long long ticks = static_cast<long long>(std::max(0, milliseconds)) * UsableFrameRate();
  return static_cast<int>(ticks / 1000);
}

}  // namespace zel
