// What the gallery shows.
#pragma once

#include <memory>
#include <span>

#include "tools/gallery/sheet.h"

namespace zel {

struct Page {
  const char* name;  // that of the widget family
  void (*build)(Sheet& sheet);
};

std::span<const Page> Pages();
// Null when there is no page of that name.
const Page* FindPage(const char* name);
// A page in the look of the current skin.
std::unique_ptr<Sheet> BuildPage(const Page& page, Size room);

// The builders, by file.
void BuildButtonPage(Sheet& sheet);
void BuildCheckBoxPage(Sheet& sheet);
void BuildRadioButtonPage(Sheet& sheet);
void BuildLabelPage(Sheet& sheet);

void BuildEditBoxPage(Sheet& sheet);
void BuildComboBoxPage(Sheet& sheet);
void BuildSpinBoxPage(Sheet& sheet);
void BuildSliderPage(Sheet& sheet);
void BuildProgressBarPage(Sheet& sheet);
void BuildSeparatorPage(Sheet& sheet);
void BuildScrollBarPage(Sheet& sheet);

void BuildListBoxPage(Sheet& sheet);
void BuildTextViewPage(Sheet& sheet);
void BuildWindowPage(Sheet& sheet);
void BuildTooltipPage(Sheet& sheet);
void BuildPanelPage(Sheet& sheet);
void BuildImagePage(Sheet& sheet);
void BuildGroupFramePage(Sheet& sheet);

void BuildMarksPage(Sheet& sheet);
void BuildElementsPage(Sheet& sheet);
void BuildCursorsPage(Sheet& sheet);
void BuildTextPage(Sheet& sheet);
void BuildTransitionsPage(Sheet& sheet);

}  // namespace zel
