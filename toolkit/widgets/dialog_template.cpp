#include "toolkit/widgets/dialog_template.h"

#include <algorithm>

#include "toolkit/base/text.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/edit_box.h"
#include "toolkit/widgets/group_frame.h"
#include "toolkit/widgets/list_view.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_view.h"
#include "toolkit/widgets/spin_box.h"
#include "toolkit/widgets/value_range.h"

namespace zel {
namespace {

constexpr const char* kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr float kLetterCount = 52;

using Maker = std::unique_ptr<Widget> (*)(const ControlRecord& record);
using TextSetter = void (*)(Widget& control, const char* text);

template <class T>
std::unique_ptr<Widget> Plain(const ControlRecord&) {
  return std::make_unique<T>();
}

// The record says how large the control is, not its text or picture.
template <class T>
std::unique_ptr<Widget> Fixed(const ControlRecord&) {
  auto control = std::make_unique<T>();
  control->ClearFlag(kFlagAutoSize);
  return control;
}

template <class T>
std::unique_ptr<Widget> Oriented(const ControlRecord& record) {
  auto control = std::make_unique<T>();
  control->SetOrientation(record.width >= record.height ? kHorizontal : kVertical);
  return control;
}

// What one types into has room for it only once it is set up.
std::unique_ptr<Widget> Field(const ControlRecord&) {
  auto field = std::make_unique<EditBox>();
  field->SetText(nullptr);
  return field;
}

std::unique_ptr<Widget> Number(const ControlRecord&) {
  auto number = std::make_unique<SpinBox>();
  number->Setup(0, 0, 0, 0, 0, 0, number->GetMin(), number->GetMax(), number->GetValue(),
                number->GetIncrement());
  return number;
}

template <class T>
void Text(Widget& control, const char* text) {
  static_cast<T&>(control).SetText(text);
}

void Picture(Widget& control, const char* file) { static_cast<Image&>(control).SetBitmap(file); }

struct Kind {
  std::int32_t type;
  Maker make;
  TextSetter setText = nullptr;
};
constexpr Kind kKinds[] = {
    {kControlEditBox, Field},
    {kControlLabel, Fixed<Label>, Text<Label>},
    {kControlText, Fixed<Label>, Text<Label>},
    {kControlGroupFrame, Plain<GroupFrame>, Text<GroupFrame>},
    {kControlButton, Plain<Button>, Text<Button>},
    {kControlListBox, Plain<ListBox>},
    {kControlComboBox, Plain<ComboBox>},
    {kControlSpinBox, Number},
    {kControlCheckBox, Plain<CheckBox>, Text<CheckBox>},
    {kControlPlainButton, Plain<Button>},
    {kControlTextView, Plain<TextView>, Text<TextView>},
    {kControlProgressBar, Oriented<ProgressBar>},
    {kControlSeparator, Oriented<Separator>},
    {kControlWidget, Plain<Widget>},
    {kControlImage, Fixed<Image>, Picture},
};

}  // namespace

DialogUnits::DialogUnits(const Font& font, float letterScale)
    : fontHeight{font.TextHeight()},
      horizontal{static_cast<float>(font.TextLength(Ascii(kLetters))) * 0.25f / kLetterCount *
                 letterScale},
      vertical{static_cast<float>(fontHeight) * 0.125f} {}

int DialogUnits::X(int units) const { return RoundToInt(static_cast<float>(units) * horizontal); }
int DialogUnits::Y(int units) const { return RoundToInt(static_cast<float>(units) * vertical); }

DialogTemplate::DialogTemplate(const ControlRecord* stored) {
  for (; stored->type != kControlEnd; ++stored) records_.push_back(*stored);
}

std::unique_ptr<Widget> DialogTemplate::Make(const ControlRecord& record, const DialogUnits& units,
                                             TextLookup text) const {
  const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                 [&record](const Kind& k) { return k.type == record.type; });
  if (kind == std::end(kKinds)) return nullptr;
  std::unique_ptr<Widget> control = kind->make(record);
  control->Shape(units.X(record.x), units.Y(record.y), units.X(record.width),
                 units.Y(record.height));
  if (record.textId != 0 && kind->setText)
    kind->setText(*control, text(static_cast<std::uint32_t>(record.textId)));
  return control;
}

void DialogTemplate::Build(Dialog& dialog, DialogUnits& units, TextLookup text) {
  units.form = this;
  for (ControlRecord& record : records_) {
    if (record.type == kControlSize) dialog.Resize(units.X(record.width), units.Y(record.height));
    std::unique_ptr<Widget> control = Make(record, units, text);
    if (!control) continue;
    dialog.Add(control.get());
    controls_.push_back(std::move(control));
    record.control = static_cast<std::int32_t>(controls_.size());
  }
}

void DialogTemplate::Place(Dialog& dialog, const DialogUnits& units) const {
  for (const ControlRecord& record : records_) {
    if (record.type == kControlSize) dialog.Resize(units.X(record.width), units.Y(record.height));
    if (record.control == 0) continue;
    controls_[static_cast<std::size_t>(record.control) - 1]->Shape(
        units.X(record.x), units.Y(record.y), units.X(record.width), units.Y(record.height));
  }
}

Widget* DialogTemplate::Find(int id) const {
  const auto record = std::find_if(records_.begin(), records_.end(),
                                   [id](const ControlRecord& r) { return r.id == id; });
  if (record == records_.end() || record->control == 0) return nullptr;
  return controls_[static_cast<std::size_t>(record->control) - 1].get();
}

}  // namespace zel
