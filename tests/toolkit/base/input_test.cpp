#include "toolkit/base/input.h"

#include <thread>

#include "tests/support/stage.h"
#include "toolkit/base/record_queue.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

TEST(RecordQueue, KeepsTheOrderOfEachThreadAndRefusesWhenFull) {
  constexpr int kThreads = 3, kEach = 400, kPlaces = 32;
  RecordQueue<int, kPlaces> queue;
  std::vector<std::jthread> writers;
  for (int first = 0; first < kThreads * kEach; first += kEach)
    writers.emplace_back([&queue, first] {
      for (int i = first; i < first + kEach; ++i)
        while (!queue.Put(i)) std::this_thread::yield();
    });
  int next[kThreads] = {};
  for (int taken = 0, record = 0; taken < kThreads * kEach; ++taken) {
    while (!queue.Take(record)) std::this_thread::yield();
    ASSERT_EQ(record % kEach, next[record / kEach]++);
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
  static void PressKey(int character, int scancode = 0) { _handle_key_press(character, scancode); }
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
  Watch({MSG_CLICK, MSG_LPRESS, MSG_LRELEASE, MSG_CHAR, MSG_WHEEL});
  Tap(1);
  PressKey('n', KEY_N);
  PutMouse({70, 10});
  mouse_z = 2;
  HoldButtons(1);
  PutMouse({10, 60});
  root.MsgIdle();
  Expect(
      "root, a: Click; root, a: LPress; root, a: LRelease; a: Char; root, b: Click; root, b: "
      "LPress; root, b: Wheel");
}

TEST_F(InputTest, WhatTheQueueRefusesIsFoundInTheDevices) {
  PutMouse({10, 10});
  Start();
  PressKey('!');
  Tap(512);
  root.MsgIdle();
  EXPECT_EQ(held, 1);
  Tick();
  EXPECT_EQ(held, 0);
  std::string all = "!";
  for (int i = 0; i < 1070; ++i) {
    all += static_cast<char>(33 + i % 90);
    PressKey(all.back());
  }
  Tick(50);
  EXPECT_EQ(typed, all);
}

TEST_F(InputTest, WakesTheLoopBetweenTwoTicks) {
  settings.yield = true;
  root.onEvent = [this](Widget*, int msg, int) {
    if (msg == MSG_CHAR) root.Close();
  };
  clock.onSleep = [this] {
    EXPECT_EQ(At(10, 10), red) << "the first frame";
    PressKey('q', KEY_Q);
  };
  root.Execute(&a);
  EXPECT_EQ(clock.sleeps, 1);
}

TEST_F(InputTest, KeysBeforeAndAfterTheLoopAreNotLost) {
  keyboard_ucallback = [](int character, int* scancode) {
    return character == 'z' ? *scancode = 0 : character - 1;
  };
  PressKey('b');
  Start();
  root.SetFocus(&a);
  settings.useKeyboard = false;
  for (const char key : {'z', 'c', 'd'}) PressKey(key);
  root.MsgIdle();
  EXPECT_EQ(typed, "");
  settings.useKeyboard = true;
  PressKey('e');
  root.MsgEnd();
  int scancode = 0;
  for (const char key : {'b', 'c', 'd'}) EXPECT_EQ(ureadkey(&scancode), key);
  PressKey('z');
  EXPECT_FALSE(keypressed()) << "who was asked before is asked again";
  keyboard_ucallback = nullptr;
}

}  // namespace
}  // namespace zel
