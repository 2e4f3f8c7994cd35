#include "toolkit/core/mouse_pointer.h"

#include <algorithm>

#include "toolkit/base/settings.h"
#include "toolkit/skin/skin.h"

namespace zel {

MousePointer* mousePointer = nullptr;

namespace {

void ReplaceShape(const Cursor* gone, Cursor* next) {
  if (mousePointer && mousePointer->GetCursor() == gone) mousePointer->SetCursor(next);
}

}  // namespace

MousePointer::MousePointer() { shapeIsGone = ReplaceShape; }

MousePointer::~MousePointer() { MousePointer::FreeBackground(); }

void MousePointer::FreeBackground() { background.Destroy(); }

void MousePointer::Poll() {
  mousePosition = {mouse_x, mouse_y};
  buttons = mouse_b;
  wheel = mouse_z;
}

void MousePointer::ComputePositions() {
  const Point hotspot = cursor ? cursor->GetHotspot() : Point{};
  pointerPosition = {mousePosition.x - hotspot.x, mousePosition.y - hotspot.y};
  const CursorShadow look = cursor ? cursor->GetShadowLook() : CursorShadow{};
  shadowPosition = {pointerPosition.x + look.offset.x - look.size,
                    pointerPosition.y + look.offset.y - look.size};
  savedOrigin = {std::min(pointerPosition.x, shadowPosition.x),
                 std::min(pointerPosition.y, shadowPosition.y)};
}

BITMAP* MousePointer::Canvas() const {
  return settings.showMouse && screenUpdate ? screenUpdate->GetCanvas() : nullptr;
}

const SkinBitmap* MousePointer::CurrentFrame() const {
  return cursor ? cursor->GetFrame() : nullptr;
}

Size MousePointer::SavedSize() const {
  const SkinBitmap* frame = CurrentFrame();
  if (!frame) return {};
  const int blurred = 2 * cursor->GetShadowLook().size;
  const int right = std::max(pointerPosition.x, shadowPosition.x + blurred) + frame->Width();
  const int bottom = std::max(pointerPosition.y, shadowPosition.y + blurred) + frame->Height();
  return {right - savedOrigin.x, bottom - savedOrigin.y};
}

void MousePointer::SaveBackground(BITMAP* canvas) {
  const Size size = SavedSize();
  if (background.Width() != size.w || background.Height() != size.h || !BackgroundFits(canvas)) {
    FreeBackground();
    background.CreateEx(bitmap_color_depth(canvas), size.w, size.h);
  }
  if (background.IsEmpty()) return;
  blit(canvas, background.GetBitmap(), savedOrigin.x, savedOrigin.y, 0, 0, size.w, size.h);
}

bool MousePointer::BackgroundFits(BITMAP* canvas) const {
  return !background.IsEmpty() &&
         bitmap_color_depth(background.GetBitmap()) == bitmap_color_depth(canvas);
}

void MousePointer::ReportSavedArea() {
  if (background.IsEmpty()) return;
  screenUpdate->AddDirtyRect(savedOrigin.x, savedOrigin.y, background.Width(), background.Height());
}

void MousePointer::SetCursor(Cursor* shape) {
  const bool showing = !hidden;
  if (showing) Hide();
  cursor = shape;
  ComputePositions();
  if (BITMAP* canvas = Canvas()) SaveBackground(canvas);
  if (showing) Draw();
}

void MousePointer::Draw() {
  BITMAP* canvas = Canvas();
  if (!canvas) return;
  ComputePositions();
  SaveBackground(canvas);
  if (const SkinBitmap* frame = CurrentFrame()) {
    constexpr int kPaletteDepth = 8;  // where nothing can be translucent
    if (settings.mouseShadow && bitmap_color_depth(canvas) > kPaletteDepth) {
      set_alpha_blender();
      cursor->GetShadow()->draw_trans_sprite(canvas, shadowPosition.x, shadowPosition.y);
    }
    frame->draw_sprite(canvas, pointerPosition.x, pointerPosition.y);
  }
  ReportSavedArea();
  hidden = false;
}

void MousePointer::Hide() {
  BITMAP* canvas = Canvas();
  if (!canvas || hidden) return;
  // After a change of the graphics mode what was saved belongs to a screen that is gone.
  if (BackgroundFits(canvas)) {
    background.blit(canvas, 0, 0, savedOrigin.x, savedOrigin.y, background.Width(),
                    background.Height());
    ReportSavedArea();
  }
  hidden = true;
}

void MousePointer::Update() {
  if (cursor) cursor->Update();
  const Point before = mousePosition;
  Poll();
  MoveShape(before);
}

void MousePointer::Follow(const MouseState& state) {
  const Point before = mousePosition;
  mousePosition = state.position;
  buttons = state.buttons;
  wheel = state.wheel;
  MoveShape(before);
}

void MousePointer::MoveShape(Point before) {
  const Point moved{mousePosition.x - before.x, mousePosition.y - before.y};
  pointerPosition = {pointerPosition.x + moved.x, pointerPosition.y + moved.y};
  shadowPosition = {shadowPosition.x + moved.x, shadowPosition.y + moved.y};
}

}  // namespace zel
