// Runs the launcher with its files below a directory, where a sandbox is not permitted and for
// users who are not root: DIR/etc/zel, DIR/etc/sysconfig/i18n, DIR/root/output.txt,
// DIR/run/gpm.pid, DIR/tmp/menupos.txt, DIR/tmp/menulook.txt and DIR/tmp/progress. Its exit status
// is the launcher's.
#include <cstdio>
#include <filesystem>
#include <string>

#include "launcher/launcher.h"
#include "launcher/paths.h"
#include "launcher/run.h"
#include "tools/support/options.h"

namespace {

constexpr zel::OptionReader kReader{"zel-trial"};
constexpr const char* kUsage =
    "usage: zel-trial DIR (holds etc/zel, root, run and tmp)\n"
    "       zel-trial --help | --version\n";

struct Place {
  const char* zel::Paths::*path;
  const char* below;
};
constexpr Place kPlaces[] = {
    {&zel::Paths::configDirectory, "etc/zel"},
    {&zel::Paths::languageFile, "etc/sysconfig/i18n"},
    {&zel::Paths::outputFile, "root/output.txt"},
    {&zel::Paths::mouseServerPid, "run/gpm.pid"},
    {&zel::Paths::positionFile, "tmp/menupos.txt"},
    {&zel::Paths::lookFile, "tmp/menulook.txt"},
    {&zel::Paths::progressFile, "tmp/progress"},
};

}  // namespace

int main(int argc, char** argv) {
  const std::string word = argc == 2 ? argv[1] : "";
  if (word == "--help") kReader.Help(kUsage);
  if (word == "--version") kReader.ShowVersion();
  std::error_code error;
  const std::filesystem::path directory =
      argc == 2 ? std::filesystem::canonical(argv[1], error) : std::filesystem::path{};
  if (directory.empty()) {
    std::fputs(kUsage, stderr);
    return zel::kFailedStatus;
  }
  std::string places[std::size(kPlaces)];  // what the paths point into
  for (std::size_t i = 0; i < std::size(kPlaces); ++i) {
    places[i] = directory / kPlaces[i].below;
    zel::paths.*kPlaces[i].path = places[i].c_str();
  }
  zel::LimitLauncher();
  return zel::RunForAnyone();
}
