// The files in which the launcher leaves the choice, and the way back to it.
#pragma once

#include <string>
#include <vector>

namespace zel {

class MenuConfig;

// Removes the output file of an earlier run.
void DeleteOutputFile();

// Writes the output string to the output file, and the way through the submenus to the position
// file ("0" for an exit code of 0). A file that cannot be written, or that is anything but a plain
// file with one name, is left alone; the other is written all the same.
void WriteResultFiles(const MenuConfig& config);

// The indices in the position file, outermost first; none when there is no such plain file.
std::vector<int> ReadMenuPosition();

// The numbers of the first line, separated by commas; other text counts as 0.
std::vector<int> ParseMenuPosition(const std::string& text);

}  // namespace zel
