#include "tools/skin/new_skin.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <utility>
#include <vector>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font.h"
#include "toolkit/skin/elements.h"
#include "tools/checker/findings.h"
#include "tools/checker/skin_check.h"
#include "tools/skin/files.h"
#include "tools/skin/look.h"
#include "tools/skin/look_description.h"
#include "tools/skin/pack.h"
#include "tools/skin/pictures.h"
#include "tools/skin/project.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr int kDepth = 32;
constexpr int kTrueColor = 24;
constexpr int kUsualSize = 18;

std::string Lower(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return name;
}

// The same family's bold face, where it lies beside.
std::string BoldOf(const std::filesystem::path& font) {
  const std::string stem = font.stem().string(), extension = font.extension().string();
  constexpr const char* kRegular = "-Regular";
  const std::string family =
      stem.ends_with(kRegular) ? stem.substr(0, stem.size() - std::string{kRegular}.size()) : stem;
  const std::string bold = font.parent_path() / (family + "-Bold" + extension);
  return IsFile(bold.c_str()) ? bold : font.string();
}

class Maker {
 public:
  Maker(const std::string& directory, const SkinWishes& wishes, Complaints& complaints)
      : directory_{directory}, wishes_{wishes}, complaints_{complaints} {}

  void Run() {
    set_color_depth(kDepth);
    RecomputeNamedColors();
    NewDirectory made;
    if (!ReadWishes() || !FindFonts() || !made.Make(directory_, complaints_)) return;
    const Look look{seed_};
    for (const std::string& font : fonts_) CopyFont(font);
    for (const std::string& font : fallbacks_) CopyFont(font);
    DrawElements(look);
    DrawPointers(look);
    SaveProject(look);
    if (!complaints_.HasErrors()) PackSkin(directory_, directory_, complaints_);
    if (complaints_.HasErrors()) made.Undo();
  }

 private:
  // Takes over what a skin says.
  bool ReadWishes() {
    SectionFile skin;
    if (!wishes_.from.empty()) {
      if (const std::string why = WhyNoFile(wishes_.from); !why.empty()) {
        complaints_.Add("--from " + Readable(wishes_.from), 0, why);
        return false;
      }
      const std::string text = ReadText(wishes_.from.c_str(), kLongestConfigFile);
      skin = SectionFile::FromUtf8(text);
      if (!DescribesSkin(text)) {
        complaints_.Add("--from " + Readable(wishes_.from), 0, "is no description of a skin");
        return false;
      }
    }
    const auto color = [&skin](const std::string& wish, const char* section, const char* key) {
      return ReadColor(wish.empty() ? skin.Find(section).GetText(key) : wish);
    };
    seed_.ground = color(wishes_.ground, "COLORS", "face");
    if (!seed_.ground.IsSet()) seed_.ground = Color{40, 45, 55};
    seed_.text = color(wishes_.text, "COLORS", "fontface");
    seed_.accent = color(wishes_.accent, "ENTRY", "fieldBorderColor");
    if (!seed_.accent.IsSet()) seed_.accent = color("", "COLORS", "focus");
    const int size = wishes_.size ? wishes_.size : skin.Find("FONT0").GetInt("size", kUsualSize);
    seed_.size = std::clamp(size, kSmallestText, kLargestText);
    const std::filesystem::path beside = std::filesystem::path{wishes_.from}.parent_path();
    if (const char* font = skin.Find("FONT0").GetText("file", nullptr)) fonts_[0] = beside / font;
    if (const char* font = skin.Find("FONT1").GetText("file", nullptr)) fonts_[1] = beside / font;
    for (const std::string& font : ListParts(skin.Find("FONT0").GetText("fallback")))
      fallbacks_.push_back(beside / font);
    return true;
  }

