// Makes a picture of what the launcher shows with a tree of menu files, after some keys.
//
// Needs no display and leaves nothing behind but the picture.
#include <getopt.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "launcher/language.h"
#include "launcher/menu_screen.h"
#include "launcher/paths.h"
#include "launcher/progress_file.h"
#include "launcher/state.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/testing/offscreen.h"
#include "tools/support/options.h"

namespace zel {
namespace {

constexpr int kUsageStatus = 2;
constexpr int kFramesPerKey = 20;      // transitions end meanwhile
constexpr int kFramesUntilBar = 2000;  // the launcher's first look is long over
constexpr int kDepthWithoutDesktop = 16;
constexpr const char* kNoFile = "";

struct Key {
  const char* name;
  int scancode;
  int character;
};
constexpr Key kKeys[] = {
    {"Up", KEY_UP, 0},
    {"Down", KEY_DOWN, 0},
    {"Left", KEY_LEFT, 0},
    {"Right", KEY_RIGHT, 0},
    {"Home", KEY_HOME, 0},
    {"End", KEY_END, 0},
    {"Prior", KEY_PGUP, 0},
    {"Next", KEY_PGDN, 0},
    {"Tab", KEY_TAB, 9},
    {"Return", KEY_ENTER, 13},
    {"Escape", KEY_ESC, 27},
    {"space", KEY_SPACE, ' '},
    {"BackSpace", KEY_BACKSPACE, 8},
};

struct Options {
  std::string directory = "/etc/zel";
  std::filesystem::path png;
  Size size;                       // (0, 0): as the settings say
  int depth = 0;                   // likewise
  std::optional<double> zoom;      // likewise
  std::string look;                // likewise
  const char* language = nullptr;  // null: that of the system
  std::string progress;            // what the progress file says
  std::vector<Key> keys;
};

constexpr OptionReader kReader{"zel-preview"};

std::string Usage() {
  std::string usage =
      "usage: zel-preview [DIR] --png FILE [--size WxH] [--depth N] [--zoom Z] [--look FILE]\n"
      "                   [--lang CODE] [--progress STEP/STEPS] [--keys \"Down Return\"]\n"
      "       zel-preview --help | --version\n"
      "       DIR is /etc/zel by default; languages are";
  for (const LanguageRow& language : Languages()) usage += std::string{" "} + language.code;
  usage += ";\n       keys are";
  for (const Key& key : kKeys) usage += std::string{" "} + key.name;
  return usage + ", letters and digits\n";
}

[[noreturn]] void ExplainUsage() {
  std::fputs(Usage().c_str(), stderr);
  std::exit(kUsageStatus);
}

const char* ReadLanguage(const char* code) {
  for (const LanguageRow& language : Languages())
    if (std::strcmp(language.code, code) == 0) return language.code;
  kReader.Reject(std::string{"--lang "} + code + ": no language of the menu; --help names them");
}

std::string ReadProgress(const char* value) {
  int step = 0, steps = 0, end = 0;
  if (std::sscanf(value, "%d/%d%n", &step, &steps, &end) != 2 || value[end] != '\0' || step < 0 ||
      step > steps)
    kReader.Reject(std::string{"--progress "} + value + ": no progress; write it as 3/12");
  return "[Progress]\nProgressHide=0\nStepNumber=" + std::to_string(steps) +
         "\nCurrentStep=" + std::to_string(step) + "\n";
}

Key FindKey(const std::string& name) {
  for (const Key& key : kKeys)
    if (name == key.name) return key;
  const int character = name.size() == 1 ? std::tolower(static_cast<unsigned char>(name[0])) : 0;
  if (character >= 'a' && character <= 'z') return {"", KEY_A + character - 'a', name[0]};
  if (character >= '0' && character <= '9') return {"", KEY_0 + character - '0', name[0]};
  kReader.Reject("--keys: there is no key " + name);
}

std::vector<Key> ReadKeys(const char* text) {
  std::istringstream words{text};
  std::vector<Key> keys;
  for (std::string word; words >> word;) keys.push_back(FindKey(word));
  return keys;
}

Options ReadOptions(int argc, char** argv) {
  static const option kOptions[] = {
      {"png", required_argument, nullptr, 'o'},
      {"size", required_argument, nullptr, 's'},
      {"depth", required_argument, nullptr, 'd'},
      {"zoom", required_argument, nullptr, 'z'},
      {"keys", required_argument, nullptr, 'k'},
      {"look", required_argument, nullptr, 'f'},
      {"lang", required_argument, nullptr, 'l'},
      {"progress", required_argument, nullptr, 'p'},
      {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'},
      {nullptr, 0, nullptr, 0},
  };
  Options options;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 'o') options.png = std::filesystem::absolute(optarg);
    if (letter == 'd') options.depth = kReader.ReadDepth(optarg);
    if (letter == 's') options.size = kReader.ReadSize(optarg);
    if (letter == 'z') options.zoom = kReader.ReadZoom(optarg);
    if (letter == 'k') options.keys = ReadKeys(optarg);
    if (letter == 'f') options.look = optarg;
    if (letter == 'l') options.language = ReadLanguage(optarg);
    if (letter == 'p') options.progress = ReadProgress(optarg);
    if (letter == 'h') kReader.Help(Usage());
    if (letter == 'v') kReader.ShowVersion();
    if (letter == '?') ExplainUsage();
  }
  if (options.png.empty()) kReader.Reject("--png is missing");
  if (argc - optind > 1) kReader.Reject(std::string{argv[optind + 1]} + ": one directory only");
  if (optind < argc) options.directory = argv[optind];
  return options;
}

// Files of the system that the launcher reads, for as long as the program runs.
class Scratch {
 public:
  ~Scratch() { Remove(); }

