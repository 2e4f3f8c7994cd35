// Transitions between two looks of a widget.
#pragma once

#include <algorithm>

#include "toolkit/draw/skin_bitmap.h"

namespace zel {

// Holds the look that is replaced and the new one and lays a growing part of the new one over the
// old one, in one of 27 effects (0 to 26).
class Animator {
 public:
  Animator() = default;
  Animator(const Animator&) = delete;
  Animator& operator=(const Animator&) = delete;
  virtual ~Animator() = default;

  // Draws the current frame of effect `type`; an unknown type shows the old look only.
  virtual void Draw(Bitmap& canvas, int type);

  // Begins a transition of `lengthMs` milliseconds, at least one logic tick; the canvas shows the
  // old look. After it the widget draws its new look into NewImage().
  void Start(const Bitmap& canvas, int lengthMs);
  // One tick more; answers whether there is another frame to draw.
  bool Step();
  bool Running() const { return frame < length; }
  // True while steps are to come: one also after a transition of a single frame, which never runs,
  // for the new look to be drawn as it is.
  bool HasSteps() const { return length > 0 && frame < std::max(length, 2); }
  // Forgets the old look.
  void Reset();
  Bitmap& NewImage() { return newImage; }

 protected:
  SkinBitmap newImage;
  SkinBitmap oldImage;
  int length = 0;  // logic ticks
  int frame = 1;   // from 1
};

}  // namespace zel
