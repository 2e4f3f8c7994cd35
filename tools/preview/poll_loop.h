// Waiting for several things at once, in one thread.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace zel {

// Calls back when a descriptor can be read or written, and when a time has come. Callbacks may
// change all of it. Borrows the descriptors.
class PollLoop {
 public:
  using Callback = std::function<void()>;

  // For these events of poll(2), until it is forgotten; what was said of the descriptor before
  // holds no more.
  void Watch(int descriptor, short events, Callback onReady);
  void Forget(int descriptor) { watched_.erase(descriptor); }
  // In a process that was forked: closes what only the other one is to have.
  void CloseAll();
  // Once, so many milliseconds from now, unless the alarm of that name is set anew or cancelled.
  void SetAlarm(const std::string& name, int milliseconds, Callback onTime);
  void CancelAlarm(const std::string& name) { alarms_.erase(name); }
  bool HasAlarm(const std::string& name) const { return alarms_.count(name) != 0; }

  // From here on SIGINT, SIGTERM and SIGHUP end a wait and not the process, and IsOver says so.
  static void CatchSignals();
  static bool IsOver();

  // Waits for something to happen, no longer than so many milliseconds; -1 is for ever.
  void Pass(int milliseconds);

 private:
  using Clock = std::chrono::steady_clock;
  struct Watched {
    short events;
    Callback onReady;
  };
  struct Alarm {
    Clock::time_point time;
    Callback onTime;
  };

  void RingAlarms();

  std::map<int, std::shared_ptr<Watched>> watched_;
  std::map<std::string, Alarm> alarms_;
};

}  // namespace zel
