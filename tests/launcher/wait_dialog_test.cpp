#include "launcher/wait_dialog.h"

#include <climits>

#include "launcher/paths.h"
#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

class WaitDialogTest : public WidgetFixture {
 protected:
  WaitDialogTest() { paths.catalogues = "/nowhere"; }
  ~WaitDialogTest() override { paths = {}; }

  WaitDialog& Wait(int timeout) {
    item.timeout = timeout;
    dialog = std::make_unique<WaitDialog>(item);
    root.Add(dialog.get());
    Tick(2);
    Copied();
    return *dialog;
  }

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
  EXPECT_EQ(clock.Count(), 2) << "all but the last have given their timers back";
}

TEST_F(WaitDialogTest, TimePassesAndOnlyWhatMovesIsCopied) {
  item.waitForFile.Assign("/missing");
  Wait(3);
  ExpectShown("wait_window", {0, 0, 320, 200});
  std::string changes;
  for (int checks = 1; checks <= 80; ++checks) {
    EXPECT_EQ(dialog->Check(), checks == 80);
    if (const int copied = Copied())
      changes += std::to_string(checks) + ':' + std::to_string(copied) + ' ';
    if (checks == 1) ExpectShown("wait_countdown", {0, 90, 320, 60});
  }
  EXPECT_EQ(changes, "1:2400 21:2400 41:2400 61:2400 ");
  EXPECT_FALSE(Wait(INT_MAX).Check());
  ExpectShown("wait_for_ages", {0, 90, 320, 60});
  Wait(0).Check();
  EXPECT_EQ(Copied(), 2 * 5 * 27);
  ExpectShown("wait_busy", {0, 90, 320, 60});
}

TEST_F(WaitDialogTest, ItsTimerAndTheShortcutEndIt) {
  item.waitForFile.Assign("/missing");
  Wait(1);
  int closed = 0, periods = 0;
  root.onEvent = [&closed](Widget*, int msg, int) { closed += msg == MSG_CLOSE; };
  for (; closed == 0 && periods < 99; ++periods)
    for (int id = 0; id < kTimerSlots; ++id) dialog->MsgTimer(id);
  EXPECT_EQ(std::pair(closed, periods), std::pair(1, 40));
  key_shifts = KB_ALT_FLAG;
  dialog->Client().HandleKey(0, KEY_C);
  EXPECT_EQ(closed, 2);
  key_shifts = 0;
}

TEST_F(WaitDialogTest, TheKeyThatOpensItDoesNotCancelItToo) {
  key[KEY_ENTER] = 1;
  Wait(0);
  Mouse(160, 128, 1), Mouse(5, 5);
  Widget* const cancel = root.FocusWidget();
  ASSERT_TRUE(cancel);
  for (const bool counts : {false, true}) {
    Type(13, KEY_ENTER);
    EXPECT_EQ(cancel->Selected(), counts);
    key[KEY_ENTER] = 0;
    Tick();
  }
}

}  // namespace
}  // namespace zel
