#include "tools/preview/scratch.h"

#include <fcntl.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

namespace zel {
namespace {

// What the handler removes. It can neither look into the directory nor take memory.
char doomed[PATH_MAX];
constexpr const char* kFiles[] = {"output", "position", "look", "progress", "i18n"};

void EndBySignal(int number) {
  const int directory = open(doomed, O_PATH | O_DIRECTORY | O_CLOEXEC);
  for (const char* file : kFiles) unlinkat(directory, file, 0);
  rmdir(doomed);
  std::signal(number, SIG_DFL);
  raise(number);  // comes when this returns
}

}  // namespace

std::string Scratch::NameOf(const std::string& name) {
  if (directory_.empty()) {
    std::error_code error;
    std::string made = std::filesystem::temp_directory_path(error) / "zel-preview.XXXXXX";
    if (error || !mkdtemp(made.data())) {
      complaint_ = "TMPDIR: " + (error ? error.message() : made + ": " + std::strerror(errno));
      return kNoFile;
    }
    directory_ = made;
  }
  return directory_ / name;
}

std::string Scratch::Write(const std::string& name, const std::string& text) {
  std::string path = NameOf(name);
  if (path.empty()) return path;
  std::ofstream file{path};
  file << text;
  file.close();
  if (file.fail()) complaint_ = path + ": " + std::strerror(errno);
  return path;
}

void Scratch::RemoveOnSignals() {
  NameOf("").copy(doomed, sizeof doomed - 1);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, EndBySignal);
}

void Scratch::Remove() {
  if (directory_.empty() || owner_ != getpid()) return;
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
  directory_.clear();
}

}  // namespace zel
