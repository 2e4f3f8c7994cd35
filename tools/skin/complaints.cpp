#include "tools/skin/complaints.h"

#include "tools/checker/findings.h"

namespace zel {
namespace {

std::string Line(const std::string& file, int line, const std::string& text) {
  return Readable(file) + (line > 0 ? ':' + std::to_string(line) : std::string{}) + ": " + text;
}

}  // namespace

void Complaints::Add(const std::string& file, int line, const std::string& text) {
  hasErrors_ = true;
  lines_.push_back(Line(file, line, text));
}

void Complaints::Warn(const std::string& file, int line, const std::string& text) {
  lines_.push_back(Line(file, line, "warning: " + text));
}

}  // namespace zel
