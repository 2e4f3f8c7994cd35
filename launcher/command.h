// The program's command line.
#pragma once

namespace zel {

// Runs `zel` with the arguments of its process: the menu, or what an option asks for. Answers the
// exit status. From there on the process is to be ended at once.
int RunCommand(int argc, char** argv);

}  // namespace zel
