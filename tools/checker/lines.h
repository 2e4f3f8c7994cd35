// The lines of a file in Allegro's configuration format.
#pragma once

#include <string>

#include "toolkit/base/section_file.h"
#include "tools/checker/findings.h"

namespace zel {

// What a section is called whose head says nothing, or that of another one.
inline constexpr const char* kNoName = "?";

std::string Upper(std::string text);

// Whether a line without white space at its ends says nothing. What begins with ";" is an entry for
// the reader, which nobody asks for.
bool IsComment(const std::string& trimmed);
// False for a text of such lines alone.
bool HoldsText(const std::string& text);

// Takes the text of a file apart and says what is wrong with its lines: keys before the first
// section, which belong into `home`, heads that are none, lines without "=", keys and sections that
// stand there twice. Nothing more is to be said of a key without "=" that nobody reads, which may
// be a remark. What is plainly meant by such a head is taken for one; of keys that stand there
// twice the first is left.
SectionFile CheckLines(Findings& findings, const std::string& file, const std::string& text,
                       const char* home);

}  // namespace zel
