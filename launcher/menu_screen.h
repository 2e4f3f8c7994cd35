// The launcher's one full-screen dialog.
#pragma once

#include "launcher/menu_config.h"
#include "launcher/menu_widgets.h"
#include "launcher/progress.h"
#include "toolkit/base/timers.h"
#include "toolkit/core/dialog.h"
#include "toolkit/widgets/panel.h"

namespace zel {

// Shows the menu over its background with the hint of the current entry, opens submenus and comes
// back from them, and closes when an item is chosen; it refuses every other way of closing. Follows
// the progress file with a bar.
//
// Keeps the exit code and the output string of launcherState in step with the current entry.
class MenuScreen final : public Dialog {
 public:
  MenuScreen();
  ~MenuScreen() override;

  void MsgStart() override;
  void MsgTimer(int id) override;
  void MsgInitSkin() override;
  bool MsgClose() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

  // Shows a menu file, or with null the file below the current one again.
  void Load(const char* menuFile);
  // Takes over what the current entry says; with `withHint` its hint too.
  void UpdateCurrent(bool withHint);

  const MenuConfig& Config() const { return configuration_; }
  MenuList& List() { return menuPanel_.List(); }
  // After the end: 0, or the number of the error that kept the choice from being written.
  int WriteError() const { return writeError_; }

 private:
  // What an opened level shows, the hints of its items included.
  void ShowLevel();
  // The entries of the level; without their icons for null.
  void FillList(IconCache* icons);
  void PlacePanels();
  void Restore();
  // Opens a level on the way, without what only shows. False at the end of the way.
  bool RestoreLevel(int level, int index);
  void SelectEntry(int index);
  void SetUpProgress();
  void UpdateProgress();
  void Choose(const MenuEntry& entry);
  bool WaitFor(const MenuItem& item);
  void LookForMouse();

  ClearScreen backdrop_;
  bool chosen_ = false;
  ScreenLabel heading_, keyHelp_;
  MenuPanel menuPanel_;
  HintPanel hintPanel_;
  WallpaperPanel wallpaper_;
  StepBar progressBar_;
  ProgressFile progressFile_;
  int progressTimer_ = kNoTimer;
  int progressPeriod_ = 0;  // of the timer, in milliseconds
  int mouseTimer_ = kNoTimer;
  MenuConfig configuration_;
  IconCache icons_;
  int writeError_ = 0;
};

}  // namespace zel
