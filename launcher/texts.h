// The launcher's fixed texts.
#pragma once

#include <cstdint>

namespace zel {

struct TextEntry {
  std::uint32_t id;
  const char* english;
};

// English texts by ascending id; the last entry has id 0xFFFFFFFF and the empty text.
extern const TextEntry TextTable[];

// The text of an id, empty for an unknown one. Lives until the language or the encoding changes.
const char* Text(std::uint32_t id);

// Has the texts from this catalogue and in Allegro's current encoding from now on. Until then both
// are those of the process's environment, and it goes on to decide whether there is translation at
// all: in the locale C there is none.
//
// Allegro converts from UTF-8, in which the catalogues are, too: the C library can do that itself
// only with files of its own beside a program, which the rescue disc does not have.
void SetTextLanguage(const char* catalogue);

// Has the texts in the locale's encoding again, for a terminal. In a locale with UTF-8 that needs
// no such files either.
void UseEncodingOfLocale();

// What the menu keys of the language end with: "de" for "Title.de".
const char* LanguageSuffix();

}  // namespace zel
