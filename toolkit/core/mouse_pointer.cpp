#include "toolkit/core/mouse_pointer.h"

#include <algorithm>

#include "toolkit/base/settings.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/skin/skin.h"

namespace zel {

namespace {

void ReplaceShape(const Cursor* gone, Cursor* next) {
  MousePointer* pointer = CurrentPointer();
  if (pointer && pointer->GetCursor() == gone) pointer->SetCursor(next);
}

}  // namespace

MousePointer* CurrentPointer() { return Loop().Pointer(); }

MousePointer::MousePointer() { TellOfGoneShapes(ReplaceShape); }

MousePointer::~MousePointer() {
  TellOfGoneShapes(nullptr);
  MousePointer::FreeBackground();
}

void MousePointer::FreeBackground() { background_.Destroy(); }

void MousePointer::Poll() {
  mousePosition_ = {mouse_x, mouse_y};
  buttons_ = mouse_b;
  wheel_ = mouse_z;
}

void MousePointer::ComputePositions() {
  const Point hotspot = cursor_ ? cursor_->GetHotspot() : Point{};
  pointerPosition_ = {mousePosition_.x - hotspot.x, mousePosition_.y - hotspot.y};
  const CursorShadow look = cursor_ ? cursor_->GetShadowLook() : CursorShadow{};
  shadowPosition_ = {pointerPosition_.x + look.offset.x - look.size,
                     pointerPosition_.y + look.offset.y - look.size};
  savedOrigin_ = {std::min(pointerPosition_.x, shadowPosition_.x),
                  std::min(pointerPosition_.y, shadowPosition_.y)};
}

BITMAP* MousePointer::Canvas() const {
  return settings.showMouse && screenUpdate_ ? screenUpdate_->GetCanvas() : nullptr;
}

const SkinBitmap* MousePointer::CurrentFrame() const {
  return cursor_ ? cursor_->GetFrame() : nullptr;
}

Size MousePointer::SavedSize() const {
  const SkinBitmap* frame = CurrentFrame();
  if (!frame) return {};
  const int blurred = 2 * cursor_->GetShadowLook().size;
  const int right = std::max(pointerPosition_.x, shadowPosition_.x + blurred) + frame->Width();
  const int bottom = std::max(pointerPosition_.y, shadowPosition_.y + blurred) + frame->Height();
  return {right - savedOrigin_.x, bottom - savedOrigin_.y};
}

void MousePointer::SaveBackground(BITMAP* canvas) {
  const Size size = SavedSize();
  if (background_.Width() != size.w || background_.Height() != size.h || !BackgroundFits(canvas)) {
    FreeBackground();
    background_.CreateEx(bitmap_color_depth(canvas), size.w, size.h);
  }
  if (background_.IsEmpty()) return;
  blit(canvas, background_.GetBitmap(), savedOrigin_.x, savedOrigin_.y, 0, 0, size.w, size.h);
}

bool MousePointer::BackgroundFits(BITMAP* canvas) const {
  return !background_.IsEmpty() &&
         bitmap_color_depth(background_.GetBitmap()) == bitmap_color_depth(canvas);
}

void MousePointer::ReportSavedArea() {
  screenUpdate_->AddDirtyRect(savedOrigin_.x, savedOrigin_.y, background_.Width(),
                              background_.Height());
}

void MousePointer::SetCursor(Cursor* shape) {
  const bool showing = !hidden_;
  if (showing) Hide();
  cursor_ = shape;
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
      cursor_->GetShadow()->draw_trans_sprite(canvas, shadowPosition_.x, shadowPosition_.y);
    }
    frame->draw_sprite(canvas, pointerPosition_.x, pointerPosition_.y);
  }
  ReportSavedArea();
  hidden_ = false;
}

void MousePointer::Hide() {
  BITMAP* canvas = Canvas();
  if (!canvas || hidden_) return;
  // After a change of the graphics mode what was saved belongs to a screen that is gone.
  if (BackgroundFits(canvas)) {
    background_.blit(canvas, 0, 0, savedOrigin_.x, savedOrigin_.y, background_.Width(),
                     background_.Height());
    ReportSavedArea();
  }
  hidden_ = true;
}

void MousePointer::Update() {
  if (cursor_) cursor_->Update();
  const Point before = mousePosition_;
  Poll();
  MoveShape(before);
}

void MousePointer::Follow(const MouseState& state) {
  const Point before = mousePosition_;
  mousePosition_ = state.position;
  buttons_ = state.buttons;
  wheel_ = state.wheel;
  MoveShape(before);
}

void MousePointer::MoveShape(Point before) {
  const Point moved{mousePosition_.x - before.x, mousePosition_.y - before.y};
  pointerPosition_ = {pointerPosition_.x + moved.x, pointerPosition_.y + moved.y};
  shadowPosition_ = {shadowPosition_.x + moved.x, shadowPosition_.y + moved.y};
}

}  // namespace zel
