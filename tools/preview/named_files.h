// Files of a menu that do not lie beside it.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace zel {

// The files outside of a directory that its menus, settings and skins name, and those that such
// skins name: pictures, fonts, datafiles, submenus. Those that items wait for or ask about are none
// of them. `look` is a further skin, or empty.
std::set<std::filesystem::path> FilesNamedElsewhere(const std::filesystem::path& directory,
                                                    const std::string& look);

// The skins in a directory and below, as settings there would name them.
std::set<std::string> SkinsIn(const std::filesystem::path& directory);

}  // namespace zel
