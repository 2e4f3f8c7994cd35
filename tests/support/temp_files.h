// Files that live as long as a test.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace zel {

inline std::string ReadFile(const std::string& path) {
  std::ifstream file{path, std::ios::binary};
  return {std::istreambuf_iterator<char>{file}, {}};
}

inline void WriteFile(const std::string& path, std::string_view content) {
  std::ofstream file{path, std::ios::binary};
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  EXPECT_TRUE(file.good()) << path;
}

// A directory of its own, removed with all that is in it.
class TempDir {
 public:
  TempDir() : path_{testing::TempDir() + "zelXXXXXX"} {
    EXPECT_NE(mkdtemp(path_.data()), nullptr) << path_;
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& Path() const { return path_; }
  std::string Path(const std::string& name) const { return path_ + '/' + name; }
  // Answers the new file's path. It is a new file each time: writing over an old one may wait for
  // the disc.
  std::string Write(const std::string& name, std::string_view content) const {
    std::filesystem::remove(Path(name));
    WriteFile(Path(name), content);
    return Path(name);
  }
  std::string Read(const std::string& name) const { return ReadFile(Path(name)); }

 private:
  std::string path_;
};

// The same as the current directory.
class WorkingDir : public TempDir {
 public:
  WorkingDir() { std::filesystem::current_path(Path()); }
  ~WorkingDir() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

// One file in a directory of its own.
class TempFile {
 public:
  explicit TempFile(std::string_view content, const std::string& name = "test.cfg")
      : path_{dir_.Write(name, content)} {}

  const char* Path() const { return path_.c_str(); }
  std::string Content() const { return ReadFile(path_); }

 private:
  TempDir dir_;
  std::string path_;
};

}  // namespace zel
