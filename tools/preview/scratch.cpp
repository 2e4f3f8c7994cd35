#include "tools/preview/scratch.h"

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace zel {

std::string Scratch::NameOf(const std::string& name) {
  if (directory_.empty()) {
    std::error_code error;
    std::string made = std::filesystem::temp_directory_path(error) / "zel-preview.XXXXXX";
    if (error || !mkdtemp(made.data())) return kNoFile;
    directory_ = made;
  }
  return directory_ / name;
}

std::string Scratch::Write(const std::string& name, const std::string& text) {
  std::string path = NameOf(name);
  if (!path.empty()) std::ofstream{path} << text;
  return path;
}

void Scratch::Remove() {
  if (directory_.empty() || owner_ != getpid()) return;
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
  directory_.clear();
}

}  // namespace zel
