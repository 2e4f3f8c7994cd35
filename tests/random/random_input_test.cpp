// Lets somebody play with the gallery and the menu who does everything that can be done.
//
// ZEL_RANDOM_EVENTS is how many events each test gets, ZEL_RANDOM_SEED chooses them.
#include "imageformats/register.h"
#include "launcher/menu_screen.h"
#include "tests/support/launcher_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"
#include "toolkit/testing/random_player.h"
#include "tools/gallery/gallery.h"

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
    machine_.refusedModes = {24};
    InstallToolkit(nullptr);
    remove_mouse();
    player_.eventsLeft = FromEnvironment("ZEL_RANDOM_EVENTS", 4000);
    player_.Also(20, [] { Loop().RequestClose(); });
    player_.Also(10, [] { Loop().RedrawEverything(); });
    player_.Also(60, [this] {
      WriteFile("progress", Join("[Progress]\nStepNumber=", player_.Below(40) - 5, "\nCurrentStep=",
                                 player_.Below(60) - 10, "\nProgressHide=", player_.Below(2),
                                 "\nProgressInterval=", player_.Below(2000) - 100));
    });
    player_.Also(5, [this] {
      constexpr Size kSizes[] = {{320, 200}, {640, 480}, {800, 600}};
      constexpr int kDepths[] = {8, 15, 16, 24, 32};
      const Size size = kSizes[player_.Below(3)];
      ChangeScreenMode(0, true, size.w, size.h, kDepths[player_.Below(5)], root_);
    });
    player_.Also(5, [this] {
      if (player_.Below(2) || CurrentSkin()->Load(kSkinFile).IsError()) CurrentSkin()->Reset();
      root_->SetSkin(CurrentSkin());
    });
  }
  ~RandomInputTest() override {
    ExitToolkit();
    remove_keyboard();
  }
  // Until all events are used up.
  template <class Root, class... Args>
  void Play(int timersThatStay, void (*end)(Root&), Args... args) {
    while (player_.eventsLeft > 0) {
      Root root{args...};
      root_ = &root;
      ASSERT_TRUE(player_.Run(root, [&root, end] { end(root); }));
      ASSERT_EQ(timers_.Count(), timersThatStay);
    }
  }

 private:
  Dialog* root_ = nullptr;
  FakeMachine machine_;
  FakeTimers timers_;
  RandomPlayer player_{timers_, static_cast<unsigned>(FromEnvironment("ZEL_RANDOM_SEED", 1))};
};

TEST_F(RandomInputTest, GalleryStandsEverything) {
  Play<Gallery>(
      0, [](Gallery& gallery) { gallery.Close(); }, kSkinFile);
}

TEST_F(RandomInputTest, MenuStandsEverything) {
  Play<MenuScreen>(1, [](MenuScreen& screen) {  // the progress timer stays
    const MenuEntry entry{MenuItem{}};
    screen.HandleEvent(nullptr, MSG_ITEM_CHOSEN, reinterpret_cast<EventArg>(&entry), 0);
  });
}

}  // namespace
}  // namespace zel
