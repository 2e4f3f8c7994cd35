// The two datafiles of a skin.

#include <algorithm>
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

int Read(const ObjectNumber& number, const char* name, const DATAFILE* object) {
  constexpr int kUnset = -1;
  constexpr int kDecimal = 10;
  const std::string key = std::string{name} + '_' + number.property;
  const int inSkinFile = ReadSkinInt(number.section, key.c_str(), kUnset);
  if (inSkinFile != kUnset) return inSkinFile;

  const char* id = number.property;
  const char* text = get_datafile_property(object, DAT_ID(id[0], id[1], id[2], id[3]));
  if (ugetc(text) == 0) return number.fallback;
  const long value = ustrtol(text, nullptr, kDecimal);
  return -kLargestSkinValue <= value && value <= kLargestSkinValue ? static_cast<int>(value)
                                                                   : number.fallback;
}

BITMAP* Picture(const DATAFILE* object) { return static_cast<BITMAP*>(object->dat); }

// Allegro looks the 64 values that a channel may have up in a table.
bool IsSound(const RGB& color) { return std::max({color.r, color.g, color.b}) < 64; }

// True when the datafile brought a palette, which is the current one now.
bool TakePalette(const DatafilePtr& datafile) {
  const DATAFILE* object = FindObject(datafile.get(), "XTRA_PALETTE", DAT_PALETTE);
  if (!object || object->size < static_cast<long>(sizeof(PALETTE))) return false;
  const auto* colors = static_cast<const RGB*>(object->dat);
  if (!std::all_of(colors, colors + PAL_SIZE, IsSound)) return false;
  set_palette(colors);
  return true;
}

}  // namespace

Error Skin::LoadData(const char* path) {
  if (!path || !IsFile(path)) return kSkinDataError;
  DatafilePtr datafile = LoadDatafile(path);
  if (datafile && TakePalette(datafile)) {
    if (get_color_depth() == 8) {
      // What was drawn so far has the colours of another palette.
      RecomputeNamedColors();
      Reset();
    }
    // Once more, so that paletted pictures are converted with their own colours.
    datafile = nullptr;
    datafile = LoadDatafile(path);
  }
  if (!datafile) return kLoadError;
  for (int id = 0; id < kElementCount; ++id) {
    const char* name = kElementNames[id];
    const DATAFILE* object = FindObject(datafile.get(), name, DAT_BITMAP);
    if (!object) continue;
    bitmaps[id]->Set(Picture(object), true, kMemoryBitmap);
    bitmaps[id]->SetTileSize({Read(kTileWidth, name, object), Read(kTileHeight, name, object)});
  }
  return kNoError;
}

Error Skin::LoadCursors(const char* path) {
  if (!path || !IsFile(path)) return kFileNotFoundError;
  cursorShadow.Read();
  const DatafilePtr datafile = LoadDatafile(path);
  if (!datafile) return kLoadError;
  for (int i = 0; i < kCursorCount; ++i) {
    const char* name = kCursorNames[i];
    const DATAFILE* object = FindObject(datafile.get(), name, DAT_BITMAP);
    if (!object) continue;
    cursors[i]->Create(SkinBitmap(Picture(object)), Read(kFrames, name, object));
    cursors[i]->SetHotspot(Read(kHotspotX, name, object), Read(kHotspotY, name, object));
    cursors[i]->SetAnimationInterval(Read(kFrameDuration, name, object));
  }
  return kNoError;
}

}  // namespace zel
