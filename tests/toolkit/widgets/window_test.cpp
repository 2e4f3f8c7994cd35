#include "toolkit/widgets/window.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The dressed frame: thickness and corners of the borders, title bar, what it adds to the height.
constexpr int kBorder = 4, kCorner = 8, kGrip = 20, kBar = 2 * kBorder + kGrip;

// A window with a button in it. Its frame is red while it is active, else blue.
class WindowTest : public WidgetFixture {
 protected:
  WindowTest() {
    Rows stacked(kGrip, std::string(20, 'r'));
    stacked.resize(2 * kGrip, "b.bbbbbbbbbbbbbbbb.b");
    const Rows thin(stacked.begin() + kGrip - kBorder, stacked.begin() + kGrip + kBorder);
    for (const int part : {WINLEFT, WINRIGHT}) Dress(part, Rows(20, "rrrrbbbb"), {4, 4});
    for (const int part : {WINTOP, WINBOTTOM}) Dress(part, thin, {4, 4});
    Dress(WINGRIP, stacked, {4, 4});
    content.Shape(0, 0, 30, 20);
    window.Add(&content);
    window.minWidth = 30;  // without the frame
    Show(window, {50, 40, 100, 60});
    root.SetFocus(&content);
  }
  // Where the window is, compared with where it was at first.
  Rect Change() const {
    const Rect& now = window.Bounds();
    return {now.x - 50, now.y - 40, now.w - 100 - 2 * kBorder, now.h - 60 - kBar};
  }
  // The point is relative to the window.
  void DragBy(int x, int y, int dx, int dy) {
    const Point from{window.x() + x, window.y() + y};
    Mouse(from.x, from.y + 1);
    Mouse(from.x, from.y, 1), Mouse(from.x + dx, from.y + dy, 1), Mouse(mouse_x, mouse_y);
    Tick(20);  // no double click together with the next press
  }

  struct : Window {
    using Window::closeButton, Window::maxButton, Window::minButton, Window::minWidth;
  } window;
  Button content;
};

TEST_F(WindowTest, EachZoneHasItsShapeAndDragsItsEdges) {
  const int right = window.w(), bottom = window.h();
  const int corner = kBorder + kCorner;
  std::string zones;
  for (const int x : {0, corner - 1, corner, right - corner - 1, right - corner, right - 1})
    for (const int y : {1, 3, kBorder + 18, corner - 1, corner, bottom - corner, bottom - 1}) {
      Mouse(310, 190);
      Mouse(50 + x, 40 + y);
      zones += Join(x, y, "shape", PointerShape());
      DragBy(x, y, -10, 20);
      zones += Join("changes", Change().x, Change().y, Change().w, Change().h) + '\n';
      window.Shape(50, 40, 100, 60);
      Tick();
    }
  ExpectText("window_zones", zones);
  root.SetSkin(nullptr);
  Tick();
  EXPECT_EQ(Change(), Rect());
  look = [] { return std::to_string(PointerShape()); };
  EXPECT_EQ(Play("50,40 310,190 50,40 157,127+press 0,0 release 87,75+wait20"),
            "6, 4, 6, 6, 4, 4, 6")
      << "also when it comes back";
  EXPECT_EQ(Change(), Rect(0, 0, 38 - right, 8 + kBar - bottom));
  DragBy(14, kBorder + 18, -300, -300);
  EXPECT_EQ(Change(), Rect(-50, -40, 38 - right, 8 + kBar - bottom));
}

TEST_F(WindowTest, RollsUpToItsTitleBarAndBack) {
  window.Hide(), window.Disable();
  window.Minimize(), window.Maximize();
  window.Unhide(), window.Enable(), window.Disable();
  EXPECT_TRUE(window.Disabled() && window.Client().Disabled());
  window.Enable();
  Button added;
  window.Add(&added);
  EXPECT_FALSE(window.Contains(&added)) << "it comes with the client area";
  window.Remove(&added);
  Skin other{"default"};
  for (Skin* skin : {&other, CurrentSkin()}) {
    window.SetSkin(skin);
    EXPECT_EQ(window.Client().GetSkin(), skin);
  }
  EXPECT_EQ(Change(), Rect(0, 0, 0, -60));
  DragBy(40, 22, 30, 10);
  window.Resize(110, 70);
  EXPECT_EQ(Change(), Rect(30, 10, 10, -60));
  window.Minimize();
  EXPECT_EQ(root.FocusWidget(), &content) << "it can be seen and used again";
  steps["auto"] = [this] { window.SetAutoRollup(true); };
  steps["manual"] = [this] { window.SetAutoRollup(false); };
  steps["roll"] = [this] { window.Minimize(); };
  steps["fixed"] = [this] { window.ClearFlag(kFlagSizeable); };
  look = [this] {  // and which of the buttons can be used
    std::string seen = std::to_string(Change().h);
    for (const Widget* button : {&window.minButton, &window.maxButton, &window.closeButton})
      seen += button->Disabled() ? '-' : '+';
    return seen;
  };
  ExpectPlays("window_rolled", {"auto 100,70 310,190 100,70 310,190 manual leave auto auto manual",
                                "310,190+roll roll auto+310,190 100,60 310,190 manual fixed+roll"});
}

