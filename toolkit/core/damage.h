// What of a dialog has to be drawn again, and in which order.
//
// A widget that changes is dirty, whole or in parts. Before a frame is drawn, PrepareDrawing marks
// what lies above dirty parts, since that is painted over; DrawTree then draws what is dirty from
// the bottom up. Nobody draws what does not show: what is covered by a widget that paints its whole
// area forgets that it was dirty, and whatever uncovers it marks it again.
#pragma once

#include "toolkit/draw/pixel_area.h"

namespace zel {

class Dialog;
class Widget;

// Marks what has to be drawn besides what is dirty already, in the dialog and all that lie in it.
void PrepareDrawing(Dialog& dialog);
// Draws what is dirty, or everything. A dialog that is drawn draws everything in it.
void DrawTree(Dialog& dialog, bool redrawsAll);
// Draws all that shows of the children, whether they are dirty or not.
void DrawChildren(Dialog& dialog);

// Where on the screen a child of the dialog shows: neither what lies in it nor what lies above it,
// here and in all dialogs around, paints over that.
PixelArea ShownPart(const Dialog& dialog, Widget& child);

}  // namespace zel
