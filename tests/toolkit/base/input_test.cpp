#include "toolkit/base/input.h"

#include <thread>

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/base/record_queue.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

TEST(RecordQueue, KeepsTheOrderOfEachThreadAndRefusesWhenFull) {
  constexpr int kEach = 400, kPlaces = 32;
  RecordQueue<int, kPlaces> queue;
  const auto write = [&queue](int first) {
    for (int i = first; i < first + kEach; ++i)
      while (!queue.Put(i)) std::this_thread::yield();
  };
  const std::jthread writers[] = {std::jthread{write, 0}, std::jthread{write, kEach}};
  int next[] = {0, kEach};
  for (int taken = 0, record = 0; taken < 2 * kEach; ++taken) {
    while (!queue.Take(record)) std::this_thread::yield();
    ASSERT_EQ(record, next[record / kEach]++);
  }
  for (int i = 0; i <= kPlaces; ++i) EXPECT_EQ(queue.Put(i), i < kPlaces);
}

class InputTest : public StageTest {
 protected:
  InputTest() {
    root.Add(&a);
    root.Add(&b);
    root.names = {{&a, "a"}, {&b, "b"}};
    root.onEvent = [this](Widget* sender, int msg, int code) {
      if (sender != &a) return;
      if (msg == MSG_CHAR) typed += static_cast<char>(code);
      held += (msg == MSG_LPRESS) - (msg == MSG_LRELEASE);
    };
  }
  // As Allegro's drivers do it.
  static void PressKeys(const char* characters) {
    for (; *characters; ++characters) _handle_key_press(*characters, 0);
  }
  static void Tap(int times) {
    for (; times > 0; --times) HoldButtons(1), HoldButtons(0);
  }

  Patch a{{0, 0, 50, 50}}, b{{60, 0, 50, 50}};
  std::string typed;
  int held = 0;
};

TEST_F(InputTest, IsToldInItsOrderWithoutATick) {
  Start();
  MoveTo(10, 10);
  Watch({MSG_CLICK, MSG_LPRESS, MSG_LRELEASE, MSG_CHAR, MSG_WHEEL, MSG_MOVE});
  root.onEvent = [this](Widget*, int msg, int) {
    if (msg == MSG_CHAR && b.x() == 60) b.Place(61, 0), PressKeys("w");  // which waits
  };
  Tap(1);
  PressKeys("n");
  PutMouse({70, 10});
  mouse_z = 2;
  HoldButtons(1);
  PutMouse({10, 60});
  root.MsgIdle();
  const std::string seen = root.Events() + '\n';
  root.MsgIdle();
  ExpectText("input_in_order", seen + root.Events() + '\n');
  for (const Color color : {green, blue}) {
    a.color = color, a.Redraw();
    color == green ? Tap(1) : _handle_key_release(KEY_N);
    root.MsgIdle();
    EXPECT_EQ(At(30, 30), green) << "a key that goes up changes nothing";
  }
  PutMouse({10, 59}), _handle_key_release(KEY_N), root.MsgIdle();
  EXPECT_EQ(At(30, 30), blue) << "but the mouse that has moved meanwhile does";
}

TEST_F(InputTest, WhatTheQueueRefusesIsFoundInTheDevices) {
  PutMouse({10, 10});
  Start();
  PressKeys("!");
  Tap(512);
  root.MsgIdle();
  EXPECT_EQ(held, 1);
  Tick();
  EXPECT_EQ(held, 0);
  std::string more;
  for (int i = 0; i < 1070; ++i) more += static_cast<char>(33 + i % 90);
  PressKeys(more.c_str());
  Tick(50);
  EXPECT_EQ(typed, '!' + more);
}

TEST_F(InputTest, WhatIsHeldWhenTheDisplayGoesIsHeldNoLongerWhenItComesBack) {
  const unsigned before = Returns();
  _key_shifts = KB_SHIFT_FLAG | KB_CTRL_FLAG | KB_ALT_FLAG | KB_MENU_FLAG | KB_CAPSLOCK_FLAG;
  NoteReturn();
  EXPECT_TRUE(_key_shifts == KB_CAPSLOCK_FLAG && Returns() == before + 1);
}

TEST_F(InputTest, WakesTheLoopBetweenTwoTicks) {
  settings.yield = true;
  root.onEvent = [this](Widget*, int msg, int) {
    if (msg == MSG_CHAR) root.Close();
  };
  clock.onSleep = [this] {
    EXPECT_EQ(At(10, 10), red) << "the first frame";
    PressKeys("q");
  };
  root.Execute(&a);
  EXPECT_EQ(clock.sleeps, 1);
}

TEST_F(InputTest, KeysBeforeAndAfterTheLoopAreNotLost) {
  keyboard_ucallback = [](int character, int* scancode) {
    return character == 'z' ? *scancode = 0 : character - 1;
  };
  PressKeys("b");
  Start();
  root.SetFocus(&a);
  settings.useKeyboard = false;
  PressKeys("zcd");
  root.MsgIdle();
  EXPECT_EQ(typed, "");
  settings.useKeyboard = true;
  PressKeys("e");
  root.MsgEnd();
  int scancode = 0;
  for (const char key : {'b', 'c', 'd'}) EXPECT_EQ(ureadkey(&scancode), key);
  PressKeys("z");
  EXPECT_FALSE(keypressed()) << "who was asked before is asked again";
  keyboard_ucallback = nullptr;
}

TEST_F(InputTest, WhoWasCalledBackBeforeIsCalledBackStillAndMayChangeKeys) {
  static std::string told;
  keyboard_callback = [](int key) {
    told += Join("key", key & 0xFF, key >> 8);
    return key == ('b' | KEY_B << 8) ? 'x' | KEY_X << 8 : key == ('c' | KEY_C << 8) ? 0 : key;
  };
  keyboard_lowlevel_callback = [](int code) { told += Join("code", code); };
  mouse_callback = [](int changes) { told += Join("mouse", changes); };
  StartInput();
  for (const auto& [character, scancode] :
       {std::pair{int{'a'}, KEY_A}, {'b', KEY_B}, {'c', KEY_C}, {0x436, KEY_D}})
    _handle_key_press(character, scancode);
  _handle_key_release(KEY_A);
  mouse_callback(MOUSE_FLAG_MOVE | MOUSE_FLAG_MOVE_W);
  HoldButtons(2);
  told += '\n';
  for (InputRecord record; TakeInput(record);)
    told += Join(record.kind, record.character, record.scancode, record.mouse.buttons) + '\n';
  ExpectText("called_back", told);
  HoldButtons(0);
  _handle_key_press('e', KEY_E);
  EndInput();
  int scancode = 0;
  EXPECT_EQ(ureadkey(&scancode), 'e');
  EXPECT_EQ(Join(scancode, keypressed()), Join(KEY_E, 0)) << "what nobody took, and keys alone";
  EXPECT_TRUE(keyboard_lowlevel_callback && mouse_callback && !keyboard_ucallback);
  keyboard_callback = nullptr;
  keyboard_lowlevel_callback = nullptr;
  mouse_callback = nullptr;
}

}  // namespace
}  // namespace zel
