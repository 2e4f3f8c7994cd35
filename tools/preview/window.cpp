#include "tools/preview/window.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <sstream>
#include <vector>

#include "imageformats/register.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/input.h"
#include "toolkit/base/process.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/key_router.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_view.h"
#include "tools/preview/channel.h"
#include "tools/preview/live.h"
#include "tools/preview/player.h"
#include "tools/support/options.h"

namespace zel {
namespace {

constexpr int kX = AL_ID('X', 'W', 'I', 'N');
constexpr int kLeastWidth = 480, kNewsHeight = 150, kLeastNewsHeight = 90, kMargin = 6,
              kBarWidth = 18;
constexpr int kButtonWidth = 160, kButtonHeight = 26;
constexpr int kMostDirectories = 20;
constexpr char kNewsMessage = 'n';   // lines of text
constexpr char kBeginMessage = 'b';  // back
constexpr const char* kNoDisplay =
    "zel-preview: there is no X display for a window; --serve shows the menu on a page, --png FILE "
    "makes a picture";

// The menu as it is, which gets what is done to it.
class MenuView final : public Widget {
 public:
  explicit MenuView(Channel& channel) : channel_{channel} { SetOpaque(true); }

  void Draw(Bitmap& canvas) override {
    if (picture_) blit(picture_.get(), canvas.GetBitmap(), 0, 0, 0, 0, picture_->w, picture_->h);
  }
  bool MsgWantFocus() override { return true; }
  bool MsgWantMouse() override { return true; }

  bool MsgChar(int code) override {
    scancode_ = code >> 8;
    const int character = code & 0xFF;
    if (character == kWideCharacter) return false;
    Press(character);
    return true;
  }
  bool MsgUChar(int character) override {
    Press(character);
    return true;
  }

  // The menu draws a pointer of its own.
  void MsgGotMouse() override {
    Widget::MsgGotMouse();
    if (MousePointer* pointer = CurrentPointer()) pointer->SetCursor(nullptr);
  }
  void MsgLostMouse() override {
    Widget::MsgLostMouse();
    SetCursor(MOUSE_NORMAL);
    Tell("leave");
  }
  void MsgLPress() override { TellMouse(); }
  void MsgLRelease() override { TellMouse(); }
  void MsgMPress() override { TellMouse(); }
  void MsgMRelease() override { TellMouse(); }
  void MsgRPress() override { TellMouse(); }
  void MsgRRelease() override { TellMouse(); }
  void MsgMouseMove(Point) override { TellMouse(); }
  void MsgWheel(int steps) override { Tell("wheel " + std::to_string(steps)); }

  void MsgTick() override {
    Widget::MsgTick();
    TellReleases();
  }

  void Show(const std::string& pixels, Size size) {
    if (!picture_) picture_.reset(create_bitmap(size.w, size.h));
    if (!picture_) return;
    const auto* in = reinterpret_cast<const unsigned char*>(pixels.data());
    for (int y = 0; y < size.h; ++y)
      for (int x = 0; x < size.w; ++x, in += 3)
        putpixel(picture_.get(), x, y, makecol(in[0], in[1], in[2]));
    Redraw();
  }

 private:
  void Tell(const std::string& line) { channel_.Send(kInputMessage, line); }
  void TellReleases() {
    for (auto pressed = pressed_.begin(); pressed != pressed_.end();) {
      const bool isUp = Releases(pressed->first) != pressed->second;
      if (isUp) Tell("up " + std::to_string(pressed->first) + ' ' + std::to_string(Shifts()));
      pressed = isUp ? pressed_.erase(pressed) : std::next(pressed);
    }
  }
  void Press(int character) {
    TellReleases();  // which were before
    pressed_[scancode_] = Releases(scancode_);
    Tell("down " + std::to_string(scancode_) + ' ' + std::to_string(character) + ' ' +
         std::to_string(Shifts()));
  }
  void TellMouse() {
    const MousePointer* pointer = CurrentPointer();
    if (!pointer) return;
    const Point at = GetMousePos();
    Tell("mouse " + std::to_string(at.x) + ' ' + std::to_string(at.y) + ' ' +
         std::to_string(pointer->GetButtons()));
  }

