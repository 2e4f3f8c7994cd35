#include "toolkit/core/drag.h"

#include <gtest/gtest.h>

#include "toolkit/draw/cursor.h"

namespace zel {
namespace {

TEST(Drag, MovesTheEdgesOfItsModeAndNoOthers) {
  const Rect kShape{40, 50, 50, 30};
  constexpr Size kLeast{20, 8};
  struct Row {
    int mode, cursor;
    Rect little, upAndLeft, downAndRight;  // by (3, 2) pixels, by -300 each, by 300 each
  };
  const Row kRows[] = {
      {kDragMove, MOUSE_NORMAL, {43, 52, 50, 30}, {0, 0, 50, 30}, {340, 350, 50, 30}},
      {kDragTopLeft, MOUSE_SIZE_DIAGONAL1, {43, 52, 47, 28}, {0, 0, 90, 80}, {70, 72, 20, 8}},
      {kDragTopRight, MOUSE_SIZE_DIAGONAL2, {40, 52, 53, 28}, {40, 0, 20, 80}, {40, 72, 350, 8}},
      {kDragBottomLeft, MOUSE_SIZE_DIAGONAL2, {43, 50, 47, 32}, {0, 50, 90, 8}, {70, 50, 20, 330}},
      {kDragBottomRight,
       MOUSE_SIZE_DIAGONAL1,
       {40, 50, 53, 32},
       {40, 50, 20, 8},
       {40, 50, 350, 330}},
      {kDragTop, MOUSE_SIZE_VERTICAL, {40, 52, 50, 28}, {40, 0, 50, 80}, {40, 72, 50, 8}},
      {kDragBottom, MOUSE_SIZE_VERTICAL, {40, 50, 50, 32}, {40, 50, 50, 8}, {40, 50, 50, 330}},
      {kDragLeft, MOUSE_SIZE_HORIZONTAL, {43, 50, 47, 30}, {0, 50, 90, 30}, {70, 50, 20, 30}},
      {kDragRight, MOUSE_SIZE_HORIZONTAL, {40, 50, 53, 30}, {40, 50, 20, 30}, {40, 50, 350, 30}}};
  for (const Row& row : kRows) {
    EXPECT_EQ(DragCursor(row.mode), row.cursor) << row.mode;
    EXPECT_EQ(Dragged(row.mode, kShape, {3, 2}, kLeast), row.little) << row.mode;
    EXPECT_EQ(Dragged(row.mode, kShape, {-300, -300}, kLeast), row.upAndLeft) << row.mode;
    EXPECT_EQ(Dragged(row.mode, kShape, {300, 300}, kLeast), row.downAndRight) << row.mode;
  }
  EXPECT_EQ(Dragged(kDragTopLeft, {2, 2, 9, 4}, {-3, -3}, kLeast), Rect(0, 0, 20, 8));
}

}  // namespace
}  // namespace zel
