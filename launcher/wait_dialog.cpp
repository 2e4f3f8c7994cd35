#include "launcher/wait_dialog.h"

#include <algorithm>

#include "launcher/language.h"
#include "launcher/texts.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kCtrlC = 3;  // as a character

enum ControlId : int { kNoId = -1, kCancelId = 14, kMessageId = 20, kCountdownId = 21 };

constexpr ControlRecord kForm[] = {
    {kControlSize, kNoId, 0, 0, 150, 66},
    {kControlGroupFrame, kNoId, 7, 3, 136, 36},
    {kControlText, kMessageId, 15, 12, kWaitMessageWidth, 11},
    {kControlLabel, kCountdownId, 15, 24, 120, 10},
    {kControlButton, kCancelId, 50, 46, 50, 14, kCancelText},
    {kControlEnd},
};
const Rect kBusyBar{20, 24, 110, 10};  // dialog units

constexpr int kCountdownFont = 2;

// Russian letters are narrower than 52 of them make the average look.
constexpr float kRussianScale = 52.0f / 60.0f;

DialogUnits UnitsOf(const Font& font) {
  return DialogUnits{font, LanguageIndex() == kRussian ? kRussianScale : 1.0f};
}

}  // namespace

bool OpeningKey::MsgXChar(int code) { return heldKey_.Ignores(code >> 8); }

void OpeningKey::MsgTick() {
  Widget::MsgTick();
  heldKey_.Poll();
}

WaitDialog::WaitDialog(const MenuItem& menuItem)
    : units_{UnitsOf(GetFont(kNormal))}, wait_{menuItem}, form_{kForm} {
  SetTitle(Text(kWaitTitleText));
  ClearFlag(kFlagSizeable);
  form_.Build(*this, units_, Text);
  SetUpControls();
  SetUpClock();
  Centre();
  timer_ = InstallTimer(ItemWait::kPeriod);
}

WaitDialog::~WaitDialog() { RemoveTimer(timer_); }

// A message that is too long for its line gets more of them, as many as fit above the next control.
void WaitDialog::FitMessage(Label& message) {
  if (message.GetFont(kNormal).TextLength(message.GetText()) <= message.w()) return;
  message.SetMultiline(true);
  const int bottom = countdown_->GetRelativePos().y;
  const int height = std::min(message.TextHeight(), bottom);
  message.Shape(message.GetRelativePos().x, bottom - height, message.w(), height);
}

void WaitDialog::SetUpControls() {
  auto& message = *static_cast<Label*>(form_.Find(kMessageId));
  message.AlignCentre();
  message.SetText(wait_.Message());
  countdown_ = static_cast<Label*>(form_.Find(kCountdownId));
  countdown_->AlignCentre();
  countdown_->SetText("");
  FitMessage(message);
  cancelButton_ = static_cast<Button*>(form_.Find(kCancelId));
  cancelButton_->AlignCentre();
  cancelButton_->MakeExit();
  cancelButton_->SetKey(kCtrlC);
  accelerator_.Setup(KEY_C, KB_ALT_FLAG, nullptr);
  Add(&accelerator_);
  Add(&openingKey_);
  Add(&lookKeys_);
}

void WaitDialog::SetUpClock() {
  if (wait_.HasTimeout()) return;
  PlaceBusyBar();
  Add(&busyBar_);
  // It lies where the bar is.
  countdown_->Hide();
}

void WaitDialog::PlaceBusyBar() {
  busyBar_.Setup(units_.X(kBusyBar.x), units_.Y(kBusyBar.y), units_.X(kBusyBar.w),
                 units_.Y(kBusyBar.h), 0, 0, kHorizontal);
}

void WaitDialog::Fit() {
  units_ = UnitsOf(GetFont(kNormal));
  form_.Place(*this, units_);
  auto& message = *static_cast<Label*>(form_.Find(kMessageId));
  message.SetMultiline(false);
  FitMessage(message);
  if (!wait_.HasTimeout()) PlaceBusyBar();
  Centre();
}

bool WaitDialog::Check() {
  const bool isOver = wait_.Check();
  if (!wait_.HasTimeout()) {
    busyBar_.Increment();
    return isOver;
  }
  const std::string seconds = std::to_string(wait_.Seconds());
  const Ascii shown{seconds.c_str()};
  // Most periods change nothing that is seen.
  if (ustrcmp(countdown_->GetText(), shown) != 0) countdown_->SetText(shown);
  return isOver;
}

bool WaitDialog::Run(Dialog& screen) {
  Popup(&screen, GetRelativePos(), cancelButton_);
  return !waiting_;
}

void WaitDialog::MsgTimer(int id) {
  Window::MsgTimer(id);
  if (id != timer_ || IsClosed() || !Check()) return;
  waiting_ = false;
  Close();
}

void WaitDialog::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Window::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_ACTIVATE && sender == &accelerator_) Close();
}

void WaitDialog::MsgInitSkin() {
  Window::MsgInitSkin();
  countdown_->SetFontColor(darkblue, gray, kNormal);
  const DialogUnits units = UnitsOf(GetFont(kNormal));
  if (units.fontHeight != units_.fontHeight || units.horizontal != units_.horizontal) Fit();
  if (!skin) return;
  const MenuLook& look = skin->menu;
  const Color ground = look.countdownGround;
  countdown_->SetTextBackColor(ground.IsSet() ? ground : skin->colors[kBack]);
  countdown_->SetFont(OrElse(look.countdownFont, kCountdownFont), kNormal);
  if (look.countdown.IsSet()) countdown_->SetFontColor(look.countdown, Color{}, kNormal);
}

}  // namespace zel
