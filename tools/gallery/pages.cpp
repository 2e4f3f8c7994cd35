#include "tools/gallery/pages.h"

#include <algorithm>
#include <cstring>

namespace zel {
namespace {

constexpr Page kPages[] = {
    {"button", BuildButtonPage},
    {"check-box", BuildCheckBoxPage},
    {"radio-button", BuildRadioButtonPage},
    {"label", BuildLabelPage},
    {"list-box", BuildListBoxPage},
    {"combo-box", BuildComboBoxPage},
    {"edit-box", BuildEditBoxPage},
    {"spin-box", BuildSpinBoxPage},
    {"slider", BuildSliderPage},
    {"progress-bar", BuildProgressBarPage},
    {"separator", BuildSeparatorPage},
    {"scroll-bar", BuildScrollBarPage},
    {"text-view", BuildTextViewPage},
    {"window", BuildWindowPage},
    {"tooltip", BuildTooltipPage},
    {"panel", BuildPanelPage},
    {"image", BuildImagePage},
    {"group-frame", BuildGroupFramePage},
    {"marks", BuildMarksPage},
    {"elements", BuildElementsPage},
    {"cursors", BuildCursorsPage},
    {"text", BuildTextPage},
    {"transitions", BuildTransitionsPage},
};

}  // namespace

std::span<const Page> Pages() { return kPages; }

const Page* FindPage(const char* name) {
  const auto found = std::find_if(std::begin(kPages), std::end(kPages), [name](const Page& page) {
    return std::strcmp(page.name, name) == 0;
  });
  return found == std::end(kPages) ? nullptr : found;
}

std::unique_ptr<Sheet> BuildPage(const Page& page, Size room) {
  LoadCaptionFont();
  auto sheet = std::make_unique<Sheet>(room);
  page.build(*sheet);
  return sheet;
}

}  // namespace zel
