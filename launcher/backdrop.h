// The background of a screen that its picture is not made for.
#pragma once

#include "launcher/layout.h"
#include "toolkit/base/allegro.h"

namespace zel {

// A picture file as it lies behind a layout that has been fitted to the screen: enlarged like the
// layout and in the middle. One that is as large as the layout goes on beyond it as it ends at its
// edges, and one that is larger is cut to the screen's shape; both cover all of the screen. Null
// for a file that cannot be read.
BitmapPtr LoadBackdrop(const char* fileName, const ScreenLayout& layout, Size screen);

}  // namespace zel
