#include "toolkit/base/zoom.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "toolkit/base/geometry.h"
#include "toolkit/base/process.h"

namespace zel {
double ParseZoom(const char* text) {
  if (strcasecmp(text, "auto") == 0) return kZoomToFit;
  char* end = nullptr;
  const double number = std::strtod(text, &end);
  // What is no number compares with none.
  return end != text && number >= kLeastZoom ? std::min(number, kLargestZoom) : kLeastZoom;
}

void SetZoom(double zoom) { process.zoom = std::clamp(zoom, kLeastZoom, kLargestZoom); }
double CurrentZoom() { return process.zoom; }

int Zoomed(int pixels) {
  if (!IsZoomed()) return pixels;
  const double wanted = std::round(pixels * process.zoom);
  return static_cast<int>(std::clamp<double>(wanted, -kMostPixels, kMostPixels));
}

}  // namespace zel