  bool FindFonts() {
    constexpr const char* kUsual[] = {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                                      "/etc/zel/skin/fonts/DejaVuSans.ttf"};
    std::string option = "--from " + wishes_.from;
    if (!wishes_.font.empty()) {
      option = "--font " + wishes_.font;
      fonts_ = {wishes_.font, BoldOf(wishes_.font)};
    }
    for (const char* usual : kUsual)
      if (fonts_[0].empty() && IsFile(usual)) fonts_ = {usual, BoldOf(usual)};
    if (fonts_[1].empty()) fonts_[1] = fonts_[0];
    std::erase_if(fallbacks_, [](const std::string& font) { return !IsFile(font.c_str()); });
    EngineInit();
    for (const std::string& font : fonts_) {
      if (Font face; !font.empty() && IsFile(font.c_str()) && !face.Load(font.c_str()).IsError())
        continue;
      if (font.empty())
        complaints_.Add("--font", 0, "is missing, and this system has no DejaVuSans.ttf");
      else
        complaints_.Add(Readable(option), 0, Readable(font) + " is no font that can be read");
      return false;
    }
    return true;
  }

  static std::string Placed(const std::string& font) {
    return "fonts/" + std::filesystem::path{font}.filename().string();
  }

  void CopyFont(const std::string& font) {
    const std::string target = directory_ + '/' + Placed(font);
    // Where one file cannot be written, as on a full disk, no other can.
    if (complaints_.HasErrors() || IsFile(target.c_str())) return;
    CopyFiles({std::filesystem::path{font}.filename()}, std::filesystem::path{font}.parent_path(),
              directory_ + "/fonts", complaints_);
  }

  // A list of a part at all sizes. `draw` gets the picture's number and scale.
  template <class Draw>
  void DrawPart(SkinPart part, Draw draw) {
    const PartKind& kind = KindOf(part);
    for (int i = 0; i < kind.nameCount; ++i) {
      const std::string file = std::string{kind.directory} + '/' + Lower(kind.names[i]) + ".png";
      PictureList& first = project_.List(part, 1);
      first.isThere = true;
      first.pictures.push_back({kind.names[i], file, {}});
      for (int scale = 1; scale <= kSkinScales; ++scale) {
        if (complaints_.HasErrors()) return;
        const BitmapPtr picture = draw(i, scale, first.pictures.back().numbers);
        const std::string path = directory_ + '/' + AtScale(file, scale);
        if (scale == 1) Count(picture.get());
        if (MakeDirectoryOf(path, complaints_) && !SavePicture(path, picture.get(), {}))
          complaints_.Add(path, 0, WhyNotWritten());
      }
    }
  }

  void DrawElements(const Look& look) {
    DrawPart(kElementPart, [&look](int id, int scale, std::vector<int>& numbers) {
      const Size frame = look.FrameOf(id), grid = kElementGrids[id], tile = look.TileOf(id);
      numbers = {tile.w, tile.h};
      BitmapPtr picture{
          create_bitmap_ex(kTrueColor, frame.w * grid.w * scale, frame.h * grid.h * scale)};
      for (int row = 0; row < grid.h; ++row)
        for (int column = 0; column < grid.w; ++column) {
          Painting painting{frame, scale};
          look.Draw(painting, id, column, row);
          painting.PutOn(picture.get(), column * frame.w * scale, row * frame.h * scale,
                         look.Colors().face);
        }
      return picture;
    });
  }

  void DrawPointers(const Look& look) {
    const int side = look.Units(kPointerSize);
    DrawPart(kPointerPart, [side](int id, int scale, std::vector<int>& numbers) {
      const PointerLook& shape = PointerLookOf(id);
      const auto place = [side](double at) { return static_cast<int>(at * side / kPointerSize); };
      numbers = {place(shape.hotspot.x), place(shape.hotspot.y), shape.frames, shape.duration};
      BitmapPtr picture{create_bitmap_ex(kTrueColor, side * shape.frames * scale, side * scale)};
      for (int frame = 0; frame < shape.frames; ++frame) {
        Painting painting{{side, side}, scale};
        shape.draw(painting, frame, side);
        painting.PutOn(picture.get(), frame * side * scale, 0, Color{255, 255, 255});
      }
      return picture;
    });
  }

  void Count(BITMAP* picture) {
    for (int y = 0; y < picture->h; ++y)
      for (int x = 0; x < picture->w; ++x) ++counts_[Reduced(getpixel(picture, x, y))];
  }
  static std::array<int, 3> Reduced(int pixel) {
    return {getr24(pixel) >> 2, getg24(pixel) >> 2, getb24(pixel) >> 2};
  }

