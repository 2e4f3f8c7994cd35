// A menu file, taken apart for checking.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "launcher/menu_keys.h"
#include "toolkit/base/section_file.h"
#include "tools/checker/findings.h"

namespace zel {

class Pictures;

// An entry of a menu file.
struct MenuLine {
  const MenuKey* key;
  std::string language;  // behind the point; empty for none
  SectionFile::Entry entry;
  bool isCut = false;  // the value, which is said
};

// A section, of which each key stands there once.
struct MenuSection {
  std::string name;
  int line = 0;    // where it begins
  int number = 0;  // of an item; 0 for a section that describes the screen
  std::vector<MenuLine> lines;

  // Null when there is none.
  const MenuLine* Find(const char* key, const std::string& language = {}) const;
  bool Has(const char* key) const { return !Text(key).empty(); }
  std::string Text(const char* key) const;  // empty when there is none
  int Number(const char* key) const;        // 0 when there is none
  int LineOf(const char* key) const;        // that of the section when there is none
};

struct MenuFile {
  std::string name;
  std::map<std::string, MenuSection> screens;  // by name in capitals
  std::vector<MenuSection> items;              // in file order
  int linesNumber = 0;
  bool isRead = false;                       // it is a text
  bool isLayoutKnown = true;                 // nothing that says it is misspelt
  std::vector<SectionFile::Entry> submenus;  // all that its lines name, whatever their sections
  std::set<std::string> hints;               // likewise, for HintSection

  const MenuSection& General() const;
  // The place of a line in it.
  Place At(int line) const { return {name, line}; }
};

// Reads a menu file and says what is wrong with its lines, sections, keys and values. Where it is
// plain what a misspelt name means, that is taken, so that nothing more is said about it.
// `link` is where a submenu is named, null for the main menu; `takesSizes` says whether the
// launcher reads sections of any size.
MenuFile ReadMenuFile(Findings& findings, Pictures& pictures, const Place* link,
                      const std::string& name, bool takesSizes);

// True where a line of the section is none that is read, which is said and may be what is missing.
bool HasLooseLine(const Findings& findings, const MenuFile& menu, const MenuSection& section);

// The value of a key up to a comment. Behind numbers and colours, which end before it, there may be
// any; elsewhere it is hardly meant to be part of the text.
std::string WithoutComment(const std::string& value, bool isNumber);

}  // namespace zel
