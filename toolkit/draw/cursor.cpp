#include "toolkit/draw/cursor.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/scaling.h"
#include "toolkit/draw/skin_values.h"

namespace zel {
namespace {

constexpr int kShadowDepth = 32;  // with an alpha channel
constexpr int kFullAlpha = 255;
constexpr int kLargestHotspot = 32767;

// Replaces each value of a line, which begins with `radius` zeros, by the sum of the values no
// further than that from it.
void SumAlongLine(int* line, int count, int stride, int radius, std::vector<int>& copy) {
  copy.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) copy[i] = line[i * stride];
  int sum = 0;
  for (int i = 0; i < count; ++i) {
    if (i + radius < count) sum += copy[i + radius];
    if (i - radius > 0) sum -= copy[i - radius - 1];
    line[i * stride] = sum;
  }
}

// Pixels with a value each, row by row.
struct Grid {
  Grid(int width, int height) : w{width}, h{height}, values(static_cast<std::size_t>(w) * h) {}
  int& At(int x, int y) { return values[static_cast<std::size_t>(y) * w + x]; }

  // Turns each value into the sum over the square of 2 * radius + 1 pixels around it.
  void SumSquares(int radius) {
    std::vector<int> copy;
    for (int y = 0; y < h; ++y) SumAlongLine(&At(0, y), w, 1, radius, copy);
    for (int x = 0; x < w; ++x) SumAlongLine(&At(x, 0), h, w, radius, copy);
  }

  int w, h;
  std::vector<int> values;
};

SkinBitmap MakePlaceholder() {
  SkinBitmap placeholder;
  placeholder.CreateEx(kShadowDepth, 1, 1);
  placeholder.clear_bitmap();
  return placeholder;
}

// The frame's outline in the shadow colour, its opacity softened by a box blur.
SkinBitmap MakeShadow(const SkinBitmap& frame, const CursorShadow& look) {
  if (!settings.mouseShadow) return MakePlaceholder();
  const int radius = look.size;
  Grid coverage(frame.Width() + 2 * radius, frame.Height() + 2 * radius);
  for (int y = 0; y < frame.Height(); ++y)
    for (int x = 0; x < frame.Width(); ++x)
      coverage.At(x + radius, y + radius) = frame.getpixel(x, y) == magenta ? 0 : kFullAlpha;
  coverage.SumSquares(radius);

  SkinBitmap shadow;
  shadow.CreateEx(kShadowDepth, coverage.w, coverage.h);
  const Color color = look.GetColor();
  const int red = color.r(), green = color.g(), blue = color.b();
  const int area = (2 * radius + 1) * (2 * radius + 1);
  for (int y = 0; y < shadow.Height(); ++y)
    for (int x = 0; x < shadow.Width(); ++x)
      shadow.putpixel(x, y, {red, green, blue, coverage.At(x, y) / area});
  return shadow;
}

}  // namespace

const char* const kCursorNames[kCursorCount] = {
    "MOUSE_ALTERNATIVE",     "MOUSE_CROSSHAIR",     "MOUSE_HOURGLASS",      "MOUSE_MOVE",
    "MOUSE_NORMAL",          "MOUSE_SELECT",        "MOUSE_SIZE_DIAGONAL1", "MOUSE_SIZE_DIAGONAL2",
    "MOUSE_SIZE_HORIZONTAL", "MOUSE_SIZE_VERTICAL", "MOUSE_TEXTSELECT",     "MOUSE_UNAVAILABLE",
};

CursorShadow CursorShadow::Read(const SectionFile& file) {
  CursorShadow look;
  if (const Color color = ReadSkinColor(file, kSection, kColorKey, "-1"); color.IsSet()) {
    look.red = color.r();
    look.green = color.g();
    look.blue = color.b();
  }
  const auto read = [&file](const char* key, int& value, int smallest, int largest) {
    value = ReadSkinInt(file, kSection, key, value, smallest, largest);
  };
  const auto& [size, x, y] = kNumberKeys;
  read(size, look.size, 0, kLargestSize);
  read(x, look.offset.x, -kLargestOffset, kLargestOffset);
  read(y, look.offset.y, -kLargestOffset, kLargestOffset);
  return look;
}

void Cursor::Create(const SkinBitmap& picture, int count, int scale) {
  frames_.clear();
  shadows_.clear();
  frameCount_ = 0;
  position_ = 0;
  if (picture.IsEmpty()) return;
  frameCount_ = std::clamp(count, 1, picture.Width());
  const int width = picture.Width() / frameCount_;
  const double factor = CurrentZoom() / scale;
  const auto size = [factor](int extent) {
    return std::max(1, static_cast<int>(std::lround(extent * factor)));
  };
  for (int i = 0; i < frameCount_; ++i) {
    SkinBitmap& frame = frames_.emplace_back();
    frame.Create(width, picture.Height());
    picture.blit(frame, i * width, 0, 0, 0, width, picture.Height());
    frame.Take(Scaled(frame.GetBitmap(), {size(width), size(picture.Height())}));
  }
}

void Cursor::SetShadow(const CursorShadow& look) {
  shadowLook_ = look;
  shadows_.clear();
}

CursorShadow Cursor::GetShadowLook() const {
  CursorShadow look = shadowLook_;
  look.size = Zoomed(look.size);
  look.offset = {Zoomed(look.offset.x), Zoomed(look.offset.y)};
  return look;
}

void Cursor::CreateDefault() {
  struct Line {
    int x1, y1, x2, y2;
  };
  static constexpr Line kOutline[] = {
      {0, 0, 0, 16},   {0, 16, 4, 12},  {4, 12, 7, 19}, {8, 20, 9, 20},
      {10, 19, 7, 12}, {7, 11, 11, 11}, {11, 11, 0, 0},
  };
  constexpr Size kArrow{12, 21};
  constexpr Point kInside{3, 8};

  SkinBitmap arrow(kArrow.w, kArrow.h, kMemoryBitmap);
  arrow.clear_to_color(magenta);
  for (const Line& part : kOutline) arrow.line(part.x1, part.y1, part.x2, part.y2, white);
  arrow.floodfill(kInside.x, kInside.y, black);
  Create(arrow, 1);
}

void Cursor::Free() { *this = {}; }

void Cursor::SetHotspot(int x, int y) {
  hotspot_ = {std::clamp(x, -kLargestHotspot, kLargestHotspot),
              std::clamp(y, -kLargestHotspot, kLargestHotspot)};
}

void Cursor::SetHotspot(Point p) { SetHotspot(p.x, p.y); }
Point Cursor::GetHotspot() const { return hotspot_; }

void Cursor::SetAnimationInterval(int ms) {
  constexpr float kMsPerSecond = 1000;
  const float ticksPerSecond = static_cast<float>(settings.UsableFrameRate());
  step_ = kMsPerSecond / (static_cast<float>(std::max(1, ms)) * ticksPerSecond);
}

void Cursor::Update() {
  if (frameCount_ == 0) return;
  position_ += step_;
  while (position_ >= static_cast<float>(frameCount_)) position_ -= static_cast<float>(frameCount_);
}

SkinBitmap* Cursor::GetFrame() {
  return frameCount_ > 0 ? &frames_[static_cast<std::size_t>(position_)] : nullptr;
}

SkinBitmap* Cursor::GetShadow() {
  // Most shapes are never shown, so that their shadows wait until they are asked for.
  if (shadows_.empty())
    for (const SkinBitmap& frame : frames_) shadows_.push_back(MakeShadow(frame, GetShadowLook()));
  return frameCount_ > 0 ? &shadows_[static_cast<std::size_t>(position_)] : nullptr;
}

}  // namespace zel
