#include "tools/support/options.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/zoom.h"
#include "toolkit/testing/offscreen.h"

namespace zel {

void OptionReader::Reject(const std::string& complaint) const {
  std::fprintf(stderr, "%s: %s\n", program_, complaint.c_str());
  std::exit(kFailedStatus);
}

int OptionReader::StatusOfOutput(int status) const {
  errno = 0;
  if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
  std::fprintf(stderr, "%s: standard output: %s\n", program_,
               errno ? strerrordesc_np(errno) : "cannot be written");
  return kFailedStatus;
}

void OptionReader::ShowVersion() const { Help(std::string{program_} + " " ZEL_VERSION "\n"); }

void OptionReader::Help(const std::string& usage) const {
  std::fputs(usage.c_str(), stdout);
  std::exit(StatusOfOutput(EXIT_SUCCESS));
}

Size OptionReader::ReadSize(const char* value) const {
  Size size;
  if (!ParseSize(value, &size))
    Reject(std::string{"--size "} + value + ": no size; write it as 800x600");
  return size;
}

int OptionReader::ReadDepth(const char* value) const {
  for (const int depth : kColorDepths)
    if (std::to_string(depth) == value) return depth;
  Reject(std::string{"--depth "} + value + ": no colour depth; write 8, 15, 16, 24 or 32");
}

double OptionReader::ReadZoom(const char* value) const {
  char* end = nullptr;
  const double number = std::strtod(value, &end);
  const bool isZoom = *end == '\0' && number >= kLeastZoom && number <= kLargestZoom;
  if (!isZoom && ParseZoom(value) != kZoomToFit)
    Reject(std::string{"--zoom "} + value + ": no zoom; write a number from 1 to 8, or auto");
  return ParseZoom(value);
}

}  // namespace zel
