#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <cctype>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/display_colors.h"
#include "toolkit/base/display_link.h"
#include "toolkit/base/process.h"
#include "toolkit/base/wakeup.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>
#include <xalleg.h>

#include <X11/XKBlib.h>

// What Xlib knows of a server. Events are signs: 'a' when that key goes down, 'A' when it goes up,
// '1' when it goes down at another time, and '-' when there is no key in it.
static std::remove_pointer_t<_XPrivDisplay> server{};
static std::string coming, queue, told;
static XIOErrorHandler onGone;
static XErrorHandler onError;

static void Take(int count) {
  queue.erase(0, static_cast<std::size_t>(count));
  server.qlen = static_cast<int>(queue.size());
}

// These stand in for Xlib's and Allegro's.
extern "C" {
int XFlush(Display*) { return told += "send ", 0; }
int XEventsQueued(Display*, int) {
  queue += std::exchange(coming, "");
  return told += "read ", Take(0), 0;
}
int XPeekEvent(Display*, XEvent* event) {
  const int sign = queue[0];
  event->type = sign == '-' ? MotionNotify : std::isupper(sign) ? KeyRelease : KeyPress;
  event->xkey.keycode = static_cast<unsigned>(sign == '1' ? 'a' : std::tolower(sign));
  return event->xkey.time = sign == '1', 0;
}
int XNextEvent(Display*, XEvent*) { return Take(1), 0; }
XIOErrorHandler XSetIOErrorHandler(XIOErrorHandler handler) { return onGone = handler; }
XErrorHandler XSetErrorHandler(XErrorHandler handler) { return onError = handler; }
Bool XkbSetDetectableAutoRepeat(Display*, Bool, Bool*) { return told += "repeats ", True; }
void _xwin_keyboard_handler(XKeyEvent* key, int) {
  told += key->type == KeyPress ? "down " : "up ";
}
void _xwin_private_handle_input() { told += "* ", Take(1); }
}

namespace zel {
namespace {

TEST(DisplayLink, TakesKeysAtOnceWithoutReleasesOfRepeatsAndLeavesTheRestToAllegro) {
  const int readable = server.fd = open("/dev/zero", O_RDONLY | O_CLOEXEC);
  LinkDisplay();
  _xwin.display = reinterpret_cast<Display*>(&server);
  EXPECT_EQ(DisplayDescriptor(), -1) << "there was none";
  LinkDisplay();
  EXPECT_EQ(DisplayDescriptor(), readable);
  const auto round = [](const std::string& sent) {
    coming = sent;
    told = "";
    return TalkToDisplay(), told;
  };
  const std::pair<const char*, const char*> rounds[] = {
      {"", "repeats send "}, {"", "read "},           {"a", "read down "},
      {"Aa", "read down "},  {"Ab", "read up down "}, {"A1", "read up down "},
      {"AA", "read up up "}, {"A", "read up "},       {"a--bA", "read down * * down up * "}};
  for (const auto& [sent, seen] : rounds) EXPECT_EQ(round(sent), seen) << sent;
  const auto slack = [] { return prctl(PR_GET_TIMERSLACK, 0, 0, 0, 0); };
  std::thread{[&] { EXPECT_EQ((round(""), slack()), 20'000'000) << "Allegro's has time"; }}.join();
  EXPECT_LT(slack(), 20'000'000);
  EXPECT_EQ(round(std::string(300, '-')).size(), 5u + 2 * 101) << "it never stops";
  server.fd = -1;
  EXPECT_EQ(round("").size() + round("").size(), 2 * 5u + 2 * 199) << "what was left";
  EXPECT_EQ(round("a"), "");
  ++server.request;
  _xwin.mouse_warped = 1;
  EXPECT_EQ(round(""), "send * ");
  server.fd = readable;
  _xwin.mouse_warped = 0;
  for (const char* seen : {"read down ", ""}) {
    coming = "a";
    told = "";
    SleepUntilWoken();
    EXPECT_EQ(told, seen) << "until there was nothing to tell";
  }
  process.onDisplayLost = [] { std::fputs("told\n", stderr); };
  EXPECT_EXIT(onGone(nullptr), testing::ExitedWithCode(1), "^told\nThe X server is gone.\n$");
  process.onDisplayLost = nullptr;
  EXPECT_EXIT(onError(nullptr, nullptr), testing::ExitedWithCode(1), "^The X server refuses");
  [[maybe_unused]] static const DisplayCalls* const kept = process.displayCalls;
  _xwin_input_handler = nullptr;
}

constexpr int kWidth = 65537;  // so that the second row begins with another colour
void ShowAsAllegro(int x, int y, int w, int h) {
  GRAPHICS_RECT from{w, h, 2 * kWidth, _xwin.screen_line[y] + 2 * x};
  GRAPHICS_RECT to{w, h, 4 * kWidth, _xwin.buffer_line[y] + 4 * x};
  static const auto widen = _get_colorconv_blitter(16, 32);  // each one has tables of its own
  widen(&from, &to);
}
void ShowNothing(int, int, int, int) {}

TEST(DisplayColors, EveryPixelIsWidenedAsAllegroDoesWhereItDoesSo) {
  std::vector<std::uint16_t> narrow(2 * kWidth);
  std::vector<std::uint32_t> wide(2 * kWidth), expected(2 * kWidth);
  std::iota(narrow.begin(), narrow.end(), std::uint16_t{0});
  unsigned char *from[2], *to[2];
  const auto show = [&](std::vector<std::uint32_t>& shown) {
    for (const int y : {0, 1}) {
      from[y] = reinterpret_cast<unsigned char*>(&narrow[y * kWidth]);
      to[y] = reinterpret_cast<unsigned char*>(&shown[y * kWidth]);
    }
    _xwin.screen_to_buffer(1, 0, kWidth - 1, 2);
  };
  _xwin.screen_line = from;
  _xwin.buffer_line = to;
  _xwin.screen_to_buffer = ShowAsAllegro;
  show(expected);
  const auto isSpedUp = [](auto* allegros) {
    _xwin.screen_to_buffer = allegros;
    SpeedUpDisplay();
    return _xwin.screen_to_buffer != allegros;
  };
  _xwin.screen_depth = 16;
  _xwin.fast_visual_depth = 32;
  _xwin.display = nullptr;
  EXPECT_FALSE(isSpedUp(ShowAsAllegro)) << "no display";
  _xwin.display = reinterpret_cast<Display*>(&server);
  for (int* differs : {&_xwin.screen_depth, &_xwin.fast_visual_depth, &_xwin.matching_formats}) {
    ++*differs;
    EXPECT_FALSE(isSpedUp(ShowAsAllegro));
    --*differs;
  }
  EXPECT_FALSE(isSpedUp(ShowNothing));
  EXPECT_TRUE(isSpedUp(ShowAsAllegro));
  show(wide);
  EXPECT_EQ(wide, expected);
  _xwin.display = nullptr;
}

}  // namespace
}  // namespace zel
