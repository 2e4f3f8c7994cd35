#include <map>
#include <set>

#include "launcher/menu_screen.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "launcher/wait_dialog.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/testing/offscreen.h"
#include "tools/gallery/gallery.h"

namespace zel {
namespace {

struct Look {
  const char* file;
  double least;  // contrast of texts
};
constexpr Look kLooks[] = {
    {"skin/zel.skin", 4.5}, {"skin/light.skin", 4.5}, {"skin/contrast.skin", 7}};
constexpr double kDisabled = 4.4;  // as colours are rounded

struct LooksTest : AllegroFixture {
  LooksTest() {
    paths.outputFile = paths.positionFile = paths.progressFile = paths.languageFile = "";
    std::filesystem::current_path("data");
  }
  ~LooksTest() override {
    std::filesystem::current_path("..");
    paths = {};
    launcherState = {};
  }

  // The contrast of the text in a part of the frame: between the colour that most of it has and the
  // one that stands out most, unless it is only that of single pixels.
  double ContrastIn(const Rect& part) const {
    std::map<int, int> pixels;
    for (int y = part.y; y < part.Bottom(); ++y)
      for (int x = part.x; x < part.Right(); ++x) ++pixels[getpixel(offscreen.Frame(), x, y)];
    const auto ground = std::max_element(pixels.begin(), pixels.end(),
                                         [](auto& a, auto& b) { return a.second < b.second; });
    double best = 0;
    for (const auto& [color, count] : pixels)
      if (count > 4) best = std::max(best, Contrast(Color{color}, Color{ground->first}));
    return best;
  }
  void Check(const Look& look, const char* what, const Rect& part, double least = 0) const {
    EXPECT_GE(ContrastIn(part), least > 0 ? least : look.least - 0.1)
        << what << " of " << look.file << ' ' << settings.screenWidth << ' ' << settings.colorDepth;
  }
  void CheckRows(const Look& look, MenuList& list) const {
    const int left = OrElse(list.GetSkin()->menu.textX, 0),
              line = list.GetParent()->GetFont(0).TextHeight();
    int y = list.y();
    for (int i = list.GetFirst();
         i < list.Count() && y + list.GetEntry(i)->GetHeight() <= list.y2(); ++i) {
      const MenuEntry& entry = *list.GetEntry(i);
      const Rect title{list.x() + left, y + (entry.GetHeight() - line) / 2, list.w() / 2, line};
      if (!entry.IsSeparator())
        Check(look, entry.GetText(), title, entry.Item().flags & kItemDisabled ? kDisabled : 0);
      y += entry.GetHeight();
    }
  }
  void CheckScreen(const Look& look) {
    MenuScreen screen;
    Dialog root;  // which ends without a choice
    root.Add(&screen);
    offscreen.Run(root, 20);
    const auto place = [](int x, int y, int w, int h) {
      return launcherState.layout.OnScreen({x, y, w, h});
    };
    const LayoutValues& at = launcherState.layoutValues;
    MenuList& list = screen.List();
    CheckRows(look, list);
    Check(look, "panel title", place(at.menuLeft + 12, at.menuTop + 4, at.menuWidth / 2, 36));
    Check(look, "explanation", place(at.hintLeft + 12, at.hintTop + 56, at.hintWidth - 60, 100));
    Check(look, "heading", place(at.menuLeft, at.menuTop - 50, at.menuWidth / 2, 48));
    const int below = at.hintTop + at.hintHeight + 10;
    Check(look, "key help", place(at.menuLeft, below, 200, launcherState.layout.size.h - below));
    const Color behind{getpixel(offscreen.Frame(), list.x() + list.w() / 2, list.y2() - 2)};
    const Color frame{
        getpixel(offscreen.Frame(), list.x(), list.y() + list.GetEntry(0)->GetHeight() / 2)};
    EXPECT_GE(Contrast(frame, behind), 3) << "the selection's frame in " << look.file;
  }
  void CheckWait(const Look& look) {
    MenuItem item;
    item.waitForFile.Assign("/missing");
    item.timeout = 30;
    WaitDialog wait{item};
    wait.Check();
    offscreen.Run(wait, 20);
    const int unit = wait.GetFont(kNormal).TextHeight(), w = wait.w();
    const int top = wait.h() - 66 * unit / 8 - CurrentSkin()->bitmaps[WINBOTTOM]->Height() / 2;
    Check(look, "window title", {w / 12, unit / 2, w / 3, top - unit / 2});
    Check(look, "message", {w / 8, top + 12 * unit / 8, w * 3 / 4, 10 * unit / 8});
    Check(look, "countdown", {w / 3, top + 24 * unit / 8, w / 3, 10 * unit / 8});
    Check(look, "button", {w * 2 / 5, top + 48 * unit / 8, w / 5, 10 * unit / 8});
  }

  Offscreen offscreen;
};

TEST_F(LooksTest, EveryTextOfTheShippedOnesStandsOutFromItsGround) {
  for (const Look& look : kLooks)
    for (const int depth : {8, 32})
      for (const Size size : {Size{640, 480}, {800, 600}, {1920, 1080}}) {
        ASSERT_TRUE(offscreen.SetMode(size, depth));
        launcherState.layout = FitLayout(kMainMenu, size, kZoomToFit);
        ASSERT_EQ(Offscreen::LoadSkin(look.file), "");
        CheckScreen(look);
        CheckWait(look);
      }
}

TEST_F(LooksTest, WhereverTabLeadsInTheShippedOnesOneSeesIt) {
  ASSERT_TRUE(offscreen.SetMode({640, 480}, 32));
  for (const Look& look : kLooks) {
    ASSERT_EQ(Offscreen::LoadSkin(look.file), "");
    for (const Page& page : Pages()) {
      const auto sheet = BuildPage(page, {640, 480});
      Dialog root;
      root.Add(sheet.get());
      std::map<const Widget*, std::vector<int>> seen;  // with the focus there
      int frames = 0;
      offscreen.onFrame = [&] {
        if (++frames % 20 != 0 || !root.FocusWidget()) return;
        seen.try_emplace(root.FocusWidget(), Pixels(offscreen.Frame()));
        root.MoveFocus(FocusMove::kNext);
      };
      offscreen.Run(root, 20 * 8);
      offscreen.onFrame = nullptr;
      std::set<std::vector<int>> different;
      for (const auto& [widget, pixels] : seen) different.insert(pixels);
      EXPECT_EQ(different.size(), seen.size()) << page.name << ' ' << look.file;
    }
  }
}

}  // namespace
}  // namespace zel
