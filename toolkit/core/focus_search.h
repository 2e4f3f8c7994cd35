// Where the focus can go.
#pragma once

#include <vector>

namespace zel {

class Dialog;
class Widget;

// Where MoveFocus goes.
enum class FocusMove { kNext, kPrevious, kRight, kLeft, kDown, kUp };

// How far `candidate` lies from `current` in the direction of the move: for the arrows the pixels
// between their top left corners on the screen, along it and twice those across, for Tab the places
// in the order of creation. What lies in the wrong direction comes after all else, the farthest
// first: the focus goes round.
int FocusDistance(FocusMove move, const Widget& current, const Widget& candidate);

// The widgets in a dialog, however deep, that may get the focus, best first. Those that are hidden
// or disabled are left out, windows with all that is in them, and `current` where the move is by
// Tab. Of those that are equally far away the one that is drawn first comes first; without a
// current one all come in that order.
std::vector<Widget*> FocusCandidates(const Dialog& dialog, FocusMove move, const Widget* current);

}  // namespace zel
