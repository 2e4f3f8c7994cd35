#include "toolkit/core/widget.h"

#include <climits>

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/core/animator.h"
#include "toolkit/core/tooltip.h"

namespace zel {
namespace {

class WidgetTest : public StageTest {
 protected:
  WidgetTest() {
    root.Add(&widget);
    root.names = {{&widget, "widget"}};
  }
  Patch widget;
};

TEST_F(WidgetTest, MessagesReachTheirHandlersWhichReportThem) {
  widget.usesKeys = true;
  std::string seen;
  root.onEvent = [&](Widget*, int msg, int value) {
    seen += " reports " + MessageName(msg) + " with " + std::to_string(value);
  };
  Widget plain;
  root.Add(&plain);
  for (Widget* told : {static_cast<Widget*>(&widget), &plain})
    for (int msg = -1; msg <= 40; ++msg) {
      const int answer = (seen += MessageName(msg), told->SendMessage(msg, 5));
      seen += " answers " + std::to_string(answer) + '\n';
    }
  ExpectText("messages", seen);
}

TEST_F(WidgetTest, OperationsSetAndClearTheirFlags) {
  using Operation = std::pair<const char*, void (Widget::*)()>;
  using Setter = std::pair<const char*, void (Widget::*)(int, bool)>;
  std::string seen;
  const auto note = [&](const std::string& name) {
    seen += name + ": " + FlagNames(widget.GetFlags()) + '\n';
  };
  widget.ClearFlag(~0u);
  for (const auto& [name, operation] : {Operation{"MakeExit", &Widget::MakeExit},
                                        {"DontExit", &Widget::DontExit},
                                        {"Select", &Widget::Select},
                                        {"Deselect", &Widget::Deselect},
                                        {"MsgGotFocus", &Widget::MsgGotFocus},
                                        {"MsgLostFocus", &Widget::MsgLostFocus},
                                        {"MsgGotMouse", &Widget::MsgGotMouse},
                                        {"MsgLostMouse", &Widget::MsgLostMouse},
                                        {"Hide", &Widget::Hide},
                                        {"Unhide", &Widget::Unhide},
                                        {"Disable", &Widget::Disable},
                                        {"Enable", &Widget::Enable},
                                        {"Redraw", &Widget::Redraw}}) {
    widget.ForgetRedraw();
    (widget.*operation)();
    note(name);
  }
  for (const auto& [name, told] : {Operation{"MsgMove", &Widget::MsgMove},
                                   {"MsgResize", &Widget::MsgResize},
                                   {"MsgShape", &Widget::MsgShape}}) {
    widget.SetFlag(kFlagMoved | kFlagResized);
    (widget.*told)();
    note(name);
  }
  for (const auto& [name, setter] : {Setter{"SetX", &Widget::SetX},
                                     {"SetY", &Widget::SetY},
                                     {"SetW", &Widget::SetW},
                                     {"SetH", &Widget::SetH}}) {
    widget.ClearFlag(~0u);
    (widget.*setter)(3, false);
    note(name);
  }
  widget.SetFlag(~std::uint32_t{kFlagContainer});
  widget.MsgEnd();
  note("MsgEnd");
  ExpectText("flags_of_operations", seen);
  EXPECT_FALSE(widget.TestFlag(kFlagSelected | kFlagFocus)) << "of two bits one is left";
}

TEST_F(WidgetTest, PositionsAndSharesAreThoseOfTheParent) {
  Dialog panel;
  root.Add(&panel);
  panel.Shape(30, 20, 200, 100);
  panel.Add(&widget);
  widget.Setup(-10, -30, 5, 6, 'k', kFlagSelected);
  EXPECT_EQ(widget.Bounds(), Rect(220, 90, 5, 6));
  EXPECT_EQ(widget.GetRelativePos(), Point(190, 70));
  EXPECT_EQ(widget.GetFlags(), kFlagMoved | kFlagResized | kFlagDirty | kFlagSelected);
  EXPECT_EQ(widget.GetKey(), 'k');
  PutMouse({221, 95});
  EXPECT_EQ(widget.GetMousePos(), Point(1, 5));

  widget.Shape({50, -1, 25, -1}, true);
  widget.SendMessage(MSG_MOVE);
  EXPECT_EQ(widget.Bounds(), Rect(130, 90, 5, 6));
  widget.SendMessage(MSG_RESIZE);
  EXPECT_EQ(widget.Bounds(), Rect(130, 90, 50, 6));
  panel.Resize(99, 50);
  widget.Shape({50, 21, 25, 33}, true);
  widget.SendMessage(MSG_SHAPE);
  EXPECT_EQ(widget.Bounds(), Rect(79, 30, 24, 16)) << "rounded down";

  widget.Shape(INT_MAX, INT_MIN, INT_MAX, INT_MIN);
  EXPECT_EQ(widget.GetRelativePos(), Point(32767, -32767));
  EXPECT_EQ(Point(widget.w(), widget.h()), Point(32767, -32767));
  Dialog alone;
  alone.Place(7, 8);
  EXPECT_EQ(alone.GetRelativePos(), Point(7, 8));
  EXPECT_EQ(Point(alone.x(), alone.y()), Point()) << "where its children are";
}

TEST_F(WidgetTest, TooltipsComeFromTheParentAndFontsFromTheSkin) {
  EXPECT_EQ(widget.GetTooltip(), nullptr);
  root.SetTooltip("outer");
  EXPECT_STREQ(widget.GetTooltip(), "outer");
  std::string text = "inner";
  widget.SetTooltip(text.c_str());
  text = "other";
  EXPECT_STREQ(widget.GetTooltip(), "inner");
  const auto look = [this](int font, int bitmap) {
    widget.SetFont(font, 0);
    widget.SetBitmap(bitmap);
    return (widget.GetFont(0).TextHeight() > 0) + 2 * (widget.GetBitmap() != nullptr);
  };
  EXPECT_EQ(look(0, 3), 1) << "no picture without a skin";
  UseSkin();
  widget.SetSkin(nullptr);
  EXPECT_TRUE(widget.GetSkin() == CurrentSkin() && widget.TestFlag(kFlagSkinChanged));
  for (const auto& [font, bitmap, seen] :
       {std::tuple{0, 3, 3}, {-1, -1, 1}, {Skin::kFonts, Skin::kBitmaps, 1}, {0, 0, 3}})
    EXPECT_EQ(look(font, bitmap), seen) << font;
  Tooltip tip;
  tip.SetSkin(nullptr);
  for (const int font : {1, 0}) {
    CurrentSkin()->fontIndex[kTooltipText][kNormal] = font;
    tip.MsgInitSkin();
    EXPECT_EQ(&tip.GetFont(kNormal), CurrentSkin()->fonts[font].get());
  }
}

using TransitionTest = StageTest;

TEST_F(TransitionTest, ATransitionRunsFromTheOldLookToTheNew) {
  Patch patch{{10, 10, 8, 4}}, cover{{0, 0, 60, 60}, blue};
  root.Add(&patch);
  Start();
  // Whether the rows of the patch show its colour, tick by tick.
  const auto play = [this, &patch](int ticks) {
    std::string seen;
    for (; ticks > 0; --ticks) {
      Tick();
      seen += ' ';
      for (int y = 10; y < 14; ++y)
        seen += At(10, y) == patch.color && At(17, y) == patch.color ? '1' : '0';
    }
    return seen;
  };
  patch.SetAnimationProperties(80, 0);
  patch.StartAnimation();
  EXPECT_FALSE(patch.InTransition()) << "type 0 is none";
  patch.SetAnimationProperties(80, 6), patch.SendMessage(MSG_START);
  EXPECT_TRUE(patch.InTransition()) << "from what lay there before";
  patch.PlayAnimation(0);
  EXPECT_FALSE(patch.InTransition());
  patch.draws = 0;
  patch.PlayAnimation(6);  // a wipe downward, of four ticks
  patch.color = green;
  for (int half = 0; half < 2; ++half) {
    patch.RedrawPart({0, 0, 1, 1});
    EXPECT_EQ(play(3), half == 0 ? " 1000 1100 1110" : " 1111 1111 1111");
  }
  EXPECT_TRUE(patch.draws == 2 && !patch.InTransition()) << "for the new look, and at the end";
  patch.PlayAnimation(6);
  patch.ResetAnimation(), patch.draws = 0, Tick(3);
  EXPECT_TRUE(!patch.InTransition() && patch.draws == 0) << "nothing is to come";
  patch.PlayAnimation(6), patch.Redraw(), Tick(), patch.SetAnimator(nullptr);
  EXPECT_TRUE(patch.InTransition());
  patch.SetAnimator(std::make_unique<Animator>());
  EXPECT_FALSE(patch.InTransition()) << "another one begins anew";
  patch.SetAnimationProperties(0, 0);
  patch.color = white;
  patch.PlayAnimation(10);
  patch.Redraw();
  EXPECT_EQ(play(2), " 0000 1111") << "also after a single frame";
  cover.SetOpaque(true);
  root.Add(&cover);
  patch.SetAnimationProperties(80, 6);
  patch.StartAnimation();
  patch.color = yellow;
  patch.Redraw();
  EXPECT_EQ(play(6), " 0000 0000 0000 0000 0000 0000");
  root.Remove(&cover);
  EXPECT_EQ(play(1), " 1111") << "it went on under the cover";
  End();
}

// The dialog, tick by tick: a wipe downward, in which a widget inside changes its colour.
TEST_F(TransitionTest, WhatLiesInADialogGoesOnChangingInItsNewLook) {
  Dialog panel, inner;
  Patch patch{{1, 1, 3, 3}, blue};
  root.Add(&panel), panel.Add(&inner), inner.Add(&patch);
  panel.Shape(10, 10, 8, 5), inner.Shape(2, 0, 6, 5);
  Start();
  Tick();
  panel.SetAnimationProperties(100, 6), panel.StartAnimation();
  patch.color = white, patch.Redraw(), Tick();
  EXPECT_EQ(At(13, 11), blue) << "it waits for the dialog";
  panel.Redraw();
  std::string seen;
  for (const Color color : {red, red, green, green, green, yellow}) {
    patch.color = color, patch.Redraw();
    Tick();
    seen += Describe(screen, {9, 9, 10, 7}) + '\n';
  }
  ExpectText("dialog_in_transition", seen, "pictures");
}

class AnimatorTest : public AllegroFixture {
 protected:
  static constexpr int kWidth = 13, kHeight = 9;

