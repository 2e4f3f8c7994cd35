// A picture of a scene.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"

namespace zel {

// Ends the process: with status 0 when the picture is written; with what `onUnwritten` answers when
// it cannot be, for this error of the system's; and with 2 when it has said what else is wrong.
[[noreturn]] void MakePicture(const Scene& scene, Scratch& scratch,
                              const std::filesystem::path& png,
                              const std::function<int(int error)>& onUnwritten);

// The end of a sentence on a file that cannot be written for an error of the system's, or for 0.
std::string WhyUnwritten(int error);

}  // namespace zel