  Channel& channel_;
  BitmapPtr picture_;
  int scancode_ = 0;
  std::map<int, unsigned> pressed_;  // how often it had been let go of
};

// Leaves the keyboard to the menu.
class MouseButton final : public Button {
 public:
  bool MsgWantFocus() override { return false; }
};

class PreviewScreen final : public Dialog {
 public:
  PreviewScreen(PollLoop& loop, Channel& channel, Size menu, std::string title)
      : loop_{loop}, channel_{channel}, title_{std::move(title)}, view_{channel} {
    Add(&ground_);
    Add(&view_);
    Add(&news_);
    Add(&begin_);
    view_.Shape((settings.screenWidth - menu.w) / 2, 0, menu.w, menu.h);
    news_.Shape(0, menu.h, settings.screenWidth,
                settings.screenHeight - menu.h - kButtonHeight - 2 * kMargin);
    begin_.Setup(settings.screenWidth - kMargin - kButtonWidth,
                 settings.screenHeight - kMargin - kButtonHeight, kButtonWidth, kButtonHeight, 0, 0,
                 "From the beginning");
    news_.SetMargins(kMargin, kMargin, kMargin, kMargin);
    SetEscapeCloses(false);
  }

  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override {
    Dialog::HandleEvent(sender, msg, arg1, arg2);
    if (msg == MSG_ACTIVATE && sender == &begin_) channel_.Send(kBeginMessage, "");
  }
  void MsgStart() override {
    Dialog::MsgStart();
    SetFocus(&view_);
  }
  void MsgTick() override {
    Dialog::MsgTick();
    loop_.Pass(0);
    SetFocus(&view_);
    AskForWindow();
  }
  void MsgInitSkin() override {
    ground_.SetColor(Color{0, 0, 0});
    ClearFlag(kFlagSkinChanged);
  }

  void Show(const std::string& pixels, Size size) { view_.Show(pixels, size); }
  void ShowNews(const std::string& text) {
    std::istringstream stream{text};
    std::vector<std::string> lines;
    const Font& font = news_.GetFont(kNormal);
    const int width = news_.w() - 2 * kMargin - kBarWidth;
    for (std::string line; std::getline(stream, line);)
      for (std::size_t at = 0; at < line.size();) {
        int ignored = 0;
        const int count = std::max(1, font.WrapCount(line.c_str() + at, width, &ignored));
        lines.push_back(line.substr(at, static_cast<std::size_t>(count)));
        at += static_cast<std::size_t>(count);
      }
    news_.SetLines(std::move(lines));
  }

 private:
  // Nobody tells Allegro of a window that another program destroys, and without anything to draw
  // nothing is asked of it: once a second its title is, and the server refuses that.
  void AskForWindow() {
    if (++ticks_ % settings.UsableFrameRate() == 0) set_window_title(title_.c_str());
  }

  PollLoop& loop_;
  Channel& channel_;
  const std::string title_;
  int ticks_ = 0;
  ClearScreen ground_;
  MenuView view_;
  TextView news_;
  MouseButton begin_;
};

// The look of what is not the menu: with Debian's usual letters, where they are installed.
std::string OwnLook() {
  const std::string place = "/usr/share/fonts/truetype/";
  const std::string letters = place + "dejavu/DejaVuSans.ttf";
  const std::string others = place + "droid/DroidSansFallbackFull.ttf";
  std::string look = "[Skin]\nfocus = 2\ndottedRect = 0\n[COLORS]\nfocus = 255,255,255\n";
  if (!IsFile(letters.c_str())) return look;
  // Skins name files from where they lie themselves; above the root is the root.
  std::string root;
  for (int i = 0; i < kMostDirectories; ++i) root += "../";
  look += "[FONT0]\nsize = 15\nfile = " + root + letters + '\n';
  return IsFile(others.c_str()) ? look + "fallback = " + root + others + '\n' : look;
}

Size SizeOf(const std::string& message) {
  std::int32_t extent[2];
  std::memcpy(extent, message.data(), sizeof extent);
  return {extent[0], extent[1]};
}

void OnWindowGone() {
  std::fputs("zel-preview: the window was taken away\n", stderr);
  std::_Exit(EXIT_SUCCESS);
}

// The process that has the window.
void RunWindow(int descriptor, Size menu, const std::string& title, const std::string& look) {
  PollLoop loop;
  Channel channel{loop, descriptor};
  // The console is not to be taken where there is no display.
  if (!std::getenv("DISPLAY") || install_allegro(kX, &errno, std::atexit) != 0) {
    std::fprintf(stderr, "%s\n", kNoDisplay);
    _exit(kFailedStatus);
  }
  InstallBitmapGuard();
  RegisterPictureFormats();
  set_uformat(U_UTF8);
  settings = {};
  settings.fullscreen = false;
  settings.screenWidth = std::max(menu.w, kLeastWidth);
  int w = 0, h = 0;
  const bool isKnown = get_desktop_resolution(&w, &h) == 0;
  const int room = isKnown ? h - menu.h : kNewsHeight;
  settings.screenHeight = menu.h + std::clamp(room, kLeastNewsHeight, kNewsHeight);
  if (isKnown && (settings.screenWidth > w || settings.screenHeight > h))
    std::fprintf(stderr,
                 "zel-preview: the window does not fit the display, which is %dx%d; --size makes "
                 "the menu smaller, --serve shows it on a page\n",
                 w, h);
  settings.colorDepth = 0;
  settings.runInBackground = true;
  settings.skinPath.Assign(look.c_str());
  const Error error = InstallToolkit(nullptr);
  if (error.IsError()) {
    std::fprintf(stderr, "%s\n", kNoDisplay);
    _exit(kFailedStatus);
  }
  set_window_title(title.c_str());
  {
    process.onDisplayLost = OnWindowGone;
    PreviewScreen screen{loop, channel, menu, title};
    channel.onEnd = [&screen] { screen.Close(); };
    channel.onMessage = [&](char kind, const std::string& body) {
      if (kind == kFrameMessage) screen.Show(body.substr(2 * sizeof(std::int32_t)), SizeOf(body));
      if (kind == kNewsMessage) screen.ShowNews(body);
    };
    screen.Execute(nullptr);
  }
  ExitToolkit();
  std::exit(EXIT_SUCCESS);
}

// The window, and what it has been told.
class Front {
 public:
  Front(PollLoop& loop, Live& live, std::string title, std::string look)
      : loop_{loop}, live_{live}, title_{std::move(title)}, look_{std::move(look)} {
    live_.onChange = [this] { Follow(); };
  }
  ~Front() {
    live_.onChange = nullptr;
    End();
  }
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;

