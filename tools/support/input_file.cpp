#include "tools/support/input_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "toolkit/base/bytes.h"

namespace zel {

std::string WhyNoFile(const std::string& path, std::uint64_t limit) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) {
    const int error = errno;
    if (error == ELOOP) return "is no file, but a link that leads in a circle";
    if (error != ENOENT && error != ENOTDIR) return strerrordesc_np(error);
    const bool isLink = lstat(path.c_str(), &status) == 0;
    return isLink ? "is no file, but a link to nothing" : "there is no such file";
  }
  if (S_ISDIR(status.st_mode)) return "is no file, but a directory";
  if (!S_ISREG(status.st_mode))
    return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) ? "is no file, but a pipe"
                                                                : "is no file, but a device";
  if (access(path.c_str(), R_OK) != 0) return strerrordesc_np(errno);
  if (static_cast<std::uint64_t>(status.st_size) <= limit) return {};
  return "is larger than " + std::to_string(limit >> 10) + " KB";
}

std::string WhyNoText(const std::string& path, std::size_t limit) {
  const std::string why = WhyNoFile(path, limit);
  const bool isBinary =
      why.empty() && ReadText(path.c_str(), limit).find('\0') != std::string::npos;
  return isBinary ? "has zero bytes and is no text" : why;
}

}  // namespace zel
