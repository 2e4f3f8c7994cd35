#include "toolkit/skin/skin.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/process.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/scaling.h"
#include "toolkit/skin/builtin_look.h"
#include "toolkit/skin/skin_file.h"

namespace zel {
namespace {

template <class Held>
void MakeHolders(std::vector<std::unique_ptr<Held>>& holders, int count) {
  for (int i = 0; i < count; ++i) holders.push_back(std::make_unique<Held>());
}

bool IsBuiltinName(const char* name) {
  return ugetc(name) == 0 || ustrcmp(name, Ascii("default")) == 0;
}

bool IsIndex(int index, int count) { return index >= 0 && index < count; }

void ColorizePicture(BITMAP* picture, Color tint, int alpha) {
  for (int y = 0; y < picture->h; ++y) {
    for (int x = 0; x < picture->w; ++x) {
      const int before = getpixel(picture, x, y);
      if (before == magenta) continue;
      // Without an alpha value, which makes -1, that is no colour, of opaque white.
      Color pixel{getr(before), getg(before), getb(before)};
      pixel.Colorize(tint, alpha);
      putpixel(picture, x, y, pixel);
    }
  }
}

struct SkinPart {
  static constexpr int kLayer = Process::kSkin;

  // It is the current one no longer while it is destroyed.
  ~SkinPart() { current.reset(); }

