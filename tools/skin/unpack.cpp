#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <set>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/draw/datafile.h"
#include "toolkit/draw/skin_values.h"
#include "tools/checker/findings.h"
#include "tools/checker/lines.h"
#include "tools/checker/skin_check.h"
#include "tools/skin/files.h"
#include "tools/skin/pack.h"
#include "tools/skin/pictures.h"
#include "tools/skin/project.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr int kTrueColor = 24;

std::string Lower(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return name;
}

// Likewise as the reader of skins does it.
int NumberOf(const Datafile::Object& object, const ObjectNumber& number) {
  const std::string text = object.Property(number.property);
  if (text.empty()) return number.fallback;
  const long value = std::strtol(text.c_str(), nullptr, 10);
  return -kLargestSkinValue <= value && value <= kLargestSkinValue ? static_cast<int>(value)
                                                                   : number.fallback;
}

std::vector<int> NumbersOf(const Datafile::Object& object, SkinPart part) {
  std::vector<int> numbers;
  std::size_t said = 0;
  for (const ObjectNumber& number : KindOf(part).numbers) {
    numbers.push_back(NumberOf(object, number));
    if (!object.Property(number.property).empty()) said = numbers.size();
  }
  numbers.resize(said);
  return numbers;
}

std::optional<SkinPalette> PaletteOf(const Datafile& data) {
  const Datafile::Object* object = data.Find(kPaletteName, DAT_PALETTE);
  SkinPalette palette;
  if (!object || object->content.size() < sizeof palette.colors) return std::nullopt;
  std::memcpy(palette.colors, object->content.data(), sizeof palette.colors);
  constexpr int kHighest = 63;
  const bool isSound =
      std::all_of(std::begin(palette.colors), std::end(palette.colors), [](const RGB& color) {
        return std::max({color.r, color.g, color.b}) <= kHighest;
      });
  return isSound ? std::optional{palette} : std::nullopt;
}

// The object's picture: places in a palette as they are, all else in 24 bits.
BitmapPtr PictureOf(const Datafile::Object& object) {
  ByteReader content{object.content};
  const int bits = content.Big16(), w = content.Big16(), h = content.Big16();
  if (bits != 8) {
    set_color_depth(kTrueColor);
    return MakePicture(object);
  }
  BitmapPtr picture{create_bitmap_ex(bits, w, h)};
  const auto row = static_cast<std::size_t>(w);
  for (int y = 0; picture && y < h; ++y)
    std::memcpy(picture->line[y], content.Take(row).data(), row);
  return picture;
}

class Unpacker {
 public:
  Unpacker(const std::string& skin, const std::string& directory, Complaints& complaints)
      : skin_{skin}, directory_{directory}, complaints_{complaints} {
    std::copy(std::begin(default_palette), std::end(default_palette), palette_.colors);
  }

  void Run() {
    if (const std::string why = WhyNoFile(skin_); !why.empty())
      return complaints_.Add(skin_, 0, why);
    const Bytes bytes = ReadBytes(skin_.c_str(), kLongestConfigFile);
    project_.description = WithoutProject({bytes.begin(), bytes.end()});
    if (!DescribesSkin(project_.description))
      return complaints_.Add(skin_, 1, "is no description of a skin");
    project_.name = std::filesystem::path{skin_}.filename();
    for (const SkinPart part : {kElementPart, kPointerPart})
      if (!ReadData(part)) return;
    NewDirectory made;
    if (!made.Make(directory_, complaints_)) return;
    Write();
    if (complaints_.HasErrors()) made.Undo();
  }

 private:
  void Write() {
    for (const auto& [path, picture] : pictures_)
      if (MakeDirectoryOf(path, complaints_) && !SavePicture(path, picture.get(), palette_))
        return complaints_.Add(path, 0, WhyNotWritten());
    for (const auto& [path, palette] : palettes_)
      if (MakeDirectoryOf(path, complaints_) && !SavePalette(path, palette))
        return complaints_.Add(path, 0, WhyNotWritten());
    const std::string from = std::filesystem::path{skin_}.parent_path();
    CopyFiles(FontsOf(project_.description), from.empty() ? "." : from, directory_, complaints_);
    if (!complaints_.HasErrors())
      WriteNew(directory_ + '/' + kProjectFile, ProjectText(project_), complaints_);
  }

