#include "toolkit/core/widget.h"

#include <climits>

#include "tests/support/stage.h"

namespace zel {
namespace {

// Says yes to every question.
struct Willing : Widget {
  using Widget::SetOpaque;
  bool MsgChar(int code) override { return Widget::MsgChar(code), true; }
  bool MsgUChar(int code) override { return Widget::MsgUChar(code), true; }
  bool MsgXChar(int code) override { return Widget::MsgXChar(code), true; }
  bool MsgWantFocus() override { return Widget::MsgWantFocus(), true; }
};

class WidgetTest : public StageTest {
 protected:
  WidgetTest() {
    root.Add(&widget);
    root.names = {{&widget, "widget"}};
  }
  Willing widget;
};

TEST_F(WidgetTest, MessagesReachTheirHandlersWhichReportThem) {
  const std::set<int> silent = {MSG_IDLE,   MSG_TICK,      MSG_ACTIVATE, 28,
                                MSG_SCROLL, MSG_MOUSEMOVE, MSG_CLOSE};
  const std::set<int> withArgument = {MSG_CHAR,  MSG_UCHAR, MSG_XCHAR,
                                      MSG_RADIO, MSG_WHEEL, MSG_TIMER};
  std::map<int, int> answers = {{MSG_CHAR, kMessageUsed},     {MSG_UCHAR, kMessageUsed},
                                {MSG_XCHAR, kMessageUsed},    {MSG_WANTFOCUS, kMessageWanted},
                                {MSG_CLOSE, kMessageWanted},  {MSG_WANTMOUSE, kMessageWanted},
                                {MSG_WANTTAB, kMessageWanted}};
  int reported = 0, argument = 0;
  root.onEvent = [&](Widget*, int msg, int value) { reported = msg, argument = value; };
  for (int msg = -1; msg <= 40; ++msg) {
    EXPECT_EQ(widget.SendMessage(msg, 5), answers[msg]) << msg;
    const bool reports = msg >= MSG_START && msg <= MSG_WANTTAB && !silent.count(msg);
    const int asked = msg == MSG_WANTTAB ? MSG_WANTFOCUS : msg;  // who wants one wants the other
    EXPECT_EQ(std::exchange(reported, 0), reports ? asked : 0) << msg;
    EXPECT_EQ(std::exchange(argument, 0), withArgument.count(msg) ? 5 : 0) << msg;
  }
  Widget plain;
  EXPECT_EQ(plain.SendMessage(MSG_CHAR, 'a'), 0);
  EXPECT_EQ(plain.SendMessage(MSG_WANTTAB), 0);
  EXPECT_EQ(plain.SendMessage(MSG_WANTMOUSE), 8);
}

TEST_F(WidgetTest, OperationsSetAndClearTheirFlags) {
  using Operation = void (Widget::*)();
  const std::tuple<Operation, Operation, std::uint32_t, bool, bool> rows[] = {
      {&Widget::MakeExit, &Widget::DontExit, 1, true, true},
      {&Widget::Select, &Widget::Deselect, 2, true, true},
      {&Widget::MsgGotFocus, &Widget::MsgLostFocus, 4, true, true},
      {&Widget::MsgGotMouse, &Widget::MsgLostMouse, 8, false, false},
      {&Widget::Hide, &Widget::Unhide, 16, false, true},
      {&Widget::Disable, &Widget::Enable, 32, true, true},
      {&Widget::Redraw, &Widget::ForgetRedraw, 64, true, false}};
  for (const auto& [set, clear, flag, dirtyOnSet, dirtyOnClear] : rows) {
    widget.ForgetRedraw();
    (widget.*set)();
    EXPECT_EQ(widget.GetFlags(), flag | (dirtyOnSet ? 64 : 0));
    widget.ForgetRedraw();
    (widget.*clear)();
    EXPECT_EQ(widget.GetFlags(), dirtyOnClear ? 64u : 0u) << flag;
  }
  widget.SetFlag(~4096u);
  widget.MsgEnd();
  EXPECT_EQ(widget.GetFlags(), ~4096u & ~1804u);
  EXPECT_FALSE(widget.TestFlag(6)) << "of two bits one is left";
}

TEST_F(WidgetTest, PositionsAndSharesAreThoseOfTheParent) {
  Dialog panel;
  root.Add(&panel);
  panel.Shape(30, 20, 200, 100);
  panel.Add(&widget);
  widget.Setup(-10, -30, 5, 6, 'k', kFlagSelected);
  EXPECT_EQ(widget.Bounds(), Rect(220, 90, 5, 6));
  EXPECT_EQ(widget.GetRelativePos(), Point(190, 70));
  EXPECT_EQ(Point(widget.x2(), widget.y2()), Point(225, 96));
  EXPECT_EQ(widget.GetFlags(), kFlagMoved | kFlagResized | kFlagDirty | kFlagSelected);
  EXPECT_EQ(widget.GetKey(), 'k');
  PutMouse({221, 95});
  EXPECT_EQ(widget.GetMousePos(), Point(1, 5));

  widget.Shape({50, -1, 25, -1}, true);
  EXPECT_EQ(widget.Bounds(), Rect(220, 90, 5, 6)) << "shares are applied later";
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
  EXPECT_EQ(widget.GetSkin(), CurrentSkin());
  EXPECT_TRUE(widget.TestFlag(kFlagSkinChanged));
  for (const auto& [font, bitmap, seen] :
       {std::tuple{0, 3, 3}, {-1, -1, 1}, {Skin::kFonts, Skin::kBitmaps, 1}, {0, 0, 3}})
    EXPECT_EQ(look(font, bitmap), seen) << font;
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
  patch.draws = 0;
  patch.PlayAnimation(6);  // a wipe downward, of four ticks
  patch.color = green;
  for (int half = 0; half < 2; ++half) {
    patch.RedrawPart({0, 0, 1, 1});
    EXPECT_EQ(play(3), half == 0 ? " 1000 1100 1110" : " 1111 1111 1111");
  }
  EXPECT_TRUE(patch.draws == 2 && !patch.InTransition()) << "for the new look, and at the end";
  patch.PlayAnimation(6);
  patch.ResetAnimation();
  EXPECT_FALSE(patch.InTransition());
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

}  // namespace
}  // namespace zel
