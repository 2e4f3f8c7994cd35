#include "tools/preview/rehearsal.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "launcher/language.h"
#include "launcher/menu_session.h"
#include "launcher/paths.h"
#include "launcher/progress_file.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "launcher/whole_file.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/draw/datafile.h"
#include "toolkit/testing/hands.h"
#include "tools/checker/files.h"
#include "tools/checker/skin_check.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr int kFramesPerKey = 20;      // transitions end meanwhile
constexpr int kFramesUntilBar = 2000;  // the launcher's first look is long over
constexpr int kDepthWithoutDesktop = 16;

// Blue lies lowest in the pixels of displays; how texts are blended depends on it.
void UsePixelsOfDisplays() {
  constexpr int kByte = 8;
  _rgb_b_shift_15 = _rgb_b_shift_16 = _rgb_b_shift_24 = _rgb_b_shift_32 = 0;
  _rgb_g_shift_15 = _rgb_g_shift_16 = 5;
  _rgb_r_shift_15 = 10;
  _rgb_r_shift_16 = 11;
  _rgb_g_shift_24 = _rgb_g_shift_32 = kByte;
  _rgb_r_shift_24 = _rgb_r_shift_32 = 2 * kByte;
}

// Translations are those of this build, if it was not installed.
std::string OwnCatalogues() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::filesystem::path own = program.parent_path() / "../locale";
  return std::filesystem::is_directory(own, error) ? own.string() : paths.catalogues;
}

// Where gettext looks for the texts of a language, from the one of its country on.
bool HasCatalogue(const std::filesystem::path& catalogues, const std::string& language) {
  std::error_code error;
  const std::string file = std::string{"LC_MESSAGES/"}.append(kTextDomain).append(".mo");
  return std::filesystem::exists(catalogues / language / file, error) ||
         std::filesystem::exists(catalogues / language.substr(0, language.find('_')) / file, error);
}

// Of a text that the launcher would do without, with a picture of something else.
std::string ComplainOf(const std::string& file, std::size_t limit) {
  const std::string why = WhyNoText(file, limit);
  std::error_code error;
  return why.empty() ? why : std::filesystem::absolute(file, error).string() + ": " + why;
}

// Which datafile of a skin that cannot be loaded is the reason, and why; empty where none is.
std::string ComplainOfParts(const std::filesystem::path& skin) {
  const SectionFile content = SectionFile::FromUtf8(ReadText(skin.c_str(), kLongestConfigFile));
  for (const char* key : {"main_data", "cursors"}) {
    const std::string name = content.Find("Skin").GetText(key);
    if (name.empty()) continue;
    std::string file = skin.parent_path() / name;
    std::string why = WhyNoFile(file);
    if (Datafile data; why.empty() && !data.Load(file.c_str()))
      why = "is no datafile that can be read";
    if (!why.empty()) return file.append(": ").append(why);
  }
  return {};
}

}  // namespace

std::string MissingCatalogues(const Scene& scene) {
  const std::string catalogues = OwnCatalogues();
  std::string missing;
  for (const LanguageRow& row : Languages()) {
    const bool isShown = !scene.language || scene.language == std::string_view{row.code};
    if (isShown && row.language != kEnglish && !HasCatalogue(catalogues, row.catalogue))
      missing += (missing.empty() ? "" : ", ") + std::string{row.code};
  }
  return missing.empty() ? missing : missing + " in " + catalogues;
}

Rehearsal::Rehearsal(const Scene& scene, Scratch& scratch) : scene_{scene}, scratch_{scratch} {
  UsePixelsOfDisplays();
  install_keyboard();
  install_mouse();
}

Rehearsal::~Rehearsal() = default;

void Rehearsal::SetUpPaths() {
  outputFile_ = scratch_.NameOf("output");
  positionFile_ = scratch_.Write("position", scene_.position);
  std::error_code ignored;
  if (scene_.position.empty()) std::filesystem::remove(positionFile_, ignored);
  lookFile_ = scratch_.NameOf("look");
  paths.outputFile = outputFile_.c_str();
  paths.positionFile = positionFile_.c_str();
  paths.lookFile = lookFile_.c_str();
  paths.progressFile = paths.kernelCommandLine = paths.mouseServerPid = kNoFile;
  paths.assumed = scene_.assumed;
  if (!scene_.progress.empty()) {
    progressFile_ = scratch_.Write("progress", scene_.progress);
    paths.progressFile = progressFile_.c_str();
  }
  if (!scene_.language) return;
  catalogues_ = OwnCatalogues();
  paths.catalogues = catalogues_.c_str();
  languageFile_ = scratch_.Write("i18n", std::string{"LANG="} + scene_.language + "\n");
  paths.languageFile = languageFile_.c_str();
  // Translations need a locale that exists on any machine.
  setenv("LC_ALL", "C.UTF-8", 1);
}

