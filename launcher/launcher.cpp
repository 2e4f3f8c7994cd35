#include "launcher/launcher.h"

#include <fcntl.h>
#include <linux/major.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "launcher/has_choice.h"
#include "launcher/language.h"
#include "launcher/little_memory.h"
#include "launcher/menu_config.h"
#include "launcher/menu_screen.h"
#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/run.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/confinement.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/input_rest.h"
#include "toolkit/base/process.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr const char* kProgram = "zel";

// Allegro writes to a mouse to find its wheel. While it is not there yet, neither may its
// directory.
constexpr const char* kMice[] = {"/dev/input/mice", "/dev/input", kDevices};
constexpr const char* kOldMouse = "/dev/mouse";

// What is tried when the settings' own mode cannot be set.
struct FallbackMode {
  int width, height, depth;
  bool antialiasing;
};
constexpr FallbackMode kFallbackModes[] = {
    {640, 480, 16, true},
    {800, 600, 8, false},
    {640, 480, 8, false},
};

[[noreturn]] void EndWithoutGraphics() {
  SetTextMode();
  // The console has the encoding of the locale; Allegro would turn the text to ASCII.
  UseEncodingOfLocale();
  set_uformat(U_ASCII);
  allegro_message("%s\n", Text(kNoGraphicsText));
  allegro_exit();
  ChangeDirectory(Directory::kSaved);
  std::exit(EXIT_SUCCESS);
}

// What may have to be opened for writing later: the mouse, when its server appears, and the
// console, which is hung up for all when the leader of its session ends.
std::vector<std::string> LateDevices() {
  const char* const* mice = std::begin(kMice);
  while (!FileExists(*mice) && *mice != kDevices) ++mice;
  const char* terminal = ttyname(STDIN_FILENO);
  return {*mice, kOldMouse, get_config_string(Ascii("mouse"), Ascii("mouse_device"), Ascii("")),
          terminal ? terminal : ""};
}

// Graphics and input are there, the skin is not yet: it is loaded at the zoom that the menu gets.
// Skin and menu need no more than their files.
void PrepareMenu() {
  launcherState.layout = launcherState.looks.Fit();
  LimitWritingTo(LateDevices());
  LimitCalls();
}

Error TryFallbackModes(Error result) {
  for (const FallbackMode& mode : kFallbackModes) {
    if (result != Error{kGraphicsError}) break;
    settings.gfxMode = GFX_AUTODETECT_FULLSCREEN;
    settings.fullscreen = true;
    settings.screenWidth = mode.width;
    settings.screenHeight = mode.height;
    settings.colorDepth = mode.depth;
    settings.antialiasing = mode.antialiasing;
    result = InstallToolkit(nullptr, PrepareMenu);
  }
  return result;
}

// While it lives, X's keyboard is set up without the table of how letters are put together, whose
// reading takes as long as a third of the start: a menu has no place to type them.
class WithoutComposing {
 public:
  WithoutComposing() {
    if (const char* file = std::getenv(kVariable)) usual_ = file;
    setenv(kVariable, "/dev/null", 1);
  }
  ~WithoutComposing() {
    if (usual_)
      setenv(kVariable, usual_->c_str(), 1);
    else
      unsetenv(kVariable);
  }
  WithoutComposing(const WithoutComposing&) = delete;
  WithoutComposing& operator=(const WithoutComposing&) = delete;

 private:
  static constexpr const char* kVariable = "XCOMPOSEFILE";
  std::optional<std::string> usual_;
};

// Returns only with a graphics mode and a running toolkit.
void BringUpGraphics() {
  const WithoutComposing menu;
  const Error result = TryFallbackModes(
      InstallToolkit(paths.settings, PrepareMenu, [] { launcherState.looks.Begin(); }));
  if (!result.IsError()) return;
  if (result == Error{kGraphicsError}) EndWithoutGraphics();
  // Another skin, where it is the one that was chosen that cannot be used.
  if (CurrentSkin() && launcherState.looks.FallBack()) return;
  ChangeDirectory(Directory::kSaved);
  result.Report();
}

// A second descriptor of the device that Allegro's mouse has open, or -1: the kernel takes up to
// 25 ms to close it for good, which can be done once there is a picture.
int HoldMouse() {
  constexpr int kFirst = STDERR_FILENO + 1, kEnd = 32;
  for (int file = kFirst; file < kEnd; ++file) {
    struct stat status;
    if (fstat(file, &status) == 0 && S_ISCHR(status.st_mode) &&
        major(status.st_rdev) == INPUT_MAJOR)
      return fcntl(file, F_DUPFD_CLOEXEC, kFirst);
  }
  return -1;
}

void DecideAboutMouse() {
  const bool serverRuns = FileExists(paths.mouseServerPid);
  launcherState.mousePending = !serverRuns;
  settings.showMouse = serverRuns;
  if (serverRuns) return;
  launcherState.heldMouse = HoldMouse();
  const InputRest rest;
  remove_mouse();
}

// Answers 0, or the number of the error that kept the choice from being written.
int RunMenu() {
  const auto screen = std::make_unique<MenuScreen>();
  launcherState.runningScreen = screen.get();
  screen->Execute(nullptr);
  launcherState.runningScreen = nullptr;
  return screen->WriteError();
}

}  // namespace

int RunLauncher() {
  launcherState.exitCode = 0;
  launcherState.outputString.Clear();
  launcherState.mousePending = false;
  return IsRoot() ? RunForAnyone() : launcherState.exitCode;
}

int RunForAnyone() {
  if (const int status = BeginRun(kProgram)) return status;
  NeedRoomForARun();
  process.onDisplayLost = [] { DeleteOutputFile(); };
  BringUpGraphics();
  DecideAboutMouse();
  const int error = RunMenu();
  ExitToolkit();
  if (error != 0) {
    SetTextMode();
    allegro_exit();
  }
  return EndRun(kProgram, error);
}

int AnswerHasChoice() {
  ChangeDirectory(Directory::kConfiguration);
  SetupEncoding();
  return HasChoice(kMainMenu) ? EXIT_SUCCESS : kNoChoiceStatus;
}

}  // namespace zel
