#include "tools/checker/nearest.h"

#include <algorithm>
#include <cctype>

namespace zel {
namespace {

constexpr std::size_t kLongest = 80;  // bytes; nobody mistypes more

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

}  // namespace

std::size_t Distance(const std::string& a, const std::string& b) {
  const std::size_t width = b.size() + 1;
  std::vector<std::size_t> rows(3 * width);
  const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& {
    return rows[i % 3 * width + j];
  };
  for (std::size_t j = 0; j < width; ++j) at(0, j) = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    at(i, 0) = i;
    for (std::size_t j = 1; j < width; ++j) {
      const bool isSame = Lower(a[i - 1]) == Lower(b[j - 1]);
      at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + !isSame});
      const bool isSwapped = i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) &&
                             Lower(a[i - 2]) == Lower(b[j - 1]);
      if (isSwapped) at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
    }
  }
  return at(a.size(), b.size());
}

std::string Nearest(const std::string& name, const std::vector<std::string>& known) {
  if (name.size() > kLongest) return {};
  std::string nearest;
  // A third of a name may be wrong.
  std::size_t least = std::max<std::size_t>(1, name.size() / 3) + 1;
  for (const std::string& candidate : known) {
    if (candidate.size() > kLongest) continue;
    const std::size_t less = std::min(name.size(), candidate.size());
    if (std::max(name.size(), candidate.size()) - less >= least) continue;  // so many are missing
    const std::size_t distance = Distance(name, candidate);
    if (distance < least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

}  // namespace zel
