// What the menu costs the processor: a key, a whole frame, a submenu of thousands of entries.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "imageformats/register.h"
#include "launcher/menu_screen.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "tests/support/fake_machine.h"
#include "toolkit/core/screen_update.h"
#include "toolkit/core/settings.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/engine_font.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 800;
constexpr int kHeight = 600;
constexpr int kManyEntries = 3000;

void WriteLongMenu() {
  std::ofstream file{"long.cfg"};
  file << "[MENU_CONFIGURATION]\nMenuTitle = Many\nHintFile = hints.txt\nLinesNumber = "
       << kManyEntries << "\n";
  for (int i = 1; i <= kManyEntries; ++i)
    file << "[LINE" << i << "]\nTitle = Entry " << i << "\nIcon = icons/disk.bmp\nExCode = " << i
         << "\nExString = choice " << i << "\nHintSection = disks\n";
}

// The example menu in a directory of its own, on a screen in memory.
class Stage {
 public:
  Stage() {
    install_allegro(SYSTEM_NONE, &errno, nullptr);
    machine_ = std::make_unique<FakeMachine>();
    RegisterPictureFormats();
    const fs::path directory = fs::temp_directory_path() / "zel-bench";
    fs::remove_all(directory);
    fs::copy(fs::path{ZEL_SOURCE_DIR} / "data", directory, fs::copy_options::recursive);
    fs::current_path(directory);
    WriteLongMenu();
    paths.positionFile = "menupos.txt";
    paths.outputFile = "output.txt";
    paths.mouseServerPid = "gpm.pid";
    settings.showMouse = false;
    ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, kWidth, kHeight, 16, nullptr);
    EngineInit();
    SetCurrentSkin(std::make_unique<Skin>("skin/zel.skin"));
    screen_ = std::make_unique<MenuScreen>();
    screen_->MsgStart();
    Frame();
  }

  MenuScreen& Menu() { return *screen_; }

  // What the loop does between a tick and the screen; answers the pixels that were copied.
  long Frame() {
    screen_->ApplyGeometry();
    screen_->DrawDirty();
    auto* update = static_cast<DirtyRectangles*>(CurrentScreenUpdate());
    long pixels = 0;
    for (const Rect& rect : update->Pending()) pixels += static_cast<long>(rect.w) * rect.h;
    update->Redraw();
    return pixels;
  }

 private:
  std::unique_ptr<FakeMachine> machine_;
  std::unique_ptr<MenuScreen> screen_;
};

Stage& TheStage() {
  static auto* stage = new Stage;
  return *stage;
}

void SelectionChange(benchmark::State& state) {
  Stage& stage = TheStage();
  long pixels = 0;
  bool down = true;
  for (auto _ : state) {
    stage.Menu().HandleKey(0, down ? KEY_DOWN : KEY_UP);
    pixels += stage.Frame();
    down = !down;
  }
  state.counters["pixels"] =
      benchmark::Counter(static_cast<double>(pixels), benchmark::Counter::kAvgIterations);
}
BENCHMARK(SelectionChange)->Unit(benchmark::kMicrosecond);

void FullRedraw(benchmark::State& state) {
  Stage& stage = TheStage();
  for (auto _ : state) {
    stage.Menu().Redraw();
    stage.Frame();
  }
}
BENCHMARK(FullRedraw)->Unit(benchmark::kMicrosecond);

void PlainScreenCopy(benchmark::State& state) {
  TheStage();
  const BitmapPtr picture{create_bitmap(kWidth, kHeight)};
  clear_bitmap(picture.get());
  for (auto _ : state) blit(picture.get(), screen, 0, 0, 0, 0, kWidth, kHeight);
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
  Bitmap canvas{kWidth, 40, kMemoryBitmap};
  canvas.clear_to_color(white);
  const Font& font = *CurrentSkin()->fonts[0];
  for (auto _ : state) font.Textout(canvas, kSentence, 4, 4, black, Color{}, kAlignLeft);
  state.SetItemsProcessed(state.iterations() * static_cast<long>(std::string{kSentence}.size()));
}
BENCHMARK(TextOfTheSkin);

void TextOfAllegro(benchmark::State& state) {
  TheStage();
  Bitmap canvas{kWidth, 40, kMemoryBitmap};
  for (auto _ : state) textout_ex(canvas.GetBitmap(), font, kSentence, 4, 4, black, -1);
  state.SetItemsProcessed(state.iterations() * static_cast<long>(std::string{kSentence}.size()));
}
BENCHMARK(TextOfAllegro);

}  // namespace
}  // namespace zel
