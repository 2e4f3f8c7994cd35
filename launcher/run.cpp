#include "launcher/run.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "launcher/language.h"
#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "toolkit/base/confinement.h"

namespace zel {
namespace {

void SaveDirectory() {
  auto& path = launcherState.savedDirectory;
  if (!getcwd(path, sizeof path)) *path = '\0';
}

std::string DirectoryOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Says that something cannot be done with the output file, for which scripts wait.
int Fail(const char* program, const char* action, int error) {
  std::fprintf(stderr, "%s: cannot %s %s: %s\n", program, action, paths.outputFile,
               std::strerror(error));
  return EXIT_FAILURE;
}

// A shut-down that goes wrong, as without the display, has a status of its own. Then there was no
// choice.
void KeepOutputToItsStatus(int status, void*) {
  if (status != launcherState.exitCode) DeleteOutputFile();
}

}  // namespace

void LimitLauncher() {
  DropRights();
  LimitWritingTo({kDevices});
}

void LimitWritingTo(const std::vector<std::string>& devices) {
  LimitWriting({DirectoryOf(paths.outputFile), DirectoryOf(paths.positionFile)}, devices);
}

bool IsRoot() {
  if (geteuid() == 0) return true;
  std::fprintf(stderr, "%s\n", Text(kNotRootText));
  return false;
}

void ChangeDirectory(Directory directory) {
  const char* path =
      directory == Directory::kConfiguration ? paths.configDirectory : launcherState.savedDirectory;
  // Without its directory the launcher finds no files and shows its defaults.
  [[maybe_unused]] const int error = chdir(path);
}

int BeginRun(const char* program) {
  // Scripts must not take what an earlier run wrote for the result of this one.
  if (const int error = DeleteOutputFile()) return Fail(program, "remove", error);
  DeleteTemporaryFiles();
  on_exit(KeepOutputToItsStatus, nullptr);
  SaveDirectory();
  ChangeDirectory(Directory::kConfiguration);
  SetupEncoding();
  return 0;
}

int EndRun(const char* program, int error) {
  ChangeDirectory(Directory::kSaved);
  return error == 0 ? launcherState.exitCode : Fail(program, "write", error);
}

}  // namespace zel
