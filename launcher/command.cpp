#include "launcher/command.h"

#include <cstdlib>
#include <cstring>

#include "launcher/about.h"
#include "launcher/launcher.h"
#include "launcher/result_files.h"
#include "launcher/run.h"
#include "toolkit/base/console_guard.h"

namespace zel {
namespace {

constexpr const char* kUsage =
    "usage: zel                shows the menu of /etc/zel until something is chosen\n"
    "       zel --has-choice   answers whether there is something to choose\n"
    "       zel --help | --version\n";

}  // namespace

int RunCommand(int argc, char** argv) {
  if (TellsAbout("zel", kUsage, argc, argv)) return EXIT_SUCCESS;
  LimitLauncher();
  // Guarded for the sake of a console that an earlier run could not put right.
  if (argc == 2 && std::strcmp(argv[1], "--has-choice") == 0)
    return RunGuarded(AnswerHasChoice, [] {});
  // Scripts must not take what a run wrote that ended in the middle for its result.
  return RunGuarded(RunLauncher, [] { DeleteOutputFile(); });
}

}  // namespace zel
