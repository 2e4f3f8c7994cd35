#include "launcher/type_ahead.h"

#include <algorithm>

#include "toolkit/base/allegro.h"

namespace zel {
namespace {

constexpr int kSpace = ' ', kDelete = 127;

wchar_t Lower(wchar_t letter) { return static_cast<wchar_t>(utolower(static_cast<int>(letter))); }

std::wstring Lower(std::wstring text) {
  std::transform(text.begin(), text.end(), text.begin(), [](wchar_t c) { return Lower(c); });
  return text;
}

bool IsDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

}  // namespace

std::wstring WideText(const char* text) {
  std::wstring wide;
  while (const int character = ugetxc(&text)) wide += static_cast<wchar_t>(character);
  return wide;
}

// One letter alone goes on to the next entry, more of them keep the current one where it fits.
int TypeAhead::FindTitle(const MenuSession& session, const std::wstring& start) const {
  const int count = session.Count();
  for (int i = start.size() > 1 ? 0 : 1; i <= count; ++i) {
    const int index = (session.Current() + i) % count;
    if (session.Entry(index).flags & kItemSeparator) continue;
    if (Lower(shown_(session.Title(index))).compare(0, start.size(), start) == 0) return index;
  }
  return -1;
}

int TypeAhead::FindNumber(const MenuSession& session, int digit) {
  // The number so far is a digit or that of an entry, so that ten times of it is no large one.
  const int longer = number_ * 10 + digit;
  number_ = session.EntryOfNumber(longer) >= 0 ? longer : digit;
  return session.EntryOfNumber(number_);
}

int TypeAhead::Find(const MenuSession& session, int character, std::int64_t now) {
  if (character <= kSpace || character == kDelete || session.Count() == 0) return -1;
  const bool isElsewhere = session.Depth() != depth_ || session.Current() != entry_;
  if (now - last_ > kPause || isElsewhere) {
    typed_.clear();
    number_ = 0;
  }
  const int found = FindTyped(session, character);
  last_ = now;
  depth_ = session.Depth();
  entry_ = found >= 0 ? found : session.Current();
  return found;
}

int TypeAhead::FindTyped(const MenuSession& session, int character) {
  typed_ += Lower(static_cast<wchar_t>(character));
  const bool isNumber = std::all_of(typed_.begin(), typed_.end(), IsDigit);
  if (isNumber)
    if (const int index = FindNumber(session, character - '0'); index >= 0) return index;
  if (const int index = FindTitle(session, typed_); index >= 0) return index;
  if (IsDigit(typed_.back())) return FindNumber(session, character - '0');
  const bool isAlike = typed_.find_first_not_of(typed_[0]) == std::wstring::npos;
  return isAlike ? FindTitle(session, typed_.substr(0, 1)) : -1;
}

}  // namespace zel
