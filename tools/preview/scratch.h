// Files of the system that the launcher reads and writes, in a directory of the preview's own.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

namespace zel {

inline constexpr const char* kNoFile = "";

// The directory is made when it is first needed, and goes with the process that has made this.
class Scratch {
 public:
  Scratch() = default;
  ~Scratch() { Remove(); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  // The name of a file in it, of which there need not be one yet; kNoFile where there can be none.
  std::string NameOf(const std::string& name);
  // The same, of a file that says this.
  std::string Write(const std::string& name, const std::string& text);
  // For who ends without destructors.
  void Remove();
  // Also when a signal ends this process: at most one directory of a process.
  void RemoveOnSignals();
  // Empty while all could be made and written.
  const std::string& Complaint() const { return complaint_; }

 private:
  std::filesystem::path directory_;
  std::string complaint_;
  const pid_t owner_ = getpid();
};

}  // namespace zel
