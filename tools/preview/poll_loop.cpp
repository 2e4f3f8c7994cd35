#include "tools/preview/poll_loop.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <utility>
#include <vector>

namespace zel {
namespace {

volatile std::sig_atomic_t hasEndSignal = 0;

}  // namespace

void PollLoop::CatchSignals() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP})
    std::signal(number, [](int) { hasEndSignal = 1; });
}

bool PollLoop::IsOver() { return hasEndSignal != 0; }

void PollLoop::Watch(int descriptor, short events, Callback onReady) {
  watched_[descriptor] = std::make_shared<Watched>(Watched{events, std::move(onReady)});
}

void PollLoop::CloseAll() {
  for (const auto& [descriptor, watched] : watched_) close(descriptor);
  watched_.clear();
}

void PollLoop::SetAlarm(const std::string& name, int milliseconds, Callback onTime) {
  alarms_[name] = {Clock::now() + std::chrono::milliseconds{milliseconds}, std::move(onTime)};
}

void PollLoop::RingAlarms() {
  const Clock::time_point now = Clock::now();
  std::vector<std::string> due;
  for (const auto& [name, alarm] : alarms_)
    if (alarm.time <= now) due.push_back(name);
  for (const std::string& name : due) {
    const auto found = alarms_.find(name);
    if (found == alarms_.end() || found->second.time > now) continue;
    const Callback onTime = std::move(found->second.onTime);
    alarms_.erase(found);
    onTime();
  }
}

void PollLoop::Pass(int milliseconds) {
  using std::chrono::ceil;
  const Clock::time_point now = Clock::now();
  for (const auto& [name, alarm] : alarms_) {
    const auto left = ceil<std::chrono::milliseconds>(alarm.time - now).count();
    const int wait = static_cast<int>(std::max<long>(0, left));
    milliseconds = milliseconds < 0 ? wait : std::min(milliseconds, wait);
  }
  std::vector<pollfd> polled;
  std::vector<std::shared_ptr<Watched>> owners;
  for (const auto& [descriptor, watched] : watched_) {
    polled.push_back({descriptor, watched->events, 0});
    owners.push_back(watched);
  }
  const int ready = poll(polled.data(), static_cast<nfds_t>(polled.size()), milliseconds);
  for (std::size_t i = 0; ready > 0 && i < polled.size(); ++i) {
    const auto found = watched_.find(polled[i].fd);
    if (polled[i].revents != 0 && found != watched_.end() && found->second == owners[i])
      owners[i]->onReady();
  }
  RingAlarms();
}

}  // namespace zel
