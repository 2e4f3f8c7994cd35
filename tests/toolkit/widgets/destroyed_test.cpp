#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/slider.h"

namespace zel {
namespace {

class DestroyedTest : public WidgetFixture {
 protected:
  // Destroys a widget, and what it is made of, as soon as it reports a message.
  template <class T>
  void Play(
      int message, const std::function<void()>& act,
      const std::function<void(T&)>& prepare = [](T&) {}) {
    SCOPED_TRACE(message);
    auto doomed = std::make_unique<T>();
    Mouse(200, 150);
    Show(*doomed, {10, 10, 110, 24});
    prepare(*doomed);
    root.onEvent = [&](Widget*, int reported, int) {
      if (reported == message) doomed.reset();
    };
    act();
    Tick(20);
    root.onEvent = nullptr;
    EXPECT_FALSE(doomed);
  }
};

TEST_F(DestroyedTest, TheApplicationMayDestroyWhatTellsItOfAChange) {
  const auto click = [this] { Click(20, 18); };
  const auto fill = [](ListView& list) {
    for (int i = 0; i < 9; ++i) list.InsertItem(std::make_unique<TextListItem>("x"));
  };
  const auto focus = [this](Widget& widget) { root.SetFocus(&widget); };
  Play<RadioButton>(MSG_ACTIVATE, click);
  Play<RadioButton>(
      MSG_ACTIVATE, [this] { Type('a', KEY_A); }, [](RadioButton& radio) { radio.SetKey('A'); });
  for (const int message : {MSG_SCROLL, MSG_ACTIVATE})
    Play<ListView>(
        message, [this] { Click(20, 28); }, fill);
  for (const int message : {MSG_ACTIVATE, MSG_CHAR})
    Play<EditBox>(
        message, [this] { Type('\r', KEY_ENTER); }, focus);
  Play<Slider>(
      MSG_SCROLL, [this] { Drag(15, 18, 85, 18); },
      [](Slider& slider) { slider.SetOrientation(kHorizontal); });
  const auto fillBox = [&](ComboBox& box) { fill(box.GetListBox().GetList()); };
  Play<ComboBox>(
      MSG_ACTIVATE, [this] { Click(110, 20), Click(50, 60); }, fillBox);
  Play<ComboBox>(
      MSG_ACTIVATE, [this] { Type('\r', KEY_ENTER); },
      [&](ComboBox& box) { fillBox(box), focus(box.GetEdit()); });
}

}  // namespace
}  // namespace zel
