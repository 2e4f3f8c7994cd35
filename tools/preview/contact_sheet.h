// Pictures of every menu on every screen in every language, and a page of them.
#pragma once

#include <filesystem>

#include "tools/preview/scene.h"

namespace zel {

// Writes MENU-SIZE-LANGUAGE.png for each, and index.html, which holds all pictures itself, into the
// directory, which is made where it is missing. A size or a language of the scene is the only one.
// Answers the exit status, after it has said what did not work.
int MakeContactSheet(const Scene& scene, const std::filesystem::path& directory);

}  // namespace zel
