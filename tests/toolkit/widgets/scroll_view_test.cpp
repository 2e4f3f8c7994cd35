#include "toolkit/widgets/scroll_view.h"

#include "tests/support/temp_files.h"
#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The view covers 200 x 100 pixels at (10, 10); the bars are 16 pixels thick.
class ViewTest : public WidgetFixture {
 protected:
  ViewTest() {
    Show(view, {10, 10, 200, 100});
    look = [this] { return Join(view.ScrollX(), view.ScrollY()); };
  }

  struct : TextView {
    void Scrolled() override { told += Join(ScrollX(), ScrollY()); }
    std::string told;
  } view;
};

TEST_F(ViewTest, BarsShowWhereTheContentDoesNotFit) {
  std::string bars;
  const auto shown = [this] {
    return std::string{view.HorizontalShown() ? "-" : ""} + (view.VerticalShown() ? "|" : "") +
           (view.CornerShown() ? "+" : "") + ',';
  };
  constexpr int kContents[][4] = {{2, 2, 200, 100}, {2, 2, 201, 84}, {2, 2, 201, 85},
                                  {2, 2, 185, 101}, {2, 2, 0, 0},    {2, 2, 184, 101},
                                  {1, 2, 9, 85},    {2, 1, 185, 9},  {2, 1, 184, 9},
                                  {0, 2, 900, 900}, {2, 0, 900, 900}};
  for (const auto& [horizontal, vertical, w, h] : kContents) {
    view.SetContentSize(w, h);
    view.SetScrollModes(horizontal, vertical);
    bars += shown();
    view.Hide(), view.Unhide();
    EXPECT_TRUE(bars.ends_with(shown()));
  }
  EXPECT_EQ(bars, ",-,-|+,-|+,,|,-|+,-|+,|,|,-,");
  view.SetMargins(9, 5, 1, 2);
  EXPECT_EQ(view.VisibleWidth(), 190);
  EXPECT_EQ(view.VisibleHeight(), 100 - 16 - 7);
  view.SetScrollModes(2, 2);
  for (const auto& [width, height] : {std::pair{190, 93}, {191, 9}, {9, 94}}) {
    view.SetContentSize(width, height);
    EXPECT_EQ(shown(), width > 190 ? "-," : height > 93 ? "|," : ",");
  }
}

TEST_F(ViewTest, ScrollsNoFurtherThanTheContentGoes) {
  view.ScrollTo(500, 500, 10, 10);
  std::string positions = look() + ", ";
  Rows lines;  // 1000 x 1000 pixels, and no two places alike
  for (int i = 0; i < 125; ++i)
    lines.push_back(std::string(125, static_cast<char>('a' + i % 26)).replace(i, 1, "-"));
  view.SetLines(lines), view.Center();
  positions += Play("50,50+wheel1");
  for (const auto& [at, size] : {std::pair{500, 10}, {10, 5}, {100, 500}, {5000, 1}})
    view.ScrollTo(at, at, size, size), positions += ", " + look();
  EXPECT_EQ(positions, "0 0 , 408 442 , 408 442 , 10 10 , 416 516 , 816 916 ");
  view.Resize(300, 200);
  // Over a bar the wheel turns by its own step.
  ExpectPlays("view_scrolled", {"wait1 302,20+press+release 20,202+press+release",
                                "50,50+wheel2 302,100+wheel1 100,202+wheel1"});
  view.told.clear();
  EXPECT_EQ(Play("50,50+wheel-1"), view.told) << "its heirs are told";
  view.SetLines(lines);
  EXPECT_EQ(look(), "0 0 ") << "new lines show from the first";
}

TEST_F(ViewTest, LinesComeFromTextsAndFiles) {
  view.SetText("a\r\n\r\nb");
  EXPECT_EQ(view.Lines(), Rows({"a", "b"}));
  view.AppendLines(Rows(20, "c"));
  EXPECT_TRUE(view.Lines()[21] == "c" && view.VerticalShown());
  for (const auto& [text, lines] : {std::pair{"a\n\nc\n", Rows{"a", "", "c", ""}},
                                    {"a\n\xe2", {"a", "^", ""}},
                                    {"\xc3\xa9 \tb\r\n\r\n", {"\xc3\xa9       b", "", ""}}}) {
    view.LoadFile(TempFile{text}.Path());
    EXPECT_EQ(view.Lines(), lines);
  }
  view.LoadFile(TempFile{std::string((4 << 20) + 9, 'a')}.Path());
  EXPECT_TRUE(view.Lines()[0].size() == 4 << 20 && view.HorizontalShown());
  view.ScrollTo(900, 0, 1, 1);
  view.SetText(std::string(999, 'b').c_str());
  EXPECT_EQ(look(), "0 0 ") << "a new text shows from its start";
}

TEST_F(ViewTest, ShowsThePartOfTheTextThatIsScrolledTo) {
  view.SetText("ab\nclong text that\nde\nfg\nhi\njk\nlm\nno");
  view.SetFontColor(red, green, kFocused);
  view.SetFontColor(blue, Color{}, kNormal);
  view.Resize(70, 60);
  view.SetMargins(5, 3, 1, 2), Frame();
  view.ScrollTo(50, 30, 10, 15);
  ExpectShown("text_view", {10, 10, 72, 62});
  view.Center(), Check();
  view.ScrollTo(0, 0, 1, 1), view.ScrollTo(50, 30, 10, 15);
  root.SetFocus(&view);
  view.SetContentSize(0, 0);
  view.ScrollTo(0, 0, 1, 1);
  ExpectShown("text_view_focused", {10, 10, 72, 62});
  root.ChangeFocus(&view, nullptr);
  EXPECT_TRUE(DrawsEnough());
  view.SetContentSize(9, 200), view.ShowLine(3);
  EXPECT_EQ(view.FirstLine(), 3);
  view.Resize(10, 10), Tick(), view.ScrollTo(999, 999, 1, 1);
  EXPECT_EQ(look(), "9 200 ");
}

TEST_F(ViewTest, AnotherTextRepaintsLinesAlone) {
  view.SetFontColor(red, green, kNormal);
  for (const int margin : {0, 5}) {
    view.SetMargins(margin, margin, 1, 2), Frame();
    for (const char* text : {"W\nI", "lil\nl\nl", "W", ""}) {
      Copied();
      view.SetText(text);
      EXPECT_LT(Copied(), 200 * 100 / 2) << text;
      EXPECT_TRUE(DrawsEnough()) << text;
    }
  }
  view.SetText(std::string(25, 'x').c_str());
  EXPECT_TRUE(view.HorizontalShown()) << "the margins leave room for 24";
  TakeSmallFont(kEditText, kFocused), view.SetSkin(nullptr), Tick();
  for (const bool isSmall : {true, false}) {
    root.ChangeFocus(isSmall ? nullptr : &view, isSmall ? &view : nullptr);
    EXPECT_EQ(view.HorizontalShown(), !isSmall) << "the focus may change the letters";
  }
}

}  // namespace
}  // namespace zel
