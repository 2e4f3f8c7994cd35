#include "launcher/help_dialog.h"

#include <algorithm>
#include <cstdint>

#include "launcher/state.h"
#include "launcher/texts.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"

namespace zel {
namespace {

constexpr const char* kButton = "OK";

// In pixels without a zoom.
constexpr int kMargin = 14, kGap = 4;
constexpr Size kButtonSize{80, 24};

}  // namespace

AnyKey::AnyKey(int scancodeDown) : down_{scancodeDown}, releases_{Releases(scancodeDown)} {}

bool AnyKey::MsgXChar(int code) {
  const bool isRepeat = code >> 8 == down_ && Releases(down_) == releases_;
  if (!isRepeat) Report(MSG_ACTIVATE);
  return true;
}

HelpDialog::HelpDialog(int scancode) : anyKey_{scancode} {
  SetTitle(Text(kHelpTitleText));
  ClearFlag(kFlagSizeable);
  std::vector<std::uint32_t> texts{kMoveText, kChooseText};
  if (settings.typeAhead) texts.push_back(kTypeText);
  texts.push_back(kScrollText);
  if (launcherState.looks.HasLooks()) texts.push_back(kSkinText);
  if (launcherState.looks.HasSizes()) texts.push_back(kSizeText);
  texts.push_back(kLeaveText);
  for (const std::uint32_t text : texts) {
    lines_.push_back(std::make_unique<Label>());
    lines_.back()->SetText(Text(text));
    Add(lines_.back().get());
  }
  button_.SetText(Ascii(kButton));
  button_.MakeExit();
  Add(&button_);
  Add(&lookKeys_);
  Add(&anyKey_);
  Fit();
}

void HelpDialog::Fit() {
  const int margin = Zoomed(kMargin);
  const int room = std::max(1, settings.screenWidth - 4 * margin);
  int width = Zoomed(kButtonSize.w), y = margin;
  for (const auto& line : lines_) {
    line->SetMultiline(false);
    line->UpdateSize();
    if (line->w() > room) {
      line->SetW(room);
      line->SetMultiline(true);
    }
    width = std::max(width, line->w());
    // The last one is about this window.
    if (line == lines_.back()) y += margin / 2;
    line->Place(margin, y);
    y += line->h() + Zoomed(kGap);
  }
  const int height =
      std::max(Zoomed(kButtonSize.h), button_.GetFont(kNormal).TextHeight() + 2 * Zoomed(kGap));
  y += margin / 2;
  button_.Shape(margin + (width - Zoomed(kButtonSize.w)) / 2, y, Zoomed(kButtonSize.w), height);
  Resize(width + 2 * margin, y + height + margin);
  Centre();
}

void HelpDialog::MsgInitSkin() {
  Window::MsgInitSkin();
  Fit();
}

void HelpDialog::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Window::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_ACTIVATE && sender == &anyKey_) Close();
}

void HelpDialog::Run(Dialog& screen) { Popup(&screen, GetRelativePos(), &button_); }

}  // namespace zel
