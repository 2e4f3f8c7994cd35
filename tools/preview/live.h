// A menu that is being written, as it is now.
#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "toolkit/base/geometry.h"
#include "tools/preview/channel.h"
#include "tools/preview/poll_loop.h"
#include "tools/preview/scene.h"
#include "tools/preview/scratch.h"
#include "tools/preview/watch.h"

namespace zel {

// Runs the menu in a process of its own, begins anew where the person is when a file changes or an
// item is chosen, and has the files checked in another process. None of them can crash or hang this
// one, whatever the files hold.
//
// What it has found stays until it is replaced: while a new menu starts, and where it cannot, there
// is the picture of the one before.
class Live {
 public:
  struct Choice {
    std::string status, position, text;  // UTF-8 or not, as a script finds it
  };

  // All have to stay; the directory is an absolute one.
  Live(PollLoop& loop, const std::string& directory, const Scene& scene, Scratch& scratch);
  ~Live();
  Live(const Live&) = delete;
  Live& operator=(const Live&) = delete;

  // Something that a person does, see Play.
  void Act(const std::string& line);
  // Shows the menu from its beginning.
  void Begin();
  // "language", "size", "depth", "zoom" or "look", and what it is from now on; empty for what the
  // files say. False for what cannot be.
  bool Change(const std::string& what, const std::string& value);

  // The skins that there are to choose from.
  std::set<std::string> Looks() const;
  const Scene& CurrentScene() const { return scene_; }
  // What is seen, three bytes a pixel, and how many such pictures there have been: 0 for none.
  int FrameNumber() const { return frameNumber_; }
  Size FrameSize() const { return frameSize_; }
  const std::string& Pixels() const { return pixels_; }
  // How often what follows has changed.
  int NewsNumber() const { return newsNumber_; }
  const std::string& Complaint() const { return complaint_; }  // empty when there is a menu
  const Choice* LastChoice() const { return choice_.get(); }   // null before one
  // What the checker says, as JSON and as lines of text.
  const std::string& Findings() const { return findings_; }
  const std::string& FindingsAsText() const { return findingsAsText_; }

  // When one of the numbers has grown.
  std::function<void()> onChange;

 private:
  struct Process {
    pid_t id = -1;
    std::unique_ptr<Channel> channel;
  };

  bool EnterDirectory();
  void Restart();
  void Check();
  bool Start(Process& process, const std::function<void(int end)>& act);
  static void Stop(Process& process);
  void Hear(bool isNext, char kind, const std::string& body);
  void TakeFrame(const std::string& body);
  void TakeChoice(const std::string& body);
  void Complain(const std::string& complaint);
  void TellNews();
  void ForgetLook();

  PollLoop& loop_;
  const std::string directory_;
  Scene scene_;
  const std::string ownLook_;  // that it was called with
  Scratch& scratch_;
  Process shown_, next_, checker_;
  std::string position_;    // where the person is
  bool isTouched_ = false;  // somebody has done something since the beginning
  int frameNumber_ = 0, newsNumber_ = 0;
  Size frameSize_;
  std::string pixels_, complaint_, findings_ = "[]", findingsAsText_;
  std::unique_ptr<Choice> choice_;
  Watch watch_;
};

}  // namespace zel
