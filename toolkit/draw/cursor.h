// One pointer shape, possibly animated, with a soft shadow.
#pragma once

#include <vector>

#include "toolkit/base/geometry.h"
#include "toolkit/base/section_file.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/skin_bitmap.h"

namespace zel {

// Indices of the skin's pointer shapes.
enum CursorIndex : int {
  MOUSE_ALTERNATIVE,
  MOUSE_CROSSHAIR,
  MOUSE_HOURGLASS,
  MOUSE_MOVE,
  MOUSE_NORMAL,
  MOUSE_SELECT,
  MOUSE_SIZE_DIAGONAL1,
  MOUSE_SIZE_DIAGONAL2,
  MOUSE_SIZE_HORIZONTAL,
  MOUSE_SIZE_VERTICAL,
  MOUSE_TEXTSELECT,
  MOUSE_UNAVAILABLE,
  kCursorCount,
};
// "MOUSE_ALTERNATIVE" and so on; the object names in a cursor datafile.
extern const char* const kCursorNames[kCursorCount];

// How the shadow of a pointer shape looks.
struct CursorShadow {
  static constexpr int kLargestSize = 64;
  static constexpr int kLargestOffset = 256;  // on either side

  // Components, because it exists before there is a graphics mode and outlives changes of it.
  int red = 96, green = 96, blue = 96;
  int size = 2;        // blur radius in pixels
  Point offset{2, 0};  // from the shape, in pixels

  // In the current pixel format.
  Color GetColor() const { return {red, green, blue}; }
  // From the section "MOUSE" of a skin file; what is missing or too large, or no colour, gets the
  // value that it has above.
  static CursorShadow Read(const SectionFile& file);
  static constexpr const char* kSection = "MOUSE";
  static constexpr const char* kColorKey = "shadowColor";
  static constexpr const char* kNumberKeys[] = {"shadowSize", "shadowOffsetX", "shadowOffsetY"};
};

class Cursor {
 public:
  Cursor() = default;
  Cursor(Cursor&&) = default;
  Cursor& operator=(Cursor&&) = default;

  // Cuts a picture into `count` strips of equal width (brought to 1..the picture's width), which
  // become frames at the current zoom. An empty picture leaves no frames. Hotspot and animation
  // interval stay. `scale` says how many times its size the picture is drawn already.
  void Create(const SkinBitmap& picture, int count, int scale = 1);
  // Makes the shadows of these and of later frames look like that. They are placeholders while the
  // settings switch shadows off.
  void SetShadow(const CursorShadow& look);
  // At the zoom there is.
  CursorShadow GetShadowLook() const;
  const std::vector<SkinBitmap>& GetFrames() const { return frames_; }
  // The built-in arrow.
  void CreateDefault();
  // Back to a fresh, empty cursor.
  void Free();

  // The pixel of the frame at the mouse position, brought to -32767..32767.
  void SetHotspot(int x, int y);
  void SetHotspot(Point p);
  Point GetHotspot() const;
  // How long each frame shows, in milliseconds (below 1 counts as 1).
  void SetAnimationInterval(int ms);
  // Advances the animation by one logic tick.
  void Update();
  // The frame and its shadow that show now; null for a cursor without frames.
  SkinBitmap* GetFrame();
  SkinBitmap* GetShadow();

 private:
  std::vector<SkinBitmap> frames_;
  std::vector<SkinBitmap> shadows_;
  Point hotspot_;
  int frameCount_ = 0;
  float position_ = 0;  // of the current frame, with a fraction; less than frameCount_
  float step_ = 1.0f;   // frames by logic tick
  CursorShadow shadowLook_;
};

}  // namespace zel
