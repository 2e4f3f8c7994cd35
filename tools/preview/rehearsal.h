// The launcher's menu without a display, and without anybody who is told of a choice.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "launcher/menu_screen.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/offscreen.h"
#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"

namespace zel {

// The languages of a scene, or all where it has none, whose translations of the launcher's own
// words are missing here: "de, fr in DIRECTORY", or nothing.
std::string MissingCatalogues(const Scene& scene);

// One for each process, in the directory of the menu's files. All of the machine that the launcher
// knows, but the menu's files and those that its items ask about, is in the scratch directory.
class Rehearsal {
 public:
  // Both have to stay.
  Rehearsal(const Scene& scene, Scratch& scratch);
  ~Rehearsal();

  // What the launcher does before its menu. Answers what went wrong, or nothing.
  std::string SetUp();
  // Runs the menu until an item is chosen. Each complete frame is told before the clock goes on by
  // a tick, and whether the keys of the scene have been pressed and its time has passed.
  void Run(const std::function<void(bool isReady)>& onFrame);

  BITMAP* Frame() const { return offscreen_.Frame(); }
  // While the menu runs.
  const MenuConfig& Config() const { return screen_->Config(); }

 private:
  void SetUpPaths();
  // Finds the selected entry. Answers what went wrong, or nothing.
  std::string Select();
  bool Advance();

  const Scene& scene_;
  Scratch& scratch_;
  FakeMachine machine_;
  Offscreen offscreen_;
  // What the paths point into.
  std::string catalogues_, languageFile_, progressFile_, outputFile_, positionFile_, lookFile_;
  std::unique_ptr<MenuScreen> screen_;
  std::size_t pressed_ = 0;
  int frames_ = 0, nextAt_ = 0;
};

}  // namespace zel
