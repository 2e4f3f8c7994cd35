// A line around widgets that belong together.
#pragma once

#include <string>

#include "toolkit/core/widget.h"

namespace zel {

// A rectangle with cut corners whose upper side runs through the middle of a line of text: that of
// the caption, where it has one.
class GroupFrame : public Widget {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;

  // Keeps a copy; null or empty for none.
  void SetText(const char* caption);

 private:
  void DrawOutline(Bitmap& canvas, int top) const;

  std::string caption_;
};

}  // namespace zel
