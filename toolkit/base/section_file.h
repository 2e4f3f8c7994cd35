// Configuration files, taken apart.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zel {

// A text in Allegro's configuration format: "[section]" begins a section, "key = value" is a line
// of it, and what begins with "#" is a comment. The one reader of settings, skins, menus, progress
// and language.
//
// Says what Allegro's get_config_... would say after set_config_file, but at once: they walk the
// whole file for every value, which takes seconds for a menu of thousands of items. White space is
// Allegro's uisspace, which knows blanks beyond ASCII. Made for damaged texts too: zero bytes are
// spaces, and what is no character is "^" and never takes the end of a line with it.
class SectionFile {
 public:
  struct Entry {
    std::string name;  // as it is written
    std::string value;
    int line;  // from 1
  };

  // A section, continuations later in the file included.
  class Section {
   public:
    // Names compare without regard to case; the first entry of a name counts. Empty and missing
    // values give the default. Texts live as long as the file.
    const char* GetText(const char* name, const char* defaultText = "") const;
    // Numbers are decimal, octal or hexadecimal as in C; what is too large is brought to the
    // nearest number that an int holds.
    int GetInt(const char* name, int defaultValue = 0) const;
    // Allegro's id of a driver: a number, or up to four letters.
    int GetId(const char* name, int defaultValue = 0) const;

    const std::string& Name() const { return name_; }               // as first written
    const std::vector<Entry>& Entries() const { return entries_; }  // in file order
    const Entry* Find(const char* name) const;                      // null when there is none

    // The lines that begin the section; none for one that the file does not have.
    const std::vector<int>& Heads() const { return heads_; }
    // The last line before the first blank one, the next section or the end: new entries go behind
    // it.
    int LastLine() const { return lastLine_; }

   private:
    friend SectionFile;
    std::string name_;
    std::vector<Entry> entries_;
    std::vector<int> heads_;
    int lastLine_ = 0;
  };

  // What one line says.
  struct Line {
    enum Kind { kBlank, kNothing, kHead, kEntry } kind = kBlank;
    std::string name;        // of the section or the entry, as it is written
    std::string value;       // of the entry; behind a head, what nobody reads
    bool hasEquals = false;  // between name and value, which are parted by it or by white space
  };
  // Takes a line of such a text apart.
  static Line ReadLine(std::string_view line);

  SectionFile() = default;
  // A text in the current format, whose terminator is one zero byte.
  explicit SectionFile(std::string text);
  // The content of a file: UTF-8, with or without a byte order mark.
  static SectionFile FromUtf8(std::string stored);

  const std::vector<Section>& Sections() const { return sections_; }  // in file order
  // Names compare without regard to case. An empty section when there is none of that name.
  const Section& Find(const char* name) const;
  // The entries before the first section, which nobody finds.
  const std::vector<Entry>& Loose() const { return loose_; }

  // The numbers n of the sections named `stem` and n, from 1 to `last`, in ascending order.
  std::vector<int> Numbered(const char* stem, int last) const;

 private:
  Section& Begin(std::string name, int line);

  std::vector<Section> sections_;
  std::unordered_map<std::string, std::size_t> places_;  // by name in lower case
  std::vector<Entry> loose_;
  Section none_;  // for names that there are none of
};

}  // namespace zel
