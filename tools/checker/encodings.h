// Texts in another encoding than the launcher reads them in.
#pragma once

#include <optional>
#include <string>

#include "launcher/language.h"

namespace zel {

struct OtherEncoding {
  int line;            // the first one that looks wrong
  std::string seen;    // what it looks like: "UTF-8", "not UTF-8" or "rather CP850"
  const char* likely;  // what iconv calls the encoding to convert it from
};

// How a text is encoded that is not in the encoding of its language; nothing where it is. What code
// pages say is a guess, by bytes that no word of the language has.
std::optional<OtherEncoding> FindOtherEncoding(const std::string& text,
                                               const LanguageRow& language);

}  // namespace zel
