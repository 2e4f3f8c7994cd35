#include "text/typed_keys.h"

#include "text/key_sequences.h"

namespace zel {
namespace {

// How long a sequence is that begins with an escape; 0 when its end is missing.
std::size_t LengthOf(const std::string& bytes) {
  if (bytes.size() < 2) return 0;
  if (bytes[1] != '[' && bytes[1] != 'O') return 1;
  std::size_t end = 2;
  while (end < bytes.size() && (bytes[end] < '@' || (bytes[end] == '[' && end == 2))) ++end;
  return end < bytes.size() ? end + 1 : 0;
}

}  // namespace

void TypedKeys::Add(const char* bytes, std::size_t count, std::int64_t now) {
  bytes_.append(bytes, count);
  addedAt_ = now;
}

int TypedKeys::Take(std::int64_t now) {
  if (bytes_.empty()) return kKeyNone;
  std::size_t length = 1;
  if (bytes_[0] == kEscape) {
    length = LengthOf(bytes_);
    if (length == 0 && now - addedAt_ < kEscapeDelay) return kKeyNone;
    if (length == 0) length = bytes_.size();
  }
  const std::string taken = bytes_.substr(0, length);
  bytes_.erase(0, length);
  if (length == 1) return static_cast<unsigned char>(taken[0]);
  for (const KeySequence& row : kKeySequences)
    if (taken.compare(1, std::string::npos, row.sequence) == 0) return row.key;
  return kKeyOther;
}

}  // namespace zel
