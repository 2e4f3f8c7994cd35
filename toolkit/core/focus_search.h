// Where the focus can go.
#pragma once

#include <vector>

namespace zel {

class Dialog;
class Widget;

// Where MoveFocus goes.
enum class FocusMove { kNext, kPrevious, kRight, kLeft, kDown, kUp };

// How far `candidate` lies from `current` in the direction of the move: for the arrows the pixels
// along it and twice those across, for Tab the places in the order of creation. What lies in the
// wrong direction comes after all else. The smallest score wins.
int FocusScore(FocusMove move, const Widget& current, const Widget& candidate);

// The widgets in a dialog, however deep, that may get the focus, best first. Those that are hidden
// or disabled are left out, windows with all that is in them, and `current` where the move is by
// Tab. Without a current one they come in their order of drawing.
std::vector<Widget*> FocusCandidates(const Dialog& dialog, FocusMove move, const Widget* current);

}  // namespace zel
