#include "toolkit/core/screen_update.h"

#include <algorithm>
#include <utility>

#include "toolkit/core/settings.h"

namespace zel {
namespace {

std::unique_ptr<ScreenUpdate> currentUpdate;

// The screen bitmap can be larger than what is seen of it: it goes on in video memory.
Size SeenSize() {
  if (!gfx_driver) return {screen->w, screen->h};
  return {std::min(screen->w, SCREEN_W), std::min(screen->h, SCREEN_H)};
}

// A bitmap of the screen's size to draw on, in video memory where the settings want it and there is
// enough of it.
void CreateBackBuffer(SkinBitmap& canvas) {
  if (!screen) return;
  const Size size = SeenSize();
  if (settings.useVideoMemory) canvas.Create(size.w, size.h, kVideoBitmap);
  if (canvas.IsEmpty()) canvas.Create(size.w, size.h, kMemoryBitmap);
}

// The corners of a rectangle that lie inside another one.
enum CornerMask : int { kTopLeft = 1, kTopRight = 2, kBottomLeft = 4, kBottomRight = 8 };

int CornersInside(const Rect& r, const Rect& covered) {
  int mask = 0;
  if (covered.Contains({r.x, r.y})) mask |= kTopLeft;
  if (covered.Contains({r.Right(), r.y})) mask |= kTopRight;
  if (covered.Contains({r.x, r.Bottom()})) mask |= kBottomLeft;
  if (covered.Contains({r.Right(), r.Bottom()})) mask |= kBottomRight;
  return mask;
}

// The parts of `r` that `covered` leaves open, in the order in which they are listed.
std::vector<Rect> Uncovered(const Rect& r, const Rect& covered) {
  const int x1 = r.x, y1 = r.y, x2 = r.Right(), y2 = r.Bottom();
  const int ex1 = covered.x, ey1 = covered.y, ex2 = covered.Right(), ey2 = covered.Bottom();
  switch (CornersInside(r, covered)) {
    case 0: {
      const int top = std::max(y1, ey1);
      const int height = std::min(y2, ey2) - top;
      return {{x1, y1, r.w, ey1 - y1},
              {x1, top, ex1 - x1, height},
              {ex2, top, x2 - ex2, height},
              {x1, ey2, r.w, y2 - ey2}};
    }
    case kTopLeft:
      return {{ex2, y1, x2 - ex2, ey2 - y1}, {x1, ey2, r.w, y2 - ey2}};
    case kTopRight:
      return {{x1, y1, ex1 - x1, ey2 - y1}, {x1, ey2, r.w, y2 - ey2}};
    case kTopLeft | kTopRight:
      return {{x1, ey2, r.w, y2 - ey2}};
    case kBottomLeft:
      return {{x1, y1, r.w, ey1 - y1}, {ex2, ey1, x2 - ex2, y2 - ey1}};
    case kTopLeft | kBottomLeft:
      return {{ex2, y1, x2 - ex2, r.h}};
    case kBottomRight:
      return {{x1, y1, r.w, ey1 - y1}, {x1, ey1, ex1 - x1, y2 - ey1}};
    case kTopRight | kBottomRight:
      return {{x1, y1, ex1 - x1, r.h}};
    case kBottomLeft | kBottomRight:
      return {{x1, y1, r.w, ey1 - y1}};
    default:
      return {};
  }
}

}  // namespace

ScreenUpdate::~ScreenUpdate() { canvas.Destroy(); }

Error ScreenUpdate::Create() {
  Destroy();
  if (screen) {
    const Size size = SeenSize();
    canvas.CreateSub(SkinBitmap{screen}, 0, 0, size.w, size.h);
  }
  return canvas.IsEmpty() ? kMemoryError : kNoError;
}

void ScreenUpdate::Destroy() { canvas.Destroy(); }
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
  CreateBackBuffer(canvas);
  return canvas.IsEmpty() ? kMemoryError : kNoError;
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
  CreateBackBuffer(canvas);
  return canvas.IsEmpty() ? kMemoryError : kNoError;
}

void DirtyRectangles::Redraw() {
  if (canvas.IsEmpty() || dirty_.empty()) return;
  acquire_bitmap(screen);
  for (const Rect& r : std::exchange(dirty_, {})) canvas.blit(screen, r.x, r.y, r.x, r.y, r.w, r.h);
  release_bitmap(screen);
}

const char* DirtyRectangles::GetName() const { return "Dirty Rectangle System"; }

void DirtyRectangles::AddDirtyRect(const Rect& rect) {
  // Pieces that are still to be checked against the list, the next one last.
  std::vector<Rect> open{rect};
  while (!open.empty()) {
    const Rect piece = open.back();
    open.pop_back();
    if (piece.w <= 0 || piece.h <= 0) continue;
    const auto covered = std::find_if(dirty_.begin(), dirty_.end(), [&piece](const Rect& listed) {
      return listed.Overlaps(piece);
    });
    if (covered == dirty_.end()) {
      dirty_.push_back(piece);
      continue;
    }
    const std::vector<Rect> rest = Uncovered(piece, *covered);
    open.insert(open.end(), rest.rbegin(), rest.rend());
  }
}

ScreenUpdate* CurrentScreenUpdate() { return currentUpdate.get(); }

void SetCurrentScreenUpdate(std::unique_ptr<ScreenUpdate> update) {
  currentUpdate = std::move(update);
}

void InstallScreenUpdate(int method) {
  if (method == kDoubleBuffering)
    SetCurrentScreenUpdate(std::make_unique<DoubleBuffer>());
  else if (method == kDirtyRectangles)
    SetCurrentScreenUpdate(std::make_unique<DirtyRectangles>());
  else
    SetCurrentScreenUpdate(std::make_unique<ScreenUpdate>());
  if (!currentUpdate->Create().IsError()) return;
  SetCurrentScreenUpdate(std::make_unique<ScreenUpdate>());
  currentUpdate->Create();
}

}  // namespace zel
