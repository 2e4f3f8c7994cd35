// Lets somebody play who does everything that the devices can do, in no order.
//
// ZEL_RANDOM_EVENTS is how many events each test gets, ZEL_RANDOM_SEED chooses them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <utility>

#include "imageformats/register.h"
#include "launcher/menu_screen.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"
#include "tests/support/launcher_fixture.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/bitmap_guard.h"
#include "tools/gallery/gallery.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

constexpr const char* kSkinFile = "skin/zel.skin";

const std::filesystem::path sourceDirectory = std::filesystem::current_path();

int FromEnvironment(const char* name, int usual) {
  const char* text = std::getenv(name);
  return text ? std::atoi(text) : usual;
}

class RandomInputTest : public LauncherFixture {
 protected:
  RandomInputTest() {
    std::filesystem::copy(sourceDirectory / "data", ".", std::filesystem::copy_options::recursive);
    RegisterPictureFormats();
    InstallBitmapGuard();
    settings.skinPath.Assign(kSkinFile);
    machine_.refusedDepths = {24};
    InstallToolkit(nullptr);
    remove_mouse();  // the pointer moves as the test says
    timers_.onSleep = [this] { Play(); };
  }
  ~RandomInputTest() override {
    ExitToolkit();
    remove_keyboard();
    for (volatile int* state : {&mouse_x, &mouse_y, &mouse_z, &mouse_b}) *state = 0;
  }

  // Runs a root until it closes; what must be closed over it at the end is closed.
  void Run(Dialog& root) {
    root_ = &root;
    root.Execute(nullptr);
    EXPECT_EQ(timers_.Count(), extraTimers_);
  }

  std::function<void()> endRoot_;
  int extraTimers_ = 0;                                    // that outlive the loop
  int left_ = FromEnvironment("ZEL_RANDOM_EVENTS", 4000);  // events

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  // One event and, more often than not, one tick of the clock.
  void Play() {
    ASSERT_TRUE(root_->Contains(root_->FocusWidget()) || !root_->FocusWidget());
    ASSERT_TRUE(root_->Contains(root_->MouseWidget()) || !root_->MouseWidget());
    if (--left_ > 0)
      Act();
    else if (Dialog* over = AsDialog(root_->GetFocus()); over && over->TestFlag(kFlagPoppedUp))
      over->Close();
    else
      endRoot_();
    if (Below(3) == 0) return;
    const long logicPeriod = TIMERS_PER_SECOND / settings.UsableFrameRate();
    for (int i = 0; i < timers_.Count(); ++i)
      if (timers_.Period(i) == logicPeriod || Below(8) == 0) timers_.Tick(i, 1 + Below(2));
  }
  void Act() {
    // Of so many in 10,000.
    using Test = RandomInputTest;
    static constexpr std::pair<int, void (Test::*)()> kKinds[] = {
        {2500, &Test::Jump},       {1000, &Test::Move},     {2400, &Test::Press},
        {400, &Test::Wheel},       {2400, &Test::UsualKey}, {500, &Test::AnyKey},
        {500, &Test::Type},        {200, &Test::Shift},     {60, &Test::Progress},
        {20, &Test::RequestClose}, {10, &Test::SwitchIn},   {5, &Test::ChangeMode},
        {5, &Test::ChangeSkin}};
    int chosen = Below(10000);
    for (const auto& [weight, act] : kKinds)
      if ((chosen -= weight) < 0) return (this->*act)();
  }
  void Jump() {
    mouse_x = Below(settings.screenWidth);
    mouse_y = Below(settings.screenHeight);
  }
  void Move() {
    mouse_x = std::clamp(mouse_x + Below(17) - 8, 0, settings.screenWidth - 1);
    mouse_y = std::clamp(mouse_y + Below(17) - 8, 0, settings.screenHeight - 1);
  }
  // The mouse's driver calls back, unless it is one of those that are polled.
  void ChangeMouse(volatile int& state, int value) {
    state = value;
    if (mouse_callback && Below(8)) mouse_callback(MOUSE_FLAG_LEFT_DOWN);
  }
  void Press() { ChangeMouse(mouse_b, mouse_b ? 0 : Below(4) ? 1 : 1 + Below(7)); }
  void Wheel() { ChangeMouse(mouse_z, mouse_z + Below(7) - 3); }
  void Key(int character, int scancode) {
    _handle_key_press(character, scancode);
    if (Below(4)) _handle_key_release(scancode);
  }
  void UsualKey() {
    static constexpr int kKeys[][2] = {
        {KEY_UP, 0},     {KEY_DOWN, 0},    {KEY_LEFT, 0}, {KEY_RIGHT, 0},    {KEY_TAB, 9},
        {KEY_ENTER, 13}, {KEY_HOME, 0},    {KEY_END, 0},  {KEY_PGUP, 0},     {KEY_PGDN, 0},
        {KEY_DEL, 0},    {KEY_SPACE, ' '}, {KEY_ESC, 27}, {KEY_BACKSPACE, 8}};
    const auto& usual = kKeys[Below(static_cast<int>(std::size(kKeys)))];
    Key(usual[1], usual[0]);
  }
  void AnyKey() { simulate_ukeypress(Below(2) ? 0 : Below(256), Below(KEY_MAX)); }
  void Type() { Key(Below(20) ? ' ' + Below(95) : Below(0x3000), Below(KEY_MAX)); }
  void Shift() { _key_shifts = Below(64); }
  void RequestClose() { Loop().RequestClose(); }
  void SwitchIn() { Loop().RedrawEverything(); }
  void Progress() {
    WriteFile("progress", "[Progress]\nStepNumber=" + std::to_string(Below(40) - 5) +
                              "\nCurrentStep=" + std::to_string(Below(60) - 10) +
                              "\nProgressHide=" + std::to_string(Below(2)) +
                              "\nProgressInterval=" + std::to_string(Below(2000) - 100) + '\n');
  }
  void ChangeMode() {
    static constexpr Size kSizes[] = {{320, 200}, {640, 480}, {800, 600}};
    static constexpr int kDepths[] = {8, 15, 16, 24, 32};
    const Size size = kSizes[Below(3)];
    ChangeScreenMode(0, true, size.w, size.h, kDepths[Below(5)], root_);
  }
  void ChangeSkin() {
    Skin& skin = *CurrentSkin();
    if (Below(2))
      skin.Load(kSkinFile);
    else
      skin.Reset();
    root_->SetSkin(&skin);
  }

  std::mt19937 random_{static_cast<unsigned>(FromEnvironment("ZEL_RANDOM_SEED", 1))};
  Dialog* root_ = nullptr;
  FakeMachine machine_;
  FakeTimers timers_;
};

TEST_F(RandomInputTest, GalleryStandsEverything) {
  while (left_ > 0) {
    Gallery gallery{kSkinFile};
    endRoot_ = [&gallery] { gallery.Close(); };
    Run(gallery);
  }
}

TEST_F(RandomInputTest, MenuStandsEverything) {
  extraTimers_ = 1;  // for the progress file
  IconCache icons;
  const MenuEntry entry{MenuItem{}, icons};
  while (left_ > 0) {
    MenuScreen screen;
    endRoot_ = [&screen, &entry] {
      screen.HandleEvent(nullptr, MSG_ITEM_CHOSEN, reinterpret_cast<EventArg>(&entry), 0);
    };
    Run(screen);
  }
}

}  // namespace
}  // namespace zel