  // Answers its name, which lives as long as this; kNoFile where there can be none.
  const char* Write(const char* name, const std::string& text) {
    if (directory_.empty()) {
      std::string made = std::filesystem::temp_directory_path(ignored_) / "zel-preview.XXXXXX";
      if (!mkdtemp(made.data())) return kNoFile;
      directory_ = made;
    }
    names_.push_back(directory_ / name);
    std::ofstream{names_.back()} << text;
    return names_.back().c_str();
  }
  void Remove() {
    if (!directory_.empty()) std::filesystem::remove_all(directory_, ignored_);
  }

 private:
  std::error_code ignored_;
  std::filesystem::path directory_;
  std::list<std::filesystem::path> names_;
};
Scratch scratch;

// Translations need a locale that exists on any machine, and are those of this build, if it was not
// installed.
void UseLanguage(const char* code) {
  static std::filesystem::path own;
  std::error_code ignored;
  own = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / "../locale";
  if (std::filesystem::is_directory(own, ignored)) paths.catalogues = own.c_str();
  paths.languageFile = scratch.Write("i18n", std::string{"LANG="} + code + "\n");
  setenv("LC_ALL", "C.UTF-8", 1);
}

// What the launcher does before its menu, but on a screen in memory.
void SetUp(Offscreen& offscreen, const Options& options) {
  paths.outputFile = paths.positionFile = paths.progressFile = kNoFile;
  if (!options.progress.empty()) paths.progressFile = scratch.Write("progress", options.progress);
  if (options.language) UseLanguage(options.language);
  SetupEncoding();
  settings.Load(paths.settings);
  const Size size =
      options.size.w ? options.size : Size{settings.screenWidth, settings.screenHeight};
  const int usual = settings.colorDepth < 1 ? kDepthWithoutDesktop : settings.colorDepth;
  const int depth = options.depth ? options.depth : usual;
  if (!offscreen.SetMode(size, depth))
    kReader.Reject("there is no screen of " + std::to_string(size.w) + 'x' +
                   std::to_string(size.h) + " with " + std::to_string(depth) + " bits");
  if (options.zoom) settings.zoom = *options.zoom;
  if (!options.look.empty()) settings.skinPath.Assign(options.look.c_str());
  launcherState.layout = FitLayout(kMainMenu, size, settings.zoom);
  const std::string complaint = Offscreen::LoadSkin(settings.skinPath);
  if (!complaint.empty()) kReader.Reject(complaint);
}

[[noreturn]] void Finish(const Offscreen& offscreen, const Options& options) {
  if (!SavePng(options.png.c_str(), offscreen.Frame()))
    kReader.Reject("--png " + options.png.string() + ": cannot be written");
  std::fflush(nullptr);
  scratch.Remove();
  _exit(EXIT_SUCCESS);  // perhaps with a window open over the menu
}

[[noreturn]] void Run(const Options& options) {
  if (chdir(options.directory.c_str()) != 0)
    kReader.Reject(options.directory + ": " + std::strerror(errno));
  Offscreen offscreen;
  SetUp(offscreen, options);
  MenuScreen screen;
  std::size_t next = 0;
  int frames = 0;
  offscreen.onFrame = [&] {
    const bool awaitsBar = !options.progress.empty() && !progressValues.Shows();
    if (++frames % kFramesPerKey != 0 || (awaitsBar && frames < kFramesUntilBar)) return;
    if (next == options.keys.size()) Finish(offscreen, options);
    const Key& key = options.keys[next++];
    screen.HandleKey(key.character, key.scancode);
  };
  offscreen.Run(screen);
  Finish(offscreen, options);  // an item was chosen
}

}  // namespace
}  // namespace zel

int main(int argc, char** argv) { zel::Run(zel::ReadOptions(argc, argv)); }
