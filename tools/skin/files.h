// Files that a tool makes.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/skin/complaints.h"

namespace zel {

// Behind the name of a file that is not written to its end yet.
inline constexpr const char* kUnfinished = ".zel-skin-new";

// A directory for what is made there.
class NewDirectory {
 public:
  // Makes it, or takes one that is empty. False for anything else, which is said.
  bool Make(const std::string& directory, Complaints& complaints);
  // Leaves things as they were before Make(), which succeeded.
  void Undo();

 private:
  std::filesystem::path directory_;
  std::filesystem::path made_;  // the uppermost one that there was not; empty for none
};

// What the system says of a file that was not written.
std::string WhyNotWritten();

// Makes the directory that a file belongs into; false when that fails, which is said.
bool MakeDirectoryOf(const std::string& file, Complaints& complaints);

// Writes a file and, where it is missing, its directory.
void WriteNew(const std::string& path, std::span<const char> bytes, Complaints& complaints);

// Copies a file below a directory to the same place below another one, but with kUnfinished behind
// its name. False where there is nothing to copy, or was an error before; a new one is said.
bool CopyUnfinished(const std::string& file, const std::string& from, const std::string& to,
                    Complaints& complaints);

// Copies files below a directory to the same places below another one. Those that are not there are
// left out.
void CopyFiles(const std::vector<std::string>& files, const std::string& from,
               const std::string& to, Complaints& complaints);

}  // namespace zel