  int LineOf(const char* key) const {
    const SectionFile file = SectionFile::FromUtf8(project_.description);
    const SectionFile::Entry* entry = file.Find("Skin").Find(key);
    return entry ? entry->line : 1;
  }

  std::string Beside(const std::string& file) const {
    return std::filesystem::path{skin_}.parent_path() / file;
  }

  bool ReadData(SkinPart part) {
    const char* key = KindOf(part).fileKey;
    const std::string name = DataFileOf(project_.description, part);
    if (name.empty()) return true;
    if (!StaysBelow(name)) {
      complaints_.Add(
          skin_, LineOf(key),
          Readable(name) + " is not beside the description; copy both to one directory");
      return false;
    }
    for (int scale = 1; scale <= kSkinScales; ++scale) {
      const std::string path = Beside(AtScale(name, scale));
      if (scale > 1 && !IsFile(path.c_str())) continue;
      Datafile data;
      if (!IsFile(path.c_str()))
        complaints_.Add(skin_, LineOf(key), "there is no file " + Readable(path));
      else if (!data.Load(path.c_str()))
        complaints_.Add(path, 0, "is no datafile that can be read");
      else
        ReadList(data, part, scale);
      if (complaints_.HasErrors()) return false;
    }
    return true;
  }

  void ReadList(const Datafile& data, SkinPart part, int scale) {
    if (part == kElementPart && scale == 1)
      if (const auto palette = PaletteOf(data)) palette_ = *palette;
    PictureList& list = project_.List(part, scale);
    list.isThere = true;
    std::set<std::string> seen;
    for (const Datafile::Object& object : data.Objects()) {
      const std::string name = Upper(object.name);
      if (!seen.insert(name).second) continue;  // of each name the first counts
      if (part == kElementPart && name == kPaletteName)
        AddPalette(data, list, scale);
      else if (object.type == DAT_BITMAP && IsKnown(part, name))
        AddPicture(object, name, part, list, scale);
    }
    if (project_.packedFrom == 0 && data.IsPacked()) project_.packedFrom = scale;
  }

  static bool IsKnown(SkinPart part, const std::string& name) {
    const PartKind& kind = KindOf(part);
    return std::find(kind.names, kind.names + kind.nameCount, name) != kind.names + kind.nameCount;
  }

  void AddPicture(const Datafile::Object& object, const std::string& name, SkinPart part,
                  PictureList& list, int scale) {
    BitmapPtr picture = PictureOf(object);
    if (!picture) return complaints_.Add(skin_, 0, "there is no memory for " + name);
    const char* extension = bitmap_color_depth(picture.get()) == 8 ? ".bmp" : ".png";
    const std::string file =
        AtScale(std::string{KindOf(part).directory} + '/' + Lower(name) + extension, scale);
    pictures_.emplace_back(directory_ + '/' + file, std::move(picture));
    list.pictures.push_back({name, file, NumbersOf(object, part)});
  }

  void AddPalette(const Datafile& data, PictureList& list, int scale) {
    const auto palette = PaletteOf(data);
    if (!palette) return;
    const std::string own = std::string{KindOf(kElementPart).directory} + "/palette.bmp";
    const bool isSame = scale > 1 && *palette == palette_ && !palettes_.empty();
    const std::string file = isSame ? own : AtScale(own, scale);
    if (!isSame) palettes_.emplace_back(directory_ + '/' + file, *palette);
    list.pictures.push_back({kPaletteName, file, {}});
  }

  std::string skin_, directory_;
  Complaints& complaints_;
  Project project_;
  SkinPalette palette_;
  std::vector<std::pair<std::string, BitmapPtr>> pictures_;
  std::vector<std::pair<std::string, SkinPalette>> palettes_;
};

}  // namespace

void UnpackSkin(const std::string& skin, const std::string& directory, Complaints& complaints) {
  Unpacker{skin, directory, complaints}.Run();
}

}  // namespace zel
