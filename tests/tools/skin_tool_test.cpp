#include <map>
#include <random>

#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/skin/skin.h"
#include "tools/skin/look.h"
#include "tools/skin/new_skin.h"
#include "tools/skin/pack.h"
#include "tools/skin/sheet.h"

namespace zel {
namespace {

std::string Big(unsigned number, int bytes) {
  std::string text;
  while (bytes-- > 0) text += static_cast<char>(number >> 8 * bytes);
  return text;
}

std::string Object(const std::string& type, const std::string& content, const std::string& name,
                   const std::map<std::string, std::string>& properties = {}) {
  std::string object = "propNAME" + Big(name.size(), 4) + name;
  for (const auto& [id, text] : properties) object += "prop" + id + Big(text.size(), 4) + text;
  return object + type + Big(content.size(), 4) + Big(content.size(), 4) + content;
}

// A picture of all kinds of pixels.
std::string Picture(int bits, unsigned w, unsigned h) {
  const unsigned bytes = bits == 8 ? 1 : bits == 15 || bits == 16 ? 2 : bits == -32 ? 4 : 3;
  std::string content = Big(bits, 2) + Big(w, 2) + Big(h, 2);
  for (unsigned i = 0; i < w * h * bytes; ++i)
    content += static_cast<char>(i / bytes % 5 == 0 ? (i % bytes == 1 ? 0 : 255) : i * 37);
  return content;
}

std::string Datafile(const std::vector<std::string>& objects) {
  std::string data = "slh.ALL." + Big(objects.size(), 4);
  for (const std::string& object : objects) data += object;
  return data;
}

struct SkinToolTest : AllegroFixture {
  SkinToolTest() {
    InstallBitmapGuard();
    RegisterPictureFormats();
    EngineInit();
  }

  static std::string Said(const Complaints& complaints, const std::string& directory) {
    std::string said;
    for (std::string line : complaints.Lines()) {
      for (std::size_t at; (at = line.find(directory)) != std::string::npos;)
        line.erase(at, directory.size() + 1);
      said += line + '\n';
    }
    return said;
  }
  std::string Pack(const std::string& project, const std::string& target) const {
    Complaints complaints;
    PackSkin(place.Path(project), place.Path(target), complaints);
    return Said(complaints, place.Path());
  }
  std::string Unpack(const std::string& skin, const std::string& project) const {
    Complaints complaints;
    UnpackSkin(skin.starts_with('/') ? skin : place.Path(skin), place.Path(project), complaints);
    return Said(complaints, place.Path());
  }
  std::map<std::string, std::string> FilesOf(const std::string& directory) const {
    std::map<std::string, std::string> files;
    for (const auto& file : std::filesystem::recursive_directory_iterator{place.Path(directory)})
      if (file.is_regular_file())
        files[file.path().lexically_relative(place.Path(directory))] = ReadFile(file.path());
    return files;
  }
  // Everything of a skin that a datafile says.
  static std::vector<std::vector<int>> Seen(const std::string& path, int depth, double zoom) {
    set_palette(default_palette);
    UseDepth(depth);
    SetZoom(zoom);
    const Skin skin{path.c_str()};
    EXPECT_FALSE(skin.GetError().IsError()) << path;
    std::vector<std::vector<int>> seen;
    for (int id = 0; id < kElementCount; ++id) {
      seen.push_back(Pixels(skin.bitmaps[id]->GetBitmap()));
      const Size tile = skin.bitmaps[id]->GetTileSize();
      seen.push_back({tile.w, tile.h});
    }
    for (int i = 1; i < kCursorCount; ++i) {
      for (const SkinBitmap& frame : skin.cursors[i]->GetFrames())
        seen.push_back(Pixels(frame.GetBitmap()));
      seen.push_back({skin.cursors[i]->GetHotspot().x, skin.cursors[i]->GetHotspot().y});
    }
    return seen;
  }

