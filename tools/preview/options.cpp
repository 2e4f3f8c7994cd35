#include "tools/preview/options.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

#include "launcher/language.h"
#include "toolkit/base/allegro.h"

namespace zel {
namespace {

constexpr int kLongestWait = 3600;  // seconds
constexpr std::size_t kDeepest = 100;

struct NamedKey {
  const char* name;
  KeyStroke key;
};
constexpr NamedKey kKeys[] = {
    {"Up", {KEY_UP, 0}},
    {"Down", {KEY_DOWN, 0}},
    {"Left", {KEY_LEFT, 0}},
    {"Right", {KEY_RIGHT, 0}},
    {"Home", {KEY_HOME, 0}},
    {"End", {KEY_END, 0}},
    {"Prior", {KEY_PGUP, 0}},
    {"Next", {KEY_PGDN, 0}},
    {"Tab", {KEY_TAB, 9}},
    {"Return", {KEY_ENTER, 13}},
    {"Escape", {KEY_ESC, 27}},
    {"space", {KEY_SPACE, ' '}},
    {"BackSpace", {KEY_BACKSPACE, 8}},
    {"F1", {KEY_F1, 0}},
    {"F2", {KEY_F2, 0}},
    {"F3", {KEY_F3, 0}},
    {"F4", {KEY_F4, 0}},
};

std::string Usage() {
  std::string usage =
      "usage: zel-preview [DIR] [--size WxH] [--depth N] [--zoom Z] [--look FILE]\n"
      "                   [--lang CODE] [--progress STEP/STEPS] [--assume FILE]\n"
      "                   [--assume-missing FILE] [--select 4,2] [--keys \"Down Return\"]\n"
      "                   [--after SECONDS]\n"
      "       zel-preview [DIR] --serve [PORT] [the same]\n"
      "       zel-preview [DIR] --png FILE [the same]\n"
      "       zel-preview [DIR] --all DIR [the same]\n"
      "       zel-preview --help | --version\n"
      "       DIR is /etc/zel by default; languages are";
  for (const LanguageRow& language : Languages()) usage += std::string{" "} + language.code;
  usage += ";\n       keys are";
  for (const NamedKey& key : kKeys) usage += std::string{" "} + key.name;
  return usage + ", letters and digits\n";
}

[[noreturn]] void ExplainUsage() {
  std::fputs(Usage().c_str(), stderr);
  std::exit(kFailedStatus);
}

const char* ReadLanguage(const char* code) {
  for (const LanguageRow& language : Languages())
    if (std::strcmp(language.code, code) == 0) return language.code;
  kPreview.Reject(std::string{"--lang "} + code + ": no language of the menu; --help names them");
}

// Of digits alone; -1 for any other text.
int Number(const std::string& text, int most) {
  constexpr std::size_t kMostDigits = 6;
  const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                        text.find_first_not_of("0123456789") == std::string::npos;
  const int number = isNumber ? std::atoi(text.c_str()) : -1;
  return number <= most ? number : -1;
}

std::string ReadProgress(const char* value) {
  constexpr int kMost = 100000;
  const std::string text = value;
  const std::size_t stroke = std::min(text.find('/'), text.size());
  const int step = Number(text.substr(0, stroke), kMost);
  const int steps = stroke < text.size() ? Number(text.substr(stroke + 1), kMost) : -1;
  if (step < 0 || step > steps)
    kPreview.Reject(std::string{"--progress "} + value + ": no progress; write it as 3/12");
  return "[Progress]\nProgressHide=0\nStepNumber=" + std::to_string(steps) +
         "\nCurrentStep=" + std::to_string(step) + "\n";
}

KeyStroke FindKey(const std::string& name) {
  for (const NamedKey& known : kKeys)
    if (name == known.name) return known.key;
  const int character = name.size() == 1 ? std::tolower(static_cast<unsigned char>(name[0])) : 0;
  const bool isLetter = character >= 'a' && character <= 'z';
  if (!isLetter && (character < '0' || character > '9'))
    kPreview.Reject("--keys: there is no key " + name);
  return {isLetter ? KEY_A + character - 'a' : KEY_0 + character - '0', name[0]};
}

std::vector<KeyStroke> ReadKeys(const char* text) {
  std::istringstream words{text};
  std::vector<KeyStroke> keys;
  for (std::string word; words >> word;) keys.push_back(FindKey(word));
  return keys;
}

std::vector<int> ReadSelection(const char* text) {
  constexpr int kMostDigits = 4;
  std::istringstream parts{text};
  std::vector<int> numbers;
  bool isRight = *text != '\0' && std::strchr(text, '\0')[-1] != ',';
  for (std::string part; std::getline(parts, part, ',');) {
    isRight &= !part.empty() && part.size() <= kMostDigits && numbers.size() < kDeepest &&
               std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    numbers.push_back(isRight ? std::atoi(part.c_str()) : 0);
  }
  if (!isRight)
    kPreview.Reject(std::string{"--select "} + text + ": no numbers of entries; write them as 4,2");
  return numbers;
}

int ReadPort(const char* value) {
  constexpr int kLast = 65535;
  if (!value) return 0;
  const int port = Number(value, kLast);
  if (port < 0)
    kPreview.Reject(std::string{"--serve="} + value + ": no port; write a number up to 65535");
  return port;
}

int ReadSeconds(const char* value) {
  const int seconds = Number(value, kLongestWait);
  if (seconds < 0)
    kPreview.Reject(std::string{"--after "} + value + ": no time; write seconds, 0 to 3600");
  return seconds;
}

std::string ReadName(const char* option, const char* value) {
  if (*value == '\0') kPreview.Reject(std::string{option} + ": names no file");
  return value;
}

// Whether a file is to exist can be said once.
void Assume(Scene& scene, const char* value, bool exists) {
  const std::string name = ReadName(exists ? "--assume" : "--assume-missing", value);
  if (scene.assumed.emplace(name, exists).first->second != exists)
    kPreview.Reject("--assume and --assume-missing of one file, " + name + ": one of them only");
}

std::string Absolute(const std::string& option, const char* value) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(value, error);
  if (error) kPreview.Reject(option + ' ' + value + ": " + error.message());
  return path;
}

// Pictures are PNG files, whatever their names say.
std::string ReadPng(const char* value) {
  std::string ending = std::filesystem::path{value}.extension();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const char* other : {".jpg", ".jpeg", ".bmp", ".gif", ".tga", ".pcx", ".webp"})
    if (ending == other)
      kPreview.Reject(std::string{"--png "} + value + ": is to be a PNG picture; end it with .png");
  return Absolute("--png", value);
}

}  // namespace

