// The launcher's one full-screen dialog.
#pragma once

#include "launcher/default_start.h"
#include "launcher/look_keys.h"
#include "launcher/menu_session.h"
#include "launcher/menu_widgets.h"
#include "launcher/progress.h"
#include "launcher/type_ahead.h"
#include "toolkit/base/timers.h"
#include "toolkit/core/dialog.h"
#include "toolkit/widgets/accelerator.h"
#include "toolkit/widgets/panel.h"

namespace zel {

// Shows the menu over its background with the hint of the current entry, opens submenus and comes
// back from them, and closes when an item is chosen; it refuses every other way of closing. Follows
// the progress file with a bar.
//
// The session is where the person is; its current entry is that of the list.
class MenuScreen final : public Dialog {
 public:
  MenuScreen();
  ~MenuScreen() override;

  void MsgStart() override;
  void MsgTimer(int id) override;
  void MsgTick() override;
  void MsgClick() override;
  void MsgWheel(int steps) override;
  void MsgMouseMove(Point delta) override;
  void MsgInitSkin() override;
  bool MsgClose() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

  // Shows a menu file, or with null the file below the current one again.
  void Load(const char* menuFile);
  const MenuConfig& Config() const { return session_.Config(); }
  MenuList& List() { return menuPanel_.List(); }
  // After the end: 0, or the number of the error that kept the choice from being written.
  int WriteError() const { return writeError_; }

 private:
  // What an opened level shows, the hints of its items included.
  void ShowLevel();
  void FillList();
  void PlacePanels();
  void Restore();
  // Takes over which entry of the list is current.
  void UpdateCurrent();
  void Choose(const MenuItem& item);
  void SetUpProgress();
  void PlaceProgress();
  void ShowTexts();
  void ChangeLook(LookStep step);
  struct Part {
    int first = -1, current = -1;
    bool operator==(const Part&) const = default;
  };
  Part ShownPart() { return {List().GetFirst(), session_.Current()}; }
  // Widgets take over the new skin and the new layout; what was selected and in view stays so.
  void FollowLook();
  void UpdateProgress();
  bool WaitFor(const MenuItem& item);
  void LookForMouse();
  void ShowHelp();
  // A character that nobody else used.
  void TakeCharacter(int character);
  std::int64_t Now() const;  // in milliseconds, by the ticks
  void BeginDefault();
  void CountDown();
  void ShowCountdown();
  void StopDefault();

  ClearScreen backdrop_;
  ScreenLabel heading_{&MenuLook::heading}, keyHelp_{&MenuLook::keyHelp};
  MenuPanel menuPanel_;
  HintPanel hintPanel_;
  WallpaperPanel wallpaper_;
  StepBar progressBar_;
  ProgressFile progressFile_;
  int progressTimer_ = kNoTimer;
  int progressPeriod_ = 0;  // of the timer, in milliseconds
  int mouseTimer_ = kNoTimer;
  MenuSession session_;
  int writeError_ = 0;
  Accelerator helpKey_;
  LookKeys lookKeys_;
  // Of the list, before changes of the look and after the last one: the way back ends there.
  Part partBeforeChange_, partAfterChange_;
  TypeAhead typeAhead_{WideText};
  std::int64_t ticks_ = 0;
  DefaultStart default_;
  bool showsCountdown_ = false;
  unsigned releases_ = 0;      // of all keys, when the countdown began
  bool mouseAppears_ = false;  // its next move is nobody's
};

}  // namespace zel
