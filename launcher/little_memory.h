// A lack of memory.
#pragma once

namespace zel {

// From here on, ends the process with a message and status 1 where memory runs out, instead of by a
// signal that tells nobody why.
void EndWithoutMemory();

// Ends it in the same way, before there is anything to see, when there is not even room for what
// each run needs: Allegro and the libraries below it do not always notice, and hang or abort.
void NeedRoomForARun();

}  // namespace zel
