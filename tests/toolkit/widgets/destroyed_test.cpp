#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/slider.h"

namespace zel {
namespace {

class DestroyedTest : public WidgetFixture {
 protected:
  // Destroys a widget, and what it is made of, as soon as it reports a message.
  template <class T>
  void PlayOn(
      int message, const std::string& script, const std::function<void(T&)>& prepare = [](T&) {}) {
    auto doomed = std::make_unique<T>();
    Do("200,150 release");
    Show(*doomed, {10, 10, 110, 24});
    prepare(*doomed);
    root.onEvent = [&](Widget*, int reported, int) {
      if (reported == message) doomed.reset();
    };
    Do(script + " wait20");
    root.onEvent = nullptr;
    EXPECT_FALSE(doomed) << message << ' ' << script;
  }
};

TEST_F(DestroyedTest, TheApplicationMayDestroyWhatTellsItOfAChange) {
  const auto fill = [](ListView& list) {
    for (int i = 0; i < 9; ++i) list.InsertItem(std::make_unique<TextListItem>("x"));
  };
  const auto focus = [this](Widget& widget) { root.SetFocus(&widget); };
  PlayOn<RadioButton>(MSG_ACTIVATE, "20,18 press release");
  PlayOn<RadioButton>(MSG_ACTIVATE, "a", [](RadioButton& radio) { radio.SetKey('A'); });
  for (const int message : {MSG_SCROLL, MSG_ACTIVATE})
    PlayOn<ListView>(message, "20,28 press release", fill);
  for (const int message : {MSG_ACTIVATE, MSG_CHAR}) PlayOn<EditBox>(message, "enter", focus);
  PlayOn<Slider>(MSG_SCROLL, "15,18 press 85,18 release",
                 [](Slider& slider) { slider.SetOrientation(kHorizontal); });
  const auto fillBox = [&](ComboBox& box) { fill(box.GetListBox().GetList()); };
  PlayOn<ComboBox>(MSG_ACTIVATE, "110,20 press release 50,60 press release", fillBox);
  PlayOn<ComboBox>(MSG_ACTIVATE, "enter",
                   [&](ComboBox& box) { fillBox(box), focus(box.GetEdit()); });
}

}  // namespace
}  // namespace zel
