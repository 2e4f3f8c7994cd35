#include "toolkit/draw/art.h"

#include <algorithm>
#include <cmath>

#include "imageformats/load.h"
#include "toolkit/base/bytes.h"
#include "toolkit/draw/scaling.h"

namespace zel {
namespace {

constexpr int kLargestScale = 3;

}  // namespace

std::string ArtName(const std::string& path, int scale) {
  const std::size_t name = path.rfind('/') + 1;  // 0 without a directory
  const std::size_t dot = path.rfind('.');
  const std::size_t end = dot == std::string::npos || dot < name ? path.size() : dot;
  return path.substr(0, end) + '@' + std::to_string(scale) + 'x' + path.substr(end);
}

Art FindArt(const char* path, double zoom) {
  const int needed = static_cast<int>(std::ceil(std::min<double>(zoom, kLargestScale)));
  // Too large is better than too small, and the nearest is best.
  for (int scale = needed; scale <= kLargestScale && needed > 1; ++scale)
    if (std::string file = ArtName(path, scale); IsFile(file.c_str())) return {file, scale};
  for (int scale = needed - 1; scale > 1; --scale)
    if (std::string file = ArtName(path, scale); IsFile(file.c_str())) return {file, scale};
  return {path, 1};
}

BitmapPtr ZoomArt(BitmapPtr picture, int scale, double zoom) {
  const double factor = zoom / scale;
  if (!picture || factor == 1) return picture;
  const auto scaled = [factor](int extent) {
    return std::max(1, static_cast<int>(std::lround(extent * factor)));
  };
  return Scaled(picture.get(), {scaled(picture->w), scaled(picture->h)});
}

BitmapPtr LoadArt(const char* path, double zoom) {
  const Art art = FindArt(path, zoom);
  return ZoomArt(BitmapPtr{LoadPicture(art.path.c_str(), nullptr)}, art.scale, zoom);
}

}  // namespace zel
