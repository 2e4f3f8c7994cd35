#include "toolkit/testing/fake_machine.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "toolkit/base/graphics_mode.h"

#include <allegro/internal/aintern.h>  // _switch_in

namespace zel {
namespace {

constexpr int kFullScreenId = AL_ID('F', 'A', 'K', 'E');
constexpr int kWindowId = AL_ID('F', 'A', 'K', 'W');
constexpr int kOtherId = AL_ID('F', 'A', 'K', 'I');

int anyMutex;

}  // namespace

FakeMachine::FakeMachine() {
  if (!system_driver) install_allegro(SYSTEM_NONE, &errno, nullptr);
  current_ = this;
  previous_ = system_driver;
  system_ = *system_driver;
  system_driver = &system_;
  PrepareGraphics(fullScreen_, false);
  PrepareGraphics(window_, true);
  PrepareInput();
  PrepareSystem();
}

FakeMachine::~FakeMachine() {
  remove_mouse();
  remove_keyboard();
  remove_timer();
  SetTextMode();
  system_driver = previous_;
  current_ = nullptr;
}

void FakeMachine::SwitchIn() { _switch_in(); }

BITMAP* FakeMachine::SetMode(int w, int h, int depth, bool windowed) {
  current_->tried.push_back({w, h, depth, windowed});
  const auto& refused = current_->refusedModes;
  for (const int value : {w, depth})
    if (std::find(refused.begin(), refused.end(), value) != refused.end()) return nullptr;
  gfx_driver->w = w;
  gfx_driver->h = h;
  return create_bitmap_ex(depth, std::max(w, current_->least.first),
                          std::max(h, current_->least.second));
}

BITMAP* FakeMachine::CreatePage(int w, int h) {
  if (current_->videoPages >= current_->videoPagesLeft) return nullptr;
  ++current_->videoPages;
  BITMAP* page = create_bitmap(w, h);
  page->id |= BMP_ID_VIDEO;
  return page;
}

void FakeMachine::DestroyPage(BITMAP* page) {
  --current_->videoPages;
  page->id = 0;
  destroy_bitmap(page);
}

int FakeMachine::SetSwitchMode(int mode) {
  current_->switchModes.push_back(mode);
  return mode == SWITCH_BACKGROUND && !current_->switchesInBackground ? -1 : 0;
}

void FakeMachine::PrepareGraphics(GFX_DRIVER& driver, bool windowed) {
  driver.id = windowed ? kWindowId : kFullScreenId;
  driver.ascii_name = "fake display";
  driver.windowed = windowed;
  driver.init = windowed ? [](int w, int h, int, int, int d) { return SetMode(w, h, d, true); }
                         : [](int w, int h, int, int, int d) { return SetMode(w, h, d, false); };
  driver.vsync = [] { ++current_->retraces; };
  driver.set_palette = [](const RGB*, int, int, int) {};
  driver.create_video_bitmap = CreatePage;
  driver.destroy_video_bitmap = DestroyPage;
  driver.show_video_bitmap = [](BITMAP* page) {
    current_->shownPage = page;
    return 0;
  };
}

void FakeMachine::PrepareInput() {
  keyboard_.ascii_name = mouse_.ascii_name = timer_.ascii_name = "fake input";
  keyboard_.init = [] { return current_->hasKeyboard ? 0 : -1; };
  keyboard_.exit = [] {};
  keyboard_.set_leds = [](int) {};
  keyboard_.set_rate = [](int delay, int repeat) {
    current_->keyboardRates.emplace_back(delay, repeat);
  };
  mouse_.init = [] { return current_->mouseButtons; };
  mouse_.exit = [] {};
  mouse_.position = [](int, int) {};
  mouse_.set_range = [](int, int, int, int) {};
  mouse_.set_speed = [](int x, int y) { current_->mouseSpeeds.emplace_back(x, y); };
  timer_.init = [] { return current_->hasTimer ? 0 : -1; };
  timer_.exit = [] {};
  timer_.install_int = [](void (*)(), long) { return 0; };
  timer_.remove_int = [](void (*)()) {};
}

void FakeMachine::PrepareSystem() {
  graphicsList_[0] = {kFullScreenId, &fullScreen_, TRUE};
  graphicsList_[1] = {kWindowId, &window_, TRUE};
  keyboardList_[0] = {kOtherId, &keyboard_, TRUE};
  mouseList_[0] = {kOtherId, &mouse_, TRUE};
  timerList_[0] = {kOtherId, &timer_, TRUE};
  graphicsList_[2] = keyboardList_[1] = mouseList_[1] = timerList_[1] = {0, nullptr, 0};
  system_.gfx_drivers = [] { return current_->graphicsList_; };
  system_.keyboard_drivers = [] { return current_->keyboardList_; };
  system_.mouse_drivers = [] { return current_->mouseList_; };
  system_.timer_drivers = [] { return current_->timerList_; };
  system_.desktop_color_depth = [] { return current_->desktopDepth; };
  system_.message = [](const char* text) { std::fputs(text, stderr); };
  system_.set_display_switch_mode = SetSwitchMode;
  system_.set_close_button_callback = [](void (*callback)()) {
    current_->closeButton = callback;
    return 0;
  };
  system_.create_mutex = []() -> void* { return &anyMutex; };
  system_.destroy_mutex = [](void*) {};
  system_.lock_mutex = [](void*) {};
  system_.unlock_mutex = [](void*) {};
}

}  // namespace zel
