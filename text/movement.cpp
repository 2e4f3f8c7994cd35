#include "text/movement.h"

#include <algorithm>
#include <climits>

#include "launcher/progress_file.h"
#include "text/keys.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr int kCtrlN = 14, kCtrlP = 16;  // as in many programs for terminals

// The entry at the target, else the next one in that direction that is no separator, else the one
// before it.
int FreeEntry(const MenuSession& session, int target, int direction) {
  const int last = session.Count() - 1;
  target = std::clamp(target, 0, std::max(last, 0));
  for (const int step : {direction, -direction})
    for (int index = target; 0 <= index && index <= last; index += step)
      if (!(session.Entry(index).flags & kItemSeparator)) return index;
  return -1;
}

}  // namespace

EntryPlace PlaceOfCurrent(const MenuSession& session) {
  EntryPlace place;
  for (int i = 0; i < session.Count(); ++i) {
    if (session.Entry(i).flags & kItemSeparator) continue;
    ++place.count;
    if (i <= session.Current()) ++place.number;
  }
  return place;
}

int Movement::Target(const MenuSession& session, int key, int page) {
  const int current = session.Current();
  switch (key) {
    case kKeyDown:
    case kCtrlN:
      return FreeEntry(session, current + 1, 1);
    case kKeyUp:
    case kCtrlP:
      return FreeEntry(session, current - 1, -1);
    case kKeyPageDown:
      return FreeEntry(session, current + page, 1);
    case kKeyPageUp:
      return FreeEntry(session, current - page, -1);
    case kKeyHome:
      return FreeEntry(session, 0, 1);
    case kKeyEnd:
      return FreeEntry(session, session.Count() - 1, -1);
    default:
      return Typed(session, key);
  }
}

int Movement::Typed(const MenuSession& session, int key) {
  if (!settings.typeAhead || key < 0 || key > UCHAR_MAX) return -1;
  const char byte = static_cast<char>(key);
  wchar_t character = 0;
  const std::size_t count = std::mbrtowc(&character, &byte, 1, &letter_);
  if (count == static_cast<std::size_t>(-1)) letter_ = {};
  return count == 1 ? typeAhead_.Find(session, static_cast<int>(character), Milliseconds()) : -1;
}

}  // namespace zel
