#include "toolkit/core/settings.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "toolkit/core/config_file.h"

namespace zel {
namespace {

enum class Kind { kInt, kBool, kDriverId };

struct Key {
  const char* name;
  Kind kind;
  int Settings::*number = nullptr;
  bool Settings::*flag = nullptr;
};

constexpr Key Int(const char* name, int Settings::*field) { return {name, Kind::kInt, field}; }
constexpr Key Driver(const char* name, int Settings::*field) {
  return {name, Kind::kDriverId, field};
}
constexpr Key Bool(const char* name, bool Settings::*field) {
  return {name, Kind::kBool, nullptr, field};
}

constexpr const char* kSection = "[Toolkit]";  // as list_config_sections writes it
constexpr const char* kSkinPath = "skinPath";

// In the order in which files have them; "skinPath" comes before all of them.
constexpr Key kKeys[] = {
    Int("screenWidth", &Settings::screenWidth),
    Int("screenHeight", &Settings::screenHeight),
    Int("refreshRate", &Settings::refreshRate),
    Int("colorDepth", &Settings::colorDepth),
    Driver("gfxMode", &Settings::gfxMode),
    Bool("fullscreen", &Settings::fullscreen),
    Bool("useVideoMemory", &Settings::useVideoMemory),
    Bool("fullDrag", &Settings::fullDrag),
    Bool("fullResize", &Settings::fullResize),
    Int("logicFrameRate", &Settings::logicFrameRate),
    Bool("unlimitedFrameRate", &Settings::unlimitedFrameRate),
    Bool("showFrameRate", &Settings::showFrameRate),
    Bool("antialiasing", &Settings::antialiasing),
    Bool("guiSound", &Settings::guiSound),
    Int("soundVolume", &Settings::soundVolume),
    Driver("soundDriver", &Settings::soundDriver),
    Driver("midiDriver", &Settings::midiDriver),
    Bool("showMouse", &Settings::showMouse),
    Bool("mouseShadow", &Settings::mouseShadow),
    Int("doubleClickDelay", &Settings::doubleClickDelay),
    Int("mouseSpeed", &Settings::mouseSpeed),
    Bool("useKeyboard", &Settings::useKeyboard),
    Int("keyDelay", &Settings::keyDelay),
    Int("keyRepeat", &Settings::keyRepeat),
    Bool("useJoystick", &Settings::useJoystick),
    Int("screenUpdateMethod", &Settings::screenUpdateMethod),
    Bool("vsync", &Settings::vsync),
    Bool("yield", &Settings::yield),
    Bool("runInBackground", &Settings::runInBackground),
    Int("maxFrameSkip", &Settings::maxFrameSkip),
    Int("tooltipDelay", &Settings::tooltipDelay),
    Int("tooltipAutohideDelay", &Settings::tooltipAutohideDelay),
};

bool HoldsAKey(const char* section) {
  const char** names = nullptr;
  const int count = list_config_entries(section, &names);
  const bool holds = std::any_of(names, names + std::max(0, count), Settings::IsKey);
  free_config_entries(&names);
  return holds;
}

// The section that holds the settings of the current configuration file.
std::string FindSection() {
  const char** sections = nullptr;
  const int count = std::max(0, list_config_sections(&sections));
  const char** const end = sections + count;
  const bool named = std::any_of(
      sections, end, [](const char* name) { return ustricmp(name, Ascii(kSection)) == 0; });
  const char** found = named ? end : std::find_if(sections, end, HoldsAKey);
  std::string section = found != end ? *found : kSection;
  free_config_entries(&sections);
  return section;
}

constexpr int kHighestRate = 1000;  // what Allegro's timers can keep up with

}  // namespace

bool Settings::IsKey(const char* name) {
  if (ustricmp(name, Ascii(kSkinPath)) == 0) return true;
  return std::any_of(std::begin(kKeys), std::end(kKeys),
                     [name](const Key& key) { return ustricmp(name, Ascii(key.name)) == 0; });
}

void Settings::Load(const char* file) {
  if (!file) return;
  fileLoaded = true;
  fileName.Assign(file);
  UseConfigFile(fileName);
  section_.Assign(FindSection().c_str());
  skinPath.Assign(get_config_string(section_, Ascii(kSkinPath), skinPath));
  for (const Key& key : kKeys) {
    const Ascii name{key.name};
    switch (key.kind) {
      case Kind::kInt:
        this->*key.number = get_config_int(section_, name, this->*key.number);
        break;
      case Kind::kDriverId:
        this->*key.number = get_config_id(section_, name, this->*key.number);
        break;
      case Kind::kBool:
        this->*key.flag = get_config_int(section_, name, this->*key.flag ? 1 : 0) != 0;
        break;
    }
  }
}

void Settings::Save() const {
  if (!fileLoaded) return;
  UseConfigFile(fileName);
  set_config_string(section_, Ascii(kSkinPath), skinPath);
  for (const Key& key : kKeys) {
    const Ascii name{key.name};
    switch (key.kind) {
      case Kind::kInt:
        set_config_int(section_, name, this->*key.number);
        break;
      case Kind::kDriverId:
        set_config_id(section_, name, this->*key.number);
        break;
      case Kind::kBool:
        set_config_int(section_, name, this->*key.flag ? 1 : 0);
        break;
    }
  }
  std::vector<const char*> names{kSkinPath};
  for (const Key& key : kKeys) names.push_back(key.name);
  SaveConfigFile(fileName, section_, names);
}

int Settings::UsableFrameRate() const { return std::clamp(logicFrameRate, 1, kHighestRate); }

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
