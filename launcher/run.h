// What scripts rely on from the start of a run to its end, whatever shows the menu.
#pragma once

#include <string>
#include <vector>

namespace zel {

// The directory of all devices.
inline constexpr const char* kDevices = "/dev";

// Gives up what neither the launcher nor its guard needs, before anything else is done: rights, and
// writing elsewhere than beside the result files and to devices.
void LimitLauncher();

// From now on only these devices can be opened for writing, beside the result files.
void LimitWritingTo(const std::vector<std::string>& devices);

// Says so where it is not root who runs the program.
bool IsRoot();

enum class Directory { kConfiguration, kSaved };  // saved by BeginRun
void ChangeDirectory(Directory directory);

// Removes what an earlier run has left, so that nobody takes it for the result of this one, goes to
// the directory of the menu's files, and makes their texts readable. From here on the output file
// stays at the end of the process only beside the status of launcherState. Answers 0, or the status
// to end with when it has said that the earlier output file cannot be removed. The name is the
// program's, for messages.
int BeginRun(const char* program);

// Goes back to where the run began. Answers the status to end with, or the one of a failure when it
// has said that the choice could not be written; the error is the one of MenuSession::Commit.
int EndRun(const char* program, int error);

}  // namespace zel
