// Writing Allegro's datafiles.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"

namespace zel {

// Makes a datafile in memory, the same bytes for the same objects: nothing in it is a date or tells
// where it was made.
class DatafileWriter {
 public:
  // Ids of four letters and their texts.
  using Properties = std::vector<std::pair<std::string, std::string>>;

  // Packed objects are a fraction of the size and take longer to load.
  explicit DatafileWriter(bool packs) : packs_{packs} {}

  // Of 8 bits, or else of 24.
  void AddPicture(const std::string& name, Properties properties, BITMAP* picture);
  void AddPalette(const std::string& name, const RGB* colors);

  std::size_t Size() const { return objects_.size(); }
  Bytes Finish() const;

 private:
  void Add(const std::string& name, Properties properties, int type, const Bytes& content);

  bool packs_;
  int count_ = 0;
  Bytes objects_;
};

}  // namespace zel