  TempDir place;
};

TEST_F(SkinToolTest, ShippedSkinsComeBackToTheByte) {
  const std::string shipped = std::filesystem::absolute("data/skin");
  for (const std::string name : {"zel", "contrast"}) {
    ASSERT_EQ(Unpack(shipped + '/' + name + ".skin", name), "");
    ASSERT_EQ(Pack(name, "packed"), "");
    for (const auto& [file, bytes] : FilesOf("packed"))
      EXPECT_TRUE(bytes == ReadFile(shipped + '/' + file)) << file;
    ASSERT_EQ(Unpack("packed/" + name + ".skin", name + "2"), "");
    EXPECT_TRUE(FilesOf(name) == FilesOf(name + "2")) << name;
  }
  EXPECT_EQ(FilesOf("packed").size(), 11u);
  constexpr int kTypeAt = 25, kWithAlpha = 6;  // in a PNG
  EXPECT_EQ(ReadFile(place.Path("zel/elements/wintext.png")).at(kTypeAt), kWithAlpha)
      << "painting programs see holes, not a colour";
}

TEST_F(SkinToolTest, EveryKindOfElementComesBackToThePixel) {
  std::string palette;
  for (int i = 0; i < 256; ++i)
    palette += Big(i % 64 << 24 | i / 4 % 64 << 16 | (63 - i % 64) << 8, 4);
  const std::vector<std::string> first{
      Object("BMP ", Picture(24, 8, 32), "Button", {{"TCKX", "4"}}),
      Object("BMP ", Picture(8, 8, 16), "checkbox", {{"TCKY", "2"}}),
      Object("PAL ", palette, "XTRA_PALETTE"),
      Object("BMP ", Picture(16, 6, 8), "COMBO_BUTTON", {{"TCKX", "3"}, {"TCKY", "2"}}),
      Object("BMP ", Picture(15, 6, 8), "LIST"),
      Object("BMP ", Picture(32, 6, 6), "WINDOW"),
      Object("BMP ", Picture(-32, 6, 6), "BOX"),
      Object("BMP ", Picture(24, 6, 6), "button"),
      Object("info", "who made it", "GRABBER_INFO")};
  const std::vector<std::string> pointers{
      Object("BMP ", Picture(24, 12, 6), "MOUSE_SELECT", {{"FRMS", "2"}, {"FCSX", "3"}}),
      Object("BMP ", Picture(8, 5, 5), "MOUSE_NORMAL"), Object("DATA", "", "MOUSE_MOVE")};
  // Larger ones of other names, tiles and order.
  const std::vector<std::string> second{
      Object("BMP ", Picture(24, 12, 12), "WINDOW", {{"TCKX", "2"}, {"TCKY", "6"}}),
      Object("BMP ", Picture(8, 16, 64), "BUTTON"), Object("PAL ", palette, "XTRA_PALETTE")};
  const std::string text =
      "# Mine\r\n[Skin]\r\nmain_data = art/my.dat\r\ncursors = my.dat\r\n[BUTTON]\r\n"
      "[ELEMENTS]\r\nBUTTON = of another project\r\n[LIST]\r\nf_col1 = 1,2,3\r\n[BOX]";
  std::filesystem::create_directory(place.Path("art"));
  const std::string skin = place.Write("my.skin", text);
  place.Write("art/my.dat", Datafile(first));
  place.Write("art/my@2x.dat", Datafile(second));
  place.Write("art/my@3x.dat", Datafile({}));
  place.Write("my.dat", Datafile(pointers));
  ASSERT_EQ(Unpack("my.skin", "project"), "");
  ExpectText("skin_project", place.Read("project/skin.ini"));
  EXPECT_NE(Pack("project", "packed").find("40 elements are missing"), std::string::npos);
  for (const int depth : {8, 16, 24, 32})
    for (const double zoom : {1.0, 2.0, 3.0})
      EXPECT_TRUE(Seen(skin, depth, zoom) == Seen(place.Path("packed/my.skin"), depth, zoom))
          << depth << ' ' << zoom;
  SetZoom(1);
  ASSERT_EQ(Unpack("packed/my.skin", "again"), "");
  EXPECT_TRUE(FilesOf("project") == FilesOf("again"));
}

TEST_F(SkinToolTest, MistakesAreNamedInTheirPlace) {
  std::filesystem::create_directories(place.Path("mine/none.d"));
  const auto write = [this](const std::string& name, int w, int h) {
    const BitmapPtr picture{create_bitmap_ex(24, w, h)};
    clear_to_color(picture.get(), makecol24(w, h, 0));
    save_bitmap(place.Path("mine/" + name).c_str(), picture.get(), nullptr);
  };
  write("button.bmp", 8, 32);
  write("button@2x.bmp", 16, 64);
  write("odd.bmp", 7, 31);
  place.Write("mine/text.png", "no picture");
  std::filesystem::create_symlink("loop.png", place.Path("mine/loop.png"));
  std::string said = Unpack("my.skin", "none") + Pack("none", "packed");
  for (const std::string& text :
       {ReadFile("tests/texts/skin_mistakes.ini"), std::string{"[ELEMENTS]\n"},
        std::string{"[Skin]\nmain_data=my.dat\nfont=x\n[ELEMENTS]\nBUTTON=button.bmp\n"
                    "LIST=button.bmp\n[FONT0]\nfile=fonts/none.ttf\n"}}) {
    place.Write("mine/skin.ini", text);
    said += "---\n" + Pack("mine", "packed");
  }
  EXPECT_TRUE(std::filesystem::create_directory(place.Path("packed")));  // it is gone
  place.Write("packed/loose.skin", "[Skin]\nmain_data = ../my.dat\n");
  place.Write("packed/bad.skin", "[Skin]\ncursors = bad.skin\n");
  for (const std::string skin : {"packed", "packed/loose.skin", "packed/bad.skin", "mine/odd.bmp"})
    said += "---\n" + Unpack(skin, "new");
  place.Write("packed/plain.skin", "[Skin]\n");
  said +=
      "---\n" + Unpack("packed/plain.skin", "mine") + Unpack("packed/plain.skin", "mine/odd.bmp");
  ExpectText("skin_mistakes", said);
}

TEST_F(SkinToolTest, MissingElementsTakeTheColorsThatTheyAreToldTo) {
  place.Write("my.dat", Datafile({Object("BMP ", Picture(24, 8, 32), "BUTTON")}));
  const std::string colors = "[COLORS]\nface = 200,0,0\n", data = "[Skin]\nmain_data = my.dat\n";
  const auto seen = [&](const std::string& text, int id) {
    UseDepth(32);
    return Pixels(Skin{place.Write("some.skin", text).c_str()}.bitmaps[id]->GetBitmap());
  };
  for (const int id : {CHECKBOX, WINTOP}) {
    EXPECT_EQ(seen(colors + "builtin = 1\n" + data, id), seen(colors, id));
    EXPECT_EQ(seen(colors + data, id), seen("", id));
    EXPECT_NE(seen(colors, id), seen("", id));
  }
  EXPECT_EQ(seen(colors + "builtin = 1\n" + data, BUTTON), seen(data, BUTTON));
}

// The mean colour of each of a picture's frames.
std::string FrameColors(BITMAP* picture, Size grid) {
  std::string text;
  const int w = picture->w / grid.w, h = picture->h / grid.h;
  for (int i = 0; i < grid.w * grid.h; ++i) {
    int sums[4] = {};
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        const int color = getpixel(picture, i % grid.w * w + x, i / grid.w * h + y);
        if (color == bitmap_mask_color(picture)) continue;
        sums[0] += getr(color), sums[1] += getg(color), sums[2] += getb(color), ++sums[3];
      }
    const int count = std::max(1, sums[3]);
    text += ' ' + Join(sums[3], sums[0] / count, sums[1] / count, sums[2] / count);
  }
  return text + '\n';
}

TEST_F(SkinToolTest, NewLooksAreCompleteAndFollowWhatIsWished) {
  SkinWishes wishes;
  wishes.font = std::filesystem::absolute("data/skin/fonts/DejaVuSans.ttf");
  Complaints complaints;
  NewSkin(place.Path("dark"), wishes, complaints);
  wishes = {place.Path("dark/dark.skin"), "Mine", "", "#F2efE9", "", "179,84, 30", 27};
  NewSkin(place.Path("light/"), wishes, complaints);
  EXPECT_EQ(Said(complaints, place.Path()), "");
  for (const std::string name : {"dark", "light"}) {
    UseDepth(32);
    std::string text = place.Read(name + "/skin.ini");
    const Skin skin{place.Path(name + '/' + name + ".skin").c_str()};
    for (int id = 0; id < kElementCount; ++id)
      text += kElementNames[id] + FrameColors(skin.bitmaps[id]->GetBitmap(), kElementGrids[id]);
    for (int i = 0; i < kCursorCount; ++i)
      for (const SkinBitmap& frame : skin.cursors[i]->GetFrames())
        text += kCursorNames[i] + FrameColors(frame.GetBitmap(), {1, 1});
    ExpectText("skin_new_" + name, text);
    EXPECT_EQ(Pack(name, "packed"), "");
    ASSERT_EQ(Unpack("packed/" + name + ".skin", name + "2"), "");
    const auto files = FilesOf(name);
    for (const auto& [file, bytes] : FilesOf(name + "2"))
      EXPECT_TRUE(files.contains(file) && files.at(file) == bytes) << file;
  }
}

TEST_F(SkinToolTest, TextsOfLooksCanBeReadWhateverTheColors) {
  UseDepth(32);
  const Color colors[] = {{0, 0, 0},   {255, 255, 255}, {128, 128, 128},
                          {255, 0, 0}, {0, 0, 90},      {255, 230, 0}};
  for (const Color ground : colors)
    for (const Color text : colors)
      for (const Color accent : colors) {
        const LookColors look{{ground, text, accent}};
        for (const Color below : {look.face, look.sunken, look.panel, look.button})
          for (const Color above : {look.text, look.quiet, look.disabled, look.mark})
            EXPECT_GE(Contrast(above, below), 4.4) << Join(ground, text, accent);
        for (const Color below :
             {look.select, look.focus, look.idle, look.tooltip, look.bar, look.back})
          EXPECT_GE(Contrast(look.text, below), 4.4) << Join(ground, text, accent);
        EXPECT_GE(Contrast(look.onAccent, look.accent), 4.4) << Join(ground, text, accent);
      }
  for (const char* text : {"", "1,2", "1,2,256", "1,2,3,4", "-1,2,3", "#12345", "#12345g", "red"})
    EXPECT_FALSE(ReadColor(text).IsSet()) << text;
}

TEST_F(SkinToolTest, SheetsMarkWhatCannotBeRead) {
  const auto redLines = [this](const std::string& more) {
    Complaints complaints;
    const std::string text = "[Skin]\n[FONT0]\nfile=none\n[TOOLTIP]\n" + more;
    DrawSkinSheet(place.Write("my.skin", text), place.Path("all.png"), complaints);
    EXPECT_TRUE(complaints.Lines().empty());
    UseDepth(32);
    const BitmapPtr sheet{load_bitmap(place.Path("all.png").c_str(), nullptr)};
    const std::vector<int> pixels = Pixels(sheet.get());
    return std::pair{std::count(pixels.begin(), pixels.end(), red) / 3 / 200, sheet->h};
  };
  const auto plain = redLines("");
  EXPECT_EQ(redLines("f_col1 = 255,255,0\nf_col3 = 255,255,0\n"),
            std::pair(plain.first + 2, plain.second));
  EXPECT_GT(redLines("[FONT1]\n[ENTRY]\ncolor=1,2,3\n").second, plain.second);
}

TEST_F(SkinToolTest, PackingTouchesNothingButTheSkinAndNotEvenThatWhenItFails) {
  ASSERT_EQ(Unpack(std::filesystem::absolute("data/skin/contrast.skin"), "project"), "");
  ASSERT_EQ(Pack("project", "packed"), "");
  for (const char* own : {"packed/contrast.skin.old", "packed/contrast.skin.new"})
    place.Write(own, "mine");
  const auto before = FilesOf("packed");
  ASSERT_EQ(Pack("project", "packed"), "");
  EXPECT_TRUE(FilesOf("packed") == before);
  place.Write("project/skin.ini", "[COLORS]\nface = red\n" + place.Read("project/skin.ini"));
  for (const char* target : {"packed", "made/for/it"}) EXPECT_NE(Pack("project", target), "");
  EXPECT_TRUE(FilesOf("packed") == before);
  EXPECT_FALSE(std::filesystem::exists(place.Path("made")));
}

TEST_F(SkinToolTest, DamageDoesNoHarm) {
  std::filesystem::copy("data/skin/cursors.dat", place.Path("cursors.dat"));
  const std::string skin = place.Write("my.skin", "[Skin]\ncursors = cursors.dat\n[COLORS]\n");
  ASSERT_EQ(Unpack("my.skin", "project"), "");
  const std::map<std::string, std::string> files{
      {"my.skin", ReadFile(skin)},
      {"cursors.dat", place.Read("cursors.dat")},
      {"project/skin.ini", place.Read("project/skin.ini")}};
  std::minstd_rand random{1};
  for (int i = 0; i < 60; ++i) {
    for (const auto& [name, bytes] : files) {
      std::string damaged = bytes.substr(0, i % 4 ? std::string::npos : random() % bytes.size());
      for (unsigned flips = i % 4 ? 1 + random() % 8 : 0; flips > 0; --flips)
        damaged[random() % std::min<std::size_t>(damaged.size(), 600)] =
            static_cast<char>(random());
      place.Write(name, damaged);
      std::filesystem::remove_all(place.Path("out"));
      if (name == "project/skin.ini")
        Pack("project", "out");
      else
        EXPECT_TRUE(Unpack("my.skin", "out") != "" || FilesOf("out").contains("skin.ini"))
            << name << i;
      place.Write(name, bytes);
    }
  }
}

}  // namespace
}  // namespace zel
