// The menu as its files describe it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "launcher/layout.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/color.h"

namespace zel {

class HintFile;
class SectionFile;

// What an item is; bits combine.
enum MenuItemFlag : std::uint32_t {
  kItemSeparator = 1,
  kItemSubmenu = 2,
  kItemBack = 4,  // only the entry that leads out of a submenu
  kItemDisabled = 8,
};

inline constexpr const char* kMainMenu = "menu.cfg";  // leads to all others

// A text of a menu file, and the name of a file, are cut to these bytes in the text format, one for
// the terminator.
inline constexpr std::size_t kTextBytes = 1024, kNameBytes = 260;

// Hints are cut to this many characters.
inline constexpr int kHintCharacters = 4096;
inline constexpr std::size_t kBytesPerCharacter = 4;  // in UTF-8

struct MenuItem {
  std::uint32_t flags = 0;
  FixedText<kTextBytes> title;
  FixedText<kNameBytes> icon;  // picture file
  std::int32_t exitCode = 0;
  FixedText<kTextBytes> exitString;
  FixedText<kTextBytes> hintSection;
  FixedText<kHintCharacters * kBytesPerCharacter + 1> hintText;
  FixedText<kNameBytes> submenu;  // menu file
  Color color;                    // of the title; none when not set
  FixedText<kNameBytes> waitForFile;
  FixedText<kNameBytes> waitWhileFile;
  std::int32_t timeout = 0;  // seconds
  FixedText<kNameBytes> showIfFile;
  FixedText<kTextBytes> waitText;  // of the waiting window; empty for the usual one
  bool hasOwnColor = false;        // the menu file says it
  std::int32_t line = 0;           // the number of its section
};

// What an entry is called; the one that leads out of a submenu has a text of the program's.
const char* TitleOf(const MenuItem& item);

// A line of text on the background. A menu file that leaves something of it out has that of the
// menu that led to it.
struct ScreenText {
  FixedText<kTextBytes> text;  // empty for none
  std::int32_t left = 79;
  std::int32_t top;
  std::int32_t font = 0;  // of the skin
  Color color;
};

// One open menu file.
struct MenuLevel {
  FixedText<kNameBytes> fileName;
  std::int32_t index = 0;  // of the selected entry, counted as the list shows them
  ScreenText heading{.text = {}, .top = 40, .font = 2, .color = {255, 255, 255}};
  ScreenText keyHelp{.text = {}, .top = 80, .color = {255, 255, 255}};
};

// What a section says or, where it says nothing, the general one; else the value stays as it is.
LayoutValues ReadLayout(const SectionFile& file, const char* section, LayoutValues values);

inline constexpr const char* kGeneralSection = "MENU_CONFIGURATION";
// The section of the layout that is shown; sizes that have none of their own have the general one.
std::string LayoutSection();
inline constexpr const char* kNoText = "-";  // of a submenu, where there would be one

// What a text says of a colour: "r,g,b" in decimal, before anything else.
struct ColorText {
  int r = -1, g = -1, b = -1;
  int length = 0;  // of what was read; 0 when a number is missing

  // There is none when a number is missing, or -1.
  bool IsSet() const { return r != -1 && g != -1 && b != -1; }
  operator Color() const { return IsSet() ? Color{r, g, b} : Color{}; }
};
ColorText ReadColor(const char* text);

// The menu file that is shown, and the files that led to it.
//
// Reading never fails: what a file does not say has its default, and a missing file says nothing.
class MenuConfig {
 public:
  MenuConfig();
  ~MenuConfig();

  // Opens a menu file as a new level or, with null, closes the current level and reads the one
  // below again. Refills everything, the layout values included.
  void Read(const char* menuFile);
  // The same in two steps: a menu that nobody sees needs no hints.
  void ReadWithoutHints(const char* menuFile);
  void ReadHints();
  // Where and what is on the screen, anew from the same files: the layout is another one.
  void ReadScreenAgain();

  MenuLevel& CurrentLevel() { return *levels.back(); }
  int Depth() const { return static_cast<int>(levels.size()); }

  FixedText<kNameBytes> background{"back.bmp"};
  FixedText<kTextBytes> menuTitle;
  FixedText<kTextBytes> hintTitle;
  FixedText<kNameBytes> hintFile;
  std::int32_t lineCount = 0;
  std::vector<std::unique_ptr<MenuItem>> items;    // in file order
  std::vector<std::unique_ptr<MenuLevel>> levels;  // outermost first; the last is current
  std::int32_t defaultLine = 0;     // of the item that is chosen by itself; 0 for none
  std::int32_t defaultTimeout = 0;  // after so many seconds
  bool defaultAfterReturn = false;  // also where an earlier choice was made

 private:
  void ReadScreen(const SectionFile& file, MenuLevel& level);
  void ReadItems(const SectionFile& file);
};

// True when something of that name exists; false for an empty name.
bool FileExists(const char* name);
// The same of a file that an item asks about, of which paths may assume something.
bool ItemFileExists(const char* name);

}  // namespace zel
