// Everything that widgets draw with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/base/error.h"
#include "toolkit/base/geometry.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/draw/font.h"
#include "toolkit/draw/skin_bitmap.h"
#include "toolkit/skin/elements.h"
#include "toolkit/skin/menu_look.h"

namespace zel {

// The values that stand in the skin file or in the built-in look; widgets read them directly and
// copy what they need when they get MSG_INITSKIN. Widgets keep element and font indices, never
// pointers.
class Skin {
 public:
  static constexpr int kBitmaps = 1024;
  static constexpr int kCursors = 64;
  static constexpr int kFonts = 64;
  static constexpr int kSkinFonts = 8;  // "FONT0" .. "FONT7"

  // "default" or an empty name is the built-in look; any other name is a skin description file.
  explicit Skin(const char* name);
  Skin(const Skin&) = delete;
  Skin& operator=(const Skin&) = delete;

  // Copies the elements of a bitmap datafile over those there are; where there is a zoom, its art
  // (see art.h) where there is some. What the objects say of themselves is in their own pixels. A
  // palette in it becomes the current one. Code 11 when there is no such file, 13 when it is no
  // datafile that can be read safely.
  virtual Error LoadData(const char* path);
  // Makes the pointer shapes of a cursor datafile, with the shadow that the skin file describes.
  // Code 12 or 13 likewise.
  virtual Error LoadCursors(const char* path);
  virtual Error LoadSamples(const char* path);  // for a skin with sounds; does nothing
  // Draw all elements, or one, in the built-in look with the current colours.
  virtual void GenerateDefaultBitmaps();
  virtual void GenerateDefaultBitmap(int id);
  virtual void ResetSamples();
  // The built-in arrow for all shapes but MOUSE_ALTERNATIVE, which stays as it is.
  virtual void ResetCursors();
  virtual void ResetFonts();
  virtual void ResetColors();
  virtual void ResetControls();
  virtual ~Skin();
  // Reads a skin description file over a fresh built-in look; it becomes the current configuration
  // file. Code 10, and nothing changed, when there is no such file; the error of a datafile ends
  // the loading.
  virtual Error Load(const char* path);
  // Loads the same again, in the pixel format that is current now.
  virtual void Reload();
  // Empties all holders, cursors and fonts; their addresses stay.
  virtual void Unload();
  // The built-in look.
  virtual void Reset();

  // Draws the elements that no datafile brought again, with the current colours.
  void GenerateMissingBitmaps();
  // What skinFile said when it was loaded last.
  const SectionFile& File() const { return file_; }
  // How many times its usual size the built-in look is to be drawn from now on.
  void SetPictureScale(double scale) { pictureScale_ = scale; }
  double GetPictureScale() const { return pictureScale_; }
  // The result of the construction or the last Load.
  Error GetError() const { return error; }
  // Loads the same again, tinted: elements and named colours; alpha 0..256.
  void Colorize(Color tint, int alpha);
  // Code 15 for an index outside 0..63, else what the loading of the file gave. `duration` is that
  // of a frame in milliseconds, `size` a line height in pixels.
  Error SetCursorBitmap(const char* path, int index, int frames, int duration);
  Error SetFontFile(const char* path, int index, int size);
  // Sets the line height of a font to so many pixels at the current zoom or, where the face has no
  // such size, without it.
  static void SetFontSize(Font& font, int size);
  // Writes all elements side by side to "log.bmp".
  void DumpBitmaps() const;

  Error error;
  std::vector<std::unique_ptr<SkinBitmap>> bitmaps;
  std::vector<std::unique_ptr<Cursor>> cursors;
  std::vector<std::unique_ptr<Font>> fonts;
  std::unique_ptr<std::string> skinFile;  // null until a file was loaded
  Color colors[kSkinColorCount];
  int fontIndex[kTextSetCount][kDrawStates] = {};
  Color fontColor[kTextSetCount][kDrawStates];
  Color shadowColor[kTextSetCount][kDrawStates];
  // What the focus does when the mouse moves: 0 goes to whatever is under it, 1 to what wants it,
  // any other value stays.
  int focus = 0;
  int dottedRect = 0;  // not 0: focused widgets show a dotted rectangle
  int wallpaperStyle = 0;
  int buttonDisplacement = 0;  // pixels that the text of a pressed button moves right and down
  // An effect number and milliseconds, like all the animation values below.
  int buttonAnimationType = 0, buttonAnimationLength = 0;
  Point boxOffset;
  int boxAlignment = 0;
  Color boxBackColor;
  Point windowTextPos;
  Point windowExitPos, windowMaxPos, windowMinPos;
  int windowAlignment = 0;
  int windowTextBack = 0;
  int windowAnimationType = 0, windowAnimationLength = 0;
  int comboAnimationType = 0, comboAnimationLength = 0;
  int menuHeight = 0;
  int menuDelay = 0;
  int menuAnimationType = 0, menuAnimationLength = 0;
  Color tooltipBackColor, tooltipBorderColor;
  int tooltipAnimationType = 0, tooltipAnimationLength = 0;
  std::unique_ptr<FixedText<512>> title;  // null until a file was loaded
  MenuLook menu;
  // Of rows of lists, in pixels at the current zoom; 0 for that of the element. Where there is one,
  // a skin without pictures has built-in ones that are large enough for it.
  int listHeight = 0;

 private:
  // Brings an element that was just made, drawn at `scale` times its size, to the current zoom.
  void ZoomElement(int id, double scale);
  // In an 8-bit mode, gives pictures and colours the places that their colours have in the current
  // palette.
  void FollowPalette(const RGB* former);

  SectionFile file_;
  double pictureScale_ = 1;             // of the built-in look
  bool isBrought_[kElementCount] = {};  // by a datafile
  bool isBuiltinYet_ = false;           // a file is being loaded, and nothing of it was taken
};

// The skin that every new widget draws with: made at start-up, null before and after.
Skin* CurrentSkin();
// Takes the skin over and destroys the one before.
void SetCurrentSkin(std::unique_ptr<Skin> skin);

// Whoever shows pointer shapes has itself told of each one of a skin that ends, with the one of the
// current skin that takes its place, or null. Null for nobody.
using ShapeIsGone = void (*)(const Cursor* gone, Cursor* next);
void TellOfGoneShapes(ShapeIsGone told);

}  // namespace zel
