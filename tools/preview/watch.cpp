#include "tools/preview/watch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

#include "tools/preview/named_files.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kChanges = IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_CREATE | IN_DELETE |
                              IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr int kMostEntries = 20000, kDeepest = 16;
// Milliseconds: without a further change, with them, and until a missing directory is looked for.
constexpr int kStandstill = 25, kPatience = 80, kLookAgain = 150;
constexpr const char *kStill = "watch: nothing more", *kLate = "watch: long enough";
constexpr const char* kGone = "watch: the directory is gone";

}  // namespace

Watch::Watch(PollLoop& loop, std::string directory, std::string look,
             std::function<void()> onChange)
    : loop_{loop},
      directory_{std::move(directory)},
      look_{std::move(look)},
      onChange_{std::move(onChange)},
      events_{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)} {
  if (events_ < 0) return;
  loop_.Watch(events_, POLLIN, [this] { TakeEvents(); });
  Add();
}

Watch::~Watch() {
  for (const char* alarm : {kStill, kLate, kGone}) loop_.CancelAlarm(alarm);
  if (events_ < 0) return;
  loop_.Forget(events_);
  close(events_);
}

void Watch::Add() {
  addedAt_ = inotify_add_watch(events_, directory_.c_str(), kChanges | IN_ONLYDIR);
  if (addedAt_ < 0)
    return loop_.SetAlarm(kGone, kLookAgain, [this] {
      Add();
      if (addedAt_ >= 0) Settle();
    });
  std::set<int> own{addedAt_};
  std::error_code error;
  fs::recursive_directory_iterator entry{directory_, fs::directory_options::skip_permission_denied,
                                         error};
  const auto watch = [this](const fs::path& directory) {
    return inotify_add_watch(events_, directory.c_str(), kChanges | IN_ONLYDIR);
  };
  for (int i = 0; !error && i < kMostEntries && entry != fs::recursive_directory_iterator{};
       ++i, entry.increment(error)) {
    if (entry.depth() >= kDeepest) entry.disable_recursion_pending();
    std::error_code ignored;
    const fs::path target =
        entry->is_symlink(ignored) ? fs::canonical(entry->path(), ignored) : entry->path();
    if (fs::is_directory(target, ignored))
      own.insert(watch(target));
    else if (entry->is_symlink(ignored) && fs::is_regular_file(target, ignored))
      elsewhere_[watch(target.parent_path())].insert(target.filename());
  }
  for (const fs::path& file : FilesNamedElsewhere(directory_, look_))
    elsewhere_[watch(file.parent_path())].insert(file.filename());
  for (const int ours : own) elsewhere_.erase(ours);
}

bool Watch::Counts(const inotify_event& event) const {
  const auto found = elsewhere_.find(event.wd);
  return found == elsewhere_.end() || (event.len > 0 && found->second.contains(event.name));
}

void Watch::TakeEvents() {
  alignas(inotify_event) char block[1 << 14];
  bool isGone = false, hasChanged = false;
  for (ssize_t count = 0; (count = read(events_, block, sizeof block)) > 0;)
    for (ssize_t at = 0; at < count;) {
      const auto* event = reinterpret_cast<const inotify_event*>(block + at);
      constexpr unsigned kAway = IN_DELETE_SELF | IN_MOVE_SELF;
      isGone |= event->wd == addedAt_ && (event->mask & kAway) != 0;
      hasChanged |= Counts(*event);
      at += static_cast<ssize_t>(sizeof *event + event->len);
    }
  if (isGone) inotify_rm_watch(events_, addedAt_);
  if (!hasChanged) return;
  loop_.SetAlarm(kStill, kStandstill, [this] { Settle(); });
  if (!loop_.HasAlarm(kLate)) loop_.SetAlarm(kLate, kPatience, [this] { Settle(); });
}

void Watch::Settle() {
  loop_.CancelAlarm(kStill);
  loop_.CancelAlarm(kLate);
  Add();
  onChange_();
}

}  // namespace zel
