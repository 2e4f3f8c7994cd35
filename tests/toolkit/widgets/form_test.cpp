// Forms of many controls, and what an application does with them.
#include <tuple>

#include "tests/support/told_fixture.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/tooltip.h"
#include "toolkit/widgets/accelerator.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/dialog_template.h"
#include "toolkit/widgets/group_frame.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_view.h"
#include "toolkit/widgets/slider.h"
#include "toolkit/widgets/spin_box.h"
#include "toolkit/widgets/window.h"

namespace zel {
namespace {

using DialogTemplateTest = WidgetFixture;

TEST_F(DialogTemplateTest, MakesAControlForEachRecordThatHasOne) {
  std::vector<ControlRecord> records{{kControlSize, 1, 0, 0, 159, 201, 0, 0, 0, 0}};
  for (int type = 2; type <= 25; ++type) {
    const int column = type % 3, row = type / 3;
    const int height = type == kControlProgressBar ? 50 : 20;
    records.push_back({type, type, 1 + 33 * column, 24 * row, 31, height, type, 0, 0, 0});
  }
  records.push_back({kControlLabel, kControlEditBox, 0, 0, 9, 9, 0, 0, 0, 0});
  records.push_back({kControlProgressBar, 30, 90, 120, 3, 40, 0, 0, 0, 0});
  records.push_back({kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  records.push_back({kControlLabel, 99, 0, 0, 9, 9, 0, 0, 0, 0});
  DialogUnits units{root.GetFont(kNormal)};  // 8 pixels high and wide: units of 2 and 1 pixels
  DialogTemplate form{records.data()};
  ClearScreen back;
  Show(back, {});
  form.Build(root, units, [](std::uint32_t id) { return id == kControlImage ? "none" : "a bc"; });
  EXPECT_EQ(root.Bounds(), Rect(0, 0, 318, 201));
  EXPECT_EQ(form.Find(99), nullptr);
  EXPECT_EQ(form.Find(5), nullptr);
  auto* number = static_cast<SpinBox*>(form.Find(kControlSpinBox));
  auto* choice = static_cast<ComboBox*>(form.Find(kControlComboBox));
  auto* text = static_cast<EditBox*>(form.Find(kControlEditBox));
  for (EditBox* field : {text, &number->GetEdit(), &choice->GetEdit()})
    root.SetFocus(field), Play("42");
  EXPECT_EQ(number->GetValue(), 42);
  static_cast<Image*>(form.Find(kControlImage))->SetBitmap(ICONEXIT);
  Tick();
  ExpectShown("form", {0, 0, 200, 180});
  static_cast<GroupFrame*>(form.Find(kControlGroupFrame))->SetText("b"), Check();

  SetZoom(1.5);
  CurrentSkin()->Reload();
  root.SetSkin(CurrentSkin());
  DialogUnits larger{root.GetFont(kNormal)};
  DialogTemplate zoomed{records.data()};
  zoomed.Build(root, larger, [](std::uint32_t) { return "a bc"; });
  for (const int id : {kControlEditBox, kControlCheckBox, kControlButton})
    root.SetFocus(zoomed.Find(id)), Play("42");
  Tick();
  ExpectShown("form_zoomed", {0, 0, 320, 200});
  zoomed.Place(root, units);
  EXPECT_EQ(root.Bounds(), Rect(0, 0, 318, 201));
  for (const int id : {kControlEditBox, kControlLabel, kControlButton})
    EXPECT_EQ(zoomed.Find(id)->Bounds(), form.Find(id)->Bounds()) << id;
}

using EveryWidgetTest = ToldFixture;

TEST_F(EveryWidgetTest, HandlesAllMessagesAndTellsItsParent) {
  std::tuple<Label, Button, CheckBox, RadioButton, EditBox, Slider, ScrollBar, ListView, ListBox,
             ComboBox, SpinBox, TextView, Window, Panel, ClearScreen, Image, Separator, ProgressBar,
             GroupFrame, Accelerator, Tooltip>
      widgets;
  std::string seen;
  std::istringstream names{
      "Label Button CheckBox RadioButton EditBox Slider ScrollBar ListView ListBox ComboBox "
      "SpinBox TextView Window Panel ClearScreen Image Separator ProgressBar GroupFrame "
      "Accelerator Tooltip"};
  const auto play = [&](Widget& widget) {
    std::string name;
    names >> name, seen += Told(name, widget);
  };
  std::apply([&play](auto&... widget) { (play(widget), ...); }, widgets);
  ExpectText("messages_of_widgets", seen);
}

using AcceleratorTest = StageTest;

TEST_F(AcceleratorTest, ActivatesForOneCombinationInTheNameOfItsTarget) {
  Accelerator accelerator;
  Patch target{{0, 0, 10, 10}};
  root.Add(&accelerator);
  root.names = {{&accelerator, "accelerator"}, {&target, "target"}};
  Watch({MSG_ACTIVATE});
  std::string seen;
  const auto press = [&](int scancode, int shifts) {
    key_shifts = shifts;
    seen += root.HandleKey(0, scancode) ? "used by " : "unused";
    seen += root.Events() + ", ";
  };
  for (const int scancode : {0, 47, 255}) press(scancode, 0);
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, nullptr), press(KEY_F1, KB_ALT_FLAG);
  accelerator.Setup(KEY_F1, KB_ALT_FLAG, &target), press(KEY_F1, KB_ALT_FLAG | KB_CAPSLOCK_FLAG);
  for (const int shifts : {KB_ALT_FLAG | KB_SHIFT_FLAG, 0}) press(KEY_F1, shifts);
  press(KEY_F2, KB_ALT_FLAG);
  target.Disable(), press(KEY_F1, KB_ALT_FLAG);
  EXPECT_EQ(seen,
            "unused, unused, unused, used by accelerator: Activate, used by target: Activate, "
            "unused, unused, unused, unused, ");
}

class DestroyedTest : public WidgetFixture {
 protected:
  static void Fill(Widget&) {}
  static void Fill(ListView& list) {
    for (int i = 0; i < 9; ++i) list.InsertItem(std::make_unique<TextListItem>("x"));
  }
  static void Fill(ComboBox& box) { Fill(box.GetListBox().GetList()); }
  // Destroys a widget, and what it is made of, as soon as it reports a message.
  template <class T>
  void PlayOn(int message, const std::string& script) {
    auto doomed = std::make_unique<T>();
    Fill(*doomed);
    doomed->SetKey('A');
    Play("200,150 release");
    Show(*doomed, {10, 10, 110, 24});
    root.onEvent = [&](Widget*, int reported, int) {
      if (reported == message) doomed.reset();
    };
    Play(script + " wait20");
    EXPECT_FALSE(doomed) << message << ' ' << script;
    root.onEvent = nullptr;
  }
};

TEST_F(DestroyedTest, TheApplicationMayDestroyWhatTellsItOfAChange) {
  for (const char* script : {"20,18 press release", "a"}) PlayOn<RadioButton>(MSG_ACTIVATE, script);
  for (const int message : {MSG_SCROLL, MSG_ACTIVATE})
    PlayOn<ListView>(message, "20,28 press release");
  for (const int message : {MSG_ACTIVATE, MSG_CHAR})
    PlayOn<EditBox>(message, "20,18 press release enter");
  PlayOn<Slider>(MSG_SCROLL, "15,11 press 15,33 release");
  for (const char* script :
       {"110,20 press release 50,60 press release", "20,20 press release enter"})
    PlayOn<ComboBox>(MSG_ACTIVATE, script);
}

}  // namespace
}  // namespace zel
