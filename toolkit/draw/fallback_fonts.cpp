#include "toolkit/draw/fallback_fonts.h"

#include <utility>

#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font_files.h"

namespace zel {
namespace {

// A damaged font may name a letter that it cannot draw, which nobody would see.
bool CanDraw(const EngineFont& font, int character) {
  const FT_Face face = font.ftFace;
  const unsigned index = FT_Get_Char_Index(face, static_cast<FT_ULong>(character));
  return index != 0 && FT_Load_Glyph(face, index, FT_LOAD_DEFAULT) == 0;
}

}  // namespace

FallbackFonts::FallbackFonts() = default;
FallbackFonts::~FallbackFonts() = default;

void FallbackFonts::SetFiles(const std::vector<std::string>& paths) {
  found_.clear();
  files_.clear();
  for (const std::string& path : paths) files_.emplace_back().path = path;
}

void FallbackFonts::Open(File& file) const {
  if (std::exchange(file.isTried, true)) return;
  const std::string found = FindFontFile(file.path.c_str());
  if (found.empty()) return;
  file.face = EngineLoad(LoadFontBytes(found.c_str()));
  if (file.face) EngineSetPixelSize(*file.face, pixelSize_);
}

EngineFont* FallbackFonts::Look(int character) {
  for (File& file : files_) {
    Open(file);
    if (file.face && CanDraw(*file.face, character)) return file.face.get();
  }
  return nullptr;
}

EngineFont* FallbackFonts::Find(int character, int pixelSize) {
  if (files_.empty() || character < ' ') return nullptr;
  if (std::exchange(pixelSize_, pixelSize) != pixelSize) {
    found_.clear();
    for (File& file : files_)
      if (file.face) EngineSetPixelSize(*file.face, pixelSize);
  }
  const auto [place, isNew] = found_.try_emplace(character, nullptr);
  if (isNew) place->second = Look(character);
  return place->second;
}

}  // namespace zel
