#include "launcher/default_start.h"

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

void Fill(std::string& text, const char* place, const std::string& value) {
  if (const std::size_t at = text.find(place); at != std::string::npos) text.replace(at, 2, value);
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
  std::string filled = text;
  // A title may hold what stands for the seconds.
  Fill(filled, "%2", std::to_string(seconds_));
  Fill(filled, "%1", title_);
  return filled;
}

}  // namespace zel
