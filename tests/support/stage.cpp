#include "tests/support/stage.h"

#include <utility>

#include "toolkit/core/startup.h"

namespace zel {

StageTest::StageTest() {
  settings.yield = false;
  settings.mouseShadow = false;
  ChangeMode(16);
  install_keyboard();
  clear_keybuf();
  root.Resize(kWidth, kHeight);
  PutMouse(kWidth - 1, kHeight - 1);
}

StageTest::~StageTest() {
  if (root.IsRunning()) root.MsgEnd();
  SetCurrentSkin(nullptr);
  PutMouse(0, 0);
  mouse_b = 0;
  mouse_z = 0;
  key_shifts = 0;
}

void StageTest::Watch(std::initializer_list<int> messages) {
  root.watched = messages;
  root.Events();
}

void StageTest::Expect(const char* events, const char* what) {
  EXPECT_EQ(root.Events(), events) << what;
}

void StageTest::ChangeMode(int depth, Dialog* follower) {
  ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, kWidth, kHeight, depth, follower);
}

void StageTest::Start() {
  root.MsgStart();
  Tick();
}

void StageTest::Tick(int times) {
  for (; times > 0; --times) {
    clock.Tick(0);
    root.MsgIdle();
  }
}

void StageTest::Script(std::vector<std::function<void()>> steps) {
  settings.yield = true;
  clock.onSleep = [this, steps = std::move(steps), done = std::make_shared<std::size_t>(0)] {
    const std::size_t step = (*done)++;
    if (step < steps.size()) {
      steps[step]();
    } else if (step > steps.size()) {
      ADD_FAILURE() << "still running";
      root.closes = true;
      machine.closeButton();
    }
    clock.Tick(0);
  };
}

void StageTest::PutMouse(int x, int y) {
  mouse_x = x;
  mouse_y = y;
}

void StageTest::MoveTo(int x, int y) {
  PutMouse(x, y);
  Tick();
}

void StageTest::Press(int buttons) {
  mouse_b = mouse_b | buttons;
  Tick();
}

void StageTest::Release(int buttons) {
  mouse_b = mouse_b & ~buttons;
  Tick();
}

void StageTest::Click(int x, int y) {
  MoveTo(x, y);
  Press();
  Release();
}

void StageTest::Type(int character, int scancode) {
  simulate_ukeypress(character, scancode);
  Tick();
}

}  // namespace zel
