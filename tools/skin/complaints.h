// What keeps a tool from doing its work.
#pragma once

#include <string>
#include <vector>

namespace zel {

// Collects what is wrong with the files that a tool was given, so that all of it is said at once.
class Complaints {
 public:
  // Lines are "FILE:LINE: text", and "FILE: text" for a line of 0.
  void Add(const std::string& file, int line, const std::string& text);
  // The same, but no error.
  void Warn(const std::string& file, int line, const std::string& text);

  bool HasErrors() const { return hasErrors_; }
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
  bool hasErrors_ = false;
};

}  // namespace zel
