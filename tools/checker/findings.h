// What a check has found.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/base/geometry.h"
#include "tools/checker/messages.h"

namespace zel {

struct Place {
  std::string file;
  int line = 1;
};

struct Finding {
  Place place;
  Msg id;
  std::string what, advice;
};

// Collects findings, each once.
//
// A comment "; zel-check: allow NAME, NAME" (or with "#", or only blanks) silences these messages
// on the next line or, behind a value, on its own.
class Findings {
 public:
  // The first word is what the message is about: of the same about the same in one place the first
  // counts. With a `nearest` name, the advice is that.
  void Add(Msg id, const Place& place, std::vector<std::string> words = {},
           const std::string& nearest = {});
  std::size_t Count() const { return findings_.size(); }
  // Whether something of the kind has been said of the line.
  bool Has(Msg id, const Place& place) const;
  // True where more of the same in a file would not be said.
  bool IsFull(Msg id, const std::string& file) const;
  // True once for each thing of which one message is enough, wherever it is met.
  bool IsFirst(Msg id, const std::string& about) { return once_.emplace(id, about).second; }
  // Takes the comments of a file to heart.
  void ReadComments(const std::string& file, const std::string& text);
  // What is about a line that begins a text, in which no comment can stand, is about all lines to
  // its last one.
  void AllowInText(const std::string& file, int line, int last);

  // Whether a comment silences such a message there; it is of use then.
  bool IsAllowed(Msg id, const Place& place);

  // The findings by file, in the order in which files were first named, and line. What is wrong
  // with a file that many lines name is said in the first of them.
  std::vector<Finding> Finish();

 private:
  struct Allowed {
    Place comment;
    int line, last;  // that it is about
    std::string name;
    bool isUsed = false;
  };

  int OrderOf(const std::string& file);
  void Merge();

  std::vector<Finding> findings_;
  std::set<std::tuple<std::string, int, Msg, std::string>> seen_;
  std::set<std::pair<Msg, std::string>> once_;
  std::map<std::tuple<std::string, Msg>, int> counts_;
  std::map<std::string, int> order_;
  std::vector<Allowed> allowed_;
};

// The comment that a line ends with, or where it begins: npos for none.
std::size_t FindAllowComment(const std::string& line);

// What of a file's bytes may stand in a message: UTF-8 without control characters, not too long.
std::string Readable(const std::string& text);

// "800x600".
std::string NameOf(Size size);

// "DIR/FILE:LINE: error: ..." in a line each, or a JSON list of objects. The prefix stands before
// all names of files.
std::string AsText(const std::vector<Finding>& findings, const std::string& prefix);
std::string AsJson(const std::vector<Finding>& findings, const std::string& prefix);

}  // namespace zel
