#include "launcher/wait_dialog.h"

#include <algorithm>
#include <limits>

#include "launcher/language.h"
#include "launcher/texts.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kCheckPeriod = 50;  // milliseconds
constexpr int kSecond = 1000;     // milliseconds

constexpr int kTitleText = 1312;
constexpr int kCancelText = 1320;
constexpr int kWaitingText = 1516;

enum ControlId : int { kNoId = -1, kCancelId = 14, kMessageId = 20, kCountdownId = 21 };

constexpr ControlRecord kForm[] = {
    {kControlSize, kNoId, 0, 0, 150, 66, 0, 0, 0, 0},
    {kControlGroupFrame, kNoId, 7, 3, 136, 36, 0, 0, 0, 0},
    {kControlText, kMessageId, 15, 12, 120, 11, kWaitingText, 0, 0, 0},
    {kControlLabel, kCountdownId, 15, 24, 120, 10, 0, 0, 0, 0},
    {kControlButton, kCancelId, 50, 46, 50, 14, kCancelText, 0, 0, 0},
    {kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0},
};
const Rect kBusyBar{20, 24, 110, 10};  // dialog units
constexpr int kBusyRange = 100;

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
    : units{UnitsOf(GetFont(kNormal))}, item{menuItem}, form_{kForm} {
  SetTitle(Text(kTitleText));
  ClearFlag(kFlagSizeable);
  form_.Build(*this, units, Text);
  SetUpControls();
  SetUpClock();
  Centre();
  timer = InstallTimer(kCheckPeriod);
}

WaitDialog::~WaitDialog() { RemoveTimer(timer); }

// A message that is too long for its line gets more of them, as many as fit above the next control.
void WaitDialog::FitMessage(Label& message) {
  if (message.GetFont(kNormal).TextLength(message.GetText()) <= message.w()) return;
  message.SetMultiline(true);
  const int bottom = countdown->GetRelativePos().y;
  const int height = std::min(message.TextHeight(), bottom);
  message.Shape(message.GetRelativePos().x, bottom - height, message.w(), height);
}

void WaitDialog::SetUpControls() {
  auto& message = *static_cast<Label*>(form_.Find(kMessageId));
  message.AlignCentre();
  countdown = static_cast<Label*>(form_.Find(kCountdownId));
  countdown->AlignCentre();
  countdown->SetText("");
  FitMessage(message);
  cancelButton = static_cast<Button*>(form_.Find(kCancelId));
  cancelButton->AlignCentre();
  cancelButton->MakeExit();
  cancelButton->SetKey(KEY_C);
  accelerator.Setup(KEY_C, KB_ALT_FLAG, nullptr);
  Add(&accelerator);
  Add(&openingKey_);
}

void WaitDialog::SetUpClock() {
  if (item.timeout > 0) {
    constexpr int kLongest = (std::numeric_limits<std::int32_t>::max() - kSecond) / kSecond;
    hasTimeout = true;
    remaining = std::min(item.timeout, kLongest) * kSecond + kSecond;
    return;
  }
  busyBar.Setup(units.X(kBusyBar.x), units.Y(kBusyBar.y), units.X(kBusyBar.w), units.Y(kBusyBar.h),
                0, 0, kHorizontal);
  busyBar.SetRange(0, kBusyRange);
  busyBar.SetIncrement(1);
  Add(&busyBar);
  // It lies where the bar is.
  countdown->Hide();
}

bool WaitDialog::FilesAreReady() const {
  if (!item.waitWhileFile.IsEmpty()) return !FileExists(item.waitWhileFile);
  return FileExists(item.waitForFile);
}

void WaitDialog::CountDown() {
  remaining -= kCheckPeriod;
  const std::string seconds = std::to_string(remaining / kSecond);
  const Ascii shown{seconds.c_str()};
  // Most periods change nothing that is seen.
  if (ustrcmp(countdown->GetText(), shown) != 0) countdown->SetText(shown);
}

bool WaitDialog::Check() {
  const bool ready = FilesAreReady();
  if (!hasTimeout) {
    busyBar.Increment();
    return ready;
  }
  CountDown();
  return ready || remaining < 1;
}

bool WaitDialog::Run(Dialog& screen) {
  Popup(&screen, GetRelativePos(), cancelButton);
  return !waiting;
}

void WaitDialog::MsgTimer(int id) {
  Window::MsgTimer(id);
  if (id != timer || IsClosed() || !Check()) return;
  waiting = false;
  Close();
}

void WaitDialog::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Window::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_ACTIVATE && sender == &accelerator) Close();
}

void WaitDialog::MsgInitSkin() {
  Window::MsgInitSkin();
  if (skin) countdown->SetTextBackColor(skin->colors[kBack]);
  countdown->SetFont(kCountdownFont, kNormal);
  countdown->SetFontColor(darkblue, gray, kNormal);
}

}  // namespace zel
