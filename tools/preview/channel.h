// Messages between the processes of a preview.
#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tools/preview/poll_loop.h"

namespace zel {

// One end of a stream socket, which it owns. Sending never waits.
class Channel {
 public:
  Channel(PollLoop& loop, int descriptor);
  ~Channel();
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  void Send(char kind, std::string_view body);
  // Whether all that was sent is on its way.
  bool IsIdle() const { return out_.empty(); }

  // Either may destroy the channel. After the end there are no messages.
  std::function<void(char kind, const std::string& body)> onMessage;
  std::function<void()> onEnd;

 private:
  void Watch();
  void Exchange();
  void Write();
  bool Read();  // false at the end
  void Tell();

  PollLoop& loop_;
  const int descriptor_;
  std::string in_, out_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

// Two connected ends; false where there can be none.
bool MakeChannelEnds(int ends[2]);

// Starts a process that runs `act` with its end of a channel, without what the loop watches, and
// that ends with this process. Answers the other end, or -1.
int StartProcess(PollLoop& loop, pid_t* process, const std::function<void(int end)>& act);

}  // namespace zel
