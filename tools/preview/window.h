// A live preview in a window.
#pragma once

#include <string>

#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"

namespace zel {

// Shows it on the X display until the window is closed. Answers the exit status after it has said
// what went wrong.
int ShowInWindow(const std::string& directory, const Scene& scene, Scratch& scratch);

}  // namespace zel
