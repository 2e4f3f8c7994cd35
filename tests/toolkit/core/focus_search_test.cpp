#include "toolkit/core/focus_search.h"

#include "tests/support/stage.h"

namespace zel {
namespace {

// Widgets on a grid of 20 pixels, made in the order of their letters; b and d in a panel.
//   a b c
//     d
//   e   f
class FocusSearchTest : public AllegroFixture {
 protected:
  FocusSearchTest() {
    panel.Place(20, 0);
    root.Add(&panel);
    for (Widget* child : {&a, &c, &e, &f}) root.Add(child);
    for (Widget* child : {&b, &d}) panel.Add(child);
    for (Widget* moved :
         {static_cast<Widget*>(&panel), static_cast<Widget*>(&b), static_cast<Widget*>(&d)})
      moved->UpdateAbsolutePos();
  }
  std::string Order(FocusMove move, const Widget* current) {
    const Widget* const kAll[] = {&a, &b, &c, &d, &e, &f};
    std::string letters;
    for (const Widget* found : FocusCandidates(root, move, current))
      letters += static_cast<char>('a' + (std::find(kAll, kAll + 6, found) - kAll));
    return letters;
  }

  Dialog root, panel;
  Patch a{{0, 0, 9, 9}}, b{{0, 0, 9, 9}}, c{{40, 0, 9, 9}}, d{{0, 20, 9, 9}}, e{{0, 40, 9, 9}},
      f{{40, 40, 9, 9}};
};

TEST_F(FocusSearchTest, WhatLiesNearestInTheDirectionIsFirst) {
  const struct {
    FocusMove move;
    const Widget* from;
    const char* order;
  } kRows[] = {{FocusMove::kRight, &a, "bcdfae"},    {FocusMove::kLeft, &c, "badecf"},
               {FocusMove::kDown, &b, "defbac"},     {FocusMove::kUp, &d, "bacdef"},
               {FocusMove::kNext, &c, "defab"},      {FocusMove::kPrevious, &c, "bafed"},
               {FocusMove::kNext, &f, "abcde"},      {FocusMove::kRight, nullptr, "bdacef"},
               {FocusMove::kNext, nullptr, "bdacef"}};
  for (const auto& row : kRows)
    EXPECT_EQ(Order(row.move, row.from), row.order) << static_cast<int>(row.move);
  EXPECT_EQ(FocusDistance(FocusMove::kRight, a, d), 20 + 2 * 20);
  EXPECT_EQ(FocusDistance(FocusMove::kLeft, a, d), -20 + 2 * 20 + 65536);
  EXPECT_EQ(FocusDistance(FocusMove::kNext, f, a), -5 + 65536);
}

TEST_F(FocusSearchTest, NobodyWhoCannotBeUsedIsFound) {
  a.Hide();
  c.Disable();
  EXPECT_EQ(Order(FocusMove::kNext, nullptr), "bdef");
  panel.SetFlag(kFlagWindow);
  EXPECT_EQ(Order(FocusMove::kNext, nullptr), "ef");
  panel.ClearFlag(kFlagWindow);
  panel.Hide();
  EXPECT_EQ(Order(FocusMove::kNext, &e), "f");
}

}  // namespace
}  // namespace zel
