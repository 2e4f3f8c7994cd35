// Files as bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace zel {

using Bytes = std::vector<std::uint8_t>;

// Bytes that stay as long as their owner is held.
struct SharedBytes {
  std::shared_ptr<const void> owner;
  std::span<const std::uint8_t> bytes;
};

// All take a name in the current text format and know only regular files: reading from a pipe may
// never end.
bool IsFile(const char* path);
// The whole file; empty when there is none, when it is longer than `limit` or cannot be read to its
// end.
//
// Allegro's packfiles do not serve for this. They wait for ever for the rest of a file that another
// program shortens meanwhile, and a "#" in a name takes them into datafiles, where they trust every
// number.
Bytes ReadBytes(const char* path, std::size_t limit);
// The same without reading it: the system does that where the bytes are looked at, and takes no
// memory of the program's for them. For files that are large and used in part. Who cuts such a file
// short while its bytes are in use ends the program.
SharedBytes MapBytes(const char* path, std::size_t limit);
// The whole file as text. The byte order mark that some editors put before UTF-8 is no part of it.
std::string ReadText(const char* path, std::size_t limit);
std::string WithoutMark(std::string text);
// Replaces the content of a file or makes a new one; false when that fails.
bool WriteBytes(const char* path, std::span<const char> bytes);

// Takes numbers from the start of some bytes, which must outlive it.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : rest_{bytes} {}

  std::size_t Left() const { return rest_.size(); }
  // False once more was asked for than there was. Numbers from beyond the end are 0.
  bool IsSound() const { return isSound_; }

  // All or nothing.
  std::span<const std::uint8_t> Take(std::size_t count) {
    if (count > Left()) {
      isSound_ = false;
      count = Left();
      rest_ = rest_.subspan(count);
      return {};
    }
    const auto taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
  }
  void Skip(std::size_t count) { Take(count); }
  int Byte() {
    const auto taken = Take(1);
    return taken.empty() ? 0 : taken[0];
  }
  int Little16() {
    const int low = Byte();
    return low | Byte() << 8;
  }
  std::uint32_t Little32() {
    const auto low = static_cast<std::uint32_t>(Little16());
    return low | static_cast<std::uint32_t>(Little16()) << 16;
  }
  int Big16() {
    const int high = Byte();
    return high << 8 | Byte();
  }
  std::uint32_t Big32() {
    const auto high = static_cast<std::uint32_t>(Big16());
    return high << 16 | static_cast<std::uint32_t>(Big16());
  }

 private:
  std::span<const std::uint8_t> rest_;
  bool isSound_ = true;
};

}  // namespace zel
