// Options that several programs have.
#pragma once

#include <string>

#include "toolkit/base/geometry.h"

namespace zel {

// Of a call that is none, and of work that cannot be done.
inline constexpr int kFailedStatus = 2;

// Reads the values of options. One that is none ends the program with kFailedStatus, and a line
// that names it.
class OptionReader {
 public:
  constexpr explicit OptionReader(const char* program) : program_{program} {}

  // "800x600".
  Size ReadSize(const char* value) const;
  int ReadDepth(const char* value) const;
  // Also kZoomToFit, for "auto".
  double ReadZoom(const char* value) const;
  [[noreturn]] void Reject(const std::string& complaint) const;
  // The status with which a program ends that has written to standard output; kFailedStatus, and a
  // line, where that did not get through.
  int StatusOfOutput(int status) const;
  // What --version and --help say, on standard output, and status 0.
  [[noreturn]] void ShowVersion() const;
  [[noreturn]] void Help(const std::string& usage) const;

 private:
  const char* program_;
};

}  // namespace zel
