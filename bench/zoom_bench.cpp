// What a zoom costs at the start: the skin, the background and the first frame of the menu. Comes
// last, for it leaves no stage for the others.
#include <benchmark/benchmark.h>

#include "bench/stage.h"
#include "launcher/layout.h"
#include "launcher/state.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// Counts the pixels that a selection change copies then.
void ZoomedStart(benchmark::State& state) {
  TheStage();
  const Size size{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
  ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, size.w, size.h, 32, nullptr);
  const auto show = [](MenuScreen& menu) {
    auto* update = static_cast<DirtyRectangles*>(CurrentScreenUpdate());
    menu.ApplyGeometry();
    menu.DrawDirty();
    long pixels = 0;
    for (const Rect& rect : update->Pending()) pixels += static_cast<long>(rect.w) * rect.h;
    update->Redraw();
    return pixels;
  };
  long changed = 0;
  for (auto _ : state) {
    launcherState.layout = FitLayout(kMainMenu, size, kZoomToFit);
    SetCurrentSkin(std::make_unique<Skin>("skin/zel.skin"));
    MenuScreen menu;
    menu.MsgStart();
    if (show(menu) < size.w * size.h) return state.SkipWithError("not all was drawn");
    menu.HandleKey(0, KEY_DOWN);
    changed = show(menu);
    menu.MsgEnd();
  }
  state.counters["pixels"] = static_cast<double>(changed);
}
BENCHMARK(ZoomedStart)
    ->Unit(benchmark::kMillisecond)
    ->Args({1024, 768})
    ->Args({1920, 1080})
    ->Args({3840, 2160});

}  // namespace
}  // namespace zel
