// Configuration files of any content.
#pragma once

#include <string>
#include <vector>

namespace zel {

// Makes a file Allegro's current configuration, as set_config_file does: UTF-8, with or without a
// byte order mark, becomes the current text format; a missing file is empty, and so is one of more
// than 128 KB.
//
// Made for damaged files: zero bytes are spaces, and lines end after 4096 bytes. Allegro takes
// minutes for a line of a million spaces and writes past its buffer where a character of several
// bytes meets the buffer's end.
void UseConfigFile(const char* path);

// Likewise a text in the current format, of any length. As toolkit/core/text.h has it, the format's
// terminator is one zero byte.
void UseConfigText(const std::string& text);

// Puts what the current configuration says for some names of a section, "[Section]" with brackets,
// into a file of any size. All other lines of it stay, byte by byte but for their ends and a byte
// order mark before them.
void SaveConfigFile(const char* path, const char* section, const std::vector<const char*>& names);

}  // namespace zel
