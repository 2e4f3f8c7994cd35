// Which widget is under the pointer, and who is told when that changes.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

class Dialog;
class Widget;

// The widgets under the pointer from a root down to the deepest one: each dialog knows its own
// child on that path. For a dialog that takes input, a root or one that is popped up.
class MousePath {
 public:
  explicit MousePath(Dialog& input) : input_{input} {}

  // The deepest widget that is there; the popup itself, too, but not the root. Null for none.
  Widget* Find() const;
  // Makes the path lead to what is under the pointer now, has the focus follow as the skin wants
  // it, and tells what it finds there how far the pointer has moved.
  void Follow(Point delta);
  // Goes on where a popup is gone, with the release that the popup saw instead.
  void TakeBack();

  // For a dialog that begins to run, whether it takes input or not.
  static void FindAtStart(Dialog& dialog);
  // Makes the path from a dialog lead to a widget in it, or to none.
  static void Set(Dialog& dialog, const Widget* deepest);

 private:
  void MoveFocus(Widget* underPointer);

  Dialog& input_;
};

}  // namespace zel
