// Makes skins from pictures, and takes them apart: zel-skin pack DIR, and so on.
//
// Needs no display.
#include <getopt.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "imageformats/register.h"
#include "toolkit/base/allegro.h"
#include "toolkit/draw/bitmap_guard.h"
#include "tools/skin/pack.h"
#include "tools/support/options.h"

namespace zel {
namespace {

constexpr int kRejected = 2;

constexpr OptionReader kReader{"zel-skin"};
constexpr const char* kUsage =
    "usage: zel-skin pack DIR [--to DIR]\n"
    "       zel-skin unpack SKIN DIR\n"
    "       zel-skin --help | --version\n";

struct Options {
  std::string target;  // of "pack"; empty: the project's directory
};

struct Command {
  const char* name;
  std::vector<const char*> operands;
  std::string options;  // the letters of those that it takes
  void (*run)(const std::vector<std::string>& operands, const Options& options,
              Complaints& complaints);
};

const Command kCommands[] = {
    {"pack",
     {"DIR"},
     "t",
     [](const auto& operands, const Options& options, Complaints& complaints) {
       PackSkin(operands[0], options.target.empty() ? operands[0] : options.target, complaints);
     }},
    {"unpack",
     {"SKIN", "DIR"},
     "",
     [](const auto& operands, const Options&, Complaints& complaints) {
       UnpackSkin(operands[0], operands[1], complaints);
     }},
};

constexpr option kOptions[] = {
    {"to", required_argument, nullptr, 't'},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'v'},
    {nullptr, 0, nullptr, 0},
};

[[noreturn]] void ExplainUsage() {
  std::fputs(kUsage, stderr);
  std::exit(kRejected);
}

const Command& FindCommand(int argc, char** argv) {
  if (optind >= argc) ExplainUsage();
  for (const Command& command : kCommands)
    if (std::strcmp(argv[optind], command.name) == 0) return command;
  kReader.Reject(std::string{argv[optind]} + ": there is no such command; --help lists them");
}

int Run(int argc, char** argv) {
  Options options;
  std::string given;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 't') options.target = optarg;
    if (letter == 'h') kReader.Help(kUsage);
    if (letter == 'v') kReader.ShowVersion();
    if (letter == '?') ExplainUsage();
    given += static_cast<char>(letter);
  }
  const Command& command = FindCommand(argc, argv);
  const std::vector<std::string> operands{argv + optind + 1, argv + argc};
  for (const option& known : kOptions)
    if (known.name && given.find(static_cast<char>(known.val)) != std::string::npos &&
        command.options.find(static_cast<char>(known.val)) == std::string::npos)
      kReader.Reject(std::string{"--"} + known.name + ": not for " + command.name);
  if (operands.size() < command.operands.size())
    kReader.Reject(std::string{command.name} + ": " + command.operands[operands.size()] +
                   " is missing");
  if (operands.size() > command.operands.size())
    kReader.Reject(operands[command.operands.size()] + ": one too many for " + command.name);
  Complaints complaints;
  command.run(operands, options, complaints);
  for (const std::string& line : complaints.Lines()) std::fprintf(stderr, "%s\n", line.c_str());
  return complaints.HasErrors() ? kRejected : EXIT_SUCCESS;
}

}  // namespace
}  // namespace zel

int main(int argc, char** argv) {
  set_uformat(U_UTF8);
  install_allegro(SYSTEM_NONE, &errno, std::atexit);
  zel::InstallBitmapGuard();
  zel::RegisterPictureFormats();
  return zel::Run(argc, argv);
}
