// Key combinations.
#pragma once

#include "toolkit/core/widget.h"

namespace zel {

// An invisible widget that turns a key combination that nobody else used into MSG_ACTIVATE, in the
// name of its target (which it borrows) or in its own.
class Accelerator : public Widget {
 public:
  bool MsgXChar(int code) override;

  // `shifts` are Allegro's KB_..._FLAG bits, all of which must be as given.
  void Setup(int newScancode, int newShifts, Widget* newTarget);
  using Widget::Setup;

 protected:
  int scancode = -1;  // matches no key
  int shifts = 0;
  Widget* target = nullptr;
};

}  // namespace zel
