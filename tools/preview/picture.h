// A picture of a scene.
#pragma once

#include <filesystem>

#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"

namespace zel {

// Ends the process: with status 0 when the picture is written, with 2 when it has said why not.
[[noreturn]] void MakePicture(const Scene& scene, Scratch& scratch,
                              const std::filesystem::path& png);

}  // namespace zel
