// Makes skins of pictures, and takes them apart: zel-skin new DIR, and so on.
//
// Needs no display.
#include <getopt.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "imageformats/register.h"
#include "toolkit/base/allegro.h"
#include "toolkit/draw/bitmap_guard.h"
#include "tools/checker/findings.h"
#include "tools/skin/new_skin.h"
#include "tools/skin/pack.h"
#include "tools/skin/sheet.h"
#include "tools/support/options.h"

namespace zel {
namespace {

constexpr int kDepth = 32;

constexpr OptionReader kReader{"zel-skin"};
constexpr const char* kUsage =
    "usage: zel-skin new DIR [--from SKIN] [--ground COLOR] [--text COLOR] [--accent COLOR]\n"
    "                        [--font FILE] [--size PIXELS] [--title TEXT]\n"
    "       zel-skin pack DIR [--to DIR]\n"
    "       zel-skin unpack SKIN DIR\n"
    "       zel-skin sheet SKIN --png FILE\n"
    "       zel-skin --help | --version\n"
    "       a COLOR is written as 37,45,59 or #252d3b\n";

struct Options {
  std::string target;  // of "pack"; empty: the project's directory
  std::string png;     // of "sheet"
  SkinWishes wishes;   // of "new"
};

struct Command {
  const char* name;
  std::vector<const char*> operands;
  std::string options;  // the letters of those that it takes
  void (*run)(const std::vector<std::string>& operands, const Options& options,
              Complaints& complaints);
};

const Command kCommands[] = {
    {"new",
     {"DIR"},
     "rgxafsn",
     [](const auto& operands, const Options& options, Complaints& complaints) {
       NewSkin(operands[0], options.wishes, complaints);
     }},
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
    {"sheet",
     {"SKIN"},
     "o",
     [](const auto& operands, const Options& options, Complaints& complaints) {
       if (options.png.empty()) kReader.Reject("sheet: --png is missing");
       DrawSkinSheet(operands[0], options.png, complaints);
     }},
};

constexpr option kOptions[] = {
    {"to", required_argument, nullptr, 't'},    {"png", required_argument, nullptr, 'o'},
    {"from", required_argument, nullptr, 'r'},  {"ground", required_argument, nullptr, 'g'},
    {"text", required_argument, nullptr, 'x'},  {"accent", required_argument, nullptr, 'a'},
    {"font", required_argument, nullptr, 'f'},  {"size", required_argument, nullptr, 's'},
    {"title", required_argument, nullptr, 'n'}, {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'v'},     {nullptr, 0, nullptr, 0},
};

[[noreturn]] void ExplainUsage() {
  std::fputs(kUsage, stderr);
  std::exit(kFailedStatus);
}

std::string CheckColor(const char* option, const char* value) {
  set_color_depth(kDepth);
  if (!ReadColor(value).IsSet())
    kReader.Reject(std::string{option} + ' ' + value +
                   ": no colour; write it as 37,45,59 or #252d3b");
  return value;
}

int ReadTextSize(const char* value) {
  char* end = nullptr;
  const long size = std::strtol(value, &end, 10);
  if (end == value || *end != '\0' || size < kSmallestText || size > kLargestText)
    kReader.Reject(std::string{"--size "} + value + ": no size; write " +
                   std::to_string(kSmallestText) + " to " + std::to_string(kLargestText) +
                   ", the height of a line in pixels");
  return static_cast<int>(size);
}

const Command& FindCommand(int argc, char** argv) {
  if (optind >= argc) ExplainUsage();
  for (const Command& command : kCommands)
    if (std::strcmp(argv[optind], command.name) == 0) return command;
  kReader.Reject(std::string{argv[optind]} + ": there is no such command; --help lists them");
}

int Run(int argc, char** argv) {
  Options options;
  SkinWishes& wishes = options.wishes;
  std::string given;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 't') options.target = optarg;
    if (letter == 'o') options.png = optarg;
    if (letter == 'r') wishes.from = optarg;
    if (letter == 'g') wishes.ground = CheckColor("--ground", optarg);
    if (letter == 'x') wishes.text = CheckColor("--text", optarg);
    if (letter == 'a') wishes.accent = CheckColor("--accent", optarg);
    if (letter == 'f') wishes.font = optarg;
    if (letter == 's') wishes.size = ReadTextSize(optarg);
    if (letter == 'n') wishes.title = Readable(optarg);
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
  const auto nameless = std::find(operands.begin(), operands.end(), "");
  if (nameless != operands.end()) kReader.Reject(std::string{command.name} + ": an empty name");
  if (operands.size() < command.operands.size())
    kReader.Reject(std::string{command.name} + ": " + command.operands[operands.size()] +
                   " is missing");
  if (operands.size() > command.operands.size())
    kReader.Reject(operands[command.operands.size()] + ": one too many for " + command.name);
  Complaints complaints;
  command.run(operands, options, complaints);
  for (const std::string& line : complaints.Lines()) std::fprintf(stderr, "%s\n", line.c_str());
  return complaints.HasErrors() ? kFailedStatus : EXIT_SUCCESS;
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
