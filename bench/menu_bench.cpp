// What the menu costs the processor: a key, a whole frame, a submenu of thousands of entries.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/stage.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

void SelectionChange(benchmark::State& state) {
  MeasureFrames(state, 1, 1, [](int round) {
    TheStage().Menu().HandleKey(0, round % 2 == 0 ? KEY_DOWN : KEY_UP);
  });
}
BENCHMARK(SelectionChange)->Unit(benchmark::kMicrosecond);

void FullRedraw(benchmark::State& state) {
  TheStage();
  clear_bitmap(screen);  // so that what is drawn is a change
  MeasureFrames(state, 1, kStageWidth * kStageHeight, [](int) { TheStage().Menu().Redraw(); });
}
BENCHMARK(FullRedraw)->Unit(benchmark::kMicrosecond);

void PlainScreenCopy(benchmark::State& state) {
  TheStage();
  const BitmapPtr picture{create_bitmap(kStageWidth, kStageHeight)};
  clear_bitmap(picture.get());
  for (auto _ : state) blit(picture.get(), screen, 0, 0, 0, 0, kStageWidth, kStageHeight);
}
BENCHMARK(PlainScreenCopy)->Unit(benchmark::kMicrosecond);

void OpenLongSubmenu(benchmark::State& state) {
  Stage& stage = TheStage();
  for (auto _ : state) {
    stage.Menu().Load("long.cfg");
    stage.Frame();
    state.PauseTiming();
    stage.Menu().Load(nullptr);
    stage.Frame();
    state.ResumeTiming();
  }
}
BENCHMARK(OpenLongSubmenu)->Unit(benchmark::kMillisecond);

constexpr const char* kSentence = "Looks at every disk of this computer and reads its health data.";

void TextOfTheSkin(benchmark::State& state) {
  TheStage();
  Bitmap canvas{kStageWidth, 40, kMemoryBitmap};
  canvas.clear_to_color(white);
  const Font& font = *CurrentSkin()->fonts[0];
  for (auto _ : state) font.Textout(canvas, kSentence, 4, 4, black, Color{}, kAlignLeft);
  state.SetItemsProcessed(state.iterations() * static_cast<long>(std::string{kSentence}.size()));
}
BENCHMARK(TextOfTheSkin);

void TextOfAllegro(benchmark::State& state) {
  TheStage();
  Bitmap canvas{kStageWidth, 40, kMemoryBitmap};
  for (auto _ : state) textout_ex(canvas.GetBitmap(), font, kSentence, 4, 4, black, -1);
  state.SetItemsProcessed(state.iterations() * static_cast<long>(std::string{kSentence}.size()));
}
BENCHMARK(TextOfAllegro);

}  // namespace
}  // namespace zel
