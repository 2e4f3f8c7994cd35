#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/testing/random_player.h"

namespace zel {
namespace {

// Drags whatever the test says.
struct Draggable : Dialog {
  int GetDragMode() override { return mode; }
  int mode = kDragNone;
};

// Two patches side by side in a panel, and one beside the panel:
//   x 10..30 a, 30..50 b, both in the panel of 10..60; c at 80..100; y 10..30
class DialogInputTest : public StageTest {
 protected:
  DialogInputTest() {
    panel.Shape(10, 10, 50, 20);
    panel.Add(&a);
    panel.Add(&b);
    root.Add(&panel);
    root.Add(&c);
    root.names = {{&a, "a"}, {&b, "b"}, {&c, "c"}, {&panel, "panel"}};
    steps["Tab"] = [] { TypeKey(0, KEY_TAB); };
    int code = KEY_LEFT;  // and so on
    for (const char* word : {"Left", "Right", "Up", "Down"})
      steps[word] = [code = code++] { TypeKey(0, code); };
    steps["Back"] = [] { HoldShifts(KB_SHIFT_FLAG), TypeKey(0, KEY_TAB); };
    UseSkin();
    CurrentSkin()->focus = 2;  // stays where it is
  }
  ~DialogInputTest() override { End(); }
  void Focus(Widget* widget) { root.ChangeFocus(root.FocusWidget(), widget); }

