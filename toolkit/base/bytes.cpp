#include "toolkit/base/bytes.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "toolkit/base/allegro.h"

namespace zel {
namespace {

std::string SystemName(const char* path) {
  const int encoding = get_filename_encoding();
  if (!need_uconvert(path, U_CURRENT, encoding)) return path;
  std::string name(static_cast<std::size_t>(uconvert_size(path, U_CURRENT, encoding)), '\0');
  do_uconvert(path, U_CURRENT, name.data(), encoding, static_cast<int>(name.size()));
  return name;
}

// Opens a file for reading; negative when there is none.
int OpenToRead(const char* path) {
  return open(SystemName(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
}

// Whether there is a regular file of that length at most behind the descriptor; false for none.
bool IsReadable(int file, std::size_t limit, struct stat& status) {
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
         static_cast<std::uint64_t>(status.st_size) <= limit;
}

Bytes ReadAll(int file, std::size_t limit) {
  struct stat status;
  if (!IsReadable(file, limit, status)) return {};
  // One byte more than expected, to notice the end.
  Bytes bytes(static_cast<std::size_t>(status.st_size) + 1);
  std::size_t length = 0;
  for (;;) {
    const ssize_t count =
        TEMP_FAILURE_RETRY(read(file, bytes.data() + length, bytes.size() - length));
    if (count < 0) return {};
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
    if (length > limit) return {};
    if (length == bytes.size()) bytes.resize(2 * length);
  }
  bytes.resize(length);
  return bytes;
}

SharedBytes MapAll(int file, std::size_t limit) {
  struct stat status;
  if (!IsReadable(file, limit, status) || status.st_size == 0) return {};
  const auto length = static_cast<std::size_t>(status.st_size);
  void* const start = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, file, 0);
  if (start == MAP_FAILED) return {};
  return {{start, [length](void* mapped) { munmap(mapped, length); }},
          {static_cast<const std::uint8_t*>(start), length}};
}

}  // namespace

bool IsFile(const char* path) {
  struct stat status;
  return stat(SystemName(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

Bytes ReadBytes(const char* path, std::size_t limit) {
  const int file = OpenToRead(path);
  Bytes bytes = ReadAll(file, limit);
  close(file);
  return bytes;
}

SharedBytes MapBytes(const char* path, std::size_t limit) {
  const int file = OpenToRead(path);
  SharedBytes bytes = MapAll(file, limit);
  close(file);
  return bytes;
}

std::string ReadText(const char* path, std::size_t limit) {
  const Bytes bytes = ReadBytes(path, limit);
  return WithoutMark({bytes.begin(), bytes.end()});
}

std::string WithoutMark(std::string text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.erase(0, kMark.size());
  return text;
}

bool WriteBytes(const char* path, std::span<const char> bytes) {
  constexpr mode_t kMode = 0644;
  const int file = open(SystemName(path).c_str(),
                        O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, kMode);
  if (file < 0) return false;
  while (!bytes.empty()) {
    const ssize_t count = TEMP_FAILURE_RETRY(write(file, bytes.data(), bytes.size()));
    if (count <= 0) break;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return close(file) == 0 && bytes.empty();
}

}  // namespace zel
