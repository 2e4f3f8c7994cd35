// The ways from one entry of the menu to another with the keys of a terminal.
#pragma once

#include <cwchar>

#include "launcher/menu_session.h"
#include "launcher/type_ahead.h"
#include "text/terminal_text.h"

namespace zel {

// Which of the entries that can be current is, counted from 1, and how many there are.
struct EntryPlace {
  int number = 0, count = 0;
};
EntryPlace PlaceOfCurrent(const MenuSession& session);

// Arrows, pages and ends, never to a separator; with the setting, what is typed, too.
class Movement {
 public:
  // The entry that a key of text/screen.h or the next byte of a letter leads to, which may be the
  // current one; -1 where it leads nowhere. `page` is how many entries one key passes over.
  int Target(const MenuSession& session, int key, int page);

 private:
  int Typed(const MenuSession& session, int key);

  TypeAhead typeAhead_{Shown};
  std::mbstate_t letter_{};  // as far as its bytes have come
};

}  // namespace zel
