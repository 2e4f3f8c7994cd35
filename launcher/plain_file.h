// Files in directories where other users may write.
//
// The launcher runs as root: a link, a pipe, a device or a second name of another file in the place
// of a file must neither be used nor hold it up.
#pragma once

#include <cstddef>
#include <string>

namespace zel {

// The beginning of a file, at most `limit` bytes; empty for whatever is no plain file.
std::string ReadPlainFile(const char* path, std::size_t limit);

// Puts a file with this content in the place of a plain file, or where there is none; nothing where
// there is something else. Whoever looks finds the old file or the whole new one, whatever happens
// to the process meanwhile.
void WritePlainFile(const char* path, const std::string& text);

}  // namespace zel
