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

  void SetScreenUpdate(ScreenUpdate* update) { screenUpdate = update; }
  Cursor* GetCursor() const { return cursor; }
  bool IsHidden() const { return hidden; }
  Point GetMousePosition() const { return mousePosition; }
  int GetButtons() const { return buttons; }
  int GetWheel() const { return wheel; }
  MouseState State() const { return {mousePosition, buttons, wheel}; }
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

  Cursor* cursor = nullptr;
  SkinBitmap background;  // empty while there is no shape to be shown
  Point pointerPosition;  // mouse position minus hotspot
  Point shadowPosition;
  Point savedOrigin;
  ScreenUpdate* screenUpdate = nullptr;
  bool hidden = true;
  Point mousePosition{-10000, -10000};  // off every screen until the first Poll
  int buttons = 0;
  int wheel = 0;
};

// The pointer, or null while no root dialog runs.
extern MousePointer* mousePointer;

}  // namespace zel
