// The two datafiles of a skin.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "toolkit/base/bytes.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/art.h"
#include "toolkit/draw/datafile.h"
#include "toolkit/draw/skin_values.h"
#include "toolkit/skin/skin.h"
#include "toolkit/skin/skin_file.h"

namespace zel {
namespace {

// Pixels are those of the object, which is drawn at `scale` times its size.
int Read(const SectionFile& file, const ObjectNumber& number, const char* name,
         const Datafile::Object& object, int scale) {
  constexpr int kUnset = -1;
  constexpr int kDecimal = 10;
  const int inSkinFile = ReadSkinInt(file, number.section, KeyOf(name, number).c_str(), kUnset);
  if (inSkinFile != kUnset)
    return number.isPixels && inSkinFile > 0 ? inSkinFile * scale : inSkinFile;

  const std::string text = object.Property(number.property);
  if (text.empty()) return number.fallback;
  const long value = std::strtol(text.c_str(), nullptr, kDecimal);
  return -kLargestSkinValue <= value && value <= kLargestSkinValue ? static_cast<int>(value)
                                                                   : number.fallback;
}

// Allegro looks the 64 values that a channel may have up in a table.
bool IsSound(const RGB& color) { return std::max({color.r, color.g, color.b}) < 64; }

using PlaceTable = std::array<std::uint8_t, PAL_SIZE>;

// For each place in a former palette the one of that colour in the current one. The first is that
// of the mask colour in both.
PlaceTable FindPlaces(const RGB* former) {
  PALETTE current;
  get_palette(current);
  PlaceTable places{};
  for (std::size_t i = 1; i < places.size(); ++i)
    places[i] =
        static_cast<std::uint8_t>(bestfit_color(current, former[i].r, former[i].g, former[i].b));
  return places;
}

void MovePixels(const SkinBitmap& holder, const PlaceTable& places) {
  BITMAP* picture = holder.GetBitmap();
  if (!holder.IsOwned() || bitmap_color_depth(picture) != 8) return;
  for (int y = 0; y < picture->h; ++y)
    for (int x = 0; x < picture->w; ++x)
      putpixel(picture, x, y, places[static_cast<std::size_t>(getpixel(picture, x, y))]);
}

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

Size ReadTile(const SectionFile& file, const char* element, const Datafile::Object& picture,
              int scale) {
  const auto& [width, height] = kTileNumbers;
  return {Read(file, width, element, picture, scale), Read(file, height, element, picture, scale)};
}

Error Skin::LoadData(const char* path) {
  if (!path || !IsFile(path)) return kSkinDataError;
  const Art art = FindArt(path, CurrentZoom());
  Datafile datafile;
  if (!datafile.Load(art.path.c_str())) return kLoadError;
  // Before the pictures are made: those with a palette have the colours of this one.
  PALETTE former;
  get_palette(former);
  if (TakePalette(datafile) && get_color_depth() == 8) {
    // What was drawn so far has the colours of another palette.
    RecomputeNamedColors();
    if (isBuiltinYet_)
      Reset();
    else
      FollowPalette(former);
  }
  for (int id = 0; id < kElementCount; ++id) {
    const char* name = kElementNames[id];
    const Datafile::Object* object = datafile.Find(name, DAT_BITMAP);
    if (!object) continue;
    bitmaps[id]->Take(MakePicture(*object));
    isBrought_[id] = true;
    bitmaps[id]->SetTileSize(ReadTile(file_, name, *object, art.scale));
    ZoomElement(id, art.scale);
  }
  return kNoError;
}

void Skin::FollowPalette(const RGB* former) {
  const PlaceTable places = FindPlaces(former);
  for (const auto& element : bitmaps) MovePixels(*element, places);
  for (const auto& cursor : cursors)
    for (const SkinBitmap& frame : cursor->GetFrames()) MovePixels(frame, places);
  const auto move = [&places](Color& color) {
    if (color.IsSet()) color = places[static_cast<std::size_t>(color & 0xFF)];
  };
  std::for_each(std::begin(colors), std::end(colors), move);
  for (auto* sets : {&fontColor, &shadowColor})
    for (auto& states : *sets) std::for_each(std::begin(states), std::end(states), move);
  for (Color* color : {&boxBackColor, &tooltipBackColor, &tooltipBorderColor}) move(*color);
  for (Color* color : menu.Colors()) move(*color);
}

Error Skin::LoadCursors(const char* path) {
  if (!path || !IsFile(path)) return kFileNotFoundError;
  const Art art = FindArt(path, CurrentZoom());
  const CursorShadow look = CursorShadow::Read(file_);
  for (const auto& cursor : cursors) cursor->SetShadow(look);
  Datafile datafile;
  if (!datafile.Load(art.path.c_str())) return kLoadError;
  const auto& [hotspotX, hotspotY, frames, frameDuration] = kPointerNumbers;
  for (int i = 0; i < kCursorCount; ++i) {
    const char* name = kCursorNames[i];
    const Datafile::Object* object = datafile.Find(name, DAT_BITMAP);
    if (!object) continue;
    const BitmapPtr picture = MakePicture(*object);
    const auto read = [&](const ObjectNumber& number) {
      return Read(file_, number, name, *object, art.scale);
    };
    const auto zoomed = [&](const ObjectNumber& number) {
      return static_cast<int>(std::lround(read(number) * CurrentZoom() / art.scale));
    };
    cursors[i]->Create(SkinBitmap(picture.get()), read(frames), art.scale);
    cursors[i]->SetHotspot(zoomed(hotspotX), zoomed(hotspotY));
    cursors[i]->SetAnimationInterval(read(frameDuration));
  }
  return kNoError;
}

}  // namespace zel
