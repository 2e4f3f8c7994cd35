// Takes from the running program what it does not need, so that a fault in a reader of pictures,
// fonts or texts gives little to whoever made the file.
//
// Nothing of this can be taken back, and all of it passes to the threads and processes that are
// started afterwards. Each measure is one of the kernel's; where the kernel lacks it, or refuses
// it, the program goes on without it and without a word.
#pragma once

#include <string>
#include <vector>

namespace zel {

// For the start, before Allegro makes threads. No program that is executed gets more rights than
// this one; memory that could be written is never executed; of a root user's capabilities remain
// those that the console and files of other users take.
void DropRights();

// From now on nothing is created, written or removed but in the directories and below them, and
// nothing there but plain files; reading stays free. `devices` are files that can be opened for
// writing, or directories with such files; one that is missing is passed over. Called again, only
// what all calls permit stays permitted. Holds for the calling thread and what it starts, not for
// its elder siblings. A limit is not set at all when one of the directories is missing.
//
// What is mounted over one of the directories later is not permitted.
void LimitWriting(const std::vector<std::string>& directories,
                  const std::vector<std::string>& devices);

// For all threads, once graphics and input are up: no more programs and processes, sockets, mounts
// and name spaces, keys for the kernel, modules, tracing, signals for other processes, keystrokes
// for the console's next reader, and no changes of a file's owner, mode or attributes by its name.
// Such a call fails with EPERM. Threads can still be made, libraries loaded, and all devices used.
void LimitCalls();

}  // namespace zel
