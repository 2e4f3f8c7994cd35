// Keys out of the bytes that a terminal sends, without knowing which terminal it is.
#pragma once

#include <cstdint>
#include <string>

namespace zel {

class TypedKeys {
 public:
  static constexpr std::int64_t kEscapeDelay = 100;  // milliseconds for the rest of a key's bytes

  void Add(const char* bytes, std::size_t count, std::int64_t now);
  // A character as its byte, a Key of text/keys.h, or kKeyNone as long as nothing more is whole.
  int Take(std::int64_t now);
  bool IsEmpty() const { return bytes_.empty(); }

 private:
  std::string bytes_;
  std::int64_t addedAt_ = 0;
};

}  // namespace zel
