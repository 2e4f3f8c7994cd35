// What a skin says of panels, the entries in them, and bars beyond pictures and text sets.
#pragma once

#include <initializer_list>
#include <utility>
#include <vector>

#include "toolkit/draw/color.h"

namespace zel {

class SectionFile;

// Without its key a colour is none and a measure kAbsent, and what draws it does as it always has.
// Pixels are at the current zoom.
struct MenuLook {
  static constexpr int kAbsent = -1;

  // "ENTRY"
  Color text, selectedText, disabledText, returnText, separator;
  Color field, fieldBorder;  // behind the current entry
  Color idle, idleBorder;    // the same while the list is without the focus
  int iconX = kAbsent, textX = kAbsent, markX = kAbsent;  // the mark's from the right
  int fieldX = kAbsent, fieldY = kAbsent, fieldRadius = kAbsent, fieldBorderWidth = kAbsent;
  int separatorHeight = kAbsent;
  int wraps = kAbsent;  // not 0: a long title takes more lines
  int icons = kAbsent;  // 0: none

  // "TITLE"
  Color titleText, titleGround, titleLine;
  int titleFont = kAbsent, titleHeight = kAbsent, titleX = kAbsent;
  int titleAlignment = kAbsent;  // left, right, centre

  // "PANEL"
  Color ground;               // with it, panels are plain boxes
  Color border, focusBorder;  // the second one where the focus is
  int borderWidth = kAbsent, radius = kAbsent;
  int paddingX = kAbsent, paddingY = kAbsent;
  int hintX = kAbsent, hintY = kAbsent;  // "HINT": around the text

  // "SCREEN"
  Color heading, keyHelp;
  int picture = kAbsent;  // 0: the background's is not shown

  // "WAIT"
  Color countdown, countdownGround;
  int countdownFont = kAbsent;

  // "BAR"
  Color bar, barGround, barBorder;

  // "WINDOW": a line around it instead of the pictures of its frame
  Color windowBorder;
  int windowBorderWidth = kAbsent;

  // "BOX"
  Color groupBorder;
  bool hasGroupBorder = true;

  // "LABEL" is there.
  bool hasLabels = false;
  // "ENTRY" is there.
  bool hasEntries = false;
  // Of texts of menus to their ground.
  double leastContrast = 0;

  bool IsFlat() const { return ground.IsSet(); }
  // The sections and keys of colours and of measures.
  using Names = std::vector<std::pair<const char*, const char*>>;
  static Names ColorKeys();
  struct Measure {
    const char* section;
    const char* key;
    int highest;  // and 0 is the lowest
    bool isFont;
  };
  static std::vector<Measure> MeasureKeys();
  static constexpr std::pair<const char*, const char*> kContrastKey{"COLORS", "contrast"};

  void Read(const SectionFile& file);
  // Three numbers of 0 to 255 and nothing else, in ASCII; no colour for another text.
  static Color ReadColor(const char* text);
  // Every colour of this look, in the order of their keys.
  std::vector<Color*> Colors();
};

// A measure that is not there has another value.
inline int OrElse(int measure, int otherwise) {
  return measure == MenuLook::kAbsent ? otherwise : measure;
}

}  // namespace zel
