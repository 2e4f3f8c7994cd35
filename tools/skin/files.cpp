#include "tools/skin/files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "toolkit/base/bytes.h"

namespace zel {
namespace {

constexpr std::size_t kLargestCopy = std::size_t{256} << 20;

}  // namespace

bool NewDirectory::Make(const std::string& directory, Complaints& complaints) {
  std::error_code error;
  directory_ = std::filesystem::absolute(directory, error);
  made_.clear();
  for (std::filesystem::path path = directory_;
       path.has_relative_path() && !std::filesystem::exists(path, error); path = path.parent_path())
    made_ = path;
  std::filesystem::create_directories(directory, error);
  if (!error && !std::filesystem::is_empty(directory, error) && !error) {
    complaints.Add(directory, 0, "is there already, and not empty");
    return false;
  }
  if (error) complaints.Add(directory, 0, error.message());
  return !error;
}

void NewDirectory::Undo() {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator{directory_, ignored})
    std::filesystem::remove_all(entry.path(), ignored);
  if (!made_.empty()) std::filesystem::remove_all(made_, ignored);
}

std::string WhyNotWritten() { return errno ? std::strerror(errno) : "cannot be written"; }

bool MakeDirectoryOf(const std::string& file, Complaints& complaints) {
  std::error_code error;
  const std::filesystem::path directory = std::filesystem::path{file}.parent_path();
  if (!directory.empty()) std::filesystem::create_directories(directory, error);
  if (error) complaints.Add(directory, 0, error.message());
  return !error;
}

void WriteNew(const std::string& path, std::span<const char> bytes, Complaints& complaints) {
  if (!MakeDirectoryOf(path, complaints)) return;
  errno = 0;
  if (!WriteBytes(path.c_str(), bytes)) complaints.Add(path, 0, WhyNotWritten());
}

bool CopyUnfinished(const std::string& file, const std::string& from, const std::string& to,
                    Complaints& complaints) {
  const std::string source = std::filesystem::path{from} / file;
  const std::string target = std::filesystem::path{to} / file;
  std::error_code error;
  if (complaints.HasErrors() || !IsFile(source.c_str())) return false;
  if (std::filesystem::equivalent(source, target, error)) return false;
  const Bytes bytes = ReadBytes(source.c_str(), kLargestCopy);
  if (bytes.empty())
    complaints.Add(source, 0, "is empty, larger than 256 MB or cannot be read");
  else
    WriteNew(target + kUnfinished, {reinterpret_cast<const char*>(bytes.data()), bytes.size()},
             complaints);
  return true;
}

void CopyFiles(const std::vector<std::string>& files, const std::string& from,
               const std::string& to, Complaints& complaints) {
  for (const std::string& file : files) {
    // What cannot be read, and a full disk, do not take the file that is there.
    const std::string target = std::filesystem::path{to} / file;
    const std::string unfinished = target + kUnfinished;
    std::error_code error;
    if (!CopyUnfinished(file, from, to, complaints)) continue;
    if (!complaints.HasErrors()) std::filesystem::rename(unfinished, target, error);
    if (error) complaints.Add(target, 0, error.message());
    std::filesystem::remove(unfinished, error);
  }
}

}  // namespace zel
