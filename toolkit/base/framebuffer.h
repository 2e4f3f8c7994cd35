// The framebuffer of the Linux console.
//
// Allegro's driver for it works no more after a mode was refused, for it goes on with a closed
// device. So a mode is tried only when the framebuffer will take it.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

// False when the framebuffer cannot show w x h pixels of `depth` bits. True without a framebuffer,
// for Allegro finds that out by itself, and wherever Allegro does not run on the console: then it
// is not the framebuffer that shows them.
bool FramebufferTakes(int w, int h, int depth);

// What the framebuffer shows, which may be more than the graphics mode has; empty where there is
// none and where Allegro does not run on the console.
Size FramebufferSize();
// Its bits per pixel; 0 likewise.
int FramebufferDepth();

}  // namespace zel
