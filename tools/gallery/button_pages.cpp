// Labels and what one presses.
#include "toolkit/widgets/button.h"

#include "tools/gallery/pages.h"

namespace zel {
namespace {

// Check boxes and radio buttons look pressed only while they are held.
void PoseToggle(Button& toggle, int state, bool checked) {
  if (checked) toggle.SetFlag(kFlagSelected);
  if (state == kSelected)
    toggle.SetFlag(kFlagPressed);
  else
    Pose(toggle, state);
}

template <class W, class SetUp>
void ToggleRows(Sheet& sheet, const SetUp& setUp) {
  for (const bool checked : {false, true})
    sheet.Row(sheet.Tall(), [&](const Rect& place, int state) {
      auto& toggle = sheet.Make<W>();
      setUp(toggle, place, state, checked);
      PoseToggle(toggle, state, checked);
    });
}

Label& PlacedLabel(Sheet& sheet, const Rect& place, const char* text, int align) {
  auto& label = sheet.Make<Label>();
  label.ClearFlag(kFlagAutoSize);
  label.SetTextBackColor(CurrentSkin()->colors[kSunken]);
  label.SetFontColor(CurrentSkin()->colors[kDisable], Color{}, kDisabled);
  label.Setup(place.x, place.y, place.w, place.h, 0, 0, text, align);
  return label;
}

}  // namespace

void BuildButtonPage(Sheet& sheet) {
  sheet.StateColumns();
  const auto row = [&sheet](int height, const char* text) {
    sheet.Row(height, [&sheet, text](const Rect& place, int state) {
      auto& button = sheet.Make<Button>();
      button.Setup(place.x, place.y, place.w, place.h, 0, 0, text);
      Pose(button, state);
    });
  };
  row(sheet.Tall(), "Restart");
  row(sheet.Tall(), "&Open");
  row(3 * sheet.Line(), "Large");
}

void BuildCheckBoxPage(Sheet& sheet) {
  sheet.StateColumns();
  ToggleRows<CheckBox>(sheet, [](CheckBox& box, const Rect& place, int, bool checked) {
    box.Setup(place.x, place.y, place.w, place.h, 0, 0, checked ? "checked" : "clear");
  });
}

void BuildRadioButtonPage(Sheet& sheet) {
  sheet.StateColumns();
  // Each column is a group.
  ToggleRows<RadioButton>(sheet, [](RadioButton& button, const Rect& place, int column, bool on) {
    button.Setup(place.x, place.y, place.w, place.h, 0, 0, on ? "chosen" : "open", column);
  });
}

void BuildLabelPage(Sheet& sheet) {
  constexpr const char* kWords = "Nothing on the disks is changed until you say so.";
  sheet.Columns({"left", "centre", "right"}, 17);
  sheet.Row(sheet.Tall(), [&sheet](const Rect& place, int column) {
    constexpr int kAlignments[] = {kAlignLeft, kAlignCentre, kAlignRight};
    PlacedLabel(sheet, place, "Label", kAlignments[column]);
  });
  sheet.Row(sheet.Tall(), [&sheet](const Rect& place, int column) {
    constexpr int kAlignments[] = {kAlignLeft, kAlignCentre, kAlignRight};
    PlacedLabel(sheet, place, "Disabled", kAlignments[column]).Disable();
  });
  sheet.Columns({"wrapped, top", "wrapped, middle", "wrapped, bottom"}, 17);
  sheet.Row(6 * sheet.Line(), [&sheet](const Rect& place, int column) {
    constexpr int kAlignments[] = {kAlignTop, kAlignMiddle, kAlignBottom};
    Label& label = PlacedLabel(sheet, place, kWords, column == 1 ? kAlignCentre : kAlignLeft);
    label.SetMultiline(true);
    label.SetVAlignment(kAlignments[column]);
  });
}

}  // namespace zel
