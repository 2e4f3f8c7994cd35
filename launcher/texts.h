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

// The text of an id, empty for an unknown one. The table or the catalogue owns it.
const char* Text(std::uint32_t id);

// Has the texts from this catalogue and in this encoding from now on. Until then both are those of
// the process's environment, and it goes on to decide whether there is translation at all: in the
// locale C there is none.
void SetTextLanguage(const char* catalogue, const char* codeset);

// Has the texts in the locale's encoding again, for a terminal.
void UseEncodingOfLocale();

// What the menu keys of the language end with: "de" for "Title.de".
const char* LanguageSuffix();

}  // namespace zel