  Dialog panel;
  Patch a{{0, 0, 20, 20}}, b{{20, 0, 20, 20}}, c{{80, 10, 20, 20}};
};

TEST_F(DialogInputTest, WhatLiesUnderThePointerIsToldEverything) {
  Patch above{{80, 10, 20, 20}};
  root.Add(&above);
  root.names[&above] = "above";
  PutMouse({15, 15});
  Watch({MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS, MSG_CLICK, MSG_WHEEL, MSG_LPRESS,
         MSG_LRELEASE, MSG_MPRESS, MSG_MRELEASE, MSG_RPRESS, MSG_RRELEASE});
  Start();
  std::string seen = root.Events() + '\n';
  std::vector<int> values;
  root.onEvent = [&](Widget* sender, int msg, int value) {
    if (sender == &root && (msg == MSG_WHEEL || msg == MSG_MOUSEMOVE)) values.push_back(value);
  };
  steps["turn"] = [] { mouse_z = mouse_z + 2; };
  steps["back"] = [] { mouse_z = mouse_z - 3; };
  steps["hide"] = [&] { above.Hide(); };
  steps["disable"] = [&] { above.Disable(); };
  steps["refuse"] = [&] { above.wantsMouse = false; };
  steps["show"] = [&] { above.Unhide(), above.Enable(); };
  steps["capture"] = [this] {
    b.SetFlag(kFlagPressed);
    a.wantsFocus = false;
    root.SetFocus(&b);
  };
  steps["press"] = [] { PutMouse({15, 15}), HoldButtons(1); };
  for (const char* script :
       {"45,15 55,15 80,10 L l 120,100 turn",
        "100,30 back hide L l show turn disable R r show turn refuse M m", "capture press l"})
    seen += Play(script) + '\n';
  EXPECT_EQ(values, std::vector({30, 10, 25, 40, 2, -20, -3, 2, 2, -85}));
  Watch({MSG_MOUSEMOVE});
  ExpectText("told_of_the_mouse", seen + Play("45,15") + '\n');
  Press();
  root.MsgEnd();
  HoldButtons(0);
  Start();
  EXPECT_FALSE(root.TestFlag(kFlagPressed) || panel.TestFlag(kFlagPressed)) << "in a new run";
}

TEST_F(DialogInputTest, TwoPressesOfOneButtonInTimeAreADoubleClickOnTheNextTick) {
  settings.doubleClickDelay = 79;
  PutMouse({90, 20});
  Start();
  EXPECT_EQ(DoubleClickWindow(), 3);
  Watch({MSG_DCLICK});
  steps["P"] = [] { mouse_b = 1; };  // unseen before the tick
  steps["2"] = [] { HoldButtons(1), HoldButtons(0), HoldButtons(1), HoldButtons(0); };
  for (const char* presses : {"L l L l", "R r wait R r", "M m M m", "P l P l", "L l P l"})
    EXPECT_EQ(Play(presses).substr(1), "(root, c: DClick)") << presses;
  EXPECT_EQ(Play("2 wait"), "wait(root, c: DClick)") << "all within a tick";
  for (const char* presses : {"L l wait wait", "R r L l wait", "L l R r M m wait"})
    EXPECT_EQ(Play(presses), "") << presses;
}

TEST_F(DialogInputTest, ADialogThatIsTakenInFindsThePointerAndTheFocusInItself) {
  PutMouse({15, 15});
  Start();
  Watch({MSG_END, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS});
  steps["out"] = [this] { root.Remove(&panel); };
  steps["in"] = [this] { root.Add(&panel); };
  steps["c"] = [this] { root.SetFocus(&c); };
  Patch cover{{10, 10, 20, 20}};
  steps["cover"] = [&] { root.MsgEnd(), root.Add(&cover), root.MsgStart(); };
  ExpectText("taken_in", Play("out in out c in cover") + '\n');
}

TEST_F(DialogInputTest, TheFocusFollowsThePointerAsTheSkinSays) {
  b.wantsFocus = false;
  Patch cover{{20, 0, 5, 50}, green, false};
  root.Add(&cover);
  Start();
  const char* const kFocused[] = {"cnapann", "ccaaaaa", "ccccccc"};
  for (const int rule : {0, 1, 2}) {
    CurrentSkin()->focus = rule;
    root.SetFocus(&c);
    c.SetFlag(kFlagPressed);  // captures the mouse until the pointer is on nothing
    std::string focused;
    for (const int x : {15, 120, 15, 40, 15, 22, 120}) {
      if (x == 120) c.ClearFlag(kFlagPressed);
      MoveTo(x, 15);
      focused += root.NameOf(root.FocusWidget())[0];
    }
    EXPECT_EQ(focused, kFocused[rule]);
  }
}

TEST_F(DialogInputTest, HandlersMayDestroyWhatTheyHandle) {
  CurrentSkin()->focus = 1;
  PutMouse({15, 15});
  for (const int fatal : {MSG_WANTFOCUS, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_MOUSEMOVE, MSG_GOTFOCUS,
                          MSG_CLICK, MSG_LPRESS, MSG_LRELEASE, MSG_DCLICK}) {
    std::unique_ptr<Patch> doomed[] = {std::make_unique<Patch>(Rect{0, 0, 20, 20}),
                                       std::make_unique<Patch>(Rect{80, 40, 20, 20})};
    panel.Add(doomed[0].get());
    root.Add(doomed[1].get());
    root.onEvent = [&](Widget* sender, int msg, int) {
      for (auto& patch : doomed)
        if (msg == fatal && sender == patch.get()) patch.reset();
    };
    Start();
    for (const Point p : {Point{15, 15}, Point{90, 50}, Point{15, 15}})
      for (int click = 0; click < 2; ++click) Click(p.x, p.y);
    EXPECT_TRUE(!doomed[0] && !doomed[1]) << fatal;
    root.onEvent = nullptr;
    root.MsgEnd();
  }
}

TEST_F(DialogInputTest, DraggingMovesTheEdgesOfItsModeAndNoOthers) {
  Draggable window;
  root.Add(&window);
  Start();
  std::ostringstream seen;
  const auto note = [&] {
    const Rect place = window.Bounds();
    seen << Join(place.x, place.y, place.w, place.h, kCursorNames[PointerShape()], "drawn",
                 b.draws > 0)
         << '\n';
    b.draws = 0;
  };
  for (const auto& [name, mode] : {std::pair{"move", kDragMove},
                                   {"top left", kDragTopLeft},
                                   {"top right", kDragTopRight},
                                   {"bottom left", kDragBottomLeft},
                                   {"bottom right", kDragBottomRight},
                                   {"top", kDragTop},
                                   {"bottom", kDragBottom},
                                   {"left", kDragLeft},
                                   {"right", kDragRight}}) {
    seen << '\n' << name << '\n';
    window.Shape(8, 9, 50, 30);
    window.SetFlag(kFlagMovable | kFlagSizeable);
    MoveTo(20, 20);
    window.mode = mode;  // its shape may have changed under the resting pointer
    Press();
    b.draws = 0;  // it shows again when it is no longer covered
    window.mode = kDragNone;
    for (const Point p : {Point{-280, -280}, {320, 320}, {23, 22}}) MoveTo(p.x, p.y), note();
    window.ClearFlag(mode == kDragMove ? kFlagMovable : kFlagSizeable);
    MoveTo(30, 20);
    Release();
    MoveTo(0, 0);
    note();  // neither without the flag nor after the release
  }
  ExpectText("drags", seen.str());
  window.mode = kDragLeft, MoveTo(20, 20);
  EXPECT_NE(PointerShape(), MOUSE_NORMAL);
  root.Remove(&window);
  EXPECT_EQ(PointerShape(), MOUSE_NORMAL);
  EXPECT_EQ(Dragged(kDragTopLeft, {2, 2, 9, 4}, {-3, -3}, {20, 8}), Rect(0, 0, 20, 8));
}

TEST_F(DialogInputTest, AKeyIsOfferedFromTheFocusOutwards) {
  Start();
  Focus(&b);
  Watch({MSG_KEY, MSG_CHAR, MSG_UCHAR, MSG_XCHAR});
  std::string codes;
  root.onEvent = [&](Widget* sender, int msg, int code) {
    if (sender == &b && msg >= MSG_CHAR && msg <= MSG_XCHAR) codes += Join(code);
  };
  steps["x"] = [] { TypeKey('x', KEY_X); };
  steps["256"] = [] { TypeKey(256, KEY_A); };
  for (const int chosen : {13, 10, 32})
    steps[std::to_string(chosen)] = [chosen] { TypeKey(chosen, KEY_ENTER); };
  steps["a-uses"] = [this] { a.usesKeys = true; };
  steps["b-uses"] = [this] { b.usesKeys = true; };
  steps["disabled"] = [this] { Focus(&c), c.Disable(); };
  steps["off"] = [] { settings.useKeyboard = false; };
  steps["closes"] = [this] {  // what follows the closing is for nobody
    settings.useKeyboard = true;
    c.Enable();
    root.onEvent = [this](Widget*, int, int) { root.Close(); };
    TypeKey('x', KEY_X);
    TypeKey('y', KEY_Y);
  };
  ExpectText("keys_offered",
             Play("x 256 13 10 32 a-uses 13 b-uses 13 disabled 13 off x closes 5,5 L") + '\n' +
                 codes + '\n');
}

TEST_F(DialogInputTest, AShortcutGoesToTheFirstThatHasItOrToNobody) {
  Patch second{{0, 0, 9, 9}};
  root.Add(&second);
  Start();
  Watch({MSG_KEY});
  Rows found;
  for (const int shortcut : {int{'A'}, 1, 0xE9, 256, 0, KEY_F1 * 256}) {
    c.SetKey(shortcut);
    second.SetKey(shortcut);
    found.emplace_back();
    for (const auto& [character, scancode] :
         {Point{'a', 0}, {1, 0}, {0xC9, 0}, {256, 0}, {0, 0}, {0, KEY_F1}, {1, KEY_F1}}) {
      c.Enable();
      root.HandleKey(character, scancode);
      c.Disable();
      const bool taken = root.HandleKey(character, scancode);
      found.back() += root.Events() == (taken ? "c: Key" : "") ? ".x"[taken] : '?';
    }
  }
  EXPECT_EQ(found, Rows({"x......", ".x....x", "..x....", ".......", ".......", ".....x."}));
}

TEST_F(DialogInputTest, EscapeClosesRootsAndWindows) {
  Start();
  Focus(&b);
  Watch({MSG_CLOSE});
  EXPECT_FALSE(panel.HandleKey(27, KEY_ESC));
  panel.SetFlag(kFlagWindow);
  EXPECT_TRUE(panel.HandleKey(27, KEY_ESC));
  EXPECT_EQ(root.Events(), "panel: Close");
  panel.ClearFlag(kFlagWindow);
  root.closes = false;
  EXPECT_TRUE(root.HandleKey(27, KEY_ESC));
  EXPECT_EQ(root.FocusWidget(), &b);
  root.closes = true;
  root.SetEscapeCloses(false);
  EXPECT_FALSE(root.HandleKey(27, KEY_ESC) || root.IsClosed());
  root.SetEscapeCloses(true);
  EXPECT_TRUE(root.HandleKey(27, KEY_ESC) && root.IsClosed() && !root.GetFocus());
}

TEST_F(DialogInputTest, ArrowsAndTabAskTheNearestFirst) {
  Widget here, beside;
  beside.Place(1, 0);
  EXPECT_EQ(FocusDistance(FocusMove::kRight, here, beside), 1);
  EXPECT_EQ(FocusDistance(FocusMove::kNext, here, here), 0);
  // Made in the order of their letters; d in the panel, too:
  //   a b    c
  //     d f
  //   e
  Patch d{{20, 20, 20, 20}}, e{{10, 50, 20, 20}}, f{{50, 30, 20, 20}};
  panel.Add(&d);
  root.Add(&e);
  root.Add(&f);
  Start();
  root.names.insert({{&d, "d"}, {&e, "e"}, {&f, "f"}});
  for (Patch* patch : {&a, &b, &c, &d, &e, &f}) patch->wantsFocus = false;
  Watch({MSG_WANTFOCUS});
  std::string asked;
  for (Patch* from : {&a, &b, &c, &d, &e, &f})
    for (const char* key : {"Right", "Left", "Down", "Up", "Tab", "Back"}) {
      HoldShifts(0);
      from->wantsFocus = true;
      Focus(from);
      from->wantsFocus = false;
      root.Events();
      asked += root.NameOf(from) + ' ' + Play(key) + '\n';
    }
  ExpectText("focus_moves", asked);
  HoldShifts(0);
  Focus(nullptr);
  a.Hide();
  c.Disable();
  EXPECT_EQ(Play("Tab"), "Tab(b, d, e, f: WantFocus)");
  panel.SetFlag(kFlagWindow);
  EXPECT_EQ(Play("Tab"), "Tab(e, f: WantFocus)");
  f.wantsFocus = true;
  Watch({MSG_GOTFOCUS, MSG_LOSTFOCUS});
  EXPECT_EQ(Play("Tab Up"), "Tab(f: GotFocus)") << "who keeps it is told nothing";
  EXPECT_TRUE(root.HandleKey(0, KEY_TAB));
  e.wantsFocus = true;
  f.SetFlag(kFlagPressed);
  EXPECT_EQ(Play("L Tab"), "") << "its press goes on";
  EXPECT_TRUE(root.HandleKey(0, KEY_TAB));
}

TEST_F(DialogInputTest, AJoystickStandsForKeysAndCountsOnceUntilItIsLetGo) {
  settings.useJoystick = true;
  settings.logicFrameRate = 1000;
  num_joysticks = 1;
  auto& [x, y, z] = joy[0].stick[0].axis;
  auto* const buttons = joy[0].button;
  std::vector<int> scancodes;
  root.onEvent = [&](Widget* sender, int msg, int code) {
    if (sender != &root && msg == MSG_CHAR) scancodes.push_back(code / 256);
  };
  b.usesKeys = true;
  Start();
  Focus(&b);
  for (int* input : {&x.d1, &x.d2, &y.d1, &y.d2, &buttons[0].b, &buttons[1].b})
    *input = 1, Tick(3), *input = 0, Tick();
  Dialog popup;
  Patch inside;
  popup.Add(&inside);
  inside.usesKeys = true;
  steps["hold"] = [=] { buttons[0].b = 1; };
  steps["free"] = [=] { buttons[0].b = 0; };
  steps["close"] = [&] { popup.Close(); };
  Play("hold");
  Meanwhile("wait free hold close");
  popup.Popup(&root, 0, 0, &inside);
  EXPECT_EQ(root.FocusWidget(), &b);
  settings.yield = false;
  Tick(2);  // what is held belongs to the popup that it closed, what was held to the root
  Play("free");
  Meanwhile("hold wait close");
  popup.Popup(&root, 0, 0, &inside);
  settings.yield = false;
  Tick(2);
  EXPECT_EQ(scancodes, std::vector<int>({KEY_LEFT, KEY_RIGHT, KEY_UP, KEY_DOWN, KEY_SPACE,
                                         KEY_SPACE, KEY_SPACE, KEY_SPACE, KEY_SPACE}));
  buttons[0].b = num_joysticks = 0;
}

TEST_F(DialogInputTest, TheFocusMovesDownAndUpTheContainers) {
  Start();
  Watch({MSG_GOTFOCUS, MSG_LOSTFOCUS});
  for (Widget* next : {&b, &c, &b}) Focus(next);
  EXPECT_EQ(
      root.Events(),
      "b, panel: GotFocus; b, panel: LostFocus; c: GotFocus; c: LostFocus; b, panel: GotFocus");
  Focus(&c), root.Events();
  panel.ChangeFocus(nullptr, &a);
  EXPECT_EQ(root.Events(), "a: GotFocus; c: LostFocus; panel: GotFocus");
  Focus(&b), Focus(nullptr);
  std::make_unique<Patch>().reset();  // whose end is nobody else's
  root.Events();
  root.SetFocus(&panel);
  EXPECT_EQ(root.Events(), "panel, b: GotFocus") << "the one that lost it last has it again";
  c.wantsFocus = b.wantsFocus = false;
  root.SetFocus(&c);
  root.SetFocus(&root);
  EXPECT_EQ(root.Events(), "");
  c.Hide();
  Focus(&c);
  EXPECT_EQ(root.Events(), "b, panel: LostFocus");
}

// What widgets are told first, with the argument, where the pointer, the wheel and the buttons are
// then, and how often the program's own acts came.
TEST_F(DialogInputTest, ARandomPlayerWithTheSameSeedDoesTheSameUntilTheEnd) {
  remove_mouse();
  settings.yield = true;
  RandomPlayer player{clock, 7};
  std::string seen, last;
  int often = 0, seldom = 0;
  player.eventsLeft = 200;
  player.Also(80, [&] { ++often; });
  player.Also(20, [&] { ++seldom; });
  Watch({MSG_XCHAR, MSG_MOUSEMOVE, MSG_WHEEL, MSG_LPRESS, MSG_LRELEASE, MSG_MPRESS, MSG_RPRESS});
  root.onEvent = [&](Widget*, int, int argument) {
    const std::string now = Join(argument, mouse_x, mouse_y, mouse_z, mouse_b, often, seldom);
    const std::string told = root.Events();
    if (!told.empty() && std::exchange(last, now) != now) seen += told + ' ' + now + '\n';
  };
  root.closes = false;
  EXPECT_TRUE(player.Run(root, [this] { root.closes = true, root.Close(); }));
  ExpectText("random_events", seen);
}

}  // namespace
}  // namespace zel
