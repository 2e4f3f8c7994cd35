#include "toolkit/draw/screen_update.h"

#include <algorithm>
#include <utility>

#include "toolkit/base/settings.h"
#include "toolkit/draw/draw_part.h"

namespace zel {
namespace {

// The screen bitmap can be larger than what is seen of it: it goes on in video memory.
Size SeenSize() {
  if (!gfx_driver) return {screen->w, screen->h};
  return {std::min(screen->w, SCREEN_W), std::min(screen->h, SCREEN_H)};
}

// A black bitmap of the screen's size to draw on, in video memory where the settings want it and
// there is enough of it.
Error CreateBackBuffer(SkinBitmap& canvas) {
  if (!screen) return kMemoryError;
  const Size size = SeenSize();
  if (settings.useVideoMemory) canvas.Create(size.w, size.h, kVideoBitmap);
  if (canvas.IsEmpty()) canvas.Create(size.w, size.h, kMemoryBitmap);
  canvas.clear_bitmap();
  return canvas.IsEmpty() ? kMemoryError : kNoError;
}

}  // namespace

ScreenUpdate::~ScreenUpdate() { canvas.Destroy(); }

Error ScreenUpdate::Create() {
  Destroy();
  if (screen) {
    const Size size = SeenSize();
    screenPart_.reset(create_sub_bitmap(screen, 0, 0, size.w, size.h));
    canvas.Set(screenPart_.get(), false, kNoBitmap);
  }
  return canvas.IsEmpty() ? kMemoryError : kNoError;
}

void ScreenUpdate::Destroy() {
  canvas.Destroy();
  screenPart_.reset();
}

void ScreenUpdate::Redraw() {}
BITMAP* ScreenUpdate::GetCanvas() { return canvas.GetBitmap(); }

void ScreenUpdate::AcquireCanvas() {
  if (!canvas.IsEmpty()) acquire_bitmap(canvas.GetBitmap());
}

void ScreenUpdate::ReleaseCanvas() {
  if (!canvas.IsEmpty()) release_bitmap(canvas.GetBitmap());
}

const char* ScreenUpdate::GetName() const { return "default Allegro update driver"; }
bool ScreenUpdate::RedrawsAll() const { return false; }
void ScreenUpdate::AddDirtyRect(const Rect&) {}
void ScreenUpdate::AddDirtyRect(int x, int y, int w, int h) { AddDirtyRect(Rect{x, y, w, h}); }

DoubleBuffer::~DoubleBuffer() = default;

Error DoubleBuffer::Create() {
  Destroy();
  return CreateBackBuffer(canvas);
}

void DoubleBuffer::Redraw() {
  if (canvas.IsEmpty()) return;
  if (settings.vsync) vsync();
  canvas.blit(screen, 0, 0, 0, 0, canvas.Width(), canvas.Height());
}

const char* DoubleBuffer::GetName() const { return "Double Buffering"; }
bool DoubleBuffer::RedrawsAll() const { return true; }

DirtyRectangles::~DirtyRectangles() = default;

Error DirtyRectangles::Create() {
  Destroy();
  return CreateBackBuffer(canvas);
}

void DirtyRectangles::Redraw() {
  const PixelArea parts = std::exchange(dirty_, {});
  if (canvas.IsEmpty()) return;
  acquire_bitmap(screen);
  for (const Rect& r : parts.Rects()) canvas.blit(screen, r.x, r.y, r.x, r.y, r.w, r.h);
  release_bitmap(screen);
}

const char* DirtyRectangles::GetName() const { return "Dirty Rectangle System"; }

void DirtyRectangles::AddDirtyRect(const Rect& rect) { dirty_.Add(rect); }

ScreenUpdate* CurrentScreenUpdate() { return Drawing().screenUpdate.get(); }

void SetCurrentScreenUpdate(std::unique_ptr<ScreenUpdate> update) {
  Drawing().screenUpdate = std::move(update);
}

void InstallScreenUpdate(int method) {
  if (method == kDoubleBuffering)
    SetCurrentScreenUpdate(std::make_unique<DoubleBuffer>());
  else if (method == kDirtyRectangles)
    SetCurrentScreenUpdate(std::make_unique<DirtyRectangles>());
  else
    SetCurrentScreenUpdate(std::make_unique<ScreenUpdate>());
  if (!CurrentScreenUpdate()->Create().IsError()) return;
  SetCurrentScreenUpdate(std::make_unique<ScreenUpdate>());
  CurrentScreenUpdate()->Create();
}

}  // namespace zel
