// Marks of the built-in look, drawn on a bitmap. Corners are inclusive pixels; no colour as fill
// leaves the inside alone. Where there is a `line`, that many pixels stand for one.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/draw/color.h"

namespace zel {

// Directions of an arrow.
enum ArrowDirection : int { kArrowLeft = 0, kArrowRight = 1, kArrowUp = 2, kArrowDown = 3 };

void DrawBox3D(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color fill, Color light, Color dark,
               int line = 1);
// Sets the clip rectangle to the whole bitmap.
void DrawCircle3D(BITMAP* bitmap, int x, int y, int r, Color fill, Color light, Color dark);
// A cross over the square of `size` around (cx, cy), its strokes three lines thick.
void DrawXMark(BITMAP* bitmap, int cx, int cy, int size, Color color);
void DrawCheckMark(BITMAP* bitmap, int x, int y, Color color);  // 7 x 7 pixels
// A triangle 7 pixels wide and 4 deep; a direction that is no ArrowDirection draws nothing.
void DrawArrow(BITMAP* bitmap, int x, int y, Color color, int direction);
void DrawDottedRect(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color color, int line = 1);

}  // namespace zel
