// Bars that show how far something is, or that it goes on.
#pragma once

#include "launcher/progress_file.h"
#include "toolkit/base/allegro.h"
#include "toolkit/widgets/value_range.h"

namespace zel {

inline constexpr const char* kProgressPicture = "pic/progress.bmp";

// Shows the steps as a row of copies of that picture, each one pixel right of the one before.
class StepBar final : public ProgressBar {
 public:
  StepBar();
  void Draw(Bitmap& canvas) override;

  // Repaints only what changes.
  void ShowSteps(int done, int all);
  // The picture at the zoom that holds now.
  void ReadPicture();

 private:
  int FillEnd() const;
  int TrackHeight() const;
  void RedrawFill(int from, int to);
  void DrawFill(Bitmap& area) const;

  BitmapPtr picture_;  // null when it cannot be read
  BitmapPtr run_;      // many copies of it, drawn at once
};

// Shows that something goes on: a block that runs to and fro, two pixels with each Increment.
class BusyBar final : public ProgressBar {
 public:
  void Draw(Bitmap& canvas) override;
  void Increment() override;
  // A skin may make the bar so high that it reaches over what can be pressed.
  bool MsgWantMouse() override { return false; }

 private:
  struct Span {  // inclusive columns
    int left, right;
  };
  Span Block() const;
  int ShareOfWidth(double share) const;
  int BlockWidth() const;
  int TrackHeight() const;
  void Move();

  int position_ = 0;
  int step_ = 0;  // pixels of the last move; negative to the left
};

}  // namespace zel