std::string Rehearsal::SetUp() {
  SetUpPaths();
  SetupEncoding();
  std::string complaint = ComplainOf(kMainMenu, kLongestWholeFile);
  if (complaint.empty() && IsThere(paths.settings))
    complaint = ComplainOf(paths.settings, kLongestConfigFile);
  if (!complaint.empty()) return complaint;
  settings.Load(paths.settings);
  if (scene_.zoom) settings.zoom = *scene_.zoom;
  if (!scene_.look.empty()) settings.skinPath.Assign(scene_.look.c_str());
  if (const std::string skin = settings.skinPath.c_str(); skin != "default" && IsThere(skin))
    complaint = ComplainOf(skin, kLongestConfigFile);
  if (!complaint.empty()) return complaint;
  launcherState.looks.Begin();
  const Size size = scene_.size.w ? scene_.size : Size{settings.screenWidth, settings.screenHeight};
  const int usual = settings.colorDepth < 1 ? kDepthWithoutDesktop : settings.colorDepth;
  const int depth = scene_.depth ? scene_.depth : usual;
  if (!offscreen_.SetMode(size, depth))
    return "there is no screen of " + std::to_string(size.w) + 'x' + std::to_string(size.h) +
           " with " + std::to_string(depth) + " bits";
  settings.useKeyboard = true;
  if (depth == 8) settings.mouseShadow = false;
  launcherState.layout = launcherState.looks.Fit();
  complaint = Offscreen::LoadSkin(settings.skinPath);
  if (!complaint.empty())
    if (const std::string part = ComplainOfParts(settings.skinPath.c_str()); !part.empty())
      complaint = part;
  // Settings may name one that says nothing; who asks for a look means one.
  if (complaint.empty() && IsFile(scene_.look.c_str()) &&
      !DescribesSkin(ReadText(scene_.look.c_str(), kLongestConfigFile)))
    complaint = scene_.look + ": is no description of a skin";
  if (complaint.empty()) complaint = Select();
  // Without the files it would be the picture of something else.
  return complaint.empty() ? scratch_.Complaint() : complaint;
}

std::string Rehearsal::Select() {
  if (scene_.select.empty()) return {};
  MenuSession session;
  session.Open(kMainMenu);
  std::string asked = "--select ";
  for (std::size_t i = 0; i < scene_.select.size(); ++i) {
    const std::string number = std::to_string(scene_.select[i]);
    asked += (i ? "," : "") + number;
    const std::string menu = session.Level().fileName.c_str();
    const int index = session.EntryOfNumber(scene_.select[i]);
    if (index < 0) return asked.append(": ").append(menu).append(" shows no entry ").append(number);
    session.Select(index);
    const bool isLast = i + 1 == scene_.select.size();
    const MenuItem& item = session.Entry(index);
    const bool opens = (item.flags & kItemSubmenu) && !(item.flags & kItemDisabled);
    if (!isLast && !opens)
      return asked.append(": entry ")
          .append(number)
          .append(" of ")
          .append(menu)
          .append(" opens no menu");
    if (!isLast) session.Choose(item);
  }
  scratch_.Write("position", PositionOf(session.Config()));
  // As if no menu had been read.
  launcherState.layoutValues = {};
  launcherState.exitCode = 0;
  launcherState.outputString.Clear();
  return {};
}

bool Rehearsal::Advance() {
  ++frames_;
  const bool awaitsBar = !scene_.progress.empty() && !launcherState.progressValues.Shows();
  if (awaitsBar && frames_ < kFramesUntilBar) nextAt_ = frames_ + kFramesPerKey;
  if (frames_ < nextAt_) return false;
  const auto pauseBeforeNext = [this] {
    const bool isLast = pressed_ == scene_.keys.size();
    const int after = isLast ? scene_.after * settings.UsableFrameRate() : 0;
    nextAt_ = frames_ + kFramesPerKey + after;
  };
  if (nextAt_ == 0) {
    pauseBeforeNext();
    return false;
  }
  if (pressed_ == scene_.keys.size()) return true;
  const KeyStroke& key = scene_.keys[pressed_++];
  PressKey(key.character, key.scancode);
  ReleaseKey(key.scancode);
  pauseBeforeNext();
  return false;
}

void Rehearsal::Run(const std::function<void(bool isReady)>& onFrame) {
  offscreen_.onFrame = [this, &onFrame] { onFrame(Advance()); };
  screen_ = std::make_unique<MenuScreen>();
  launcherState.runningScreen = screen_.get();
  offscreen_.Run(*screen_);
  launcherState.runningScreen = nullptr;
}

}  // namespace zel
