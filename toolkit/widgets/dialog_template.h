// Dialogs that are described by a table of controls, measured in units of the font.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/core/dialog.h"
#include "toolkit/draw/font.h"

namespace zel {

class DialogTemplate;

// What a dialog unit is in pixels: an eighth of a line of the font, and a quarter of its average
// letter.
struct DialogUnits {
  // `letterScale` corrects the average for languages with other letters.
  explicit DialogUnits(const Font& font, float letterScale = 1);

  // Rounded to whole pixels.
  int X(int units) const;
  int Y(int units) const;

  std::int32_t fontHeight;
  float horizontal;
  float vertical;
  const DialogTemplate* form = nullptr;  // the template that was built with these units
};

// What a record makes. Numbers that are not named here make nothing.
enum ControlType : std::int32_t {
  kControlEnd = 0,   // of the template
  kControlSize = 1,  // the client area of the dialog
  kControlEditBox = 2,
  kControlLabel = 3,
  kControlText = 4,  // a label too
  kControlGroupFrame = 7,
  kControlButton = 8,
  kControlListBox = 9,
  kControlComboBox = 10,
  kControlSpinBox = 11,
  kControlCheckBox = 12,
  kControlPlainButton = 13,  // without text
  kControlTextView = 14,
  kControlProgressBar = 15,
  kControlSeparator = 16,
  kControlWidget = 17,
  kControlImage = 20,  // the text is the name of a picture file
};

struct ControlRecord {
  std::int32_t type;
  std::int32_t id = 0, x = 0, y = 0, width = 0, height = 0;  // in dialog units
  std::int32_t textId = 0;                                   // 0 for none
  std::int32_t reserved1 = 0, reserved2 = 0;                 // 0
  std::int32_t control = 0;  // 0, and what was made for it once it is built
};

// The text of an id, in the current text format.
using TextLookup = const char* (*)(std::uint32_t id);

// Makes the controls of a dialog and owns them.
class DialogTemplate {
 public:
  // Copies the records up to the first of type kControlEnd.
  explicit DialogTemplate(const ControlRecord* stored);

  // Makes a control for each record, adds it to the dialog, and gives the dialog its size. Called
  // once.
  void Build(Dialog& dialog, DialogUnits& units, TextLookup text);
  // Gives the dialog and the controls the places that they have in other units.
  void Place(Dialog& dialog, const DialogUnits& units) const;
  // The control of the first record with that id; null when there is none.
  Widget* Find(int id) const;

 private:
  std::unique_ptr<Widget> Make(const ControlRecord& record, const DialogUnits& units,
                               TextLookup text) const;

  std::vector<ControlRecord> records_;
  std::vector<std::unique_ptr<Widget>> controls_;
};

}  // namespace zel
