#include "launcher/looks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/plain_file.h"
#include "launcher/state.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr const char* kBuiltin = "default";
constexpr const char* kSection = "Look";
constexpr std::size_t kLongestFile = 4096;
// What the kernel passes on is shorter.
constexpr std::size_t kLongestLine = 4096;

constexpr double kSizes[] = {1, 1.25, 1.5, 1.75, 2, 2.5, 3, 3.5, 4, 5, 6, 7, 8};
constexpr double kAlike = 0.001;

// The last value of a word "name=value"; empty without one.
std::string ValueOf(const std::string& line, const std::string& name) {
  std::istringstream words{line};
  std::string value;
  for (std::string word; words >> word;)
    if (word.starts_with(name)) value = word.substr(name.size());
  return value;
}

// Whether the skin is meant by its name, which may lack its directories, or these and its
// extension.
bool IsNamed(const std::string& name, const std::string& said) {
  const std::string file = name.substr(name.rfind('/') + 1);
  return name == said || file == said || file.substr(0, file.rfind('.')) == said;
}

// Any file could be read as a skin, but would be no look.
bool IsSkin(const std::string& name) {
  if (name == kBuiltin) return true;
  const SectionFile file = SectionFile::FromUtf8(ReadWhole(name.c_str()));
  const char* const sections[] = {"Skin", "COLORS", "FONT0"};
  return std::any_of(std::begin(sections), std::end(sections), [&file](const char* section) {
    return !file.Find(Ascii(section)).Heads().empty();
  });
}

// In the place of the current skin, which widgets borrow. Nothing is left of what that was.
bool Load(const std::string& name) {
  Skin& skin = *CurrentSkin();
  if (name != kBuiltin) return !skin.Load(name.c_str()).IsError();
  skin.skinFile.reset();
  skin.Reset();
  return true;
}

std::string TextOf(double zoom) { return zoom == kZoomToFit ? "auto" : std::to_string(zoom); }

}  // namespace

void Looks::TakeSkin(const std::string& said) {
  for (const std::string& name : names_)
    if (IsNamed(name, said) && IsSkin(name)) return settings.skinPath.Assign(name.c_str());
}

void Looks::TakeSize(const std::string& said) {
  const bool isNumber = std::strtod(said.c_str(), nullptr) >= kLeastZoom;
  if (!isNumber && said != TextOf(kZoomToFit)) return;
  hasSizes_ = true;
  zoom_ = ParseZoom(said.c_str());
}

void Looks::Begin() {
  names_ = ListParts(settings.looks);
  usual_ = settings.skinPath;
  zoom_ = settings.zoom;
  hasSizes_ = zoom_ != 1;
  const std::string line = ReadPlainFile(paths.kernelCommandLine, kLongestLine);
  const std::string skin = ValueOf(line, "zel.look="), zoom = ValueOf(line, "zel.zoom=");
  commandLine_ = skin + ' ' + zoom;
  TakeSkin(skin);
  TakeSize(zoom);
  // A screen is only taken as it is before there is one.
  if (settings.zoom == 1) settings.zoom = zoom_;
  if (!HasLooks() && !HasSizes()) return;
  const SectionFile file{ReadOwnFile(paths.lookFile, kLongestFile)};
  const SectionFile::Section& kept = file.Find(kSection);
  // Whoever starts with something else now wants that.
  if (kept.GetText("commandLine") != Trimmed(commandLine_.c_str())) return;
  TakeSkin(kept.GetText("skin"));
  if (HasSizes()) TakeSize(kept.GetText("zoom"));
}

ScreenLayout Looks::Fit() const {
  const Size screen{settings.screenWidth, settings.screenHeight};
  return hasSizes_ ? FitZoomedLayout(kMainMenu, screen, zoom_)
                   : FitLayout(kMainMenu, screen, settings.zoom);
}

bool Looks::FallBack() {
  if (!HasLooks()) return false;
  std::vector<std::string> others{usual_};
  others.insert(others.end(), names_.begin(), names_.end());
  others.emplace_back(kBuiltin);
  const std::string broken = settings.skinPath.c_str();
  const auto usable = std::find_if(others.begin(), others.end(), [&broken](const auto& name) {
    return name != broken && IsSkin(name) && Load(name);
  });
  if (usable == others.end()) return false;
  settings.skinPath.Assign(usable->c_str());
  return true;
}

void Looks::Keep() const {
  WritePlainFile(paths.lookFile, std::string{"["} + kSection + "]\ncommandLine = " + commandLine_ +
                                     "\nskin = " + settings.skinPath.c_str() +
                                     "\nzoom = " + TextOf(zoom_) + '\n');
}

bool Looks::ChangeSkin() {
  const auto current = std::find(names_.begin(), names_.end(), settings.skinPath.c_str());
  std::vector<std::string> others = names_;
  // Those behind the current one come first.
  if (current != names_.end()) {
    std::rotate(others.begin(), others.begin() + (current - names_.begin()), others.end());
    others.erase(others.begin());
  }
  for (const std::string& name : others) {
    if (!IsSkin(name)) continue;
    if (Load(name)) {
      settings.skinPath.Assign(name.c_str());
      Keep();
      return true;
    }
    Load(settings.skinPath.c_str());
  }
  return false;
}

bool Looks::ChangeSize(bool isLarger) {
  const double zoomBefore = zoom_, shownBefore = CurrentZoom();
  const auto next =
      isLarger ? std::upper_bound(std::begin(kSizes), std::end(kSizes), shownBefore + kAlike)
               : std::lower_bound(std::begin(kSizes), std::end(kSizes), shownBefore - kAlike);
  if (!hasSizes_ || next == (isLarger ? std::end(kSizes) : std::begin(kSizes))) return false;
  zoom_ = isLarger ? *next : *std::prev(next);
  launcherState.layout = Fit();
  // The screen may have room for no larger one.
  if (std::abs(CurrentZoom() - shownBefore) > kAlike && Load(settings.skinPath.c_str())) {
    Keep();
    return true;
  }
  zoom_ = zoomBefore;
  launcherState.layout = Fit();
  return false;
}

}  // namespace zel
