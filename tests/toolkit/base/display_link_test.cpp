#include "toolkit/base/display_link.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/process.h"
#include "toolkit/base/wakeup.h"
// After Allegro itself.
#include <xalleg.h>

#include <X11/XKBlib.h>

// What Xlib and Allegro know of a server. Events are letters: 'a' when that key goes down, 'A' when
// it goes up, '1' when it goes down at another time, and any other sign for what is no key.
struct FakeServer {
  static XEvent EventOf(char sign) {
    XEvent event{};
    event.type = std::isalnum(sign) ? (std::isupper(sign) ? KeyRelease : KeyPress) : MotionNotify;
    event.xkey.keycode = static_cast<unsigned>(sign == '1' ? 'a' : std::tolower(sign));
    event.xkey.time = sign == '1';
    return event;
  }
  XEvent Take() {
    const XEvent taken = EventOf(queue[0]);
    queue.erase(0, 1);
    state.qlen = static_cast<int>(queue.size());
    return taken;
  }
  std::string Rounds(int times, const std::string& sent) {
    EXPECT_GE(write(pipe[1], sent.data(), sent.size()), 0);
    for (log = ""; times > 0; --times) zel::TalkToDisplay();
    return log;
  }

  std::remove_pointer_t<_XPrivDisplay> state{};
  int pipe[2] = {};
  std::string queue, log;
  XIOErrorHandler onGone = nullptr;
  XErrorHandler onError = nullptr;
};
static FakeServer server;

// These stand in for Xlib's and Allegro's.
extern "C" {
int XFlush(Display*) { return server.log += "send ", 0; }
int XEventsQueued(Display*, int mode) {
  char read_[400];
  const ssize_t count = read(server.pipe[0], read_, sizeof read_);
  server.log += mode == QueuedAfterReading ? "read " : "?";
  server.queue.append(read_, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return server.state.qlen = static_cast<int>(server.queue.size());
}
int XPeekEvent(Display*, XEvent* event) { return *event = server.EventOf(server.queue[0]), 0; }
int XNextEvent(Display*, XEvent* event) { return *event = server.Take(), 0; }
XIOErrorHandler XSetIOErrorHandler(XIOErrorHandler told) { return server.onGone = told; }
XErrorHandler XSetErrorHandler(XErrorHandler told) { return server.onError = told; }
Bool XkbSetDetectableAutoRepeat(Display*, Bool wanted, Bool*) {
  return server.log += wanted ? "detectable " : "?", True;
}
void _xwin_keyboard_handler(XKeyEvent* event, int isFromDga) {
  const auto key = static_cast<int>(event->keycode);
  server.log += static_cast<char>(event->type == KeyRelease ? std::toupper(key) : key);
  server.log += isFromDga ? "?" : " ";
}
void _xwin_private_handle_input() {
  server.log += "* ";
  if (!server.queue.empty()) server.Take();
}
}

namespace zel {
namespace {

TEST(DisplayLink, TakesKeysAtOnceWithoutReleasesOfRepeatsAndLeavesTheRestToAllegro) {
  ASSERT_EQ(pipe2(server.pipe, O_NONBLOCK), 0);
  server.state.fd = server.pipe[0];
  LinkDisplay();
  EXPECT_EQ(DisplayDescriptor(), -1) << "there is none";
  _xwin.display = reinterpret_cast<Display*>(&server.state);
  _xwin_input_handler = [] { server.log += "other's "; };
  LinkDisplay();
  EXPECT_EQ(DisplayDescriptor(), -1) << "it is another's";
  EXPECT_EQ(server.Rounds(1, ""), "");
  _xwin_input_handler = nullptr;
  LinkDisplay();
  EXPECT_EQ(DisplayDescriptor(), server.pipe[0]);
  EXPECT_EQ(server.Rounds(2, ""), "detectable send ");
  const std::pair<const char*, const char*> rounds[] = {
      {"a", "read a "},    {"Aa", "read a "}, {"Ab", "read A b "}, {"A1", "read A a "},
      {"AA", "read A A "}, {"A", "read A "},  {"A-", "read A * "}, {"a--bA", "read a * * b A * "}};
  for (const auto& [sent, told] : rounds) EXPECT_EQ(server.Rounds(1, sent), told) << sent;
  EXPECT_EQ(server.Rounds(1, std::string(300, '-')).size(), 5u + 2 * 101) << "it never stops";
  EXPECT_EQ(server.Rounds(2, "").size(), 2 * 5u + 2 * 199) << "what it has left";
  ++server.state.request;
  _xwin.mouse_warped = 1;
  EXPECT_EQ(server.Rounds(2, ""), "send * * ");
  _xwin.mouse_warped = 0;

  SleepUntilWoken();  // until what was told before
  process.listensToDisplay = true;
  EXPECT_EQ(write(server.pipe[1], "a", 1), 1);
  SleepUntilWoken();
  EXPECT_EQ(server.log, "send * * read a ");
  EXPECT_FALSE(process.isTakingInput || process.listensToDisplay) << "there was nothing to tell";
  EXPECT_EQ(write(server.pipe[1], "b", 1), 1);
  SleepUntilWoken();
  EXPECT_EQ(server.log, "send * * read a ");

  const auto slack = [](unsigned long before) {
    prctl(PR_SET_TIMERSLACK, before);
    TalkToDisplay();
    return prctl(PR_GET_TIMERSLACK);
  };
  EXPECT_EQ(slack(50'000), 50'000) << "in the loop's thread";
  std::thread{[&] {
    EXPECT_EQ(slack(50'000), 20'000'000);
    EXPECT_EQ(slack(50'000), 50'000) << "once";
  }}.join();

  process.onDisplayLost = [] { std::fputs("told\n", stderr); };
  EXPECT_EXIT(server.onGone(nullptr), testing::ExitedWithCode(1), "told\nThe X server is gone.\n");
  process.onDisplayLost = nullptr;
  EXPECT_EXIT(server.onError(nullptr, nullptr), testing::ExitedWithCode(1),
              "^The X server refuses a request.\n");
  [[maybe_unused]] static const DisplayCalls* const kept = process.displayCalls;
  _xwin.display = nullptr;
  _xwin_input_handler = nullptr;
}

}  // namespace
}  // namespace zel
