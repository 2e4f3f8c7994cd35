// The program, from start-up to the choice.
#pragma once

namespace zel {

// Runs the launcher. Answers the exit status: the exit code of the chosen item, 0 when it is not
// run as root, or 1 when it has said that an earlier output file cannot be removed or a new one not
// be written. Ends the process itself when there is no usable graphics mode (status 0) or the
// toolkit cannot be started (status 1). From the choice on it is to be ended at once, with that
// status.
int RunLauncher();

// The same without asking who runs it, for trying a menu whose files are one's own (see paths.h).
int RunForAnyone();

// For scripts that had better not show a menu without a way out: answers EXIT_SUCCESS when it has
// something to choose, else kNoChoiceStatus. Shows nothing and changes no file; anyone may ask.
inline constexpr int kNoChoiceStatus = 3;  // no failure has it
int AnswerHasChoice();

}  // namespace zel
