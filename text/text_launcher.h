// The program zel-text, from its options to the choice.
#pragma once

namespace zel {

// Answers the exit status, as RunLauncher does, or that of a call that is none.
int RunTextLauncher(int argc, char** argv);

}  // namespace zel
