#include "launcher/layout.h"

#include "launcher/backdrop.h"
#include "tests/support/launcher_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/zoom.h"

namespace zel {
namespace {

// The layout, the zoom, its place and where on the screen its second pixel and its last but one
// lie.
std::string Fitted(Size screen, double zoom) {
  const ScreenLayout layout = FitLayout("menu.cfg", screen, zoom);
  const Rect inner = layout.OnScreen({1, 1, -3 + layout.size.w, 2});
  const Rect end = layout.OnScreen({-1, -1, 1, 1});
  return layout.section.substr(std::min<std::size_t>(layout.section.size(), 19)) + ' ' +
         Join(CurrentZoom(), layout.origin.x, layout.origin.y, inner.x, inner.y, inner.Right(),
              inner.Bottom(), end.x, end.y);
}

class LayoutTest : public LauncherFixture {
 protected:
  LayoutTest() { UseDepth(32); }
};

TEST_F(LayoutTest, FillsTheScreenBestWhereItHasNoneOfItsOwn) {
  WriteFile("menu.cfg",
            "[MENU_CONFIGURATION]\nMenuWidth=700\n[menu_configuration_640X480]\n"
            "[MENU_CONFIGURATION_960x540]\n[MENU_CONFIGURATION_1920x1080]\nZoom=1.5\n[MENU_"
            "CONFIGURATION_500x800]\n[MENU_CONFIGURATION_700x500]\nZoom=2\n"
            "[MENU_CONFIGURATION_1000x565]\n[MENU_CONFIGURATION_0x5]\n[MENU_CONFIGURATION_5x5x]\n["
            "MENU_CONFIGURATION_99999x5]\n");
  const Size screens[] = {{640, 480},   {800, 600},   {1024, 768},  {1280, 1024}, {1366, 768},
                          {1920, 1080}, {3840, 2160}, {1000, 1800}, {320, 200},   {16, 16},
                          {640, 600},   {1, 16},      {16, 1}};
  std::string seen;
  for (const Size& screen : screens)
    seen += Join(screen.w, screen.h) + "auto: " + Fitted(screen, kZoomToFit) + '\n';
  for (const double zoom : {1.5, 2.0, 3.0, 8.0})
    seen += Join("1920 1080", zoom) + ": " + Fitted({1920, 1080}, zoom) + '\n';
  ExpectText("layouts", seen);
  EXPECT_TRUE(FitLayout("menu.cfg", {1920, 1080}, 1).section.empty());
  seen.clear();
  for (const char* size : {"1x32767", "32767x1", "32768x1", "0x1", "1x1x", ""})
    if (Size read; ReadSectionSize(std::string{"MENU_CONFIGURATION_"} + size, &read))
      seen += size + (' ' + Join(read.w, read.h));
  EXPECT_EQ(seen, "1x32767 1 32767 32767x1 32767 1 ");
  EXPECT_EQ(ScreenLayout{}.OnScreen({-5, 1, 2, 3}), Rect(-5, 1, 2, 3));
}

TEST_F(LayoutTest, AGeneralSectionHasTheSizeThatItsPanelsNeed) {
  const std::pair<const char*, const char*> rows[] = {
      {"", "1.28 0 0 "},
      {"MenuLeft=20\nHintLeft=300\nProgressX=0\n", "1.6 0 0 "},
      {"HintWidth=600\n", "1 0 0 "},
      {"HintWidth=387\nHintHeight=420\n", "1.28 0 0 "},
      {"ProgressW=2000\n", "1 0 267 "},
      {"MenuHeight=900\nMenuLeft=-4\n", "1 263 0 "},
      {"HintTop=2147483647\n", "1 162 0 "}};
  for (const auto& [keys, placed] : rows) {
    WriteFile("menu.cfg", std::string{"[MENU_CONFIGURATION]\n"} + keys);
    const ScreenLayout layout = FitLayout("menu.cfg", {1024, 768}, kZoomToFit);
    EXPECT_EQ(Join(CurrentZoom(), layout.origin.x, layout.origin.y), placed) << keys;
  }
}

// Behind a layout of 8 x 4 on a screen of 12 x 10.
TEST_F(LayoutTest, BackgroundsCoverTheScreen) {
  const ScreenLayout layout{"x", {8, 4}, 1.5, {0, 2}};
  const std::pair<const char*, Rows> pictures[] = {
      {"as_large", {"rrrrrrrg", "bbbbbbbb", "bbbbbbbb", "yrrrrrrk"}},
      {"larger", {"crgbykwgrc", "rggggggggr", "rggggggggr", "rggggggggr", "crrrrrrrrc"}},
      {"as_wide_and_higher",
       {"rrrrrrrg", "bbbbbbbb", "cccccccc", "gggggggg", "yrrrrrrk", "wwwwwwww"}},
      {"narrower_and_higher", {"rrrrrg", "bbbbbb", "cccccc", "yrrrrk", "wwwwww", "gggggg"}},
      {"nearly_square", Rows(9, "rgbycwrgb")},
      {"of_the_screen", Rows(10, "rgbycwrgbycw")},
      {"smaller", {"rg", "by"}},
      {"of_twice_the_pixels", Rows(8, "rrggbbyyccwwrrgg")}};
  for (const auto& [name, rows] : pictures) {
    const bool isFine = rows.size() == 8;
    save_bitmap(isFine ? "ground@2x.bmp" : "ground.bmp", Paint(rows).get(), nullptr);
    const BitmapPtr made = LoadBackdrop("ground.bmp", layout, {12, 10});
    ExpectLook(std::string{"backdrop_"} + name, made.get(), {0, 0, made->w, made->h});
  }
  EXPECT_FALSE(LoadBackdrop("none.bmp", layout, {12, 10}));
}

}  // namespace
}  // namespace zel
