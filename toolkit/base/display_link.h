// The connection between the event loop and an X server.
//
// Allegro sends what was drawn and takes what was typed in rounds of 10 ms, in a thread of its own,
// and waits each time until the server has answered. The loop does both itself, at once and without
// an answer; only what is no key is still left to Allegro. The rounds in which nothing has happened
// are left out, and those of the thread come every 20 to 40 ms. On the console, nothing here does
// anything.
#pragma once

namespace zel {

// To be called before the others, with Allegro installed; more than once does no harm.
void LinkDisplay();
// Readable when the server has sent something; -1 when there is none.
int DisplayDescriptor();
// Sends what was drawn, if anything was, and has Allegro take what has come.
void TalkToDisplay();

}  // namespace zel
