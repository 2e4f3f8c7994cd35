// Changes of files, as soon as they are there.
#pragma once

#include <sys/inotify.h>

#include <functional>
#include <map>
#include <set>
#include <string>

#include "tools/preview/poll_loop.h"

namespace zel {

// Watches the files in a directory and all those in it, what links among them lead to, and what
// they and the preview itself name elsewhere. The directory may go and come back. Several changes
// that belong together, as an editor makes them, are told once.
class Watch {
 public:
  Watch(PollLoop& loop, std::string directory, std::string look, std::function<void()> onChange);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

 private:
  // Directories that are new; those that there are stay.
  void Add();
  bool Counts(const inotify_event& event) const;
  void TakeEvents();
  void Settle();

  PollLoop& loop_;
  const std::string directory_, look_;
  const std::function<void()> onChange_;
  int events_ = -1;
  int addedAt_ = -1;  // the watch of the directory itself
  // Directories that only links and names lead into, by their watch, and the files in them that
  // count.
  std::map<int, std::set<std::string>> elsewhere_;
};

}  // namespace zel
