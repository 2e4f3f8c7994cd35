#include <map>
#include <random>

#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/skin/skin.h"
#include "tools/skin/pack.h"

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
  EXPECT_EQ(Pack("project", "packed").find("warning"), std::string::npos);
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
  place.Write("packed/loose.skin", "[Skin]\nmain_data = ../my.dat\n");
  place.Write("packed/bad.skin", "[Skin]\ncursors = bad.skin\n");
  for (const std::string skin : {"packed", "packed/loose.skin", "packed/bad.skin", "mine/odd.bmp"})
    said += "---\n" + Unpack(skin, "new");
  place.Write("packed/plain.skin", "[Skin]\n");
  said +=
      "---\n" + Unpack("packed/plain.skin", "mine") + Unpack("packed/plain.skin", "mine/odd.bmp");
  ExpectText("skin_mistakes", said);
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
