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

// The text of an id in the language of the process's environment, empty for an unknown id. The
// table or the catalogue owns it.
const char* Text(std::uint32_t id);

// Has the texts in this encoding from now on, whatever the locale's own is. Until then they are in
// that of the locale.
void SetTextEncoding(const char* codeset);

// What the menu keys of the language end with: "de" for "Title.de".
const char* LanguageSuffix();

}  // namespace zel
