// Fonts that stand in for another one.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zel {

class EngineFont;

// Files whose letters stand in for those that a face lacks, asked in their order. A file is opened
// when the first letter needs it; one that is no font for the engine is passed over.
class FallbackFonts {
 public:
  FallbackFonts();
  FallbackFonts(const FallbackFonts&) = delete;
  FallbackFonts& operator=(const FallbackFonts&) = delete;
  ~FallbackFonts();

  void SetFiles(const std::vector<std::string>& paths);
  bool IsEmpty() const { return files_.empty(); }
  // The first face that has the character and can draw it, at this pixel size or, where it has no
  // such size, as it is. Null when none has.
  EngineFont* Find(int character, int pixelSize);

 private:
  struct File {
    std::string path;
    bool isTried = false;
    std::unique_ptr<EngineFont> face;  // null until needed, and for what is no font
  };

  EngineFont* Look(int character);
  void Open(File& file) const;

  std::vector<File> files_;
  std::unordered_map<int, EngineFont*> found_;  // at the current size
  int pixelSize_ = 0;
};

}  // namespace zel
