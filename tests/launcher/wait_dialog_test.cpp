#include "launcher/wait_dialog.h"

#include <climits>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

class WaitDialogTest : public WidgetFixture {
 protected:
  WaitDialog& Wait(int timeout) {
    item.timeout = timeout;
    dialog = std::make_unique<WaitDialog>(item);
    root->Add(dialog.get());
    Tick(2);
    Copied();
    return *dialog;
  }
  const char* Countdown() { return static_cast<Label*>(dialog->Client().Children()[3])->GetText(); }

  MenuItem item;
  std::unique_ptr<WaitDialog> dialog;
};

TEST_F(WaitDialogTest, FilesDecideAndOneThatMustGoDecidesAlone) {
  const char *there = "/", *gone = "/missing";
  const std::tuple<const char*, const char*, bool> rows[] = {
      {there, "", true}, {gone, "", false},     {"", there, false},
      {"", gone, true},  {there, there, false}, {gone, gone, true},
  };
  for (const auto& [waitFor, waitWhile, over] : rows) {
    item.waitForFile.Assign(waitFor);
    item.waitWhileFile.Assign(waitWhile);
    for (const int timeout : {-1, 0, 5})
      EXPECT_EQ(Wait(timeout).Check(), over) << waitFor << ' ' << waitWhile;
  }
}

TEST_F(WaitDialogTest, TimePassesAndOnlyWhatMovesIsCopied) {
  item.waitForFile.Assign("/missing");
  Wait(3);
  std::string seconds;
  for (int checks = 1; checks <= 80; ++checks) {
    EXPECT_EQ(dialog->Check(), checks == 80);
    const bool changes = !seconds.ends_with(Countdown());
    EXPECT_EQ(Copied(), changes ? 240 * 10 : 0);
    if (changes) seconds += Countdown();
  }
  EXPECT_EQ(seconds, "3210");
  EXPECT_FALSE(Wait(INT_MAX).Check());
  EXPECT_STREQ(Countdown(), "2147482");
  Wait(0).Check();
  EXPECT_EQ(Copied(), 2 * 5 * 27);
}

TEST_F(WaitDialogTest, TheKeyThatOpensItDoesNotCancelItToo) {
  key[KEY_ENTER] = 1;
  Widget* cancel = Wait(0).Client().Children()[4];
  root->SetFocus(cancel);
  for (const bool counts : {false, true}) {
    Press(KEY_ENTER, 13);
    EXPECT_EQ(cancel->Selected(), counts);
    key[KEY_ENTER] = 0;
    Tick();
  }
}

TEST_F(WaitDialogTest, GivesItsTimerBack) {
  for (int i = 0; i < 20; ++i) Wait(i % 2);
  dialog.reset();
  for (int free = 1; free < kTimerSlots; ++free) EXPECT_NE(InstallTimer(50), kNoTimer);
}

}  // namespace
}  // namespace zel
