// What holds or shows other things.
#include <algorithm>
#include <string>

#include "toolkit/base/zoom.h"
#include "toolkit/core/tooltip.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/group_frame.h"
#include "toolkit/widgets/list_view.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_view.h"
#include "toolkit/widgets/window.h"
#include "tools/gallery/pages.h"

namespace zel {
namespace {

constexpr const char* kDisks[] = {"sda", "sda1", "sda2", "sdb", "sdb1", "nvme0n1", "sr0", "md0"};

// Stands still where it was put.
class PosedTooltip : public Tooltip {
 public:
  PosedTooltip() { Unhide(); }
  void MsgTick() override { Widget::MsgTick(); }
};

int WindowFrame() { return Zoomed(40); }  // more than the frame of a window adds to its height

enum class WindowPose { kActive, kInactive, kFixed, kRolledUp };

// A window with something in it, owned together.
class SampleWindow : public Window {
 public:
  void SetUp(const Rect& place, const Sheet& sheet, WindowPose pose) {
    SetTitle(pose == WindowPose::kActive ? "Active" : "Inactive");
    if (pose == WindowPose::kFixed) ClearFlag(kFlagSizeable);
    Shape(place);
    label_.Place(sheet.Letters(1), sheet.Line() / 2);
    label_.SetText("Client area");
    button_.Setup(sheet.Letters(1), 2 * sheet.Line(), sheet.Letters(10), sheet.Tall(), 0, 0,
                  "Close");
    Add(&label_);
    Add(&button_);
    if (pose == WindowPose::kActive) SendMessage(MSG_GOTFOCUS);
    if (pose == WindowPose::kRolledUp) Minimize();
  }

