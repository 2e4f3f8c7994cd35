// What one types, chooses or drags.
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/scroll_bar.h"
#include "toolkit/widgets/slider.h"
#include "toolkit/widgets/spin_box.h"
#include "toolkit/widgets/value_range.h"
#include "tools/gallery/pages.h"

namespace zel {
namespace {

constexpr int kOrientations[] = {kHorizontal, kVertical};

int LengthIn(const Sheet& sheet, int orientation) {
  return orientation == kHorizontal ? sheet.Tall() : 5 * sheet.Line();
}

EditBox& PlacedEdit(Sheet& sheet, const Rect& place, const char* text) {
  auto& edit = sheet.Make<EditBox>();
  edit.Setup(place.x, place.y, place.w, place.h, 0, 0, text, 64);
  return edit;
}

void PoseChild(const Dialog& box, std::size_t child, int state) {
  Pose(*box.Children()[child], state);
}

// One whose list is open from the start.
class OpenComboBox final : public ComboBox {
  void MsgStart() override {
    ComboBox::MsgStart();
    Open();
  }
};

}  // namespace

void BuildEditBoxPage(Sheet& sheet) {
  sheet.Columns({"normal", "all selected", "disabled", "focused"}, 13);
  sheet.Row(sheet.Tall(), [&sheet](const Rect& place, int state) {
    EditBox& edit = PlacedEdit(sheet, place, "sda1");
    if (state == kSelected) edit.Select();
    Pose(edit, state == kSelected ? kFocused : state);
  });
  sheet.Columns({"long text", "no focus", "password", "long, focused"}, 13);
  sheet.Row(sheet.Tall(), [&sheet](const Rect& place, int column) {
    constexpr const char* kTexts[] = {"a text that is longer than its field", "sda1", "secret",
                                      "its end shows, where one types"};
    EditBox& edit = PlacedEdit(sheet, place, kTexts[column]);
    if (column == 1) edit.Select();
    if (column == 2) edit.SetFilter(kFilterPassword);
    if (column != 3) return;
    edit.MoveCursor(64);
    Pose(edit, kFocused);
  });
}

void BuildComboBoxPage(Sheet& sheet) {
  constexpr std::size_t kEdit = 0, kButton = 1;
  const auto fill = [](ComboBox& combo, const Rect& place) {
    for (const char* text : {"ext4", "xfs", "btrfs", "vfat", "ntfs", "swap"})
      combo.GetListBox().InsertItem(std::make_unique<TextListItem>(text));
    combo.Setup(place.x, place.y, place.w, place.h, 0, 0, 2);
  };
  sheet.StateColumns();
  sheet.Row(sheet.Tall(), [&](const Rect& place, int state) {
    auto& combo = sheet.Make<ComboBox>();
    fill(combo, place);
    if (state == kSelected)
      PoseChild(combo, kButton, kSelected);
    else if (state == kFocused)
      PoseChild(combo, kEdit, kFocused);
    else
      Pose(combo, state);
  });
  sheet.Columns({"open", "button focused"}, 17);
  int opened = 0;
  sheet.Row(sheet.Tall(), [&](const Rect& place, int column) {
    ComboBox& combo = column == 0 ? sheet.Make<OpenComboBox>() : sheet.Make<ComboBox>();
    fill(combo, place);
    opened = combo.GetListBox().h();
    if (column == 1) PoseChild(combo, kButton, kFocused);
  });
  sheet.Space(opened);
}

void BuildSpinBoxPage(Sheet& sheet) {
  constexpr std::size_t kEdit = 0, kUp = 1;
  sheet.StateColumns();
  sheet.Row(sheet.Tall(), [&sheet](const Rect& place, int state) {
    auto& spin = sheet.Make<SpinBox>();
    spin.Setup(place.x, place.y, place.w, place.h, 0, 0, 0, 100, 42, 1);
    if (state == kDisabled)
      spin.Disable();
    else
      PoseChild(spin, state == kSelected ? kUp : kEdit, state);
  });
}

void BuildSliderPage(Sheet& sheet) {
  sheet.StateColumns();
  for (const int orientation : kOrientations)
    sheet.Row(LengthIn(sheet, orientation), [&](const Rect& place, int state) {
      constexpr int kValues[] = {0, 30, 70, 100};
      auto& slider = sheet.Make<Slider>();
      slider.Setup(place.x, place.y, place.w, place.h, 0, 0, 0, 100, kValues[state], orientation);
      Pose(slider, state);
    });
}

void BuildProgressBarPage(Sheet& sheet) {
  sheet.Columns({"0", "37", "99", "100"}, 13);
  for (const int orientation : kOrientations)
    sheet.Row(LengthIn(sheet, orientation), [&](const Rect& place, int column) {
      constexpr int kValues[] = {0, 37, 99, 100};
      auto& bar = sheet.Make<ProgressBar>();
      bar.Setup(place.x, place.y, place.w, place.h, 0, 0, orientation);
      bar.SetPosition(kValues[column]);
    });
}

void BuildSeparatorPage(Sheet& sheet) {
  sheet.Columns({"horizontal", "vertical"}, 17);
  sheet.Row(3 * sheet.Line(), [&sheet](const Rect& place, int column) {
    auto& line = sheet.Make<Separator>();
    line.Setup(place.x, place.y, place.w, place.h, 0, 0, kOrientations[column]);
  });
}

void BuildScrollBarPage(Sheet& sheet) {
  constexpr std::size_t kGrip = 2;
  sheet.StateColumns();
  for (const int orientation : kOrientations)
    sheet.Row(orientation == kHorizontal ? sheet.Tall() : 7 * sheet.Line(),
              [&](const Rect& place, int state) {
                auto& bar = sheet.Make<ScrollBar>();
                bar.Setup(place.x, place.y, place.w, place.h, 0, 0, 100, 30, orientation);
                bar.SetPosition(20 * state);
                if (state == kDisabled)
                  bar.Disable();
                else if (state == kFocused)
                  PoseChild(bar, kGrip, state);
                else
                  for (Widget* part : bar.Children()) Pose(*part, state);
              });
}

}  // namespace zel
