#include "toolkit/widgets/scroll_view.h"

#include "tests/support/temp_files.h"
#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The view covers 200 x 100 pixels at (10, 10); the bars are 16 pixels thick.
class ViewTest : public WidgetFixture {
 protected:
  ViewTest() { Show(view, {10, 10, 200, 100}); }
  Point Position() const { return {view.ScrollX(), view.ScrollY()}; }

  TextView view;
};

TEST_F(ViewTest, BarsShowWhereTheContentDoesNotFit) {
  const std::tuple<int, int, std::pair<bool, bool>> kContents[] = {
      {200, 100, {false, false}}, {201, 84, {true, false}}, {201, 85, {true, true}},
      {185, 101, {true, true}},   {0, 0, {false, false}},   {184, 101, {false, true}}};
  for (const auto& [w, h, shown] : kContents) {
    view.SetContentSize(w, h);
    view.Hide(), view.Unhide();
    EXPECT_EQ(std::pair(view.HorizontalShown(), view.VerticalShown()), shown) << w << ' ' << h;
  }
}

TEST_F(ViewTest, ScrollsNoFurtherThanTheContentGoes) {
  view.SetContentSize(1000, 1000);
  view.Center();
  EXPECT_EQ(Position(), Point(408, 458));
  const std::tuple<int, int, Point> kTargets[] = {
      {500, 10, {408, 458}}, {10, 5, {10, 10}}, {100, 500, {416, 516}}, {5000, 1, {816, 916}}};
  for (const auto& [at, size, position] : kTargets) {
    view.ScrollTo(at, at, size, size);
    EXPECT_EQ(Position(), position) << at;
  }
  view.Resize(300, 200);
  Tick();
  EXPECT_EQ(Position(), Point(716, 816));
  EXPECT_EQ(view.Children()[0]->Bounds(), Rect(294, 194, 16, 16));
  Click(302, 20);
  Mouse(50, 50, 0, 2);
  EXPECT_EQ(Position(), Point(716, 816 - 16 - 32));
}

TEST_F(ViewTest, LinesComeFromTextsAndFiles) {
  view.SetText("a\r\n\r\nb");
  EXPECT_EQ(view.Lines(), Rows({"a", "b"}));
  for (const auto& [text, lines] : {std::pair{"a\n\nc\n", Rows{"a", "", "c", ""}},
                                    {"a\n\xe2", {"a", "^", ""}},
                                    {"\xc3\xa9 \tb\r\n\r\n", {"\xc3\xa9       b", "", ""}}}) {
    view.LoadFile(TempFile{text}.Path());
    EXPECT_EQ(view.Lines(), lines);
  }
  view.LoadFile(TempFile{std::string((4 << 20) + 9, 'a')}.Path());
  EXPECT_EQ(view.Lines()[0].size(), 4 << 20);
  view.ScrollTo(900, 0, 1, 1);
  view.SetText(std::string(999, 'b').c_str());
  EXPECT_EQ(Position(), Point(0, 0)) << "a new text shows from its start";
}

TEST_F(ViewTest, AnotherTextRepaintsLinesAlone) {
  for (const char* text : {"I\nI", "l\nl\nl", "I", ""}) {
    Copied();
    view.SetText(text);
    EXPECT_LT(Copied(), 200 * 100 / 2) << text;
    const Rows seen = Frame();
    root->Redraw();
    EXPECT_EQ(Frame(), seen) << text;
  }
}

TEST_F(ViewTest, TextHasTheColourOfTheFocus) {
  view.SetText("I");
  view.SetFontColor(red, Color{}, kFocused);
  for (Widget* focused : {static_cast<Widget*>(&view), static_cast<Widget*>(nullptr)}) {
    Frame();
    root->ChangeFocus(root->FocusWidget(), focused);
    std::string pixels;
    for (const std::string& row : Frame()) pixels += row;
    EXPECT_EQ(pixels.find('r') != std::string::npos, focused == &view);
  }
}

}  // namespace
}  // namespace zel
