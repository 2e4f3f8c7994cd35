// Letters and digits as a way to an entry.
#pragma once

#include <cstdint>
#include <string>

#include "launcher/menu_session.h"

namespace zel {

// What is typed with no more than a second between two keys is the beginning of an entry's title,
// in any case of letters, or its number, as long as nothing else leads away from there. One letter
// again and again goes round the entries that begin with it.
class TypeAhead {
 public:
  static constexpr std::int64_t kPause = 1000;  // milliseconds

  // How a title is shown, as what is typed is compared with that.
  using Wide = std::wstring (*)(const char* title);
  explicit TypeAhead(Wide shown) : shown_{shown} {}

  // The entry that the character leads to, or -1. `now` is in milliseconds.
  int Find(const MenuSession& session, int character, std::int64_t now);

 private:
  int FindTyped(const MenuSession& session, int character);
  int FindTitle(const MenuSession& session, const std::wstring& start) const;
  int FindNumber(const MenuSession& session, int digit);

  Wide shown_;
  std::wstring typed_;
  int number_ = 0;
  std::int64_t last_ = -kPause;
  int depth_ = 0, entry_ = -1;  // where what was typed has led
};

// A text in Allegro's current format, character by character.
std::wstring WideText(const char* text);

}  // namespace zel
