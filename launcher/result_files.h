// The files in which the launcher leaves the choice, and the way back to it.
#pragma once

#include <string>
#include <vector>

namespace zel {

class MenuConfig;

// Removes the output file of an earlier run. Answers 0 when there is nothing left that a script
// could take for a choice, else the number of the error. Makes only calls that a signal handler may
// make.
int DeleteOutputFile();

// Removes what runs that were killed while they wrote have left.
void DeleteTemporaryFiles();

// The way through the submenus as ReadMenuPosition reads it: as many levels as fit the characters
// that are read of it.
std::string PositionOf(const MenuConfig& config);

// Writes the way through the submenus to the position file ("0" for an exit code of 0), and then,
// as what makes a choice of it, the output string to the output file. A position that cannot be
// written is done without. Answers 0, or the number of the error that kept the output from being
// written; then there is none.
int WriteResultFiles(const MenuConfig& config);

// The indices in the position file, outermost first; none when there is no such plain file of this
// user.
std::vector<int> ReadMenuPosition();

// The numbers of the first line, separated by commas; other text counts as 0.
std::vector<int> ParseMenuPosition(const std::string& text);

}  // namespace zel
