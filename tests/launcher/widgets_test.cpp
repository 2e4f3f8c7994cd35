#include "launcher/help_dialog.h"
#include "launcher/menu_screen.h"
#include "launcher/menu_widgets.h"
#include "launcher/wait_dialog.h"
#include "tests/support/launcher_fixture.h"
#include "tests/support/told_fixture.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/engine_font.h"

namespace zel {
namespace {

class LauncherWidgetsTest : public InLauncherDirectory<WidgetFixture> {
 protected:
  void ShowHint(HintPanel& panel, const Point& at, const char* hint, int height = 50) {
    MenuItem item;
    item.hintText.Assign(hint);
    const MenuEntry entry{item};
    Show(panel, {at.x, at.y, 28 + 10 * 8, height});  // lines of ten characters
    panel.ShowHint(&entry, panel.GetFont(kNormal));
    Tick();
  }
  void UseLook(const char* file = ZEL_PICTURES "/../launcher/samples/look.skin") {
    SetCurrentSkin(std::make_unique<Skin>(file));
    settings.antialiasing = false;
    EngineInit();
    CurrentSkin()->fonts[1]->Load(ZEL_PICTURES "/../../data/skin/fonts/DejaVuSans.ttf");
    CurrentSkin()->fonts[1]->SetSize(Zoomed(13));
    root.SetSkin(nullptr);
  }
  void UseSkinOf(const std::string& keys) {
    WriteFile("own.skin", keys);
    UseLook("own.skin");
  }
  // Entries of all kinds in a menu with the focus, and a hint.
  void ShowMenu(MenuPanel& panel, HintPanel& hints) {
    panel.SetTitle("Title");
    for (const std::string_view kind : {"One", "-", "Much too long", "Own", ">Sub", "<", "!Off"}) {
      item = {};
      item.title.Assign(kind.data());
      item.icon.Assign("icon.bmp");
      item.color = black;
      item.hasOwnColor = kind == "Own";
      if (kind[0] == '-') item.flags = kItemSeparator;
      if (kind[0] == '>') item.flags = kItemSubmenu;
      if (kind[0] == '<') item.flags = kItemBack;
      if (kind[0] == '!') item.flags = kItemDisabled;
      panel.List().InsertItem(std::make_unique<MenuEntry>(item, icons));
    }
    ShowHint(hints, {140, 4}, "a word-of-no-end and more");
    Show(panel, {4, 4, 130, 192});
    root.SetFocus(&panel.List());
  }
  // Without its content, on magenta.
  void DrawAlone(Widget& widget, Bitmap& sheet, const Rect& place) {
    widget.Resize(place.w, place.h), Tick();
    SubCanvas canvas{sheet, place.x, place.y, place.w, place.h};
    widget.Draw(canvas);
  }
  // Panels that have less and less room for their titles.
  void ExpectBare(const std::string& picture) {
    SkinBitmap sheet(320, 48, kMemoryBitmap);
    sheet.clear_to_color(magenta);
    MenuPanel panel;
    panel.SetTitle("T");
    Show(panel, {});
    int x = 0;
    for (const int width : {60, 9, 8, 7, 6, 5, 4})
      DrawAlone(panel, sheet, {std::exchange(x, x + width + 1), 0, width, 48});
    for (const int height : {8, 7, 6, 5, 4, 3})
      DrawAlone(panel, sheet, {std::exchange(x, x + 31), 0, 30, height});
    ExpectLook(picture, sheet.GetBitmap(), {0, 0, x, 48});
  }
  WaitDialog& Wait(int timeout) {
    item.timeout = timeout;
    dialog = std::make_unique<WaitDialog>(item);
    root.Add(dialog.get());
    Tick(2);
    Copied();
    return *dialog;
  }

