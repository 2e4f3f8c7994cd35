#include "tools/checker/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <vector>

#include "launcher/language.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"
#include "tools/checker/nearest.h"

namespace zel {
namespace {

constexpr int kMostNames = 10000;  // of a directory

std::string Directory(const std::string& name) {
  const std::size_t slash = name.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : name.substr(0, slash);
}

// The file that a name means which is not written as launchers read it: with backslashes, with the
// place on the disc, without its directory; empty for none.
std::string MeantFile(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  for (const std::string_view place : {"/etc/zel/", "./"})
    if (name.starts_with(place)) name.erase(0, place.size());
  if (IsFile(name.c_str())) return name;
  for (const char* directory : {"icons/", "pic/", "skin/"})
    if (std::string there = directory + name; IsFile(there.c_str())) return there;
  return {};
}

// What tells a file from the usual one beside it: "@2x" of a picture for larger screens, ".de" of a
// text in another language; empty for none.
std::string MarkOf(const std::string& name) {
  for (const char* scale : {"@2x", "@3x"})
    if (name.find(scale) != std::string::npos) return scale;
  for (const LanguageRow& row : Languages())
    if (std::string mark = std::string{'.'} + row.code; name.find(mark + '.') != std::string::npos)
      return mark;
  return {};
}

// Whether a file is one for another language or screen than what was named.
bool IsForAnother(const std::string& name, const std::string& known) {
  const std::string wanted = MarkOf(name), mark = MarkOf(known);
  if (mark == wanted) return false;
  if (mark.empty()) return wanted != ".en";  // which is the usual one
  if (!wanted.empty()) return true;
  std::string usual = known;
  usual.erase(known.find(mark), mark.size());
  return Nearest(name, {usual, known}) != known;
}

void CheckRights(Findings& findings, const std::string& name) {
  struct stat status;
  const std::string directory = Directory(name);
  if (stat(name.c_str(), &status) == 0 && status.st_mode & S_IWOTH)
    findings.Add(Msg::kWritable, {name}, {name});
  // In a sticky directory like /tmp nobody replaces the files of others.
  if (stat(directory.c_str(), &status) == 0 && status.st_mode & S_IWOTH &&
      !(status.st_mode & S_ISVTX))
    findings.Add(Msg::kWritable, {directory}, {directory});
}

// A picture or a program, and not a text in UTF-16 or one with a slip in it.
bool IsNoText(const std::string& text) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return false;
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return (0 < c && c < '\b') || ('\r' < c && c < '\x1A'); });
}

const char* KindOf(mode_t mode) {
  if (S_ISDIR(mode)) return "a directory";
  return S_ISFIFO(mode) || S_ISSOCK(mode) ? "a pipe" : "a device";
}

}  // namespace

std::string NearestFile(const std::string& name) {
  if (std::string meant = MeantFile(name); !meant.empty()) return meant;
  std::vector<std::string> names;
  const std::string directory = Directory(name);
  std::error_code error;
  std::filesystem::directory_iterator entry{directory, error};
  for (int i = 0; !error && i < kMostNames && entry != std::filesystem::directory_iterator{};
       ++i, entry.increment(error))
    names.push_back(entry->path().filename());
  std::sort(names.begin(), names.end());
  const std::string base = name.substr(name.rfind('/') + 1);
  std::erase_if(names, [&](const std::string& known) { return IsForAnother(base, known); });
  const auto whole = std::find_if(names.begin(), names.end(), [&](const std::string& known) {
    return !base.empty() && known.starts_with(base + '.');
  });
  const std::string nearest = whole == names.end() ? Nearest(base, names) : *whole;
  return nearest.empty() ? nearest : name.substr(0, name.size() - base.size()) + nearest;
}

bool IsThere(const std::string& name) {
  struct stat status;
  return lstat(name.c_str(), &status) == 0;
}

namespace {

// What is missing for its directory is that, whatever else would be in it.
void AddMissing(Findings& findings, const Place& place, const std::string& name) {
  const bool isFull = findings.IsFull(Msg::kMissingFile, place.file);
  const std::string nearest = isFull ? std::string{} : NearestFile(name);
  const std::string directory = Directory(name);
  if (nearest.empty() && !IsThere(directory))
    findings.Add(Msg::kMissingDirectory, place, {directory, name.substr(name.rfind('/') + 1)},
                 isFull ? std::string{} : NearestFile(directory));
  else
    findings.Add(Msg::kMissingFile, place, {name}, nearest);
}

}  // namespace

bool CheckFile(Findings& findings, const Place& place, const std::string& name) {
  // Of a directory it is said once, whatever is in it.
  if (const auto letter = std::find_if_not(name.begin(), name.end(), IsAscii); letter != name.end())
    if (const std::string part =
            name.substr(0, name.find('/', static_cast<std::size_t>(letter - name.begin())));
        findings.IsFirst(Msg::kNameAscii, part))
      findings.Add(Msg::kNameAscii, place, {part});
  struct stat status;
  if (stat(name.c_str(), &status) != 0) {
    const int error = errno;
    if (IsThere(name) && (error == ENOENT || error == ENOTDIR || error == ELOOP))
      findings.Add(Msg::kNotAFile, place,
                   {name, error == ELOOP ? "a link that leads in a circle" : "a link to nothing"});
    else if (error == ENOENT || error == ENOTDIR)
      AddMissing(findings, place, name);
    else  // it is the directory that may not be searched
      findings.Add(Msg::kUnreadable, place,
                   {error == EACCES ? Directory(name) : name, std::strerror(error)});
    return false;
  }
  if (!S_ISREG(status.st_mode)) {
    findings.Add(Msg::kNotAFile, place, {name, KindOf(status.st_mode)});
    return false;
  }
  if (access(name.c_str(), R_OK) != 0) {
    findings.Add(Msg::kUnreadable, place, {name, std::strerror(errno)});
    return false;
  }
  CheckRights(findings, name);
  return true;
}

bool ReadChecked(Findings& findings, const std::string& name, std::size_t limit, std::string* text,
                 const Place* named) {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  std::error_code error;
  if (std::filesystem::file_size(name, error) > limit && !error) {
    const bool isLarge = limit >= kMegabyte;
    findings.Add(
        Msg::kTooLarge, {name},
        {std::to_string(limit / (isLarge ? kMegabyte : 1024)) + (isLarge ? " MB" : " KB")});
    return false;
  }
  if (access(name.c_str(), R_OK) != 0) return false;  // which has been said
  *text = ReadText(name.c_str(), limit);
  if (text->find('\0') != std::string::npos) {
    if (named && IsNoText(*text))
      findings.Add(Msg::kNotAFile, *named, {name, "no text"});
    else
      findings.Add(Msg::kBinary, {name});
    return false;
  }
  findings.ReadComments(name, *text);
  return true;
}

}  // namespace zel
