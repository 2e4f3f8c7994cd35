// Dialogs without a display, for programs that make pictures of them.
#pragma once

#include <functional>
#include <string>

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"
#include "toolkit/base/timers.h"

namespace zel {

class Dialog;

// A screen in memory, and timers whose clock goes on by one logic tick whenever the event loop
// would wait for one. There is no mouse and no keyboard.
//
// One at a time. Owns the screen, which keeps the last frame when the dialog has ended.
class Offscreen {
 public:
  // Installs Allegro, without a system, where it is not installed yet.
  Offscreen();
  ~Offscreen();
  Offscreen(const Offscreen&) = delete;
  Offscreen& operator=(const Offscreen&) = delete;

  // Makes the screen; the settings take size and depth over, and the skin follows. False for a size
  // or a depth that cannot be.
  bool SetMode(Size size, int depth);
  // Makes the skin current that Skin's constructor takes. Answers what went wrong, or nothing.
  static std::string LoadSkin(const char* name);
  // Runs a root dialog until it is closed.
  void Run(Dialog& root);
  // The same, but closes it after so many frames.
  void Run(Dialog& root, int frames);
  BITMAP* Frame() const { return frame_.get(); }

  // Called when a frame is complete, before the clock goes on.
  std::function<void()> onFrame;

 private:
  static void Wait();

  static Offscreen* current_;
  TimerDriver previous_;
  BitmapPtr frame_;
};

// Writes a picture file of a bitmap of any depth, or of its upper left part where `part` is
// smaller. False when the file cannot be written: then what was there stays, and errno may say why.
bool SavePng(const char* path, BITMAP* bitmap, Size part = {32767, 32767});
// The same of the whole, with transparent pixels where it has the mask colour.
bool SaveMaskedPng(const char* path, BITMAP* bitmap);

// "800x600"; false for anything else and for sizes of nothing.
bool ParseSize(const char* text, Size* size);

}  // namespace zel
