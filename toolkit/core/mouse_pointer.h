// The one pointer on the screen.
#pragma once

#include "toolkit/base/geometry.h"
#include "toolkit/base/input.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/draw/skin_bitmap.h"

namespace zel {

// Tracks the mouse, draws the current cursor over the drawn widgets and puts back what lay beneath.
//
// Borrows the cursor (the skin owns it) and the screen update; owns the saved background. Exists
// while a root dialog runs.
class MousePointer {
 public:
  // From now on it follows when a skin takes its shapes away.
  MousePointer();
  MousePointer(const MousePointer&) = delete;
  MousePointer& operator=(const MousePointer&) = delete;

  virtual void FreeBackground();
  // Copies Allegro's mouse_x, mouse_y, mouse_b and mouse_z.
  virtual void Poll();
  // Shape, shadow and the area to be saved, from the mouse position.
  virtual void ComputePositions();
  virtual ~MousePointer();
  // Shows another shape, or none for null. Also to be called when the shape or the canvas changed.
  virtual void SetCursor(Cursor* shape);
  // Saves what lies beneath and draws shadow and shape; nothing while the settings hide the mouse.
  virtual void Draw();
  // Puts back what lay beneath; nothing while the pointer is hidden.
  virtual void Hide();
  // Once per logic tick: advances the animation and follows the mouse.
  virtual void Update();

  void SetScreenUpdate(ScreenUpdate* update) { screenUpdate_ = update; }
  Cursor* GetCursor() const { return cursor_; }
  bool IsHidden() const { return hidden_; }
  Point GetMousePosition() const { return mousePosition_; }
  int GetButtons() const { return buttons_; }
  int GetWheel() const { return wheel_; }
  MouseState State() const { return {mousePosition_, buttons_, wheel_}; }
  // Follows the mouse to where it was.
  void Follow(const MouseState& state);

 private:
  // Null while the settings hide the mouse or there is nothing to draw on.
  BITMAP* Canvas() const;
  const SkinBitmap* CurrentFrame() const;
  // Of the area that shape and shadow cover together.
  Size SavedSize() const;
  void SaveBackground(BITMAP* canvas);
  bool BackgroundFits(BITMAP* canvas) const;
  void ReportSavedArea();
  // By as much as the mouse has moved since it was at `before`.
  void MoveShape(Point before);

  Cursor* cursor_ = nullptr;
  SkinBitmap background_;  // empty while there is no shape to be shown
  Point pointerPosition_;  // mouse position minus hotspot
  Point shadowPosition_;
  Point savedOrigin_;
  ScreenUpdate* screenUpdate_ = nullptr;
  bool hidden_ = true;
  Point mousePosition_{-10000, -10000};  // off every screen until the first Poll
  int buttons_ = 0;
  int wheel_ = 0;
};

// The pointer, or null while no root dialog runs.
MousePointer* CurrentPointer();

}  // namespace zel
