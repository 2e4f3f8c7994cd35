// The two datafiles of a skin.

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "toolkit/core/bytes.h"
#include "toolkit/skin/datafile.h"
#include "toolkit/skin/skin.h"
#include "toolkit/skin/skin_values.h"

namespace zel {
namespace {

// A number that the skin file may say of an object, under the object's name and this suffix, or
// else the object itself, in the property of this name.
struct ObjectNumber {
  const char* section;
  char property[5];
  int fallback;
};

constexpr ObjectNumber kTileWidth{"TILING", "TCKX", -1};
constexpr ObjectNumber kTileHeight{"TILING", "TCKY", -1};
constexpr ObjectNumber kHotspotX{"CURSOR", "FCSX", 0};
constexpr ObjectNumber kHotspotY{"CURSOR", "FCSY", 0};
constexpr ObjectNumber kFrames{"CURSOR", "FRMS", 1};
constexpr ObjectNumber kFrameDuration{"CURSOR", "FDUR", 20};

int Read(const ObjectNumber& number, const char* name, const Datafile::Object& object) {
  constexpr int kUnset = -1;
  constexpr int kDecimal = 10;
  const std::string key = std::string{name} + '_' + number.property;
  const int inSkinFile = ReadSkinInt(number.section, key.c_str(), kUnset);
  if (inSkinFile != kUnset) return inSkinFile;

  const std::string text = object.Property(number.property);
  if (text.empty()) return number.fallback;
  const long value = std::strtol(text.c_str(), nullptr, kDecimal);
  return -kLargestSkinValue <= value && value <= kLargestSkinValue ? static_cast<int>(value)
                                                                   : number.fallback;
}

// Allegro looks the 64 values that a channel may have up in a table.
bool IsSound(const RGB& color) { return std::max({color.r, color.g, color.b}) < 64; }

// True when the datafile brought a palette, which is the current one now.
bool TakePalette(const Datafile& datafile) {
  const Datafile::Object* object = datafile.Find("XTRA_PALETTE", DAT_PALETTE);
  PALETTE colors;
  if (!object || object->content.size() < sizeof colors) return false;
  std::memcpy(colors, object->content.data(), sizeof colors);
  if (!std::all_of(std::begin(colors), std::end(colors), IsSound)) return false;
  set_palette(colors);
  return true;
}

}  // namespace

Error Skin::LoadData(const char* path) {
  if (!path || !IsFile(path)) return kSkinDataError;
  Datafile datafile;
  if (!datafile.Load(path)) return kLoadError;
  // Before the pictures are made: those with a palette have the colours of this one.
  if (TakePalette(datafile) && get_color_depth() == 8) {
    // What was drawn so far has the colours of another palette.
    RecomputeNamedColors();
    Reset();
  }
  for (int id = 0; id < kElementCount; ++id) {
    const char* name = kElementNames[id];
    const Datafile::Object* object = datafile.Find(name, DAT_BITMAP);
    if (!object) continue;
    bitmaps[id]->Set(MakePicture(*object).get(), true, kMemoryBitmap);
    bitmaps[id]->SetTileSize({Read(kTileWidth, name, *object), Read(kTileHeight, name, *object)});
  }
  return kNoError;
}

Error Skin::LoadCursors(const char* path) {
  if (!path || !IsFile(path)) return kFileNotFoundError;
  const CursorShadow look = CursorShadow::Read();
  for (const auto& cursor : cursors) cursor->SetShadow(look);
  Datafile datafile;
  if (!datafile.Load(path)) return kLoadError;
  for (int i = 0; i < kCursorCount; ++i) {
    const char* name = kCursorNames[i];
    const Datafile::Object* object = datafile.Find(name, DAT_BITMAP);
    if (!object) continue;
    const BitmapPtr picture = MakePicture(*object);
    cursors[i]->Create(SkinBitmap(picture.get()), Read(kFrames, name, *object));
    cursors[i]->SetHotspot(Read(kHotspotX, name, *object), Read(kHotspotY, name, *object));
    cursors[i]->SetAnimationInterval(Read(kFrameDuration, name, *object));
  }
  return kNoError;
}

}  // namespace zel
