#include "launcher/menu_screen.h"

#include <algorithm>
#include <chrono>
#include <memory>

#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "launcher/wait_dialog.h"
#include "toolkit/base/console_guard.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr const char* kMainMenu = "menu.cfg";
constexpr int kMousePollPeriod = 500;  // milliseconds

// The place of the progress bar relative to the layout values.
constexpr int kProgressInset = 4;
constexpr int kProgressMargin = 5;
constexpr int kProgressHeight = 30;

// A layout value, which may be any number, moved by some pixels.
int Moved(std::int32_t value, int pixels) {
  return std::clamp(value, -kMostPixels, kMostPixels) + pixels;
}

std::int64_t Milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace

MenuScreen::MenuScreen() {
  Add(&backdrop);
  Add(&wallpaper);
  Add(&menuPanel);
  Add(&hintPanel);
  Load(kMainMenu);
  SetUpProgress();
  if (launcherState.mousePending) mouseTimer = InstallTimer(kMousePollPeriod);
  DeleteOutputFile();
}

MenuScreen::~MenuScreen() {
  RemoveTimer(progressTimer);
  RemoveTimer(mouseTimer);
}

void MenuScreen::SetUpProgress() {
  progressValues = {};
  const LayoutValues& at = layoutValues;
  progressBar.Setup(Moved(at.progressX, kProgressInset), at.progressY,
                    Moved(at.progressW, -kProgressMargin), kProgressHeight, 0, 0, kHorizontal);
  progressBar.SetIncrement(1);
  progressBar.ShowSteps(progressValues.currentStep, progressValues.stepNumber);
  if (!progressValues.Shows()) progressBar.Hide();
  Add(&progressBar);
  progressPeriod = progressValues.PollPeriod();
  progressTimer = InstallTimer(progressPeriod);
}

void MenuScreen::UpdateProgress() {
  progressValues = progressFile.Look(Milliseconds());
  if (progressValues.Shows()) {
    if (progressBar.Hidden()) progressBar.Unhide();
    if (const int period = progressValues.PollPeriod(); period != progressPeriod) {
      progressPeriod = period;
      ReinstallTimer(progressTimer, period);
    }
    progressBar.ShowSteps(progressValues.currentStep, progressValues.stepNumber);
  } else if (!progressBar.Hidden()) {
    progressBar.Hide();
    Redraw();
  }
}

void MenuScreen::Load(const char* menuFile) {
  configuration.ReadWithoutHints(menuFile);
  ShowLevel();
}

void MenuScreen::ShowLevel() {
  configuration.ReadHints();
  FillList(&icons_);
  icons_.Clear();
  PlacePanels();
  wallpaper.SetPicture(configuration.background);
  Redraw();
}

void MenuScreen::FillList(IconCache* icons) {
  const auto add = [this, icons](const MenuItem& item) {
    List().InsertItem(icons ? std::make_unique<MenuEntry>(item, *icons)
                            : std::make_unique<MenuEntry>(item));
  };
  List().Clear();
  if (configuration.Depth() > 1) {
    MenuItem back;
    back.flags = kItemBack;
    back.color = launcherState.backLineColor;
    add(back);
  }
  for (const auto& item : configuration.items) add(*item);
}

void MenuScreen::PlacePanels() {
  const LayoutValues& at = layoutValues;
  menuPanel.SetTitle(configuration.menuTitle);
  menuPanel.Setup(at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight, 0, 0);
  hintPanel.SetTitle(configuration.hintTitle);
  hintPanel.Setup(at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight, 0, 0);
  if (FileExists(configuration.hintFile))
    hintPanel.Unhide();
  else
    hintPanel.Hide();
  // The hint is wrapped for the panel as it is now, not as it is after the next tick.
  menuPanel.UpdateLayout();
  hintPanel.UpdateLayout();
}

void MenuScreen::UpdateCurrent(bool withHint) {
  const MenuEntry* entry = menuPanel.CurrentEntry();
  if (!entry) return;
  if (withHint) hintPanel.ShowHint(entry, GetFont(kNormal));
  launcherState.exitCode = entry->Item().exitCode;
  if (configuration.Depth() > 0) configuration.CurrentLevel().index = List().GetCurrent();
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
    SelectEntry(configuration.CurrentLevel().index);
  } else if (item.flags & kItemDisabled) {
    return;
  } else if (item.flags & kItemSubmenu) {
    // Loading destroys the entry.
    const FixedText<260> submenu = item.submenu;
    Load(submenu);
    SelectEntry(0);
  } else if (WaitFor(item)) {
    chosen = true;
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
  if (msg == MSG_ITEM_SELECTED) UpdateCurrent(true);
  if (msg == MSG_ITEM_CHOSEN && arg1 != 0) Choose(*reinterpret_cast<const MenuEntry*>(arg1));
}

bool MenuScreen::RestoreLevel(int level, int index) {
  if (level > 0) {
    const MenuEntry* entry = menuPanel.CurrentEntry();
    if (!entry || !(entry->Item().flags & kItemSubmenu) || entry->Item().submenu.IsEmpty())
      return false;
    const FixedText<260> submenu = entry->Item().submenu;
    configuration.ReadWithoutHints(submenu);
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
  if (configuration.Depth() > 1) {
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
  if (!FileExists(paths.mouseServerPid)) return;
  install_mouse();
  set_mouse_speed(settings.UsableMouseSpeed(), settings.UsableMouseSpeed());
  launcherState.mousePending = false;
  settings.showMouse = true;
  RemoveTimer(mouseTimer);
  UpdateDoubleClickWindow();
  mouseTimer = kNoTimer;
}

void MenuScreen::MsgTimer(int id) {
  Dialog::MsgTimer(id);
  if (id == mouseTimer) LookForMouse();
  if (id == progressTimer) UpdateProgress();
}

void MenuScreen::MsgInitSkin() {
  backdrop.SetColor(Color{0, 0, 0});
  ClearFlag(kFlagSkinChanged);
}

bool MenuScreen::MsgClose() {
  if (!chosen) return false;
  // Whoever finds the output has the exit status, too.
  HoldSignals();
  writeError_ = WriteResultFiles(configuration);
  return true;
}

}  // namespace zel
