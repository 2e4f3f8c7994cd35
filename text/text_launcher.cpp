#include "text/text_launcher.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "launcher/about.h"
#include "launcher/language.h"
#include "launcher/paths.h"
#include "launcher/run.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "text/full_screen.h"
#include "text/plain_lines.h"
#include "text/spoken_lines.h"
#include "text/state.h"
#include "text/terminal.h"
#include "text/terminal_text.h"
#include "toolkit/base/confinement.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr const char* kProgram = "zel-text";
constexpr const char* kUsage =
    "usage: zel-text [--plain | --speak] [--output FILE] [--position FILE]\n"
    "       zel-text --help | --version\n";
constexpr int kUsageStatus = 2;

enum class Face { kScreen, kPlain, kSpoken };

struct Options {
  bool isUsable = true;
  Face face = Face::kScreen;
};

// A name that means the same in each directory.
std::string Absolute(const char* path) {
  char directory[4096];
  if (*path == '/' || !getcwd(directory, sizeof directory)) return path;
  return std::string{directory} + '/' + path;
}

Options ReadOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc && *argv[i + 1] != '\0';
    if (std::strcmp(argv[i], "--plain") == 0) {
      options.face = Face::kPlain;
    } else if (std::strcmp(argv[i], "--speak") == 0) {
      options.face = Face::kSpoken;
    } else if (std::strcmp(argv[i], "--output") == 0 && hasValue) {
      textState.outputFile = Absolute(argv[++i]);
      paths.outputFile = textState.outputFile.c_str();
    } else if (std::strcmp(argv[i], "--position") == 0 && hasValue) {
      textState.positionFile = Absolute(argv[++i]);
      paths.positionFile = textState.positionFile.c_str();
    } else {
      options.isUsable = false;
    }
  }
  return options;
}

// A terminal without the letters of Chinese or Japanese would show question marks.
void ChooseReadableLanguage() {
  if (Shown(Text(kBackText)).find(L'?') != std::wstring::npos) UseEnglish();
}

// True when an item was chosen.
bool Show(MenuSession& session, Face face) {
  if (face == Face::kSpoken) return RunSpokenLines(session);
  if (face == Face::kScreen)
    if (const auto screen = Screen::Start()) return RunFullScreen(*screen, session);
  return RunPlainLines(session);
}

}  // namespace

int RunTextLauncher(int argc, char** argv) {
  if (TellsAbout(kProgram, kUsage, argc, argv)) return EXIT_SUCCESS;
  const Options options = ReadOptions(argc, argv);
  if (!options.isUsable) {
    std::fputs(kUsage, stderr);
    return kUsageStatus;
  }
  LimitLauncher();
  if (!IsRoot()) return EXIT_SUCCESS;
  if (const int status = BeginRun(kProgram)) return status;
  settings.Load(paths.settings);
  std::setlocale(LC_CTYPE, "");
  // What is spoken, or read with fingers, needs no font.
  if (options.face != Face::kSpoken) {
    KeepToFontOf(STDOUT_FILENO);
    ChooseReadableLanguage();
  }
  LimitWritingTo({});
  LimitCalls();
  int error = 0;
  {
    const Terminal terminal;
    MenuSession session;
    session.Open(kMainMenu);
    session.Restore();
    session.ReadHints();
    if (!Show(session, options.face)) {
      std::fprintf(stderr, "%s: the terminal or the input has ended\n", kProgram);
      return EXIT_FAILURE;
    }
    error = session.Commit();
  }
  return EndRun(kProgram, error);
}

}  // namespace zel