PreviewOptions ReadPreviewOptions(int argc, char** argv) {
  static const option kOptions[] = {
      {"png", required_argument, nullptr, 'o'},
      {"serve", optional_argument, nullptr, 'w'},
      {"all", required_argument, nullptr, 'a'},
      {"size", required_argument, nullptr, 's'},
      {"depth", required_argument, nullptr, 'd'},
      {"zoom", required_argument, nullptr, 'z'},
      {"keys", required_argument, nullptr, 'k'},
      {"look", required_argument, nullptr, 'f'},
      {"lang", required_argument, nullptr, 'l'},
      {"progress", required_argument, nullptr, 'p'},
      {"assume", required_argument, nullptr, 'y'},
      {"assume-missing", required_argument, nullptr, 'n'},
      {"select", required_argument, nullptr, 'e'},
      {"after", required_argument, nullptr, 't'},
      {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'},
      {nullptr, 0, nullptr, 0},
  };
  PreviewOptions options;
  // The port may also be a word of its own.
  const auto takeNumber = [&argc, argv]() -> const char* {
    const char* next = optind < argc ? argv[optind] : "";
    const std::size_t digits = std::strspn(next, "0123456789");
    return digits > 0 && next[digits] == '\0' ? argv[optind++] : nullptr;
  };
  Scene& scene = options.scene;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 'o') options.png = ReadPng(optarg);
    if (letter == 'a') options.sheet = Absolute("--all", optarg);
    if (letter == 'w') options.serves = true;
    if (letter == 'w') options.port = ReadPort(optarg ? optarg : takeNumber());
    if (letter == 'd') scene.depth = kPreview.ReadDepth(optarg);
    if (letter == 's') scene.size = kPreview.ReadSize(optarg);
    if (letter == 'z') scene.zoom = kPreview.ReadZoom(optarg);
    if (letter == 'k') scene.keys = ReadKeys(optarg);
    if (letter == 'f') scene.look = ReadName("--look", optarg);
    if (letter == 'l') scene.language = ReadLanguage(optarg);
    if (letter == 'p') scene.progress = ReadProgress(optarg);
    if (letter == 'y' || letter == 'n') Assume(scene, optarg, letter == 'y');
    if (letter == 'e') scene.select = ReadSelection(optarg);
    if (letter == 't') scene.after = ReadSeconds(optarg);
    if (letter == 'h') kPreview.Help(Usage());
    if (letter == 'v') kPreview.ShowVersion();
    if (letter == '?') ExplainUsage();
  }
  if (!options.png.empty() + !options.sheet.empty() + options.serves > 1)
    kPreview.Reject("of --png, --all and --serve only one goes");
  if (argc - optind > 1) kPreview.Reject(std::string{argv[optind + 1]} + ": one directory only");
  if (optind < argc) options.directory = argv[optind];
  std::error_code ignored;
  if (std::filesystem::equivalent(options.sheet, options.directory, ignored))
    kPreview.Reject("--all " + options.sheet.string() +
                    ": holds the menu; name a directory for pictures");
  return options;
}

}  // namespace zel