TEST_F(WindowTest, TheSkinPlacesTitleAndButtons) {
  Dress(WINTEXT, Rows(20, "wkkkkw"), {4, 1});
  CurrentSkin()->windowTextBack = 1, CurrentSkin()->windowMinPos = {-60, 6};
  TakeSmallFont(kWindowText, kDisabled);
  window.SetTitle("ab");
  for (const auto& [alignment, picture] : {std::pair{kAlignLeft, "window_title_left"},
                                           {kAlignRight, "window_title_right"},
                                           {kAlignCentre, "window_title_centre"}}) {
    CurrentSkin()->windowAlignment = alignment;
    root.SetSkin(nullptr);
    Tick();
    ExpectShown(picture, {50, 40, 108, 30});
  }
  DragBy(105, 50, -300, 0);
  EXPECT_EQ(window.w(), 18 + 32) << "the strip and the buttons keep their room";
  window.Resize(100, 60), Tick();
  window.SetTitle("too long a title"), Check();
  ExpectShown("window_title_too_long", {50, 40, 108, 30});
  CurrentSkin()->windowAlignment = kAlignLeft, root.SetSkin(nullptr), window.SetTitle("ab"), Tick();
  root.ChangeFocus(&window, nullptr), Check();
  ExpectShown("window_title_inactive", {50, 40, 108, 30});
  for (const int part : {WINLEFT, WINRIGHT, WINTOP, WINBOTTOM, WINGRIP, WINTEXT})
    CurrentSkin()->bitmaps[part]->Destroy();
  root.SetSkin(nullptr), Tick();
  EXPECT_EQ(window.Bounds(), Rect(50, 40, 100, 60)) << "the skin has no frame";
  Mouse(50, 40);
  EXPECT_EQ(PointerShape(), MOUSE_SIZE_HORIZONTAL) << "nor corners";
  FramePart part;
  part.SetPart(kWindowParts);
  EXPECT_EQ(part.Part(), kLeftPart);
}

TEST_F(WindowTest, TheTitleAndItsButtonsActWhileItIsActive) {
  Button other;
  Show(other, {0, 0, 20, 20});
  CurrentSkin()->Reset();
  Dress(ICONRESTORE, Rows(40, "yyyyyyyyyy"));
  root.SetSkin(nullptr);
  window.SetTitle("ab");
  Tick();
  ExpectShown("window", {40, 36, 130, 110});
  const Point min = CurrentSkin()->windowMinPos, max = CurrentSkin()->windowMaxPos;
  std::string sizes;
  for (const Point& button : {min, min, max, min, max}) {
    Click(window.x() + window.w() + button.x + 5, window.y() + button.y + 5), Check();
    if (sizes.ends_with("86 ")) ExpectShown("window_maximised", {220, 0, 100, 30});
    sizes += std::to_string(window.w()) + 'x' + std::to_string(window.h()) + ' ';
  }
  EXPECT_EQ(sizes, "108x26 108x86 320x200 320x200 108x86 ");
  Dress(WINTEXT, Rows(20, "wkkkkw"), {4, 1});
  CurrentSkin()->windowTextBack = 1, root.SetSkin(nullptr), Frame();
  window.Hide(), window.Unhide(), Check();
  CurrentSkin()->windowTextBack = 0, root.SetSkin(nullptr), window.Hide(), window.Unhide();
  root.SetFocus(&other), Check();
  ExpectShown("window_inactive", {40, 36, 130, 50});
  window.ClearFlag(kFlagSizeable), window.Enable(), root.SetFocus(&content);
  window.Hide(), window.Unhide(), root.SetFocus(&content);
  ExpectShown("window_of_fixed_size", {40, 36, 130, 50});
  window.SetFlag(kFlagSizeable), window.Enable();
  EXPECT_TRUE(window.minButton.Hidden() && !window.maxButton.Hidden());
  window.ClearFlag(kFlagSizeable), window.Enable();
  CurrentSkin()->menu.windowBorder = yellow, root.Redraw();
  ExpectShown("window_with_thin_lines", {40, 36, 130, 110});
  CurrentSkin()->menu.windowBorderWidth = 3, root.Redraw();
  ExpectShown("window_with_lines", {40, 36, 130, 110});
  Watch({MSG_CLOSE});
  Click(window.x() + window.w() + CurrentSkin()->windowExitPos.x + 5, window.y() + 12);
  EXPECT_EQ(root.Events(), "Close");
  root.onlyOfChildren = false, Watch({MSG_ACTIVATE});
  Click(content.x() + 5, content.y() + 5);
  EXPECT_EQ(root.Events(), "?: Activate") << "what lies in it reports to the root";
}