 private:
  Label label_;
  Button button_;
};

template <class P>
void PlacePanel(Sheet& sheet, const Rect& place) {
  sheet.Make<P>().Shape(place);
}

// A ring on the mask colour.
SkinBitmap Ring(int size) {
  SkinBitmap picture{size, size, kMemoryBitmap};
  picture.clear_to_color(magenta);
  picture.circlefill(size / 2, size / 2, size / 2 - 1, red);
  picture.circlefill(size / 2, size / 2, size / 3, magenta);
  return picture;
}

}  // namespace

void BuildListBoxPage(Sheet& sheet) {
  const auto row = [&sheet](bool multi) {
    sheet.Row(6 * sheet.Tall(), [&sheet, multi](const Rect& place, int column) {
      auto& box = sheet.Make<ListBox>();
      box.GetList().SetMultiSelect(multi);
      const int count = column == 1 ? 3 : static_cast<int>(std::size(kDisks));
      for (int i = 0; i < count; ++i) box.InsertItem(std::make_unique<TextListItem>(kDisks[i]));
      box.SelectItem(1);
      if (multi) box.SelectItem(2);
      if (multi && column == 3) box.SetCurrent(4);
      box.Shape(place);
      if (column == 2) box.Disable();
      if (column == 3) Pose(box.GetList(), kFocused);
    });
  };
  sheet.Columns({"one item", "short", "disabled", "focused"}, 13);
  row(false);
  sheet.Columns({"marked", "short", "disabled", "focused"}, 13);
  row(true);
}

void BuildTextViewPage(Sheet& sheet) {
  std::string text;
  for (int i = 1; i <= 20; ++i)
    text += "line " + std::to_string(i) + (i == 3 ? ", which is too long for the view\n" : "\n");
  sheet.Columns({"normal", "disabled", "focused"}, 18);
  sheet.Row(8 * sheet.Line(), [&](const Rect& place, int column) {
    auto& view = sheet.Make<TextView>();
    view.SetText(column == 2 ? "A text that fits\nneeds no bars." : text.c_str());
    view.SetMargins(Zoomed(6), Zoomed(4), Zoomed(4), Zoomed(4));
    view.Shape(place);
    if (column == 1) view.Disable();
    if (column == 2) Pose(view, kFocused);
  });
}

void BuildWindowPage(Sheet& sheet) {
  const auto row = [&sheet](WindowPose first, WindowPose second) {
    sheet.Row(5 * sheet.Line() + WindowFrame(), [&](const Rect& place, int column) {
      const Rect client{place.x, place.y, place.w - sheet.Letters(2), 5 * sheet.Line()};
      sheet.Make<SampleWindow>().SetUp(client, sheet, column == 0 ? first : second);
    });
  };
  sheet.Columns({"active", "inactive"}, 30);
  row(WindowPose::kActive, WindowPose::kInactive);
  sheet.Columns({"not sizeable", "rolled up"}, 30);
  row(WindowPose::kFixed, WindowPose::kRolledUp);
}

void BuildTooltipPage(Sheet& sheet) {
  const auto show = [&sheet](const char* caption, const char* text) {
    auto& tip = sheet.Make<PosedTooltip>();
    tip.SetText(text);
    tip.FitText();
    const Rect place = sheet.Band(caption, tip.h(), 40);
    tip.Place(place.x, place.y);
  };
  show("short", "Starts the program");
  show("wrapped",
       "Looks at every disk of this computer, reads the health data that the disks keep "
       "themselves, and says which of them will not last long. Nothing on the disks is changed.");
  const Rect place = sheet.Band("the real one", sheet.Tall(), 26);
  auto& button = sheet.Make<Button>();
  button.Setup(place.x, place.y, place.w, place.h, 0, 0, "Rest the pointer here");
  button.SetTooltip("It shows after a moment.");
}

void BuildPanelPage(Sheet& sheet) {
  using Placer = void (*)(Sheet&, const Rect&);
  static constexpr Placer kPlacers[] = {PlacePanel<PanelRaised>, PlacePanel<PanelSunken>,
                                        PlacePanel<PanelRidge>,  PlacePanel<PanelGroove>,
                                        PlacePanel<ShadowBox>,   PlacePanel<Panel>};
  const auto row = [&sheet](int first) {
    sheet.Row(4 * sheet.Line(),
              [&](const Rect& place, int column) { kPlacers[first + column](sheet, place); });
  };
  sheet.Columns({"PanelRaised", "PanelSunken", "PanelRidge"}, 17);
  row(0);
  sheet.Columns({"PanelGroove", "ShadowBox", "Panel"}, 17);
  row(3);
}

void BuildImagePage(Sheet& sheet) {
  const int size = 3 * sheet.Line();
  const SkinBitmap ring = Ring(size);
  sheet.Columns({"copied", "masked", "on colour", "cut", "element"}, 11);
  const int tallest = CurrentSkin()->bitmaps[COMBO_BUTTON]->Height();
  sheet.Row(std::max(4 * sheet.Line(), tallest), [&](const Rect& place, int column) {
    auto& image = sheet.Make<Image>();
    image.ClearFlag(kFlagAutoSize);
    const int height = column == 3 ? size / 2 : place.h;
    const Color back = column == 2 ? CurrentSkin()->colors[kSelect] : Color{};
    if (column == 4)
      image.Setup(place.x, place.y, place.w, height, 0, 0, COMBO_BUTTON, true, back);
    else
      image.Setup(place.x, place.y, place.w, height, 0, 0, ring, column > 0, back);
  });
}

void BuildGroupFramePage(Sheet& sheet) {
  sheet.Columns({"with a caption", "disabled", "without"}, 18);
  sheet.Row(6 * sheet.Line(), [&sheet](const Rect& place, int column) {
    auto& frame = sheet.Make<GroupFrame>();
    frame.SetText(column == 2 ? nullptr : "Check");
    frame.Shape(place);
    for (const bool slow : {false, true}) {
      auto& button = sheet.Make<RadioButton>();
      button.Setup(place.x + sheet.Letters(1), place.y + (slow ? 7 : 3) * sheet.Line() / 2,
                   place.w - sheet.Letters(2), sheet.Tall(), 0, slow ? 0u : kFlagSelected,
                   slow ? "thorough" : "quick", column);
      if (column == 1) button.Disable();
    }
    if (column == 1) frame.Disable();
  });
}

}  // namespace zel