  AnimatorTest() : AllegroFixture{32} {}
  // What a transition from one colour to another shows at one place, tick by tick.
  std::vector<int> Play(int type, int before, int color, int lengthMs = 100) {
    std::vector<int> colors;
    canvas.clear_to_color(before);
    animator.Start(canvas, lengthMs);
    animator.NewImage().clear_to_color(color);
    do {
      animator.Draw(canvas, type);
      colors.push_back(canvas.getpixel(0, 0));
    } while (animator.Step());
    return colors;
  }

  Bitmap canvas{kWidth, kHeight, kMemoryBitmap};
  Animator animator;
};

// All effects but the fade, and two that there are not, in the second of five ticks over black. The
// colours of the new look say which of its pixels lies where.
TEST_F(AnimatorTest, EachEffectShowsItsPartOfTheNewLook) {
  Bitmap all{8 * (kWidth + 1), 4 * (kHeight + 1), kMemoryBitmap};
  all.clear_to_color(gray);
  for (int type = -1; type <= 27; ++type) {
    animator.Reset();
    canvas.clear_to_color(black);
    animator.Start(canvas, 100);
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        animator.NewImage().putpixel(x, y, PixelOf(all.GetBitmap(), kLetters[1 + (x + 3 * y) % 7]));
    animator.Step();
    if (type != 1) animator.Draw(canvas, type);
    const int place = type + 1;
    canvas.blit(all.GetBitmap(), 0, 0, place % 8 * (kWidth + 1), place / 8 * (kHeight + 1), kWidth,
                kHeight);
  }
  ExpectLook("effects", all.GetBitmap(), {0, 0, all.Width(), all.Height()});
}

TEST_F(AnimatorTest, BeginsWithWhatTheLastOneEndedWithAndLastsItsTime) {
  EXPECT_EQ(Play(1, 0, 0x0000FF), (std::vector{10, 40, 92, 163, 255})) << "a quadratic fade";
  EXPECT_EQ(Play(1, 0, 0).back(), 0) << "which ends with the new look";
  EXPECT_EQ(Play(1, 0, 0xFF0000).back(), 0xFF0000);
  EXPECT_EQ(Play(-1, 1, 2), (std::vector{0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000, 2}));
  animator.Reset();
  EXPECT_EQ(Play(-1, 1, 3), (std::vector{1, 1, 1, 1, 3}));
  for (const Size size : {Size{5, kHeight}, {5, 4}}) {
    canvas.Create(size.w, size.h);
    EXPECT_EQ(Play(-1, 1, 4), (std::vector{1, 1, 1, 1, 4})) << "another size";
  }
  UseDepth(8);
  canvas.Create(5, 4);
  EXPECT_EQ(Play(1, 0, 7), (std::vector{0, 0, 0, 7, 7})) << "another depth, without blending";
  for (const auto& [lengthMs, ticks] : {std::pair{300, 15}, {20, 1}, {0, 1}, {-300, 1}})
    EXPECT_EQ(Play(0, 0, ticks, lengthMs), std::vector<int>(ticks, ticks));
  EXPECT_FALSE(animator.Running());
}

}  // namespace
}  // namespace zel