  // For modes with 256 colours: the mask, what the pictures have most of, and a bit of everything,
  // for icons.
  SkinPalette MakePalette(const Look& look) const {
    constexpr std::size_t kOfPictures = 120;
    constexpr int kSteps = 5, kHighest = 63;
    std::vector<std::array<int, 3>> chosen{{kHighest, 0, kHighest}};
    const auto add = [&chosen](const std::array<int, 3>& color) {
      if (chosen.size() < PAL_SIZE &&
          std::find(chosen.begin(), chosen.end(), color) == chosen.end())
        chosen.push_back(color);
    };
    for (const Color& color : LookTextColors(look.Colors()))
      add(Reduced(makecol24(color.r(), color.g(), color.b())));
    std::vector<std::pair<long, std::array<int, 3>>> often;
    for (const auto& [color, count] : counts_) often.emplace_back(-count, color);
    std::sort(often.begin(), often.end());
    for (const auto& [count, color] : often)
      if (chosen.size() < kOfPictures) add(color);
    for (int r = 0; r <= kSteps; ++r)
      for (int g = 0; g <= kSteps; ++g)
        for (int b = 0; b <= kSteps - 1; ++b)
          add({r * kHighest / kSteps, g * kHighest / kSteps, b * kHighest / (kSteps - 1)});
    for (const auto& [count, color] : often) add(color);
    SkinPalette palette{};
    for (std::size_t i = 0; i < chosen.size(); ++i) {
      const auto part = [&](int at) { return static_cast<unsigned char>(chosen[i][at]); };
      palette.colors[i] = {part(0), part(1), part(2), 0};
    }
    return palette;
  }

  void SaveProject(const Look& look) {
    const std::string palette = std::string{KindOf(kElementPart).directory} + "/palette.bmp";
    if (complaints_.HasErrors()) return;
    if (!SavePalette(directory_ + '/' + palette, MakePalette(look)))
      complaints_.Add(directory_ + '/' + palette, 0, WhyNotWritten());
    if (complaints_.HasErrors()) return;
    project_.List(kElementPart, 1).pictures.push_back({kPaletteName, palette, {}});
    std::string name = DirectoryName(directory_);
    const bool isPlain = std::all_of(name.begin(), name.end(), [](unsigned char c) {
      return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.';
    });
    if (name.empty() || name.starts_with('.') || !isPlain) name = "my";
    project_.name = name + ".skin";
    project_.packedFrom = 3;
    std::vector<std::string> fallbacks;
    for (const std::string& font : fallbacks_) fallbacks.push_back(Placed(font));
    project_.description = DescribeLook(
        look, {wishes_.title.empty() ? name : wishes_.title, name + ".dat", name + "-pointers.dat",
               Placed(fonts_[0]), Placed(fonts_[1]), fallbacks});
    WriteNew(directory_ + '/' + kProjectFile, ProjectText(project_), complaints_);
  }

  std::string directory_;
  SkinWishes wishes_;
  Complaints& complaints_;
  LookSeed seed_;
  std::array<std::string, 2> fonts_;  // regular and bold
  std::vector<std::string> fallbacks_;
  Project project_;
  std::map<std::array<int, 3>, long> counts_;  // of pixels, in the colours of a palette
};

}  // namespace

Color ReadColor(const std::string& text) {
  constexpr unsigned kHighest = 255;
  unsigned r = 0, g = 0, b = 0;
  int end = 0;
  const bool isHex =
      text.size() == 7 && std::sscanf(text.c_str(), "#%2x%2x%2x%n", &r, &g, &b, &end) == 3;
  if (!isHex) {
    if (text.find('-') != std::string::npos ||
        std::sscanf(text.c_str(), "%3u , %3u , %3u %n", &r, &g, &b, &end) != 3)
      return {};
  }
  if (end != static_cast<int>(text.size()) || std::max({r, g, b}) > kHighest) return {};
  return Color{static_cast<int>(r), static_cast<int>(g), static_cast<int>(b)};
}

void NewSkin(const std::string& directory, const SkinWishes& wishes, Complaints& complaints) {
  Maker{directory, wishes, complaints}.Run();
}

}  // namespace zel
