// Files in directories where other users may write.
//
// The launcher runs as root: a link, a pipe, a device or a second name of another file in the place
// of a file must neither be used nor hold it up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zel {

// The beginning of a file, at most `limit` bytes; empty for whatever is no plain file.
std::string ReadPlainFile(const char* path, std::size_t limit);

// The same; empty also for a file of another user.
std::string ReadOwnFile(const char* path, std::size_t limit);

// Where a name leads: through links that this user made, and no others.
std::string BehindOwnLinks(const char* path);

// Differs after every change of a file, its replacement included; but the clock that files are
// stamped with ticks every few milliseconds only. Links have one of their own.
struct FileStamp {
  std::int64_t size = -1;  // bytes; -1 where there is no file
  std::uint64_t device = 0, number = 0;
  std::int64_t seconds = 0, nanoseconds = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
FileStamp StampOf(const char* path);

// Puts a file with this content in the place of whatever has the name, but for a directory. Whoever
// looks finds the old file or the whole new one, whatever happens to the process meanwhile; only
// when it is killed, a temporary file beside it stays. Answers 0, or the number of the error that
// kept it from being written.
int WritePlainFile(const char* path, const std::string& text);

// Removes what killed processes of this user have left while they wrote the file.
void RemoveTemporaryFiles(const char* path);

}  // namespace zel
