// Answers the dialog on a machine without hardware. Each character of the first argument is a key,
// but "D" for the arrow down and "C" for a click into the list. A picture of what it looks
// like before the last of them goes to the file of the second argument, with the skin of the third.
#include <cstdio>
#include <string>

#include "docs/example/disk_question.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/startup.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"
#include "toolkit/testing/hands.h"
#include "toolkit/testing/offscreen.h"

namespace {

constexpr int kTicksPerStep = 40;  // presses end meanwhile

void Press(char key) {
  if (key == 'D') return zel::TypeKey(0, KEY_DOWN);
  if (key != 'C') return zel::TypeKey(key, KEY_A + key - 'a');
  zel::PutMouse({60, 78});
  zel::HoldButtons(1);
  zel::HoldButtons(0);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string keys = argc > 1 ? argv[1] : "c";
  zel::FakeMachine machine;
  zel::FakeTimers clock;
  zel::settings.screenWidth = 320;
  zel::settings.screenHeight = 240;
  if (argc > 3) zel::settings.skinPath.Assign(argv[3]);
  if (zel::InstallToolkit(nullptr).IsError()) return 1;
  {
    DiskQuestion question;
    std::size_t next = 0;
    int ticks = 0;
    clock.onSleep = [&] {  // instead of waiting
      clock.Tick(0);
      if (++ticks % kTicksPerStep != 0) return;
      if (next == keys.size()) return question.Close();
      if (next + 1 == keys.size() && argc > 2) zel::SavePng(argv[2], screen);
      Press(keys[next++]);
    };
    question.Execute(nullptr);
    std::puts(question.Answer().c_str());
  }
  zel::ExitToolkit();
}
