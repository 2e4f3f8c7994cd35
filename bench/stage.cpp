#include "bench/stage.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "imageformats/register.h"
#include "launcher/paths.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr int kManyEntries = 3000;

void WriteLongMenu() {
  std::ofstream file{"long.cfg"};
  file << "[MENU_CONFIGURATION]\nMenuTitle = Many\nHintFile = hints.txt\nLinesNumber = "
       << kManyEntries << "\n";
  for (int i = 1; i <= kManyEntries; ++i)
    file << "[LINE" << i << "]\nTitle = Entry " << i << "\nIcon = icons/disk.bmp\nExCode = " << i
         << "\nExString = choice " << i << "\nHintSection = disks\n";
}

}  // namespace

Stage::Stage() {
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
  paths.progressFile = "progress";
  paths.mouseServerPid = "gpm.pid";
  settings.showMouse = false;
  ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, kStageWidth, kStageHeight, 16, nullptr);
  EngineInit();
  SetCurrentSkin(std::make_unique<Skin>("skin/zel.skin"));
  screen_ = std::make_unique<MenuScreen>();
  screen_->MsgStart();
  Frame();
}

long Stage::Frame() {
  screen_->ApplyGeometry();
  screen_->DrawDirty();
  auto* update = static_cast<DirtyRectangles*>(CurrentScreenUpdate());
  long pixels = 0;
  for (const Rect& rect : update->Pending()) pixels += static_cast<long>(rect.w) * rect.h;
  update->Redraw();
  return pixels;
}

std::vector<std::uint8_t> Stage::Picture() const {
  std::vector<std::uint8_t> pixels;
  for (int y = 0; y < kStageHeight; ++y)
    pixels.insert(pixels.end(), screen->line[y], screen->line[y] + kStageWidth * 2);
  return pixels;
}

Stage& TheStage() {
  static auto* stage = new Stage;
  return *stage;
}

}  // namespace zel
