#include "launcher/menu_screen.h"

#include <unistd.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "launcher/help_dialog.h"
#include "launcher/paths.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "launcher/texts.h"
#include "launcher/wait_dialog.h"
#include "toolkit/base/input.h"
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
constexpr int kCountdownTop = 6;  // while there is no bar

// A layout value, which may be any number, moved by some pixels.
int Moved(std::int32_t value, int pixels) {
  return std::clamp(value, -kMostPixels, kMostPixels) + pixels;
}

void PutOnScreen(Widget& panel, const Rect& place) {
  const Rect area = launcherState.layout.OnScreen(place);
  panel.Setup(area.x, area.y, area.w, area.h, 0, 0);
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
  Add(&lookKeys_);
  if (!settings.help) return;
  helpKey_.Setup(KEY_F1, 0, nullptr);
  Add(&helpKey_);
}

MenuScreen::~MenuScreen() {
  RemoveTimer(progressTimer_);
  RemoveTimer(mouseTimer_);
}

void MenuScreen::PlaceProgress() {
  const LayoutValues& at = launcherState.layoutValues;
  const Rect bar =
      launcherState.layout.OnScreen({at.progressX, at.progressY, at.progressW, kProgressHeight});
  progressBar_.Setup(Moved(bar.x, Zoomed(kProgressInset)), bar.y,
                     Moved(bar.w, -Zoomed(kProgressMargin)), Zoomed(kProgressHeight), 0, 0,
                     kHorizontal);
}

void MenuScreen::SetUpProgress() {
  launcherState.progressValues = {};
  PlaceProgress();
  progressBar_.Hide();
  Add(&progressBar_);
  progressPeriod_ = launcherState.progressValues.PollPeriod();
  progressTimer_ = InstallTimer(progressPeriod_);
}

void MenuScreen::UpdateProgress() {
  launcherState.progressValues = progressFile_.Look(Milliseconds());
  if (launcherState.progressValues.Shows()) {
    if (progressBar_.Hidden()) progressBar_.Unhide();
    if (const int period = launcherState.progressValues.PollPeriod(); period != progressPeriod_) {
      progressPeriod_ = period;
      ReinstallTimer(progressTimer_, period);
    }
    progressBar_.ShowSteps(launcherState.progressValues.currentStep,
                           launcherState.progressValues.stepNumber);
  } else if (!progressBar_.Hidden()) {
    progressBar_.Hide();
    Redraw();
  }
}

void MenuScreen::Load(const char* menuFile) {
  session_.Open(menuFile);
  ShowLevel();
}

void MenuScreen::ShowLevel() {
  session_.ReadHints();
  FillList();
  PlacePanels();
  wallpaper_.SetPicture(Config().background);
  ShowTexts();
  Redraw();
}

void MenuScreen::ShowTexts() {
  heading_.Show(session_.Level().heading);
  keyHelp_.Show(session_.Level().keyHelp);
}

void MenuScreen::ChangeLook(LookStep step) {
  Looks& looks = launcherState.looks;
  if (ShownPart() != partAfterChange_) partBeforeChange_ = ShownPart();
  const int row = List().GetCurrent() - List().GetFirst();
  const bool isVisible = row >= 0 && row < List().PageSize();
  const bool isSkin = step == LookStep::kNextSkin;
  const bool isChanged = isSkin ? looks.ChangeSkin() : looks.ChangeSize(step == LookStep::kLarger);
  if (isChanged) FollowLook();
  // For a skin it has seen itself whether there is to be one; a palette is another one for all.
  if (isChanged && (!isSkin || settings.colorDepth == 8))
    wallpaper_.SetPicture(Config().background);
  List().SetFirst(partBeforeChange_.first);
  if (isVisible) List().SetCurrent(session_.Current());
  menuPanel_.UpdateLayout();
  partAfterChange_ = ShownPart();
}

void MenuScreen::FollowLook() {
  SetSkin(nullptr);
  session_.ReadScreenAgain();
  FillList();
  List().SelectItem(session_.Current());
  progressBar_.ReadPicture();
  PlacePanels();
  hintPanel_.WrapAgain(menuPanel_.CurrentEntry(), GetFont(kNormal));
  ShowTexts();
  PlaceProgress();
  if (!progressBar_.Hidden()) UpdateProgress();
}

void MenuScreen::FillList() {
  List().Clear();
  IconCache icons;
  for (int i = 0; i < session_.Count(); ++i)
    List().InsertItem(std::make_unique<MenuEntry>(session_.Entry(i), icons));
}

void MenuScreen::PlacePanels() {
  const LayoutValues& at = launcherState.layoutValues;
  menuPanel_.SetTitle(Config().menuTitle);
  PutOnScreen(menuPanel_, {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight});
  hintPanel_.SetTitle(Config().hintTitle);
  PutOnScreen(hintPanel_, {at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight});
  if (FileExists(Config().hintFile))
    hintPanel_.Unhide();
  else
    hintPanel_.Hide();
  // The hint is wrapped for the panel as it is now, not as it is after the next tick.
  menuPanel_.UpdateLayout();
  hintPanel_.UpdateLayout();
}

void MenuScreen::UpdateCurrent() {
  if (const MenuEntry* entry = menuPanel_.CurrentEntry())
    hintPanel_.ShowHint(entry, GetFont(kNormal));
  session_.Select(List().GetCurrent());
}

