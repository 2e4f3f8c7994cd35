// What widgets cost the processor while they are used: each figure is for one event and its frame.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/stage.h"
#include "launcher/wait_dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/scroll_view.h"
#include "toolkit/widgets/slider.h"

namespace zel {
namespace {

constexpr int kProgressTimer = 0;        // the first that the menu installs
constexpr std::size_t kVerticalBar = 2;  // of the children of a view
constexpr int kManyLines = 10000;

// Calls `act` with the number of the round and draws a frame after it.
template <class Act>
void Measure(benchmark::State& state, const Act& act) {
  Stage& stage = TheStage();
  stage.Frame();
  long pixels = 0;
  int round = 0;
  for (auto _ : state) {
    act(round++);
    pixels += stage.Frame();
  }
  state.counters["pixels"] =
      benchmark::Counter(static_cast<double>(pixels), benchmark::Counter::kAvgIterations);
}

// The same with a widget that lies over the menu.
template <class Act>
void MeasureWidget(benchmark::State& state, Widget& widget, const Act& act) {
  TheStage().Menu().Add(&widget);
  Measure(state, act);
  TheStage().Menu().Remove(&widget);
}

void WaitWindowTick(benchmark::State& state) {
  MenuItem item;
  item.waitForFile.Assign("never");
  Stage& stage = TheStage();
  WaitDialog dialog{item};
  MeasureWidget(state, dialog, [&](int) {
    dialog.Check();
    stage.Menu().MsgTick();
  });
}
BENCHMARK(WaitWindowTick)->Unit(benchmark::kMicrosecond);

void ProgressUpdate(benchmark::State& state) {
  Stage& stage = TheStage();
  Measure(state, [&](int round) {
    state.PauseTiming();
    std::ofstream{"progress"} << "[Progress]\nStepNumber=100\nCurrentStep=" << round % 100
                              << "\nProgressHide=0\nProgressInterval=500\n";
    state.ResumeTiming();
    stage.Menu().MsgTimer(kProgressTimer);
  });
}
BENCHMARK(ProgressUpdate)->Unit(benchmark::kMicrosecond);

void TypeCharacter(benchmark::State& state) {
  EditBox edit;
  edit.Setup(100, 100, 300, 28, 0, 0, "", 60);
  MeasureWidget(state, edit, [&edit](int round) {
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
    mousePointer->Poll();
  };
  TheStage().Menu().Add(&slider);
  point(105);
  slider.MsgLPress();
  TheStage().Menu().Remove(&slider);
  MeasureWidget(state, slider, [&](int round) {
    point(105 + round * 7 % 380);
    slider.MsgMouseMove({});
  });
}
BENCHMARK(DragSlider)->Unit(benchmark::kMicrosecond);

void ScrollLongText(benchmark::State& state) {
  std::vector<std::string> lines;
  for (int i = 0; i < kManyLines; ++i)
    lines.push_back("a line of text with the number " + std::to_string(i));
  TextView view;
  view.Shape(50, 50, 600, 450);
  view.AppendLines(std::move(lines));
  MeasureWidget(state, view, [&view](int round) {
    view.Children()[kVerticalBar]->SendMessage(MSG_WHEEL, round % 2000 < 1000 ? -20 : 20);
  });
}
BENCHMARK(ScrollLongText)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zel
