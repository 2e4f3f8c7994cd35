// What a program says of itself when it is asked.
#pragma once

namespace zel {

// True when the only argument was --help or --version: what it asks for has been printed, the usage
// or the program's name and version.
bool TellsAbout(const char* program, const char* usage, int argc, char** argv);

}  // namespace zel
