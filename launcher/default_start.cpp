#include "launcher/default_start.h"

#include "launcher/texts.h"

namespace zel {
namespace {

constexpr int kSecond = 1000;  // milliseconds

int FindDefault(const MenuSession& session) {
  constexpr std::uint32_t kDead = kItemSeparator | kItemDisabled | kItemBack;
  for (int index = 0; index < session.Count(); ++index) {
    const MenuItem& item = session.Entry(index);
    if (!(item.flags & kDead) && item.line == session.Config().defaultLine) return index;
  }
  return -1;
}

}  // namespace

void DefaultStart::Begin(const MenuSession& session, std::int64_t now) {
  const MenuConfig& config = session.Config();
  Stop();
  if (session.HasReturned() && !config.defaultAfterReturn) return;
  if (config.defaultTimeout < 1 || config.defaultTimeout > kLongest) return;
  entry_ = FindDefault(session);
  if (!IsCounting()) return;
  title_ = session.Title(entry_);
  seconds_ = config.defaultTimeout;
  next_ = now + kSecond;
}

int DefaultStart::Look(std::int64_t now) {
  for (; IsCounting() && now >= next_; next_ += kSecond) {
    if (--seconds_ > 0) continue;
    const int entry = entry_;
    Stop();
    return entry;
  }
  return -1;
}

std::string DefaultStart::Filled(const char* text) const {
  return zel::Filled(text, title_, std::to_string(seconds_));
}

}  // namespace zel
