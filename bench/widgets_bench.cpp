// What widgets cost the processor while they are used: each figure is for one event and its frame.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/stage.h"
#include "launcher/paths.h"
#include "launcher/wait_dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/scroll_view.h"
#include "toolkit/widgets/slider.h"

namespace zel {
namespace {

constexpr int kProgressTimer = 0;  // the first that the menu installs
constexpr int kManyLines = 10000;

// The same with a widget that lies over the menu.
template <class Act>
void MeasureWidget(benchmark::State& state, Widget& widget, int roundsToChange, long leastPixels,
                   const Act& act) {
  TheStage().Menu().Add(&widget);
  MeasureFrames(state, roundsToChange, leastPixels, act);
  TheStage().Menu().Remove(&widget);
}

// Most ticks draw nothing.
void WaitWindowTick(benchmark::State& state) {
  MenuItem item;
  item.waitForFile.Assign("never");
  Stage& stage = TheStage();
  WaitDialog dialog{item};
  MeasureWidget(state, dialog, 100, 0, [&](int) {
    dialog.Check();
    stage.Menu().MsgTick();
  });
}
BENCHMARK(WaitWindowTick)->Unit(benchmark::kMicrosecond);

// Every round reads another file, since writing one would be timed, too.
void ProgressUpdate(benchmark::State& state) {
  constexpr int kFiles = 50;
  Stage& stage = TheStage();
  std::vector<std::string> files;
  for (int i = 0; i < kFiles; ++i) {
    files.push_back("progress" + std::to_string(i));
    std::ofstream{files.back()} << "[Progress]\nStepNumber=100\nCurrentStep=" << i * 2
                                << "\nProgressHide=0\nProgressInterval=500\n";
  }
  const char* const before = paths.progressFile;
  MeasureFrames(state, 2, 1, [&](int round) {
    paths.progressFile = files[static_cast<std::size_t>(round % kFiles)].c_str();
    stage.Menu().MsgTimer(kProgressTimer);
  });
  paths.progressFile = before;
  stage.Menu().MsgTimer(kProgressTimer);
}
BENCHMARK(ProgressUpdate)->Unit(benchmark::kMicrosecond);

void TypeCharacter(benchmark::State& state) {
  EditBox edit;
  edit.Setup(100, 100, 300, 28, 0, 0, "", 60);
  MeasureWidget(state, edit, 1, 1, [&edit](int round) {
    if (round % 60 == 0) edit.SetText("");
    edit.SendMessage(MSG_UCHAR, 'a' + round % 26);
  });
}
BENCHMARK(TypeCharacter)->Unit(benchmark::kMicrosecond);

void DragSlider(benchmark::State& state) {
  Slider slider;
  slider.Setup(100, 100, 400, 22, 0, 0, 0, 1000, 0, kHorizontal);
  const auto point = [](int x) {
    mouse_x = x;
    mouse_y = 110;
    CurrentPointer()->Poll();
  };
  MeasureWidget(state, slider, 2, 1, [&](int round) {
    point(105 + round * 7 % 380);
    round == 0 ? slider.MsgLPress() : slider.MsgMouseMove({});
  });
}
BENCHMARK(DragSlider)->Unit(benchmark::kMicrosecond);

// Down and up again, with the wheel over the text.
void ScrollLongText(benchmark::State& state) {
  constexpr int kPeriod = 1000;
  std::vector<std::string> lines;
  for (int i = 0; i < kManyLines; ++i)
    lines.push_back("a line of text with the number " + std::to_string(i));
  TextView view;
  view.Shape(50, 50, 600, 450);
  view.AppendLines(std::move(lines));
  MeasureWidget(state, view, 1, 600 * 400, [&view](int round) {
    view.Children().back()->SendMessage(MSG_WHEEL, round % kPeriod < kPeriod / 2 ? -20 : 20);
  });
}
BENCHMARK(ScrollLongText)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zel
