// Looks for mistakes in a menu tree: zel-check [--strict] [--json] [DIR]
//
// Says what a person would see or a script would stumble over, and what to do. Shows nothing, needs
// no display and writes nothing.
#include <getopt.h>
#include <unistd.h>

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
#include "tools/checker/check.h"
#include "tools/checker/nearest.h"
#include "tools/support/options.h"

namespace {

constexpr int kWarnings = 1, kErrors = 2;

constexpr zel::OptionReader kReader{"zel-check"};
constexpr const char* kUsage =
    "usage: zel-check [--strict] [--json] [DIR]    DIR is /etc/zel by default\n"
    "       zel-check --explain [NAME]\n"
    "       zel-check --help | --version\n";

[[noreturn]] void ExplainUsage(const std::string& complaint) {
  std::fputs((complaint + kUsage).c_str(), stderr);
  std::exit(kErrors);
}

// The manual's words on a message, or with null the names of all.
int Explain(const char* name) {
  if (!name) {
    for (const std::string& known : zel::MessageNames()) std::puts(known.c_str());
    return EXIT_SUCCESS;
  }
  if (const zel::Message* message = zel::FindMessage(name)) {
    std::fputs(zel::Explanation(*message).c_str(), stdout);
    return EXIT_SUCCESS;
  }
  const std::string nearest = zel::Nearest(name, zel::MessageNames());
  std::fprintf(stderr, "zel-check: --explain: there is no message %s%s\n", name,
               nearest.empty() ? "; --explain alone lists them"
                               : ("; did you mean " + nearest + "?").c_str());
  return kErrors;
}

struct Options {
  const char* directory = "/etc/zel";
  bool isStrict = false, isJson = false, explains = false;
};

Options ReadOptions(int argc, char** argv) {
  static const option kOptions[] = {
      {"strict", no_argument, nullptr, 's'},  {"json", no_argument, nullptr, 'j'},
      {"explain", no_argument, nullptr, 'e'}, {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'}, {nullptr, 0, nullptr, 0}};
  Options options;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 's') options.isStrict = true;
    if (letter == 'j') options.isJson = true;
    if (letter == 'e') options.explains = true;
    if (letter == 'h') kReader.Help(kUsage);
    if (letter == 'v') kReader.ShowVersion();
    if (letter == '?') ExplainUsage({});
  }
  if (argc - optind > 1)
    ExplainUsage(std::string{"zel-check: "} + argv[optind + 1] + ": one directory only\n");
  return options;
}

// What leads from here to the files of a directory.
std::string PrefixOf(std::string directory) {
  if (directory == ".") return {};
  return directory.ends_with('/') ? directory : directory + '/';
}

}  // namespace

int main(int argc, char** argv) {
  Options options = ReadOptions(argc, argv);
  const char* name = optind < argc ? argv[optind] : nullptr;
  if (options.explains) return kReader.StatusOfOutput(Explain(name));
  if (name) options.directory = name;
  if (chdir(options.directory) != 0) {
    std::fprintf(stderr, "zel-check: %s: %s\n", options.directory, std::strerror(errno));
    return kErrors;
  }
  set_uformat(U_UTF8);
  install_allegro(SYSTEM_NONE, &errno, std::atexit);
  zel::InstallBitmapGuard();
  zel::RegisterPictureFormats();
  const std::vector<zel::Finding> findings = zel::CheckTree();
  const std::string prefix = PrefixOf(options.directory);
  const std::string text =
      options.isJson ? zel::AsJson(findings, prefix) : zel::AsText(findings, prefix);
  std::fputs(text.c_str(), stdout);
  const bool hasErrors =
      std::any_of(findings.begin(), findings.end(), [](const zel::Finding& finding) {
        return zel::MessageOf(finding.id).severity == zel::Severity::kError;
      });
  const bool isWell = findings.empty() || !options.isStrict;
  return kReader.StatusOfOutput(hasErrors ? kErrors : isWell ? EXIT_SUCCESS : kWarnings);
}
