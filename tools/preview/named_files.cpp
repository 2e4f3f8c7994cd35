#include "tools/preview/named_files.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <string_view>
#include <system_error>
#include <vector>

#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr int kMostEntries = 20000, kDeepest = 16, kMostNames = 5000;
constexpr std::size_t kMostNamed = 200, kMostSkins = 100;
constexpr std::size_t kLongestFile = std::size_t{1} << 20, kLongestName = 1000;

bool IsCondition(std::string key) {
  std::transform(key.begin(), key.end(), key.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return key == "waitforfile" || key == "waitwhilefile" || key == "showiffileexists";
}

// Calls back with each part of a value of a file that may be the name of another one.
void ForEachName(const fs::path& file, const std::function<void(const std::string&)>& act) {
  const std::string text = ReadText(file.c_str(), kLongestFile);
  int count = 0;
  for (std::size_t position = 0; position < text.size() && count < kMostNames;) {
    const std::string line{NextLine(text, position)};
    const std::size_t sign = line.find('=');
    if (sign == std::string::npos || IsCondition(Trimmed(line.substr(0, sign).c_str()))) continue;
    for (const std::string& name : ListParts(line.c_str() + sign + 1)) {
      if (name.size() > kLongestName) continue;
      act(name);
      ++count;
    }
  }
}

void ForEachFile(const fs::path& directory, const std::function<void(const fs::path&)>& act) {
  std::error_code error;
  fs::recursive_directory_iterator entry{directory, fs::directory_options::skip_permission_denied,
                                         error};
  for (int i = 0; !error && i < kMostEntries && entry != fs::recursive_directory_iterator{};
       ++i, entry.increment(error)) {
    if (entry.depth() >= kDeepest) entry.disable_recursion_pending();
    std::error_code ignored;
    if (entry->is_regular_file(ignored)) act(entry->path());
  }
}

}  // namespace

std::set<fs::path> FilesNamedElsewhere(const fs::path& directory, const std::string& look) {
  std::set<fs::path> named;
  std::vector<fs::path> skins;
  const auto add = [&](const fs::path& from, const std::string& name) {
    std::error_code error;
    if (!name.starts_with('/') && !name.starts_with("../") && from == directory) return;
    const fs::path file = fs::weakly_canonical(from / name, error);
    if (error || named.size() >= kMostNamed || !fs::is_regular_file(file, error)) return;
    const fs::path inside = file.lexically_relative(directory);
    if (!inside.empty() && *inside.begin() != "..") return;
    if (named.insert(file).second && file.extension() == ".skin") skins.push_back(file);
  };
  ForEachFile(directory, [&](const fs::path& file) {
    // Skins name files from where they lie themselves.
    const bool isSkin = file.extension() == ".skin";
    if (isSkin || file.extension() == ".cfg")
      ForEachName(file, [&](const std::string& name) {
        add(isSkin ? file.parent_path() : directory, name);
      });
  });
  if (!look.empty()) add(directory, look);
  for (std::size_t i = 0; i < skins.size(); ++i) {
    const fs::path from = skins[i].parent_path();
    ForEachName(skins[i], [&](const std::string& name) { add(from, name); });
  }
  return named;
}

std::set<std::string> SkinsIn(const fs::path& directory) {
  std::set<std::string> skins;
  ForEachFile(directory, [&](const fs::path& file) {
    if (file.extension() == ".skin" && skins.size() < kMostSkins)
      skins.insert(file.lexically_relative(directory));
  });
  return skins;
}

}  // namespace zel
