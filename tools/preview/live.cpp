#include "tools/preview/live.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>
#include <vector>

#include "imageformats/register.h"
#include "launcher/language.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/testing/offscreen.h"
#include "tools/checker/check.h"
#include "tools/preview/named_files.h"
#include "tools/preview/player.h"

namespace zel {
namespace {

constexpr char kTextMessage = 't', kJsonMessage = 'j';  // which comes last
constexpr int kPatience = 15000;                        // milliseconds for a menu or a check
constexpr const char* kAuto = "auto";                   // a zoom
constexpr int kLargestExtent = 8192;                    // of what is sent around
constexpr const char *kSlowMenu = "live: the menu", *kSlowCheck = "live: the check";

[[noreturn]] void TellFindings(int descriptor) {
  PollLoop loop;
  Channel channel{loop, descriptor};
  channel.onEnd = [] { _exit(EXIT_FAILURE); };
  set_uformat(U_UTF8);
  install_allegro(SYSTEM_NONE, &errno, nullptr);
  InstallBitmapGuard();
  RegisterPictureFormats();
  const std::vector<Finding> findings = CheckTree();
  channel.Send(kTextMessage, AsText(findings, ""));
  channel.Send(kJsonMessage, AsJson(findings, ""));
  while (!channel.IsIdle()) loop.Pass(-1);
  _exit(EXIT_SUCCESS);
}

}  // namespace

Live::Live(PollLoop& loop, const std::string& directory, const Scene& scene, Scratch& scratch)
    : loop_{loop},
      directory_{directory},
      scene_{scene},
      ownLook_{scene.look},
      scratch_{scratch},
      watch_{loop, directory, scene.look, [this] {
               Restart();
               Check();
             }} {
  scratch_.NameOf("");  // the directory is this process's
  Restart();
  Check();
}

Live::~Live() {
  loop_.CancelAlarm(kSlowMenu);
  loop_.CancelAlarm(kSlowCheck);
  for (Process* process : {&shown_, &next_, &checker_}) Stop(*process);
}

bool Live::Start(Process& process, const std::function<void(int end)>& act) {
  Stop(process);
  const int end = StartProcess(loop_, &process.id, act);
  if (end < 0) return false;
  process.channel = std::make_unique<Channel>(loop_, end);
  return true;
}

void Live::Stop(Process& process) {
  process.channel.reset();
  if (process.id > 0) {
    kill(process.id, SIGKILL);
    waitpid(process.id, nullptr, 0);
  }
  process.id = -1;
}

// Also where it was removed and made again.
bool Live::EnterDirectory() {
  if (chdir(directory_.c_str()) == 0) return true;
  Complain(directory_ + ": " + std::strerror(errno));
  return false;
}

void Live::Restart() {
  loop_.CancelAlarm(kSlowMenu);
  if (!EnterDirectory()) return;
  Scene scene = scene_;
  if (isTouched_) {
    scene.position = position_;
    scene.select.clear();
    scene.keys.clear();
    scene.after = 0;
  }
  const bool isStarted =
      Start(next_, [this, &scene](int descriptor) { Play(scene, scratch_, descriptor); });
  if (!isStarted) return Complain(std::string{"no menu: "} + std::strerror(errno));
  next_.channel->onMessage = [this](char kind, const std::string& body) { Hear(true, kind, body); };
  next_.channel->onEnd = [this] {
    Stop(next_);
    loop_.CancelAlarm(kSlowMenu);
    if (complaint_.empty()) Complain("the menu cannot be shown");
  };
  loop_.SetAlarm(kSlowMenu, kPatience, [this] {
    Stop(next_);
    Complain("the menu takes too long");
  });
}

void Live::Check() {
  if (!EnterDirectory() || !Start(checker_, TellFindings)) return;
  checker_.channel->onMessage = [this](char kind, const std::string& body) {
    if (kind == kTextMessage) findingsAsText_ = body;
    if (kind != kJsonMessage) return;
    findings_ = body;
    std::replace(findings_.begin(), findings_.end(), '\n', ' ');
    TellNews();
  };
  checker_.channel->onEnd = [this] {
    loop_.CancelAlarm(kSlowCheck);
    Stop(checker_);
  };
  loop_.SetAlarm(kSlowCheck, kPatience, [this] { Stop(checker_); });
}

void Live::Hear(bool isNext, char kind, const std::string& body) {
  if (kind == kComplaintMessage) {
    Complain(body);
    return;
  }
  if (isNext && kind == kFrameMessage) {
    // The new menu has taken the place of the one before.
    Stop(shown_);
    loop_.CancelAlarm(kSlowMenu);
    shown_ = std::exchange(next_, {});
    shown_.channel->onMessage = [this](char later, const std::string& more) {
      Hear(false, later, more);
    };
    shown_.channel->onEnd = [this] {
      Stop(shown_);
      if (next_.id < 0) Complain("the menu has ended without a choice");
    };
    if (!std::exchange(complaint_, {}).empty()) TellNews();
  }
  if (kind == kFrameMessage) TakeFrame(body);
  if (kind == kPositionMessage) position_ = body;
  if (kind == kChoiceMessage) TakeChoice(body);
}

void Live::TakeFrame(const std::string& body) {
  std::int32_t extent[2] = {};
  if (body.size() < sizeof extent) return;
  std::memcpy(extent, body.data(), sizeof extent);
  const auto [w, h] = extent;
  const bool fits = std::min(w, h) > 0 && std::max(w, h) <= kLargestExtent;
  if (!fits || body.size() != sizeof extent + std::size_t{3} * w * h) return;
  frameSize_ = {w, h};
  pixels_ = body.substr(sizeof extent);
  ++frameNumber_;
  if (onChange) onChange();
}

void Live::TakeChoice(const std::string& body) {
  std::istringstream lines{body};
  choice_ = std::make_unique<Choice>();
  std::getline(lines, choice_->status);
  std::getline(lines, choice_->position);
  std::getline(lines, choice_->text);
  isTouched_ = true;
  position_ = choice_->position;
  TellNews();
  shown_.channel->onEnd = nullptr;  // it is over, but its picture stays until the next one
  Restart();
}

void Live::Complain(const std::string& complaint) {
  complaint_ = complaint;
  TellNews();
}

void Live::TellNews() {
  ++newsNumber_;
  if (onChange) onChange();
}

void Live::Act(const std::string& line) {
  // A pointer that leaves is nothing that is done to the menu.
  if (line != "leave") isTouched_ = true;
  if (shown_.channel) shown_.channel->Send(kInputMessage, line);
}

void Live::Begin() {
  isTouched_ = false;
  choice_.reset();
  TellNews();
  Restart();
}

std::set<std::string> Live::Looks() const {
  std::set<std::string> looks = SkinsIn(directory_);
  if (!ownLook_.empty()) looks.insert(ownLook_);
  return looks;
}

// What keys have chosen would win.
void Live::ForgetLook() { std::remove(scratch_.NameOf("look").c_str()); }

bool Live::Change(const std::string& what, const std::string& value) {
  if (what == "language") {
    const LanguageRow* chosen = nullptr;
    for (const LanguageRow& row : Languages())
      if (value == row.code) chosen = &row;
    if (!chosen && !value.empty()) return false;
    scene_.language = chosen ? chosen->code : nullptr;
  } else if (what == "size") {
    Size size;
    if (!value.empty() && !ParseSize(value.c_str(), &size)) return false;
    if (std::max(size.w, size.h) > kLargestExtent) return false;
    scene_.size = size;
  } else if (what == "depth") {
    const std::vector<std::string> known{"", "8", "15", "16", "24", "32"};
    if (std::find(known.begin(), known.end(), value) == known.end()) return false;
    scene_.depth = std::atoi(value.c_str());
  } else if (what == "zoom") {
    char* end = nullptr;
    const double zoom = std::strtod(value.c_str(), &end);
    const bool isZoom =
        value == kAuto || (*end == '\0' && kLeastZoom <= zoom && zoom <= kLargestZoom);
    if (!value.empty() && !isZoom) return false;
    scene_.zoom.reset();
    if (!value.empty()) scene_.zoom = value == kAuto ? kZoomToFit : zoom;
    ForgetLook();
  } else if (what == "look") {
    if (!value.empty() && !Looks().contains(value)) return false;
    scene_.look = value;
    ForgetLook();
  } else {
    return false;
  }
  Restart();
  return true;
}

}  // namespace zel
