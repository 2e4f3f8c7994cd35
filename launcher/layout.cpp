#include "launcher/layout.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <vector>

#include "launcher/menu_config.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/zoom.h"

namespace zel {
namespace {

constexpr std::string_view kSizedStem = "MENU_CONFIGURATION_";

// Of layouts that fill the screen alike, the one with about so many lines of unzoomed pixels is the
// easiest to read.
constexpr double kComfortableHeight = 640;
constexpr double kAlike = 0.03;  // of the screen

// On a screen that has room for no layout the places of one shrink, without text and pictures, but
// not to less than this: a layout that is larger still does not mean it.
constexpr double kLeastShrunk = 0.4;

struct Candidate {
  std::string section;
  Size size;
  double zoom;  // of text and pictures where a pixel of the file is one of the screen

  // The scale at which it takes all of the screen in one direction.
  double Fitting(Size screen) const {
    return std::min(1.0 * screen.w / size.w, 1.0 * screen.h / size.h);
  }
  double LargestZoom(Size screen) const { return Fitting(screen) * zoom; }
  double Filled(Size screen, double scale) const {
    return scale * size.w / screen.w * (scale * size.h / screen.h);
  }
  double Discomfort() const { return std::abs(size.h / zoom - kComfortableHeight); }
};

Size SizeOfGeneral(const SectionFile& file) {
  const auto end = [](std::int32_t start, std::int32_t extent) {
    return std::clamp(start, 0, kMostPixels) + std::clamp(extent, 0, kMostPixels);
  };
  const LayoutValues at = ReadLayout(file, kGeneralSection, {});
  const Size used{std::max({end(at.menuLeft, at.menuWidth), end(at.hintLeft, at.hintWidth),
                            end(at.progressX, at.progressW)}),
                  std::max(end(at.menuTop, at.menuHeight), end(at.hintTop, at.hintHeight))};
  for (const Size usual : kUsualScreens)
    if (used.w <= usual.w && used.h <= usual.h) return usual;
  return {std::min(used.w, kMostPixels), std::min(used.h, kMostPixels)};
}

double ZoomOf(const SectionFile::Section& section) {
  return std::max(kLeastZoom, ParseZoom(section.GetText("Zoom")));
}

// Never none.
std::vector<Candidate> FindCandidates(const SectionFile& file) {
  std::vector<Candidate> found;
  for (const SectionFile::Section& section : file.Sections())
    if (Size size; ReadSectionSize(section.Name(), &size))
      found.push_back({section.Name(), size, ZoomOf(section)});
  found.push_back({kGeneralSection, SizeOfGeneral(file), ZoomOf(file.Find(kGeneralSection))});
  return found;
}

// The layout that leaves least of the screen empty at the scale that it is given; below 0 it does
// not count, and null when none does.
template <class ScaleOf>
const Candidate* Best(const std::vector<Candidate>& candidates, Size screen,
                      const ScaleOf& scaleOf) {
  const Candidate* best = nullptr;
  double filledByBest = 0;
  for (const Candidate& candidate : candidates) {
    const double scale = scaleOf(candidate);
    if (scale < 0) continue;
    const double filled = candidate.Filled(screen, scale);
    const bool isAlike = best && std::abs(filled - filledByBest) < kAlike;
    if (isAlike ? candidate.Discomfort() < best->Discomfort() : filled > filledByBest) {
      best = &candidate;
      filledByBest = filled;
    }
  }
  return best;
}

// The one whose text and pictures can be largest.
const Candidate& Largest(const std::vector<Candidate>& candidates, Size screen) {
  return *std::max_element(candidates.begin(), candidates.end(),
                           [screen](const Candidate& a, const Candidate& b) {
                             return a.LargestZoom(screen) < b.LargestZoom(screen);
                           });
}

ScreenLayout Placed(const Candidate& candidate, double zoom, Size screen) {
  SetZoom(zoom);
  const double shown = zoom < kLeastShrunk ? kLeastZoom : std::min(zoom, kLargestZoom);
  ScreenLayout layout{candidate.section, candidate.size, shown / candidate.zoom, {}};
  const auto margin = [&](int room, int extent) {
    return std::max(0, static_cast<int>(std::lround((room - layout.scale * extent) / 2)));
  };
  layout.origin = {margin(screen.w, layout.size.w), margin(screen.h, layout.size.h)};
  return layout;
}

// Where text and pictures would have to be smaller than they are, none fits, and it is the one for
// which they are least too large.
ScreenLayout FitToScreen(const std::vector<Candidate>& candidates, Size screen) {
  const auto fitting = [screen](const Candidate& c) {
    return c.LargestZoom(screen) >= kLeastZoom ? c.Fitting(screen) : -1;
  };
  const auto own = std::find_if(candidates.begin(), candidates.end(),
                                [screen](const Candidate& c) { return c.size == screen; });
  const Candidate* best = own != candidates.end() ? &*own : Best(candidates, screen, fitting);
  if (!best) best = &Largest(candidates, screen);
  return Placed(*best, best->LargestZoom(screen), screen);
}

}  // namespace

bool IsUsual(Size screen) {
  return std::find(std::begin(kUsualScreens), std::end(kUsualScreens), screen) !=
         std::end(kUsualScreens);
}

std::string SectionFor(Size screen) {
  return std::string{kSizedStem} + std::to_string(screen.w) + 'x' + std::to_string(screen.h);
}

bool ReadSectionSize(const std::string& section, Size* size) {
  char end = '\0';
  const std::size_t stem = kSizedStem.size();
  return strncasecmp(section.c_str(), kSizedStem.data(), stem) == 0 &&
         std::sscanf(section.c_str() + stem, "%5d%*1[xX]%5d%c", &size->w, &size->h, &end) == 2 &&
         std::min(size->w, size->h) > 0 && std::max(size->w, size->h) <= kMostPixels;
}

Rect ScreenLayout::OnScreen(const Rect& place) const {
  if (section.empty()) return place;
  const auto from = [](std::int32_t value, std::int32_t extent) {
    return std::clamp(value < 0 ? value + extent : value, -kMostPixels, kMostPixels);
  };
  const auto scaled = [this](double pixels) {
    return static_cast<int>(
        std::clamp<double>(std::round(scale * pixels), -kMostPixels, kMostPixels));
  };
  const int x = from(place.x, size.w), y = from(place.y, size.h);
  const int left = scaled(x), top = scaled(y);
  return {origin.x + left, origin.y + top, scaled(1.0 * x + place.w) - left,
          scaled(1.0 * y + place.h) - top};
}

Point ScreenLayout::OnScreen(Point place) const {
  const Rect at = OnScreen(Rect{place.x, place.y, 0, 0});
  return {at.x, at.y};
}

ScreenLayout FitLayout(const char* menuFile, Size screen, double zoom) {
  return zoom == 1 ? ScreenLayout{} : FitZoomedLayout(menuFile, screen, zoom);
}

ScreenLayout FitZoomedLayout(const char* menuFile, Size screen, double zoom) {
  constexpr double kRounded = 1e-6;
  if (screen.w < 1 || screen.h < 1) return {};
  const auto candidates = FindCandidates(SectionFile::FromUtf8(ReadWhole(menuFile)));
  zoom = std::min(zoom, Largest(candidates, screen).LargestZoom(screen));
  const Candidate* best =
      zoom < kLeastZoom ? nullptr : Best(candidates, screen, [&](const Candidate& c) {
        const double scale = zoom / c.zoom;
        return scale <= c.Fitting(screen) + kRounded ? scale : -1;
      });
  return best ? Placed(*best, zoom, screen) : FitToScreen(candidates, screen);
}

}  // namespace zel
