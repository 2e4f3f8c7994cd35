#include "launcher/menu_screen.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "launcher/wait_dialog.h"
#include "toolkit/base/console_guard.h"
#include "toolkit/base/input_rest.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/event_loop.h"

namespace zel {
namespace {

constexpr int kMousePollPeriod = 500;  // milliseconds

// The place of the progress bar relative to the layout values.
constexpr int kProgressInset = 4;
constexpr int kProgressMargin = 5;
constexpr int kProgressHeight = 30;

// A layout value, which may be any number, moved by some pixels.
int Moved(std::int32_t value, int pixels) {
  return std::clamp(value, -kMostPixels, kMostPixels) + pixels;
}

void PutOnScreen(Widget& panel, const Rect& place) {
  const Rect area = launcherState.layout.OnScreen(place);
  panel.Setup(area.x, area.y, area.w, area.h, 0, 0);
}

std::int64_t Milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace

MenuScreen::MenuScreen() {
  Add(&backdrop_);
  Add(&wallpaper_);
  Add(&heading_);
  Add(&keyHelp_);
  Add(&menuPanel_);
  Add(&hintPanel_);
  Load(kMainMenu);
  SetUpProgress();
  if (launcherState.mousePending) mouseTimer_ = InstallTimer(kMousePollPeriod);
  DeleteOutputFile();
}

MenuScreen::~MenuScreen() {
  RemoveTimer(progressTimer_);
  RemoveTimer(mouseTimer_);
}

void MenuScreen::SetUpProgress() {
  progressValues = {};
  const LayoutValues& at = layoutValues;
  const Rect bar =
      launcherState.layout.OnScreen({at.progressX, at.progressY, at.progressW, kProgressHeight});
  progressBar_.Setup(Moved(bar.x, Zoomed(kProgressInset)), bar.y,
                     Moved(bar.w, -Zoomed(kProgressMargin)), Zoomed(kProgressHeight), 0, 0,
                     kHorizontal);
  progressBar_.Hide();
  Add(&progressBar_);
  progressPeriod_ = progressValues.PollPeriod();
  progressTimer_ = InstallTimer(progressPeriod_);
}

void MenuScreen::UpdateProgress() {
  progressValues = progressFile_.Look(Milliseconds());
  if (progressValues.Shows()) {
    if (progressBar_.Hidden()) progressBar_.Unhide();
    if (const int period = progressValues.PollPeriod(); period != progressPeriod_) {
      progressPeriod_ = period;
      ReinstallTimer(progressTimer_, period);
    }
    progressBar_.ShowSteps(progressValues.currentStep, progressValues.stepNumber);
  } else if (!progressBar_.Hidden()) {
    progressBar_.Hide();
    Redraw();
  }
}

void MenuScreen::Load(const char* menuFile) {
  configuration_.ReadWithoutHints(menuFile);
  ShowLevel();
}

void MenuScreen::ShowLevel() {
  configuration_.ReadHints();
  FillList(&icons_);
  icons_.Clear();
  PlacePanels();
  wallpaper_.SetPicture(configuration_.background);
  heading_.Show(configuration_.CurrentLevel().heading);
  keyHelp_.Show(configuration_.CurrentLevel().keyHelp);
  Redraw();
}

void MenuScreen::FillList(IconCache* icons) {
  const auto add = [this, icons](const MenuItem& item) {
    List().InsertItem(icons ? std::make_unique<MenuEntry>(item, *icons)
                            : std::make_unique<MenuEntry>(item));
  };
  List().Clear();
  if (configuration_.Depth() > 1) {
    MenuItem back;
    back.flags = kItemBack;
    back.color = launcherState.backLineColor;
    add(back);
  }
  for (const auto& item : configuration_.items) add(*item);
}

void MenuScreen::PlacePanels() {
  const LayoutValues& at = layoutValues;
  menuPanel_.SetTitle(configuration_.menuTitle);
  PutOnScreen(menuPanel_, {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight});
  hintPanel_.SetTitle(configuration_.hintTitle);
  PutOnScreen(hintPanel_, {at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight});
  if (FileExists(configuration_.hintFile))
    hintPanel_.Unhide();
  else
    hintPanel_.Hide();
  // The hint is wrapped for the panel as it is now, not as it is after the next tick.
  menuPanel_.UpdateLayout();
  hintPanel_.UpdateLayout();
}

void MenuScreen::UpdateCurrent(bool withHint) {
  const MenuEntry* entry = menuPanel_.CurrentEntry();
  if (!entry) return;
  if (withHint) hintPanel_.ShowHint(entry, GetFont(kNormal));
  launcherState.exitCode = entry->Item().exitCode;
  configuration_.CurrentLevel().index = List().GetCurrent();
  launcherState.outputString.Assign(entry->Item().exitString);
}

void MenuScreen::SelectEntry(int index) {
  List().SetCurrent(index);
  List().SetPendingIndex(index);
  UpdateCurrent(true);
}

void MenuScreen::Choose(const MenuEntry& entry) {
  const MenuItem& item = entry.Item();
  if (item.flags & kItemBack) {
    Load(nullptr);
    SelectEntry(configuration_.CurrentLevel().index);
  } else if (item.flags & kItemDisabled) {
    return;
  } else if (item.flags & kItemSubmenu) {
    // Loading destroys the entry.
    const FixedText<260> submenu = item.submenu;
    Load(submenu);
    SelectEntry(0);
  } else if (WaitFor(item)) {
    chosen_ = true;
    Close();
  }
}

// True when nothing keeps the item from being chosen any longer, false when the user gave up.
bool MenuScreen::WaitFor(const MenuItem& item) {
  if (item.waitForFile.IsEmpty() && item.waitWhileFile.IsEmpty()) return true;
  WaitDialog dialog{item};
  return dialog.Check() || dialog.Run(*this);
}

void MenuScreen::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  // A key that was told together with the one that chose changes nothing any more.
  if (chosen_) return;
  if (msg == MSG_ITEM_SELECTED) UpdateCurrent(true);
  if (msg == MSG_ITEM_CHOSEN && arg1 != 0) Choose(*reinterpret_cast<const MenuEntry*>(arg1));
}

bool MenuScreen::RestoreLevel(int level, int index) {
  if (level > 0) {
    const MenuEntry* entry = menuPanel_.CurrentEntry();
    if (!entry || !(entry->Item().flags & kItemSubmenu)) return false;
    const FixedText<260> submenu = entry->Item().submenu;
    configuration_.ReadWithoutHints(submenu);
    FillList(nullptr);
  }
  const int last = List().Count() - 1;
  List().SetCurrent(std::min(index, last));
  UpdateCurrent(false);
  return index <= last;
}

void MenuScreen::Restore() {
  const std::vector<int> indices = ReadMenuPosition();
  for (std::size_t level = 0; level < indices.size(); ++level)
    if (!RestoreLevel(static_cast<int>(level), indices[level])) break;
  if (configuration_.Depth() > 1) {
    const int current = List().GetCurrent();
    ShowLevel();
    List().SetCurrent(current);
  }
  UpdateCurrent(true);
}

void MenuScreen::MsgStart() {
  Dialog::MsgStart();
  // The first key must already reach the menu, whatever the pointer rests on.
  SetFocus(&List());
  Restore();
}

void MenuScreen::LookForMouse() {
  if (launcherState.heldMouse >= 0) close(std::exchange(launcherState.heldMouse, -1));
  if (!FileExists(paths.mouseServerPid)) return;
  install_mouse();
  RemoveInputAtRest();
  set_mouse_speed(settings.UsableMouseSpeed(), settings.UsableMouseSpeed());
  launcherState.mousePending = false;
  settings.showMouse = true;
  RemoveTimer(mouseTimer_);
  UpdateDoubleClickWindow();
  mouseTimer_ = kNoTimer;
}

void MenuScreen::MsgTimer(int id) {
  Dialog::MsgTimer(id);
  if (id == mouseTimer_) LookForMouse();
  if (id == progressTimer_) UpdateProgress();
}

void MenuScreen::MsgInitSkin() {
  backdrop_.SetColor(Color{0, 0, 0});
  ClearFlag(kFlagSkinChanged);
}

bool MenuScreen::MsgClose() {
  if (!chosen_) return false;
  // Whoever finds the output has the exit status, too.
  HoldSignals();
  writeError_ = WriteResultFiles(configuration_);
  return true;
}

}  // namespace zel