  MenuItem item;
  IconCache icons;
  std::unique_ptr<WaitDialog> dialog;
};

TEST_F(LauncherWidgetsTest, RowsOfTheMenuHideTheGroundWhereTheySaySo) {
  CurrentSkin()->bitmaps[LIST]->Create(9, 8 * 5);
  CurrentSkin()->bitmaps[LIST]->clear_to_color(blue);
  MenuList list;
  list.Shape(0, 0, 100, 36);  // without its font entries are 12 pixels high
  list.SetBitmap(LIST);
  list.SetSkin(CurrentSkin());
  for (const std::string_view kinds : {"", "i-i", "iiiiiiiii", "i-i"}) {  // '-' is a separator
    CurrentSkin()->menu.hasEntries = list.Count() == 9;
    list.Clear();
    for (const char kind : kinds) {
      item.flags = kind == '-' ? kItemSeparator : MenuItemFlag{};
      list.InsertItem(std::make_unique<MenuEntry>(item));
    }
    const Rows rows = Shown(list);
    const Rect told = list.PaintedPart();
    for (int y = told.y; y < told.Bottom(); ++y)
      EXPECT_EQ(rows[y].substr(told.x, told.w).find('.'), std::string::npos) << y;
    EXPECT_EQ(told.w, kinds.empty() ? 100 : 67);
    EXPECT_EQ(told.h, kinds.size() == 3 ? 15 : kinds.size() * 4);
  }
}

using EveryLauncherWidgetTest = InLauncherDirectory<ToldFixture>;

TEST_F(EveryLauncherWidgetTest, HandlesAllMessagesAndTellsItsParent) {
  MenuList list;
  MenuPanel menu;
  HintPanel hint;
  ScreenLabel text{&MenuLook::heading};
  CenteredImage image;
  WallpaperPanel wallpaper;
  LookKeys lookKeys;
  OpeningKey openingKey;
  const MenuItem waiting;
  WaitDialog wait{waiting};
  HelpDialog help{KEY_F1};
  MenuScreen screen;
  std::string seen;
  for (const auto& [name, widget] :
       std::initializer_list<std::pair<const char*, Widget*>>{{"MenuList", &list},
                                                              {"MenuPanel", &menu},
                                                              {"HintPanel", &hint},
                                                              {"ScreenLabel", &text},
                                                              {"CenteredImage", &image},
                                                              {"WallpaperPanel", &wallpaper},
                                                              {"LookKeys", &lookKeys},
                                                              {"OpeningKey", &openingKey},
                                                              {"WaitDialog", &wait},
                                                              {"HelpDialog", &help},
                                                              {"MenuScreen", &screen}})
    seen += Told(name, *widget);
  ExpectText("messages_of_menus", seen);
}

TEST_F(LauncherWidgetsTest, ItsKeysPassOverSeparatorsAndThePadChoosesAndMarks) {
  MenuList list;
  list.SetMultiSelect(true);
  std::string seen;
  const auto press = [&](int scancode) {
    seen += list.MsgChar(scancode << 8) ? ", " : ", unused ";
    seen += std::to_string(list.GetCurrent()) + (list.IsSelected(list.GetCurrent()) ? "+ " : " ");
    seen += root.Events();
  };
  press(KEY_ENTER_PAD), press(KEY_1_PAD);
  for (const auto flags : {MenuItemFlag{}, MenuItemFlag{}, kItemSeparator, MenuItemFlag{}}) {
    item.flags = flags;
    list.InsertItem(std::make_unique<MenuEntry>(item));
  }
  Show(list, {0, 0, 100, 36});
  root.names[&list] = "";
  root.Events();
  for (const int key : {KEY_1_PAD, KEY_8_PAD, KEY_8_PAD, KEY_3_PAD, KEY_ENTER_PAD, KEY_ENTER_PAD,
                        KEY_9_PAD, KEY_2_PAD, KEY_7_PAD, KEY_DOWN})
    press(key);
  press(KEY_TAB);
  list.MsgStart();
  key[KEY_ENTER_PAD] = 1;
  for (int i = 0; i < 3; ++i) press(KEY_ENTER_PAD);  // one that may be old, and its repeats
  key[KEY_ENTER_PAD] = 0;
  EXPECT_EQ(seen,
            ", -1 , -1 , 3 Scroll 3, 1 Scroll 2; Scroll 1, 0 Scroll 0, 3 Scroll 3, 3+ , "
            "3+ Activate 3, 0 Scroll 0, 1 Scroll 1, 0 Scroll 0, 1 Scroll 1, unused 1 , 1 , 1 , 1 ");
}

TEST_F(LauncherWidgetsTest, PanelsAndEntriesLookAsTheSkinWantsThem) {
  UseLook();
  MenuPanel panel;
  HintPanel hints;
  ShowMenu(panel, hints);
  ExpectShown("menu_of_a_look", {0, 0, 260, 200});
  panel.SetTitle("Title"), Check();
  panel.List().SetCurrent(2);
  ExpectShown("menu_of_a_look_moved", {0, 0, 138, 200});
  root.ChangeFocus(&panel.List(), nullptr);
  ExpectShown("menu_of_a_look_idle", {0, 0, 138, 200});
  CurrentSkin()->fonts[0]->Load(ZEL_PICTURES "/../../data/skin/fonts/DejaVuSans.ttf");
  MenuLook& look = CurrentSkin()->menu;
  look.paddingX = look.paddingY = look.titleHeight = look.titleX = look.textX = look.fieldX = 400;
  look.fieldY = look.iconX = 400;
  panel.MsgInitSkin(), panel.Redraw();
  ExpectShown("menu_of_a_look_too_far", {0, 0, 138, 200});
  root.SetFocus(&panel.List());
  EXPECT_TRUE(DrawsEnough());
  EXPECT_TRUE(panel.MsgXChar(KEY_TAB << 8)) << "nobody else may move the focus once more";
}

TEST_F(LauncherWidgetsTest, OnlyAHintThatDoesNotFitHasABarBesideIt) {
  UseLook();
  HintPanel fits, doesNot;
  const int height = 14 + 2 * CurrentSkin()->fonts[0]->TextHeight();
  ShowHint(fits, {}, "1 3 5 7 9 1 3 5 7 9", height);
  ShowHint(doesNot, {110, 0}, "1 3 5 7 9 1 3 5 7 9", height - 1);
  ExpectShown("hints_of_two_lines", {0, 0, 220, height});
}

TEST_F(LauncherWidgetsTest, TextsOnTheGroundHaveTheirLookAndEndWhereTheLayoutDoes) {
  UseLook();
  ScreenLabel label{&MenuLook::heading};
  ScreenText text{.text = {}, .left = 10, .top = 4, .color = red};
  text.text.Assign("some words");
  Show(label, {});
  label.Show(text);
  ExpectShown("text_on_the_ground", {0, 0, 160, 40});
  std::string sizes;
  for (const char* section : {"", "of 300 x 50 pixels"}) {
    launcherState.layout = {section, {300, 50}, 1, {0, 0}};
    for (text.left = 200; text.left < 306; ++text.left) {
      label.Show(text), Tick();
      sizes += Join(label.x(), label.w(), label.h()) + '\n';
    }
  }
  ExpectText("texts_at_the_end", sizes);
  launcherState.layout = {};
  text.left = 215;
  text.font = 1;
  text.color = yellow;
  label.Show(text);
  CurrentSkin()->fonts[1]->SetSize(20);
  label.SetSkin(nullptr), Tick();
  ExpectShown("text_on_the_ground_larger", {160, 0, 160, 60});
}

// Each with the room that there is for titles and pictures.
TEST_F(LauncherWidgetsTest, SkinsThatSayLittleChangeNoMore) {
  save_bitmap("icon.bmp", Paint({"ggg", "b.b", "ggg"}).get(), nullptr);
  const std::string flat = "[LIST_BOX]\n[PANEL]\nbackColor=0,0,128\nborderColor=255,0,0\n";
  const std::tuple<const char*, double, std::string, int> skins[] = {
      {"of_frames", 1, "", 6},
      {"of_frames_zoomed", 1.5, "[TITLE]\nfont=1\nalignment=0\ntextX=7\n", 5},
      {"of_rows", 1,
       "[COLORS]\ncontrast=7\n[LIST]\nheight=17\n[ENTRY]\niconX=15\n[TITLE]\nbackColor=0,0,"
       "255\nalignment=1\ntextX="
       "7\n",
       6},
      {"of_fields", 2,
       flat +
           "[ENTRY]\nfieldX=5\nfieldY=2\nicons=0\nwrap=1\n[TITLE]\nlineColor=0,255,0\nalignment=2\n"
           "textX=7\n",
       5},
      {"of_idle_fields", 1.5,
       flat + "[ENTRY]\nfieldColor=255,255,0\nidleColor=0,255,255\nmarkX=9\nicons=1\n"
              "iconX=12\nwrap=0\nseparatorHeight=0\n[COLORS]"
              "\ncontrast=7\n[HINT]\npaddingX=0\n[TITLE]\nalignment=0\n",
       3}};
  std::string rooms;
  for (const auto& [name, zoom, keys, current] : skins) {
    SetZoom(zoom);
    UseSkinOf("[Skin]\ndottedRect=1\n" + keys);
    Rows states;
    for (const char state : {'b', 'k', 'w', 'g', 'b', 'y', 'c', 'r'})
      states.insert(states.end(), Zoomed(15), std::string(8, state) + (state == 'k' ? 'w' : 'k'));
    Dress(LIST, states);
    Dress(PANEL_RIDGE, Rows(6, std::string(7, 'r')));
    MenuPanel panel;
    HintPanel hints;
    ShowMenu(panel, hints);
    panel.List().SetCurrent(current);
    if (current == 3) root.ChangeFocus(&panel.List(), nullptr);
    ExpectShown(std::string{"menu_"} + name, {0, 0, 260, 200});
    panel.SetTitle("Other");
    EXPECT_TRUE(DrawsEnough()) << name;
    ExpectBare(std::string{"bare_"} + name);
    rooms += name + (' ' + Join(panel.TitleRoom(), hints.TitleRoom(), hints.LineRoom())) + '\n';
    for (int i = 0; i < panel.List().Count(); ++i) {
      const MenuEntry& entry = *panel.List().GetEntry(i);
      rooms += Join(' ', entry.TitleRoom(), entry.IconRoom().w, entry.IconRoom().h) + '\n';
    }
  }
  ExpectText("rooms_of_menus", rooms);
}

TEST_F(LauncherWidgetsTest, WaitingAndProgressLookAsTheSkinWantsThem) {
  UseLook();
  item.waitForFile.Assign("/missing");
  Wait(30).Check();
  ExpectShown("wait_of_a_look", {0, 0, 320, 200});
  for (int i = 0; i < 3; ++i) Wait(0).Check();
  ExpectShown("wait_of_a_look_busy", {0, 90, 320, 60});
  StepBar bar;
  bar.Setup(4, 4, 100, 30, 0, 0, kHorizontal);
  root.Add(&bar);
  for (const int done : {3, 9, 4}) {
    bar.ShowSteps(done, 10);
    EXPECT_TRUE(DrawsEnough()) << done;
  }
  Copied();
  bar.ShowSteps(6, 10);
  EXPECT_EQ(Copied(), 20 * 36);
  ExpectShown("step_bar_of_a_look", {0, 0, 110, 38});
}

TEST_F(LauncherWidgetsTest, BarsHaveBevelsOrNoneAndLieInWhatRoomThereIs) {
  std::filesystem::create_directory("pic");
  save_bitmap("pic/progress.bmp", Paint({"r", "y", "c"}).get(), nullptr);
  for (const auto& [picture, zoom] :
       {std::pair{"bars_alone", 1}, {"bars_alone_zoomed", 2}, {"bars_alone_of_a_look", 2}}) {
    SetZoom(zoom);
    if (picture == std::string{"bars_alone_of_a_look"}) UseLook();
    SkinBitmap sheet(260, 150, kMemoryBitmap);
    sheet.clear_to_color(magenta);
    StepBar steps;
    BusyBar busy;
    for (ProgressBar* bar : {static_cast<ProgressBar*>(&steps), static_cast<ProgressBar*>(&busy)}) {
      Show(*bar, {});
      bar->Setup(0, 0, 60, 20, 0, 0, kHorizontal);
    }
    steps.ShowSteps(3, 10);
    int x = 0, y = 0;
    for (const int height : {30, 20, 12, 9, 8, 7, 6, 5, 4, 3, 2, 1}) {
      busy.Increment();
      DrawAlone(steps, sheet, {0, y, 60, height});
      DrawAlone(busy, sheet, {61, std::exchange(y, y + height + 1), 60, height});
    }
    for (const int width : {30, 9, 8, 7, 6, 5, 4, 3, 2, 1}) {
      DrawAlone(steps, sheet, {125 + x, 0, width, 30});
      DrawAlone(busy, sheet, {125 + std::exchange(x, x + width + 1), 31, width, 30});
    }
    for (const int range : {0, 1}) {
      busy.SetRange(0, range);
      busy.Increment();
      DrawAlone(busy, sheet, {125 + 61 * range, 62, 60, 30});
    }
    ExpectLook(picture, sheet.GetBitmap(), {0, 0, 260, 130});
  }
}

TEST_F(LauncherWidgetsTest, APictureIsInTheMiddleAndHidesTheGroundWhereItFillsItsPlace) {
  CenteredImage image;
  image.Take(Paint(Rows(20, std::string(20, 'y'))));
  std::string hidden;
  Show(image, {5, 5, 9, 9});
  for (const Size& size : {Size{20, 20}, {30, 20}, {20, 20}, {20, 30}, {16, 12}}) {
    image.Shape(4 + size.w / 10, 5, size.w, size.h);
    Tick();
    root.Redraw();
    hidden += Join(image.IsOpaque());
    ExpectShown("picture_in_" + std::to_string(size.w) + 'x' + std::to_string(size.h),
                {0, 0, 40, 40});
  }
  image.Resize(30, 12), Tick();
  hidden += Join(image.IsOpaque());
  EXPECT_EQ(hidden, "1 0 1 0 1 0 ");
  root.Redraw(), Drawn();
  image.Take(Paint(Rows(20, std::string(20, 'r'))));
  EXPECT_TRUE(DrawsEnough());
}

TEST_F(LauncherWidgetsTest, WrapsHintsBetweenTheirWords) {
  const char* const kHints[] = {"four five", "four five6 seven", "a\n b  \n\n\t\fc",
                                "much-too-long one x", "1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1"};
  std::array<HintPanel, std::size(kHints)> panels;
  for (int i = 0; i < static_cast<int>(std::size(kHints)); ++i)
    ShowHint(panels[i], {i % 2 * 110, i / 2 * 52}, kHints[i]);
  ExpectShown("hints", {0, 0, 220, 156});
  item.hintText.Assign("1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26");
  HintPanel& panel = panels.back();
  ShowHint(panel, {0, 104}, item.hintText);
  Mouse(20, 120, 0, -1);
  const MenuEntry entry{item};
  panel.SetW(80), Tick();
  panel.WrapAgain(&entry, panel.GetFont(kNormal));
  root.Redraw();
  ExpectShown("hints_wrapped_again", {0, 104, 110, 50});
}

TEST_F(LauncherWidgetsTest, NeedsNoLyingScrollBarBesideAWideStandingOne) {
  for (const int width : {16, 21, 24}) {
    CurrentSkin()->bitmaps[SCROLL_VBACK]->Create(width, 9);
    CurrentSkin()->bitmaps[SCROLL_VBACK]->clear_to_color(yellow);
    HintPanel panel;
    ShowHint(panel, {}, "1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9");
    ExpectShown("hint_beside_bar_" + std::to_string(width), {0, 0, 108, 50});
  }
}

TEST_F(LauncherWidgetsTest, TheProgressFileSaysHowFarThingsAre) {
  const ProgressValues hidden{0, 0, 1, 0};
  const std::string steps = "[Progress]\nStepNumber=10\nCurrentStep=4\n";
  const std::pair<std::string, ProgressValues> rows[] = {
      {"", hidden},  // without a file
      {steps + "ProgressInterval=250\n", {10, 4, 0, 250}},
      {steps + "ProgressHi", {10, 4, 0, 0}},
      {"[progress]\r\nstepnumber = 10\r\nCurrentStep = 20\r\n", {10, 10, 0, 0}},
      {"[Progress]\nCurrentStep=8\nStepNumber=x\nProgressHide=-1", {0, 0, -1, 0}},
      {std::string("\0\xff\xc3\n", 4) + steps + "\xf0", {10, 4, 0, 0}},
      {std::string((1 << 16) + 1 - steps.size(), '#') + '\n' + steps, {10, 0, 0, 0}},
  };
  for (const auto& [content, values] : rows) {
    if (!content.empty()) WriteFile("progress", content);
    EXPECT_EQ(ReadProgressFile(), values) << content.substr(0, 99);
  }
  EXPECT_EQ(hidden.PollPeriod() + (ProgressValues{0, 0, 0, 1}).PollPeriod(), 1001);
}

TEST_F(LauncherWidgetsTest, OnlyLinksOfTheLaunchersOwnUserLeadToTheProgressFile) {
  WriteFile("r", "[Progress]\nCurrentStep=4\nStepNumber=10\n");
  std::filesystem::create_directory("links");
  std::filesystem::create_symlink(std::filesystem::absolute("r"), "links/last");
  std::filesystem::create_symlink("../links/last", "links/second");
  std::filesystem::create_symlink("links/second", "progress");
  EXPECT_EQ(ReadProgressFile().currentStep, 4);
  EXPECT_EQ(link("links/second", "of two names"), 0);
  EXPECT_EQ(ReadProgressFile().currentStep, 0);
  std::filesystem::remove("of two names");
  const int seen = lchown("links/second", 65534, 65534) == 0 ? 0 : 4;
  EXPECT_EQ(ReadProgressFile().currentStep, seen);
  std::filesystem::remove("progress");
  std::string next = "r", reached;
  for (int links = 1; links < 10; ++links) {
    const std::string link = "link" + std::to_string(links);
    std::filesystem::create_symlink(std::exchange(next, link), link);
    paths.progressFile = next.c_str();
    reached += std::to_string(ReadProgressFile().currentStep);
  }
  EXPECT_EQ(reached, "444444440");
  paths.progressFile = "progress";
  for (const char* target : {"/dev/zero", "progress", "links"}) {
    std::filesystem::create_symlink(target, "progress");
    EXPECT_EQ(ReadProgressFile().progressHide, 1) << target;
    std::filesystem::remove("progress");
  }
}

TEST_F(LauncherWidgetsTest, ALargeProgressFileIsReadNowAndThenAndASmallOneAtEachLook) {
  // The step and the size of what is written before a look, when that is, and what it sees.
  const std::tuple<int, int, int, int> looks[] = {
      {1, 0, 1000, 1},    {2, 0, 1000, 2},    {3, 5000, 1100, 3}, {4, 5000, 1199, 3},
      {0, 0, 1200, 4},    {0, 0, 1300, 4},    {5, 5000, 1399, 4}, {0, 0, 1400, 5},
      {6, 4057, 1401, 6}, {7, 4058, 1402, 6}, {8, 4057, 1403, 8}};
  ProgressFile file;
  EXPECT_EQ(file.Look(1000).currentStep, 0);
  for (const auto& [written, size, now, seen] : looks) {
    if (written != 0)
      WriteFile("progress", "[Progress]\nStepNumber=99\nCurrentStep=" + std::to_string(written) +
                                '\n' + std::string(size, '#'));
    EXPECT_EQ(file.Look(now).currentStep, seen) << now;
  }
  std::filesystem::remove("progress");
  EXPECT_EQ(file.Look(1403).currentStep, 0);
}

TEST_F(LauncherWidgetsTest, TheProgressBarIsARowOfPicturesOfWhichOnlyTheNewOnesAreDrawn) {
  ClearScreen ground;
  Show(ground, {});
  std::filesystem::create_directory("pic");
  std::string name = "step_bar";
  // The last but one fills what its track leaves, the last does not.
  for (const auto& [zoom, rows] : {std::pair{1, Rows{"r"}},
                                   {1, {"..g.", "b.r.", "....", ".k.r"}},
                                   {1, Rows(40, "rgb.bb")},
                                   {2, Rows(7, "rb")},
                                   {2, Rows(6, "rb")}}) {
    SetZoom(zoom);
    save_bitmap("pic/progress.bmp", Paint(rows).get(), nullptr);
    StepBar bar;
    bar.Setup(0, 0, 200, 30, 0, 0, kHorizontal);
    root.Add(&bar);
    for (const int done : {0, 3, 4, 30, 31, 36, 99, 100, 37, 2, 1, 100, 50, 1000, -1, 37}) {
      bar.ShowSteps(done, 100);
      EXPECT_TRUE(DrawsEnough()) << done;
    }
    ExpectShown(name += '_', {0, 0, 202, 38});
    Copied();
    bar.ShowSteps(42, 100);
    const int width = zoom * static_cast<int>(rows[0].size());
    EXPECT_EQ(Copied(), (10 + width - 1) * (36 - 3 * zoom));
    bar.ShowSteps(85, 200);
    EXPECT_TRUE(DrawsEnough()) << "by a pixel";
  }
}

TEST_F(LauncherWidgetsTest, FilesEndTheWaitAndOneThatMustGoDecidesAlone) {
  const char *there = "/", *gone = "/missing";
  const std::tuple<const char*, const char*, bool> rows[] = {
      {there, "", true}, {gone, "", false},     {"", there, false},
      {"", gone, true},  {there, there, false}, {gone, gone, true},
  };
  for (const auto& [waitFor, waitWhile, over] : rows) {
    item.waitForFile.Assign(waitFor);
    item.waitWhileFile.Assign(waitWhile);
    for (const int timeout : {-1, 0, 5})
      EXPECT_EQ(Wait(timeout).Check(), over) << waitFor << ' ' << waitWhile;
  }
  EXPECT_EQ(clock.Count(), 2) << "all but the last have given their timers back";
}

TEST_F(LauncherWidgetsTest, TimePassesInItsWindowAndOnlyWhatMovesIsCopied) {
  item.waitForFile.Assign("/missing");
  Wait(1);
  for (int checks = 1; checks <= 40; ++checks) EXPECT_EQ(dialog->Check(), checks == 40);
  Wait(3);
  ExpectShown("wait_window", {0, 0, 320, 200});
  std::string changes;
  for (int checks = 1; checks <= 80; ++checks) {
    EXPECT_EQ(dialog->Check(), checks == 80);
    if (const int copied = Copied())
      changes += std::to_string(checks) + ':' + std::to_string(copied) + ' ';
    if (checks == 1) ExpectShown("wait_countdown", {0, 90, 320, 60});
  }
  EXPECT_EQ(changes, "1:2400 21:2400 41:2400 61:2400 ");
  WriteFile("i18n", "LANG=ru\n");  // whose units are narrower
  CurrentSkin()->fonts[2]->Load(ZEL_PICTURES "/../toolkit/draw/samples/GRID.TGA");  // blank digits
  EXPECT_FALSE(Wait(INT_MAX).Check());
  ExpectShown("wait_for_ages", {0, 90, 320, 60});
  std::filesystem::remove("i18n");
  Wait(0).Check();
  EXPECT_EQ(Copied(), 2 * 5 * 27);
  ExpectShown("wait_busy", {0, 90, 320, 60});
  for (int i = 0; i < 200; ++i) dialog->Check(), Copied();  // to the end and back and on
  ExpectShown("wait_busy_for_long", {0, 90, 320, 60});
  item.waitText.Assign("Making a coffee which takes its time");
  Wait(0).Check();
  ExpectShown("wait_with_own_text", {0, 60, 320, 90});
}

// Unless Enter is let go of, it is the one that has opened the wait.
TEST_F(LauncherWidgetsTest, ItsTimerEndsTheWaitAndTheButtonAndShortcutsCancelIt) {
  item.waitForFile.Assign("ready");
  settings.maxFrameSkip = 99;
  steps = {{"period", [this] { clock.Tick(1); }},
           {"second", [this] { clock.Tick(0, 50); }},
           {"file", [] { WriteFile("ready", ""); }},
           {"enter", [] { TypeKey(13, KEY_ENTER); }},
           {"let_go", [] { key[KEY_ENTER] = 0; }},
           {"ctrl-c", [] { TypeKey(3, KEY_C); }},
           {"alt-c", [] { HoldShifts(KB_ALT_FLAG), TypeKey(0, KEY_C); }}};
  const std::pair<const char*, bool> rows[] = {{"period enter second file second period", true},
                                               {"let_go second enter second", false},
                                               {"ctrl-c second", false},
                                               {"alt-c", false}};
  for (const auto& [script, isOver] : rows) {
    std::filesystem::remove("ready");
    key[KEY_ENTER] = 1;
    WaitDialog wait{item};
    Meanwhile(script);
    EXPECT_EQ(wait.Run(root), isOver) << script;
    HoldShifts(0);
  }
  key[KEY_ENTER] = 0;
}

TEST_F(LauncherWidgetsTest, KeysForLooksAskOnceUpToTheirRelease) {
  LookKeys keys;
  Show(keys, {});
  std::string seen;
  root.onEvent = [&](Widget*, int msg, int step) {
    if (msg == MSG_LOOK_WANTED) seen += std::to_string(step);
  };
  const auto press = [&](int shifts, int character, int scancode) {
    HoldShifts(shifts);
    key[scancode] = 1;
    for (int i = 0; i < 2; ++i) seen += keys.MsgXChar(scancode << 8 | character) ? '+' : '-';
    keyboard_lowlevel_callback(scancode | 0x80), Tick();
    seen += ' ';
  };
  settings.zoom = kZoomToFit;
  for (const char* looks : {"", "blue, red"}) {
    settings.looks.Assign(looks);
    launcherState.looks.Begin();
    for (const int shifts : {0, +KB_SHIFT_FLAG, +KB_CTRL_FLAG, KB_ALT_FLAG | KB_CTRL_FLAG}) {
      press(shifts, 0, KEY_F2), press(shifts, 0, KEY_F3), press(shifts, 0, KEY_F4);
      press(shifts, '+', KEY_A), press(shifts, '-', KEY_B), press(shifts, 0, KEY_EQUALS);
      press(shifts, 0, KEY_PLUS_PAD), press(shifts, 0, KEY_MINUS), press(shifts, 0, KEY_MINUS_PAD);
      seen += '\n';
    }
  }
  ExpectText("look_keys", seen);
}

TEST_F(LauncherWidgetsTest, AnyKeyLeavesTheHelpButTheOneThatHasOpenedItAndIsHeld) {
  settings.typeAhead = true;
  settings.looks.Assign("default");
  settings.zoom = 2;
  launcherState.looks.Begin();
  bool isUp = false;
  HelpDialog help{KEY_F1};
  steps = {{"wait", [] {}},
           {"f1", [] { TypeKey(0, KEY_F1); }},
           {"look", [&] { ExpectShown("help_window", root); }},
           {"let_go", [&] { isUp = true, keyboard_lowlevel_callback(KEY_F1 | 0x80); }}};
  Meanwhile("f1 wait look let_go f1");
  help.Run(root);
  EXPECT_TRUE(isUp);
  HelpDialog clicked{KEY_F1};
  steps = {{"press",
            [&] {
              PutMouse({160, clicked.y() + clicked.h() - 26}), HoldButtons(1);
            }},
           {"release", [] { HoldButtons(0); }}};
  Meanwhile("press release");
  clicked.Run(root);
}

}  // namespace
}  // namespace zel
