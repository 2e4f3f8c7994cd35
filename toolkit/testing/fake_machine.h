// A machine with display, keyboard, mouse and timer that Allegro drives without hardware.
#pragma once

#include <utility>
#include <vector>

#include "toolkit/base/allegro.h"

namespace zel {

// While it lives, set_gfx_mode, install_keyboard, install_mouse and install_timer find these
// devices; one machine at a time. The screen is a memory bitmap, video pages are
// counted, messages go to standard error.
class FakeMachine {
 public:
  struct Mode {
    int w, h, depth;
    bool windowed;
    bool operator==(const Mode&) const = default;
  };
  using Pair = std::pair<int, int>;

  FakeMachine();
  ~FakeMachine();
  FakeMachine(const FakeMachine&) = delete;
  FakeMachine& operator=(const FakeMachine&) = delete;

  // The display comes back after it was switched away.
  static void SwitchIn();

  // What the machine can do.
  std::vector<int> refusedModes;  // by their depth or width
  int desktopDepth = 32;
  Pair least{0, 0};  // extent of the screen bitmap, however small a mode is
  bool hasKeyboard = true;
  bool hasTimer = true;
  int mouseButtons = 2;  // -1: no mouse
  int videoPagesLeft = 8;
  bool switchesInBackground = true;

  // What it was asked for.
  std::vector<Mode> tried;
  std::vector<Pair> keyboardRates, mouseSpeeds;  // delay and repeat; both axes
  BITMAP* shownPage = nullptr;
  int videoPages = 0;  // alive
  std::vector<int> switchModes;
  int retraces = 0;                 // waited for
  void (*closeButton)() = nullptr;  // what it calls

 private:
  static BITMAP* SetMode(int w, int h, int depth, bool windowed);
  static BITMAP* CreatePage(int w, int h);
  static void DestroyPage(BITMAP* page);
  static int SetSwitchMode(int mode);

  void PrepareGraphics(GFX_DRIVER& driver, bool windowed);
  void PrepareInput();
  void PrepareSystem();

  static inline FakeMachine* current_ = nullptr;
  SYSTEM_DRIVER* previous_;
  SYSTEM_DRIVER system_;
  GFX_DRIVER fullScreen_{}, window_{};
  KEYBOARD_DRIVER keyboard_{};
  MOUSE_DRIVER mouse_{};
  TIMER_DRIVER timer_{};
  _DRIVER_INFO graphicsList_[3], keyboardList_[2], mouseList_[2], timerList_[2];
};

}  // namespace zel
