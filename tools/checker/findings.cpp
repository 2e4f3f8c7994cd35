#include "tools/checker/findings.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>

#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"

namespace zel {
namespace {

constexpr int kMostAlike = 200;  // messages of a kind in a file
constexpr std::size_t kLongestWord = 100;
constexpr const char* kBlanks = " \t\r";
constexpr const char* kBehindWord = " \t\r:,";

// The position behind "zel-check: allow", in letters of any size and with or without blanks around
// the colon; npos where `position` begins with anything else.
std::size_t BehindAllow(const std::string& line, std::size_t position) {
  for (const std::string_view word : {"zel-check", ":", "allow"}) {
    position = std::min(line.find_first_not_of(kBlanks, position), line.size());
    if (Upper(line.substr(position, word.size())) != Upper(std::string{word}))
      return std::string::npos;
    position += word.size();
  }
  const bool isWord = line.find_first_of(kBehindWord, position) == position;
  return isWord || position == line.size() ? position : std::string::npos;
}

// The names from `position` on: one, or several with commas or blanks between them. What else is
// behind a blank is a remark.
std::vector<std::string> AllowedNames(const std::string& line, std::size_t position) {
  std::vector<std::string> names;
  for (bool isMore = true; isMore;) {
    const std::size_t start = std::min(line.find_first_not_of(kBehindWord, position), line.size());
    position = std::min(line.find_first_of(kBehindWord, start), line.size());
    names.push_back(line.substr(start, position - start));
    const std::size_t next = std::min(line.find_first_not_of(kBlanks, position), line.size());
    const std::size_t end = std::min(line.find_first_of(kBehindWord, next), line.size());
    isMore = line.substr(next, 1) == "," || FindMessage(line.substr(next, end - next));
  }
  return names;
}

// What is added to a message that stands for others.
struct Others {
  const char* another;
  const char* others;  // {0} is how many
};
constexpr Others kOtherLines{" (another line names it, too)", " ({0} other lines name it, too)"};
constexpr Others kOtherFiles{" (another line names a file there, too)",
                             " ({0} other lines name files there, too)"};
constexpr Others kOtherSections{" (another section, too)", " ({0} other sections, too)"};

// The message that a comment is meant to silence, and does not: "zel-check" stands before it, at
// once or before another word. Empty for other comments.
std::string MeantToAllow(const std::string& comment) {
  std::string words = comment.substr(std::min(comment.find_first_not_of("#; \t"), comment.size()));
  std::replace(words.begin(), words.end(), ':', ' ');
  std::istringstream stream{words};
  std::string tool, first, second;
  stream >> tool >> first >> second;
  if (Upper(tool) != "ZEL-CHECK") return {};
  if (FindMessage(first)) return first;
  return FindMessage(second) ? second : std::string{};
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

// UTF-8 without control characters, whatever bytes there are.
std::string Printable(const std::string& text) {
  std::string printable = Sound(text, U_UTF8);
  // Allegro also takes halves of pairs and characters beyond the last one.
  for (std::size_t i = 0; i + 1 < printable.size(); ++i) {
    const int first = printable[i] & 0xFF, second = printable[i + 1] & 0xFF;
    const bool isHalf = first == 0xED && second >= 0xA0;
    const bool isLong = (first == 0xC0 || first == 0xC1) || (first == 0xE0 && second < 0xA0) ||
                        (first == 0xF0 && second < 0x90);
    const bool isBeyond = first > 0xF4 || (first == 0xF4 && second >= 0x90);
    if (!isHalf && !isLong && !isBeyond) continue;
    printable[i] = '^';
    while (i + 1 < printable.size() && (printable[i + 1] & 0xC0) == 0x80) printable.erase(i + 1, 1);
  }
  std::replace_if(printable.begin(), printable.end(), IsControl, ' ');
  return printable;
}

std::string JsonText(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

const char* SeverityName(Msg id) {
  return MessageOf(id).severity == Severity::kError ? "error" : "warning";
}

}  // namespace

std::string Readable(const std::string& text) {
  std::string readable = Printable(text);
  if (readable.size() <= kLongestWord) return readable;
  const FormatGuard format{U_UTF8};
  return CutToBytes(readable.c_str(), kLongestWord) + "...";
}

void Findings::Add(Msg id, const Place& place, std::vector<std::string> words,
                   const std::string& nearest) {
  const std::string about = words.empty() ? std::string{} : words.front();
  if (!seen_.emplace(place.file, place.line, id, about).second) return;
  OrderOf(place.file);
  if (++counts_[{place.file, id}] > kMostAlike) return;
  for (std::string& word : words) word = Readable(word);
  const Message& message = MessageOf(id);
  // What differs in bytes that do not show is no help.
  const std::string meant = Readable(nearest);
  const bool isHelp = !meant.empty() && meant != words.front();
  findings_.push_back({place, id, Filled(message.what, words),
                       isHelp ? "did you mean " + meant + "?" : Filled(message.advice, words)});
}

bool Findings::Has(Msg id, const Place& place) const {
  const auto found = seen_.lower_bound({place.file, place.line, id, {}});
  return found != seen_.end() && std::get<0>(*found) == place.file &&
         std::get<1>(*found) == place.line && std::get<2>(*found) == id;
}

bool Findings::IsFull(Msg id, const std::string& file) const {
  const auto count = counts_.find({file, id});
  return count != counts_.end() && count->second >= kMostAlike;
}

std::size_t FindAllowComment(const std::string& line) {
  std::size_t at = line.find_first_of(";#");
  while (at != std::string::npos && BehindAllow(line, at + 1) == std::string::npos)
    at = line.find_first_of(";#", at + 1);
  return at;
}

void Findings::ReadComments(const std::string& file, const std::string& text) {
  OrderOf(file);
  if (Upper(text).find("ZEL-CHECK") == std::string::npos) return;
  const std::size_t first = allowed_.size();
  std::size_t waiting = first;  // comments from here on are about a line to come
  int number = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::string line{NextLine(text, position)};
    ++number;
    const std::string trimmed = Trimmed(Sound(line).c_str());
    if (trimmed.empty()) continue;
    const std::size_t comment = FindAllowComment(line);
    const std::vector<std::string> names = comment == std::string::npos
                                               ? std::vector<std::string>{}
                                               : AllowedNames(line, BehindAllow(line, comment + 1));
    for (const std::string& name : names)
      if (FindMessage(name))
        allowed_.push_back({{file, number}, number, number, name});
      else
        Add(Msg::kAllowUnknown, {file, number}, {name.empty() ? "without a name" : name},
            IsFull(Msg::kAllowUnknown, file) ? std::string{} : Nearest(name, MessageNames()));
    if (comment == std::string::npos && IsComment(trimmed))
      if (const std::string meant = MeantToAllow(trimmed); !meant.empty())
        Add(Msg::kAllowForm, {file, number}, {trimmed, meant});
    if (IsComment(trimmed)) continue;
    for (; waiting < allowed_.size(); ++waiting)
      allowed_[waiting].line = allowed_[waiting].last = number;
  }
}

void Findings::AllowInText(const std::string& file, int line, int last) {
  for (Allowed& allowed : allowed_)
    if (allowed.comment.file == file && allowed.line == line) allowed.last = last;
}

int Findings::OrderOf(const std::string& file) {
  return order_.try_emplace(file, static_cast<int>(order_.size())).first->second;
}

// The findings are in their order.
void Findings::Merge() {
  constexpr Msg kOfFiles[] = {Msg::kMissingFile, Msg::kMissingDirectory, Msg::kNotAFile,
                              Msg::kUnreadable,  Msg::kBadPicture,       Msg::kScaledSize,
                              Msg::kBadFont,     Msg::kBadData};
  std::map<std::pair<Msg, std::string>, std::vector<std::size_t>> alike;
  for (std::size_t i = 0; i < findings_.size(); ++i) {
    const auto& [place, id, what, advice] = findings_[i];
    if (id == Msg::kSizeUnread)
      alike[{id, {}}].push_back(i);
    else if (id == Msg::kNameOutside)  // what is copied is the directory
      alike[{id, what.substr(0, what.rfind('/'))}].push_back(i);
    else if (std::find(std::begin(kOfFiles), std::end(kOfFiles), id) != std::end(kOfFiles))
      alike[{id, what}].push_back(i);
  }
  std::set<std::size_t> merged;
  for (const auto& [about, all] : alike) {
    if (all.size() == 1) continue;
    const auto& [another, others] = about.first == Msg::kSizeUnread    ? kOtherSections
                                    : about.first == Msg::kNameOutside ? kOtherFiles
                                                                       : kOtherLines;
    const std::string more = std::to_string(all.size() - 1);
    findings_[all.front()].what += Filled(all.size() == 2 ? another : others, {&more, 1});
    merged.insert(all.begin() + 1, all.end());
  }
  std::vector<Finding> kept;
  for (std::size_t i = 0; i < findings_.size(); ++i)
    if (!merged.contains(i)) kept.push_back(std::move(findings_[i]));
  findings_ = std::move(kept);
}

bool Findings::IsAllowed(Msg id, const Place& place) {
  bool isAllowed = false;
  for (Allowed& allowed : allowed_) {
    // What is true of the whole file is said of its first line.
    const bool isHere = (allowed.line <= place.line && place.line <= allowed.last) ||
                        (place.line == 1 && allowed.comment.line == 1);
    if (isHere && allowed.comment.file == place.file && allowed.name == MessageOf(id).name)
      allowed.isUsed = isAllowed = true;
  }
  return isAllowed;
}

std::vector<Finding> Findings::Finish() {
  std::erase_if(findings_,
                [this](const Finding& finding) { return IsAllowed(finding.id, finding.place); });
  for (const Allowed& allowed : allowed_)
    if (!allowed.isUsed) Add(Msg::kAllowUnused, allowed.comment, {allowed.name});
  std::stable_sort(findings_.begin(), findings_.end(), [this](const Finding& a, const Finding& b) {
    const int first = order_.at(a.place.file), second = order_.at(b.place.file);
    return first != second ? first < second : a.place.line < b.place.line;
  });
  Merge();
  return findings_;
}

std::string NameOf(Size size) { return std::to_string(size.w) + 'x' + std::to_string(size.h); }

std::string AsText(const std::vector<Finding>& findings, const std::string& prefix) {
  std::string text;
  for (const auto& [place, id, what, advice] : findings)
    text.append(Printable(prefix + place.file))
        .append(":")
        .append(std::to_string(place.line))
        .append(": ")
        .append(SeverityName(id))
        .append(": ")
        .append(what)
        .append("; ")
        .append(advice)
        .append(" [")
        .append(MessageOf(id).name)
        .append("]\n");
  return text;
}

std::string AsJson(const std::vector<Finding>& findings, const std::string& prefix) {
  std::string text = "[";
  for (const auto& [place, id, what, advice] : findings) {
    text += text.size() > 1 ? ",\n" : "\n";
    text += R"({"file": )" + JsonText(Printable(prefix + place.file)) + R"(, "line": )" +
            std::to_string(place.line) + R"(, "severity": ")" + SeverityName(id) +
            R"(", "name": ")" + MessageOf(id).name + R"(", "message": )" + JsonText(what) +
            R"(, "advice": )" + JsonText(advice) + "}";
  }
  return text + (text.size() > 1 ? "\n]\n" : "]\n");
}

}  // namespace zel
