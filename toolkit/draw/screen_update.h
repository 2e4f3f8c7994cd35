// How a drawn frame reaches the screen.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/error.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/pixel_area.h"
#include "toolkit/draw/skin_bitmap.h"

namespace zel {

// The values of Settings::screenUpdateMethod that have a method of their own; every other value
// selects the direct method.
enum ScreenUpdateMethod : int { kDoubleBuffering = 0, kDirtyRectangles = 3 };

// The direct method, and the base of the others: widgets draw on the screen itself.
//
// Owns the canvas. One is current while a root dialog runs.
class ScreenUpdate {
 public:
  ScreenUpdate() = default;
  ScreenUpdate(const ScreenUpdate&) = delete;
  ScreenUpdate& operator=(const ScreenUpdate&) = delete;

  virtual ~ScreenUpdate();
  // Makes the canvas for the screen as it is now; code 7 when that is impossible.
  virtual Error Create();
  virtual void Destroy();
  // Brings what was drawn since the last call to the screen.
  virtual void Redraw();
  // Null before Create and after Destroy.
  virtual BITMAP* GetCanvas();
  virtual void AcquireCanvas();
  virtual void ReleaseCanvas();
  virtual const char* GetName() const;
  // True when every frame must be drawn whole.
  virtual bool RedrawsAll() const;
  // Notes that a part of the canvas changed.
  virtual void AddDirtyRect(const Rect& rect);
  virtual void AddDirtyRect(int x, int y, int w, int h);

 protected:
  SkinBitmap canvas;

 private:
  BitmapPtr screenPart_;  // what the direct method's canvas borrows
};

// Draws every frame whole into a back buffer and copies it whole.
class DoubleBuffer final : public ScreenUpdate {
 public:
  ~DoubleBuffer() override;
  Error Create() override;
  void Redraw() override;
  const char* GetName() const override;
  bool RedrawsAll() const override;
};

// Keeps the frame in a back buffer and copies only what changed, each pixel once.
class DirtyRectangles final : public ScreenUpdate {
 public:
  ~DirtyRectangles() override;
  Error Create() override;
  void Redraw() override;
  const char* GetName() const override;
  void AddDirtyRect(const Rect& rect) override;
  using ScreenUpdate::AddDirtyRect;

  // What the next Redraw copies, in order; no two of them overlap.
  const std::vector<Rect>& Pending() const { return dirty_.Rects(); }

 private:
  PixelArea dirty_;
};

// The current screen update, or null while no root dialog runs.
ScreenUpdate* CurrentScreenUpdate();
void SetCurrentScreenUpdate(std::unique_ptr<ScreenUpdate> update);
// Makes the method that the settings name current, or the direct one when it cannot be created.
void InstallScreenUpdate(int method);

}  // namespace zel
