#include "tests/support/stage.h"
#include "toolkit/core/mouse_pointer.h"

namespace zel {
namespace {

// a, b and c from left to right, b in a panel.
class DialogKeyboardTest : public StageTest {
 protected:
  DialogKeyboardTest() {
    settings.showMouse = false;
    panel.Shape(40, 0, 40, 80);
    root.Add(&a);
    root.Add(&panel);
    panel.Add(&b);
    root.Add(&c);
    root.names = {{&a, "a"}, {&b, "b"}, {&c, "c"}, {&panel, "panel"}};
    steps["Tab"] = [] { TypeKey(0, KEY_TAB); };
    steps["Up"] = [] { TypeKey(0, KEY_UP); };
    Start();
  }
  ~DialogKeyboardTest() override { End(); }
  void Focus(Widget* widget) { root.ChangeFocus(root.FocusWidget(), widget); }

  Patch a{{0, 0, 20, 20}}, b{{0, 0, 20, 20}}, c{{130, 0, 20, 20}};
  Dialog panel;
};

TEST_F(DialogKeyboardTest, AKeyIsOfferedFromTheFocusOutwards) {
  Focus(&b);
  Watch({MSG_KEY, MSG_CHAR, MSG_UCHAR, MSG_XCHAR});
  std::vector<int> codes;
  root.onEvent = [&](Widget* sender, int msg, int code) {
    if (sender == &b && msg >= MSG_CHAR && msg <= MSG_XCHAR) codes.push_back(code);
  };
  Type('x', KEY_X);
  Expect("b: Char; b: UChar; b: XChar; panel: Char; panel: UChar; a, panel, c: XChar");
  Type(0x20AC, KEY_E);
  const int x = 'x' + KEY_X * 256, euro = 94 + KEY_E * 256;
  EXPECT_EQ(codes, std::vector({x, int{'x'}, x, euro, 0x20AC, euro}));
  for (const int chosen : {13, 10, 32}) {
    root.Events();
    Type(chosen, KEY_ENTER);
    Expect("b: Char; b: UChar; b: XChar; b: Key");
  }
  b.usesKeys = true;
  Type(13, KEY_ENTER);
  Expect("b: Char");
  Focus(&a);
  a.Disable();
  c.Hide();
  Type(13, KEY_ENTER);
  Expect("panel: XChar", "what is hidden or disabled gets no keys");
  settings.useKeyboard = false;
  Type('x', KEY_X);
  Expect("");
}

TEST_F(DialogKeyboardTest, AShortcutGoesToTheFirstThatHasItOrToNobody) {
  Watch({MSG_KEY});
  const auto expect = [this](int shortcut, int character, int scancode, bool found) {
    c.SetKey(shortcut);
    a.SetKey(shortcut);
    root.HandleKey(character, scancode);
    Expect(found ? "a: Key" : "");
    a.Disable();
    EXPECT_EQ(root.HandleKey(character, scancode), found);
    Expect("");
    a.Enable();
  };
  expect('A', 'a', 0, true);
  expect('a', 'A', 0, true);
  expect(0xE9, 0xC9, 0, true);
  expect('a', 'b', 0, false);
  expect(0x20AC, 0x20AC, 0, false);
  expect(0, 0, 0, false);
  expect(KEY_F1 * 256, 0, KEY_F1, true);
  expect(KEY_F1 * 256, 1, KEY_F1, false);
}

TEST_F(DialogKeyboardTest, EscapeClosesRootsAndWindows) {
  Focus(&b);
  Watch({MSG_CLOSE});
  EXPECT_FALSE(panel.HandleKey(27, KEY_ESC));
  panel.SetFlag(kFlagWindow);
  EXPECT_TRUE(panel.HandleKey(27, KEY_ESC));
  Expect("panel: Close");
  panel.ClearFlag(kFlagWindow);
  root.closes = false;
  EXPECT_TRUE(root.HandleKey(27, KEY_ESC));
  EXPECT_EQ(root.FocusWidget(), &b);
  root.closes = true;
  root.SetEscapeCloses(false);
  EXPECT_FALSE(root.HandleKey(27, KEY_ESC) || root.IsClosed());
  root.SetEscapeCloses(true);
  Type(27, KEY_ESC);
  EXPECT_TRUE(root.IsClosed());
  EXPECT_EQ(root.GetFocus(), nullptr);
}

TEST_F(DialogKeyboardTest, ArrowsAndTabAskTheNearestFirst) {
  // Below a, b and c, made in the order of their letters:
  //     d f      d in the panel
  //   e
  Patch d{{0, 40, 20, 20}}, e{{0, 80, 20, 20}}, f{{80, 40, 20, 20}};
  panel.Add(&d);
  root.Add(&e);
  root.Add(&f);
  root.names.insert({{&d, "d"}, {&e, "e"}, {&f, "f"}});
  for (Patch* patch : {&a, &b, &c, &d, &e, &f}) patch->wantsFocus = false;
  Watch({MSG_WANTFOCUS});
  const struct {
    Patch* from;
    int scancode, shifts;
    const char* asked;
  } kRows[] = {{&a, KEY_RIGHT, 0, "b, d, c, f, a, e: WantFocus"},
               {&c, KEY_LEFT, 0, "b, a, f, d, e, c: WantFocus"},
               {&b, KEY_DOWN, 0, "d, f, e, b, a, c: WantFocus"},
               {&e, KEY_UP, 0, "a, d, b, f, c, e: WantFocus"},
               {&c, KEY_TAB, 0, "d, e, f, a, b: WantFocus"},
               {&c, KEY_TAB, KB_SHIFT_FLAG, "b, a, f, e, d: WantFocus"},
               {&f, KEY_TAB, 0, "a, b, c, d, e: WantFocus"}};
  for (const auto& row : kRows) {
    row.from->wantsFocus = true;
    Focus(row.from);
    row.from->wantsFocus = false;
    root.Events();
    HoldShifts(row.shifts);
    Key(row.scancode);
    Expect(row.asked);
  }
  Focus(nullptr);
  a.Hide();
  c.Disable();
  EXPECT_EQ(Play("Tab"), "Tab(b, d, e, f: WantFocus)");
  panel.SetFlag(kFlagWindow);
  EXPECT_EQ(Play("Tab"), "Tab(e, f: WantFocus)");
  f.wantsFocus = true;
  Watch({MSG_GOTFOCUS, MSG_LOSTFOCUS});
  EXPECT_EQ(Play("Tab Up"), "Tab(f: GotFocus)") << "who keeps it is told nothing";
  e.wantsFocus = true;
  f.SetFlag(kFlagPressed);
  mouse_b = 1;
  CurrentPointer()->Update();
  EXPECT_EQ(Play("Tab"), "") << "its press goes on";
}

TEST_F(DialogKeyboardTest, AJoystickStandsForKeysAndCountsOnceUntilItIsLetGo) {
  settings.useJoystick = true;
  settings.logicFrameRate = 1000;
  num_joysticks = 1;
  JOYSTICK_INFO& stick = joy[0];
  std::vector<int> scancodes;
  root.onEvent = [&](Widget* sender, int msg, int code) {
    if (sender == &a && msg == MSG_CHAR) scancodes.push_back(code / 256);
  };
  a.usesKeys = true;
  Focus(&a);
  int* const kInputs[] = {&stick.stick[0].axis[0].d1, &stick.stick[0].axis[0].d2,
                          &stick.stick[0].axis[1].d1, &stick.stick[0].axis[1].d2,
                          &stick.button[0].b,         &stick.button[1].b};
  for (int* input : kInputs) {
    *input = 1;
    Tick(3);
    *input = 0;
    Tick();
  }
  EXPECT_EQ(scancodes,
            std::vector<int>({KEY_LEFT, KEY_RIGHT, KEY_UP, KEY_DOWN, KEY_SPACE, KEY_SPACE}));
  Dialog popup;
  Script({[&] { stick.button[0].b = 1; }, [&] { popup.Close(); }});
  popup.Popup(&root, 0, 0, nullptr);
  settings.yield = false;
  Tick(2);
  EXPECT_EQ(scancodes.size(), 6u) << "what is held belongs to the popup that it closed";
  stick.button[0].b = num_joysticks = 0;
}

TEST_F(DialogKeyboardTest, TheFocusMovesDownAndUpTheContainers) {
  Watch({MSG_GOTFOCUS, MSG_LOSTFOCUS});
  for (Widget* next : {&b, &c, &b}) Focus(next);
  Expect("b, panel: GotFocus; b, panel: LostFocus; c: GotFocus; c: LostFocus; b, panel: GotFocus");
  Focus(nullptr);
  root.Events();
  root.SetFocus(&panel);
  Expect("panel, b: GotFocus", "the one that lost it last has it again");
  root.SetFocus(&a);
  Expect("b, panel: LostFocus; a: GotFocus");
  a.wantsFocus = false;
  root.SetFocus(&a);
  root.SetFocus(&root);
  Expect("");
  c.Hide();
  Focus(&c);
  Expect("a: LostFocus");
  a.wantsFocus = true;
  b.wantsFocus = false;
  Patch inDoomed{{0, 0, 5, 5}};
  for (const int round : {0, 1, 2, 3}) {
    const int fatal = round % 2 ? MSG_LOSTFOCUS : MSG_WANTFOCUS;
    root.SetFocus(&a);
    auto doomed = std::make_unique<Dialog>();
    doomed->Add(&inDoomed);
    root.Add(doomed.get());
    root.onEvent = [&](Widget*, int msg, int) {
      if (msg == fatal) doomed.reset();
    };
    round < 2 ? root.SetFocus(doomed.get()) : Key(KEY_TAB);
    EXPECT_EQ(root.GetFocus(), fatal == MSG_LOSTFOCUS ? nullptr : &a) << round;
    root.onEvent = nullptr;
  }
}

}  // namespace
}  // namespace zel
