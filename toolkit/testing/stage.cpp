#include "toolkit/testing/stage.h"

#include <iterator>
#include <memory>
#include <utility>

#include "toolkit/base/messages.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/hands.h"

namespace zel {
namespace {

constexpr const char* kMessages[] = {
    "",          "Start",  "End",      "Draw",      "Click",    "DClick",    "Key",
    "Char",      "UChar",  "XChar",    "WantFocus", "GotFocus", "LostFocus", "GotMouse",
    "LostMouse", "Idle",   "Radio",    "Wheel",     "LPress",   "LRelease",  "MPress",
    "MRelease",  "RPress", "RRelease", "Timer",     "Tick",     "InitSkin",  "Activate",
    "",          "Scroll", "Move",     "Resize",    "Shape",    "MouseMove", "Close",
    "WantMouse", "WantTab"};

}  // namespace

std::string MessageName(int msg) {
  const bool isKnown = msg >= 0 && msg < static_cast<int>(std::size(kMessages)) && *kMessages[msg];
  return isKnown ? kMessages[msg] : std::to_string(msg);
}

void Recorder::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  const bool isOfInterest = !onlyOfChildren || sender->GetParent() == this;
  if (isOfInterest && watched.count(msg)) Note(sender, msg, arg1);
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  // It may destroy the sender.
  if (isOfInterest && onEvent) onEvent(sender, msg, static_cast<int>(arg1));
}

std::string Recorder::Events() {
  last_.clear();
  return std::exchange(log_, {});
}

std::string Recorder::NameOf(const Widget* widget) const {
  const auto found = names.find(widget);
  return widget == this ? "root" : found != names.end() ? found->second : widget ? "?" : "nobody";
}

void Recorder::Note(const Widget* sender, int msg, EventArg arg) {
  const std::string name = NameOf(sender);
  std::string message = (name.empty() ? "" : ": ") + MessageName(msg);
  if (msg == MSG_SCROLL || (msg == MSG_ACTIVATE && arg != 0)) message += ' ' + std::to_string(arg);
  if (std::exchange(last_, message) == message && !name.empty())
    log_.insert(log_.size() - message.size(), ", " + name);
  else
    log_ += (log_.empty() ? "" : "; ") + name + message;
}

Stage::Stage() {
  settings.yield = false;
  settings.mouseShadow = false;
  ChangeMode(16);
  install_keyboard();
  clear_keybuf();
  root.Resize(kWidth, kHeight);
  PutMouse({kWidth - 1, kHeight - 1});
}

Stage::~Stage() {
  End();
  PutMouse({0, 0});
  mouse_b = 0;
  mouse_z = 0;
  HoldShifts(0);
}

void Stage::UseSkin() {
  SetCurrentSkin(std::make_unique<Skin>("default"));
  root.SetSkin(nullptr);
}

void Stage::Watch(std::initializer_list<int> messages) {
  root.watched = messages;
  root.Events();
}

void Stage::ChangeMode(int depth, Dialog* follower) {
  ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, kWidth, kHeight, depth, follower);
}

void Stage::Start() {
  root.MsgStart();
  Tick();
}

void Stage::End() {
  if (root.IsRunning()) root.MsgEnd();
}

void Stage::Tick(int times) {
  for (; times > 0; --times) {
    clock.Tick(0);
    root.MsgIdle();
  }
}

void Stage::Script(std::vector<std::function<void()>> steps) {
  settings.yield = true;
  clock.onSleep = [this, steps = std::move(steps), done = std::make_shared<std::size_t>(0)] {
    const std::size_t step = (*done)++;
    if (step < steps.size()) {
      steps[step]();
    } else if (step > steps.size()) {
      hasRunOn_ = true;
      root.closes = true;
      machine.closeButton();
    }
    clock.Tick(0);
  };
}

void Stage::MoveTo(int x, int y) {
  PutMouse({x, y});
  Tick();
}

void Stage::Press(int buttons) {
  HoldButtons(mouse_b | buttons);
  Tick();
}

void Stage::Release(int buttons) {
  HoldButtons(mouse_b & ~buttons);
  Tick();
}

void Stage::Click(int x, int y) {
  MoveTo(x, y);
  Press();
  Release();
}

void Stage::Type(int character, int scancode) {
  TypeKey(character, scancode);
  Tick();
}

}  // namespace zel
