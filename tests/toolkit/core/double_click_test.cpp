#include "toolkit/core/double_click.h"

#include <gtest/gtest.h>

#include <string>

namespace zel {
namespace {

// The ticks from left to right: which button goes down in each ("L", "R", "M", "A" for all of them,
// "." for none), or, in small letters, before it. Answers in which of them a double click is due.
std::string Due(const std::string& presses, bool forgets = false) {
  DoubleClicks clicks;
  clicks.SetWindow(4);
  std::string due;
  for (const char press : presses) {
    const std::string buttons = "LRAM";  // 1, 2, 3 for all, 4
    const auto upper = static_cast<char>(press & ~32);
    int pressed = press == '.' ? 0 : static_cast<int>(buttons.find(upper)) + 1;
    if (pressed == 3) pressed = kLeftButton | kRightButton | kMiddleButton;
    if (press >= 'a' && clicks.Note(std::exchange(pressed, 0), false)) return "between ticks";
    const bool isDue = clicks.Note(pressed, true);
    if (forgets) clicks.Forget();
    due += isDue && clicks.Take() ? '!' : '.';
  }
  return due;
}

TEST(DoubleClicks, AreTwoPressesOfOneButtonWithinTheWindow) {
  const struct {
    const char *presses, *due;
  } kRows[] = {{"LL...", "..!.."},       {"L.L..", "...!."},       {"L...L...", ".....!.."},
               {"L....L..", "........"}, {"RR..", "..!."},         {"MM..", "..!."},
               {"LR..R...", "........"}, {"AL..", "..!."},         {"AM......", "........"},
               {"L..LL...", "....!..."}, {"LL.LL.", "..!..!"},     {"ll..", "..!."},
               {"lL..", "..!."},         {"l...l...", ".....!.."}, {"l....l..", "........"}};
  for (const auto& row : kRows) EXPECT_EQ(Due(row.presses), row.due) << row.presses;
  EXPECT_EQ(Due("LLLL..", true), "......") << "forgotten before they are taken";
}

}  // namespace
}  // namespace zel
