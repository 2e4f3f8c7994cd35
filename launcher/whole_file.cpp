#include "launcher/whole_file.h"

#include <memory>

#include "toolkit/core/allegro.h"

namespace zel {
namespace {

constexpr std::size_t kLongestFile = std::size_t{32} << 20;

struct PackfileCloser {
  void operator()(PACKFILE* file) const { pack_fclose(file); }
};

}  // namespace

std::string ReadWhole(const char* fileName) {
  // A pipe has no size: opening it could wait forever.
  if (file_size_ex(fileName) == 0) return {};
  const std::unique_ptr<PACKFILE, PackfileCloser> file{pack_fopen(fileName, F_READ)};
  if (!file) return {};
  std::string bytes;
  char block[1 << 14];
  for (long count = pack_fread(block, sizeof block, file.get()); count > 0;
       count = pack_fread(block, sizeof block, file.get())) {
    bytes.append(block, static_cast<std::size_t>(count));
    if (bytes.size() >= kLongestFile) break;
  }
  return bytes;
}

}  // namespace zel