void MenuScreen::Choose(const MenuItem& item) {
  switch (session_.Choose(item)) {
    case MenuSession::Step::kNothing:
      return;
    case MenuSession::Step::kOther:
      ShowLevel();
      List().SetCurrent(session_.Current());
      List().SetPendingIndex(session_.Current());
      UpdateCurrent();
      return;
    case MenuSession::Step::kWaits:
      if (!WaitFor(item)) return;
      session_.EndWaiting();
      break;
    case MenuSession::Step::kChosen:
      break;
  }
  Close();
}

// True when nothing keeps the item from being chosen any longer, false when the user gave up.
bool MenuScreen::WaitFor(const MenuItem& item) {
  const auto kept = std::make_unique<MenuItem>(item);  // its entry goes when the look changes
  WaitDialog dialog{*kept};
  return dialog.Check() || dialog.Run(*this);
}

void MenuScreen::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  // A key that was told together with the one that chose changes nothing any more.
  if (session_.IsChosen()) return;
  if (msg == MSG_CHAR && sender == &List()) StopDefault();
  if (msg == MSG_LOOK_WANTED) ChangeLook(static_cast<LookStep>(arg1));
  if (msg == MSG_ITEM_SELECTED) UpdateCurrent();
  if (msg == MSG_UCHAR && sender == &List()) TakeCharacter(static_cast<int>(arg1));
  if (msg == MSG_ACTIVATE && sender == &helpKey_) ShowHelp();
  if (msg == MSG_ITEM_CHOSEN && arg1 != 0) Choose(reinterpret_cast<const MenuEntry*>(arg1)->Item());
}

void MenuScreen::Restore() {
  session_.Restore();
  if (session_.Depth() > 1) ShowLevel();
  List().SetCurrent(session_.Current());
  UpdateCurrent();
}

void MenuScreen::MsgStart() {
  Dialog::MsgStart();
  // The first key must already reach the menu, whatever the pointer rests on.
  SetFocus(&List());
  Restore();
  BeginDefault();
}

void MenuScreen::LookForMouse() {
  if (launcherState.heldMouse >= 0) close(std::exchange(launcherState.heldMouse, -1));
  if (!FileExists(paths.mouseServerPid)) return;
  install_mouse();
  RemoveInputAtRest();
  set_mouse_speed(settings.UsableMouseSpeed(), settings.UsableMouseSpeed());
  launcherState.mousePending = false;
  settings.showMouse = true;
  mouseAppears_ = true;
  RemoveTimer(mouseTimer_);
  UpdateDoubleClickWindow();
  mouseTimer_ = kNoTimer;
}

void MenuScreen::ShowHelp() {
  HelpDialog{KEY_F1}.Run(*this);
  List().HoldKeys();
}

void MenuScreen::TakeCharacter(int character) {
  if (!settings.typeAhead || (Shifts() & (KB_CTRL_FLAG | KB_ALT_FLAG))) return;
  const int index = typeAhead_.Find(session_, character, Now());
  if (index < 0) return;
  List().SetCurrent(index);
  UpdateCurrent();
}

std::int64_t MenuScreen::Now() const { return ticks_ * 1000 / settings.UsableFrameRate(); }

void MenuScreen::BeginDefault() {
  default_.Begin(session_, Now());
  if (!default_.IsCounting()) return;
  releases_ = AllReleases();
  showsCountdown_ = true;
  ShowCountdown();
}

// In the place of the key help or, where there is none, below the panels.
void MenuScreen::ShowCountdown() {
  ScreenText text = session_.Level().keyHelp;
  const bool isBelow = text.text.IsEmpty();
  if (isBelow) {
    text.left = launcherState.layoutValues.progressX;
    text.top = launcherState.layoutValues.progressY;
  }
  text.text.Assign(default_.Filled(Text(kDefaultText)).c_str());
  wallpaper_.Uncover(keyHelp_);
  keyHelp_.Show(text);
  if (!isBelow) return;
  const Point at = keyHelp_.GetRelativePos();
  keyHelp_.Place(at.x + Zoomed(kProgressInset),
                 at.y + Zoomed(progressBar_.Hidden() ? kCountdownTop : kCountdownBelow));
}

void MenuScreen::StopDefault() {
  if (!std::exchange(showsCountdown_, false)) return;
  default_.Stop();
  ShowTexts();
  Redraw();
}

void MenuScreen::CountDown() {
  if (AllReleases() != releases_) return StopDefault();
  const int seconds = default_.Seconds();
  const int entry = default_.Look(Now());
  if (entry < 0) {
    if (default_.Seconds() != seconds) ShowCountdown();
    return;
  }
  StopDefault();
  List().SetCurrent(entry);
  UpdateCurrent();
  Choose(session_.Entry(entry));
}

void MenuScreen::MsgTick() {
  ++ticks_;
  Dialog::MsgTick();
  if (default_.IsCounting()) CountDown();
}

void MenuScreen::MsgClick() {
  StopDefault();
  Dialog::MsgClick();
}

void MenuScreen::MsgWheel(int steps) {
  StopDefault();
  Dialog::MsgWheel(steps);
}

void MenuScreen::MsgMouseMove(Point delta) {
  if (!std::exchange(mouseAppears_, false)) StopDefault();
  Dialog::MsgMouseMove(delta);
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
  if (!session_.IsChosen()) return false;
  writeError_ = session_.Commit();
  return true;
}

}  // namespace zel
