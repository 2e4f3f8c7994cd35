// Answers the dialog without a display: presses the keys of the first argument, and leaves a
// picture of what it looks like before the last of them in the file of the second one.
#include <cstdio>
#include <string>

#include "docs/example/disk_question.h"
#include "toolkit/testing/offscreen.h"

namespace {

constexpr int kFramesPerKey = 40;  // presses end meanwhile

void Press(zel::Dialog& dialog, char key) {
  if (key == 'D')
    dialog.HandleKey(0, KEY_DOWN);
  else
    dialog.HandleKey(key, KEY_A + key - 'a');
}

}  // namespace

int main(int argc, char** argv) {
  const std::string keys = argc > 1 ? argv[1] : "c";
  zel::Offscreen offscreen;
  if (!offscreen.SetMode({320, 240}, 32)) return 1;
  if (!zel::Offscreen::LoadSkin(argc > 3 ? argv[3] : "default").empty()) return 1;
  DiskQuestion question;
  std::size_t next = 0;
  int frames = 0;
  offscreen.onFrame = [&] {
    if (++frames % kFramesPerKey != 0) return;
    if (next == keys.size()) return question.Close();
    if (next + 1 == keys.size() && argc > 2) zel::SavePng(argv[2], offscreen.Frame());
    Press(question, keys[next++]);
  };
  offscreen.Run(question);
  std::puts(question.Answer().c_str());
}
