// A live preview on a page.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "tools/preview/http.h"
#include "tools/preview/live.h"

namespace zel {

// Answers browsers of this machine, or what is tunnelled to it, and of those only its own page: it
// listens on the loopback address, its page has a secret name, and requests that others make a
// browser send are refused.
class Server {
 public:
  // Port 0 is any.
  Server(PollLoop& loop, Live& live, int port);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // Where the page is; empty when the port cannot be had.
  std::string Address() const;

 private:
  struct Connection {
    std::string in, out;
    bool isStream = false;  // of events
    bool endsAfter = false;
    int frame = 0, news = -1;  // that it was told of last
  };

  void Accept();
  void Drop(int descriptor);
  void Watch(int descriptor);
  void Serve(int descriptor);
  bool PrepareAnswer(Connection& connection);
  std::string Answer(const HttpRequest& request, Connection& connection);
  std::string AnswerPost(const std::string& name, const std::string& body);
  // What a stream has not been told yet.
  std::string Events(Connection& connection) const;
  std::string News() const;
  std::string Looks() const;  // as options of a list in HTML
  std::string Page() const;
  const std::string& Picture();
  void TellAll();

  PollLoop& loop_;
  Live& live_;
  int listener_ = -1;
  int port_ = 0;
  const std::string secret_;
  std::map<int, Connection> connections_;
  std::string picture_;
  int pictureNumber_ = 0;
};

// Serves until it is ended. Answers the exit status after it has said what went wrong.
int ServePage(const std::string& directory, const Scene& scene, Scratch& scratch, int port);

}  // namespace zel