TEST_F(WindowTest, SizesAreThoseOfTheClientAreaOrTheParent) {
  decltype(window) covering;
  EXPECT_TRUE(covering.minButton.Disabled() && covering.closeButton.Disabled());
  root.Add(&covering), Tick();
  EXPECT_EQ(covering.Bounds(), root.Bounds());
  covering.Resize(50, 25, true), Tick();
  EXPECT_EQ(covering.Bounds(), Rect(0, 0, 160, 50)) << "a share of the screen, with the frame";
  CurrentSkin()->windowAnimationType = 6, CurrentSkin()->windowAnimationLength = 80;
  covering.SetSkin(nullptr), Tick(), covering.SendMessage(MSG_START);
  EXPECT_TRUE(covering.InTransition()) << "it comes up like one that is popped up";
  root.Remove(&covering);
  EXPECT_EQ(window.Client().Bounds(), Rect(50 + kBorder, 40 + kBorder + kGrip, 100, 60));
  Dialog other;
  other.Resize(140, 10), window.SetClientArea(&other);
  EXPECT_FALSE(window.Contains(&content)) << "it goes with the area that it is in";
  EXPECT_EQ(Change(), Rect(0, 0, 40, 0));
  EXPECT_EQ(other.Bounds(), Rect(50 + kBorder, 40 + kBorder + kGrip, 140, 60));
  Watch({MSG_CLOSE}), other.Close();
  EXPECT_EQ(root.Events(), "Close");
  window.Minimize(), window.SetClientArea(nullptr);
  other.Resize(130, 10), window.SetClientArea(&other);
  window.Minimize();
  EXPECT_EQ(other.Bounds(), Rect(50 + kBorder, 40 + kBorder + kGrip, 130, 60));
  window.SetClientArea(nullptr);
  root.Resize(300, 190);
  Play("90,55 press release press 95,60 release");  // a double click on the title
  Tick(20);
  window.Minimize(), DragBy(0, 100, 10, 0), DragBy(100, 22, 10, 10);
  EXPECT_EQ(window.Bounds(), root.Bounds());
  window.Maximize();
  EXPECT_EQ(window.Client().Bounds(), Rect(50 + kBorder, 40 + kBorder + kGrip, 100, 60));
}

using WindowByItselfTest = StageTest;

// In a wipe downward of four ticks, closed in its middle once.
TEST_F(WindowByItselfTest, ComesUpInItsTransitionAndIsDragged) {
  UseSkin();
  CurrentSkin()->windowAnimationType = 6, CurrentSkin()->windowAnimationLength = 80;
  Window window;
  window.Shape(20, 10, 110, 30);
  Start();
  window.SetSkin(nullptr);
  std::string seen;
  steps["look"] = [&] { seen += Describe(screen, {10, 0, 140, 100}) + '\n'; };
  steps["close"] = [&] { window.Close(); };
  for (const char* script : {"wait wait look close", "wait look wait wait wait look close"}) {
    Meanwhile(script);
    window.Popup(&root, 20, 10, nullptr);
    EXPECT_FALSE(window.InTransition());
  }
  ExpectText("window_popped_up", seen, "pictures");
  End();
  // As the root it stays at its place, and its edges follow the pointer.
  seen.clear();
  steps["size"] = [&] {
    const Point place = window.GetRelativePos();
    seen += Join(place.x, place.y, window.w(), window.h()) + '\n';
  };
  Meanwhile("size 1,1 L 4,6 size 10,11 size l 108,44 L 111,46 118,54 size l close");
  window.Execute(nullptr);
  EXPECT_EQ(seen, "20 10 118 56 \n23 15 115 51 \n29 20 109 46 \n29 20 119 56 \n");
}

}  // namespace
}  // namespace zel