  std::unique_ptr<Skin> current;
  ShapeIsGone shapeIsGone = nullptr;
};

SkinPart& Once() { return process.Of<SkinPart>(); }

}  // namespace

Skin::Skin(const char* name) {
  MakeHolders(bitmaps, kBitmaps);
  MakeHolders(cursors, kCursors);
  MakeHolders(fonts, kFonts);
  for (auto& states : fontColor) std::fill(std::begin(states), std::end(states), black);
  if (name && IsBuiltinName(name))
    Skin::Reset();
  else
    error = Skin::Load(name);
}

Skin::~Skin() {
  const ShapeIsGone shapeIsGone = Once().shapeIsGone;
  if (!shapeIsGone) return;
  const Skin* current = CurrentSkin();
  const Skin* next = current != this ? current : nullptr;
  for (std::size_t i = 0; i < cursors.size(); ++i)
    shapeIsGone(cursors[i].get(), next ? next->cursors[i].get() : nullptr);
}

Error Skin::LoadSamples(const char*) { return kNoError; }

void Skin::GenerateDefaultBitmaps() {
  for (int id = 0; id < kElementCount; ++id) GenerateDefaultBitmap(id);
}

void Skin::GenerateDefaultBitmap(int id) {
  if (!IsIndex(id, kElementCount)) return;
  DrawBuiltinElement(*bitmaps[id], id, colors);
  ZoomElement(id, 1 / pictureScale_);
}

void Skin::GenerateMissingBitmaps() {
  for (int id = 0; id < kElementCount; ++id)
    if (!isBrought_[id]) GenerateDefaultBitmap(id);
}

void Skin::ZoomElement(int id, double scale) {
  SkinBitmap& element = *bitmaps[id];
  const double factor = CurrentZoom() / scale;
  if (factor == 1 || element.IsEmpty()) return;
  const Size stored = element.GetTileSize();
  Size tile = stored;
  element.Take(ScaledFrames(element.GetBitmap(), kElementGrids[id], &tile, factor));
  // Panels with a title take it as it is stored.
  if (id == PANEL_RIDGE)
    tile = {stored.w < 0 ? stored.w : tile.w, stored.h < 0 ? stored.h : tile.h};
  element.SetTileSize(tile);
}

void Skin::ResetSamples() {}

void Skin::ResetCursors() {
  for (int i = MOUSE_CROSSHAIR; i < kCursorCount; ++i) cursors[i]->CreateDefault();
}

void Skin::ResetFonts() {
  for (int i = 0; i < kSkinFonts; ++i) fonts[i]->Reset();
}

void Skin::ResetColors() {
  ResetNamedColors(*this);
  for (int set = 0; set < kTextSetCount; ++set) {
    for (int state = 0; state < kDrawStates; ++state) {
      const bool disabled = state == kDisabled;
      fontColor[set][state] = colors[disabled ? kDisable : kFontFace];
      shadowColor[set][state] = disabled ? colors[kShad1] : Color{};
    }
  }
  fontColor[kHyperText][kNormal] = Color{0, 0, 128};
  for (const DrawState state : {kSelected, kFocused})
    fontColor[kHyperText][state] = Color{128, 0, 128};
}

void Skin::ResetControls() {
  constexpr Size kNoTileSize{-1, -1};
  for (const auto& element : bitmaps) element->SetTileSize(kNoTileSize);
  ResetNumbers(*this);
  menu = {};
  listHeight = 0;
  boxBackColor = colors[kFace];
  tooltipBackColor = Color{255, 255, 192};
  tooltipBorderColor = black;
}

Error Skin::Load(const char* path) {
  error = kNoError;
  if (!path || !IsFile(path)) return error = kSkinFileError;
  const std::string name = path;  // `path` may be the text in skinFile
  file_ = UseConfigFile(name.c_str());
  Reset();
  skinFile = std::make_unique<std::string>(name);
  isBuiltinYet_ = true;
  error = ReadSkinFile(*this, file_, name.c_str());
  isBuiltinYet_ = false;
  return error;
}

void Skin::Reload() {
  if (skinFile && !IsBuiltinName(skinFile->c_str()))
    Load(skinFile->c_str());
  else
    Reset();
}

void Skin::Unload() {
  for (auto& holder : bitmaps) holder->Destroy();
  for (auto& cursor : cursors) cursor->Free();
  for (auto& font : fonts) font->Reset();
}

void Skin::Reset() {
  pictureScale_ = 1;
  std::fill(std::begin(isBrought_), std::end(isBrought_), false);
  Unload();
  ResetColors();
  ResetControls();
  ResetFonts();
  ResetCursors();
  ResetSamples();
  GenerateDefaultBitmaps();
}

void Skin::Colorize(Color tint, int alpha) {
  Reload();
  for (const auto& element : bitmaps)
    if (BITMAP* picture = element->GetBitmap()) ColorizePicture(picture, tint, alpha);
  for (Color& color : colors) color.Colorize(tint, alpha);
}

Error Skin::SetCursorBitmap(const char* path, int index, int frames, int duration) {
  if (!IsIndex(index, kCursors)) return kIndexError;
  SkinBitmap picture;
  if (const Error result = picture.Load(path, kMemoryBitmap); result.IsError()) return result;
  cursors[index]->Create(picture, frames);
  cursors[index]->SetAnimationInterval(duration);
  return kNoError;
}

Error Skin::SetFontFile(const char* path, int index, int size) {
  if (!IsIndex(index, kFonts)) return kIndexError;
  const Error result = fonts[index]->Load(path);
  if (!result.IsError()) SetFontSize(*fonts[index], size);
  return result;
}

void Skin::SetFontSize(Font& font, int size) {
  if (font.SetSize(Zoomed(size)) != 0 && IsZoomed()) font.SetSize(size);
}

void Skin::DumpBitmaps() const {
  constexpr Size kSheet{320, 480};
  constexpr int kGap = 1;
  SkinBitmap sheet(kSheet.w, kSheet.h, kMemoryBitmap);
  sheet.clear_to_color(yellow);
  Point at;
  int rowHeight = 0;
  for (int id = 0; id < kElementCount; ++id) {
    const SkinBitmap& element = *bitmaps[id];
    if (at.x + element.Width() > kSheet.w) {
      at = {0, at.y + rowHeight + kGap};
      rowHeight = 0;
    }
    element.blit(sheet, 0, 0, at.x, at.y, element.Width(), element.Height());
    at.x += element.Width() + kGap;
    rowHeight = std::max(rowHeight, element.Height());
  }
  sheet.Save(Ascii("log.bmp"));
}

Skin* CurrentSkin() { return Once().current.get(); }

void SetCurrentSkin(std::unique_ptr<Skin> skin) {
  // The one before goes when the new one is there to stand in for it.
  std::exchange(Once().current, std::move(skin));
}

void TellOfGoneShapes(ShapeIsGone told) { Once().shapeIsGone = told; }

}  // namespace zel