  // The exit status once the window was closed; else -1.
  int Status() const { return status_; }

 private:
  void Follow() {
    if (status_ >= 0) return;
    if (live_.FrameNumber() == 0) {
      // Without any picture there is nothing to be waited for but a change of the files.
      if (!live_.Complaint().empty())
        std::fprintf(stderr, "zel-preview: %s\n", live_.Complaint().c_str());
      return;
    }
    if (!channel_ || size_ != live_.FrameSize()) Open();
    if (!channel_ || !channel_->IsIdle()) return loop_.SetAlarm("window", 10, [this] { Follow(); });
    if (frame_ != live_.FrameNumber()) {
      const std::int32_t extent[] = {size_.w, size_.h};
      std::string message(reinterpret_cast<const char*>(extent), sizeof extent);
      channel_->Send(kFrameMessage, message + live_.Pixels());
    }
    if (news_ != live_.NewsNumber()) channel_->Send(kNewsMessage, News());
    frame_ = live_.FrameNumber();
    news_ = live_.NewsNumber();
  }

  void Open() {
    End();
    size_ = live_.FrameSize();
    frame_ = 0;
    news_ = -1;
    const int end = StartProcess(loop_, &process_,
                                 [this](int window) { RunWindow(window, size_, title_, look_); });
    if (end < 0) return;
    channel_ = std::make_unique<Channel>(loop_, end);
    channel_->onMessage = [this](char kind, const std::string& line) {
      if (kind == kBeginMessage) live_.Begin();
      if (kind == kInputMessage) live_.Act(line);
    };
    channel_->onEnd = [this] {
      int status = 0;
      waitpid(process_, &status, 0);
      process_ = -1;
      status_ = WIFEXITED(status) ? WEXITSTATUS(status) : kFailedStatus;
    };
  }

  void End() {
    channel_.reset();
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    process_ = -1;
  }

  std::string News() const {
    std::string news;
    if (!live_.Complaint().empty()) news += live_.Complaint() + '\n';
    if (const Live::Choice* choice = live_.LastChoice())
      news += "Choice: status " + choice->status + ", string \"" + choice->text + "\", position " +
              choice->position + '\n';
    return news + live_.FindingsAsText();
  }

  PollLoop& loop_;
  Live& live_;
  const std::string title_, look_;  // the file of a skin
  pid_t process_ = -1;
  std::unique_ptr<Channel> channel_;
  Size size_;
  int frame_ = 0, news_ = -1, status_ = -1;
};

}  // namespace

int ShowInWindow(const std::string& directory, const Scene& scene, Scratch& scratch) {
  const char* display = std::getenv("DISPLAY");
  if (!display || !*display) {
    std::fprintf(stderr, "%s\n", kNoDisplay);
    return kFailedStatus;
  }
  PollLoop::CatchSignals();
  PollLoop loop;
  Live live{loop, directory, scene, scratch};
  const Front front{loop, live, "zel-preview " + directory,
                    scratch.Write("window.skin", OwnLook())};
  while (!PollLoop::IsOver() && front.Status() < 0) loop.Pass(-1);
  return front.Status() < 0 ? EXIT_SUCCESS : front.Status();
}

}  // namespace zel
