// Reading Allegro's datafiles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"

namespace zel {

// A datafile in memory.
//
// Holds what load_datafile would give, but does not trust the numbers in the file and makes no call
// for every byte. Pictures are made when they are asked for, so that a palette from the same file
// can be set before.
class Datafile {
 public:
  static constexpr std::size_t kLargestFile = 64u << 20;  // bytes

  // Valid as long as the datafile.
  struct Object {
    int type = 0;  // DAT_BITMAP and so on
    std::string name;
    std::span<const std::uint8_t> properties, content;

    // The text of a property, whose id has four letters; empty when there is none.
    std::string Property(const char* id) const;
  };

  // False when there is no such file, or it is damaged or holds a damaged picture. Called once.
  bool Load(const char* path);

  const std::vector<Object>& Objects() const { return objects_; }
  // Whether any of it had to be unpacked.
  bool IsPacked() const { return !unpacked_.empty(); }
  // The first object of that name, whatever the case of its letters; null when there is none or it
  // is of another type.
  const Object* Find(const char* name, int type) const;

 private:
  bool ReadObjects(ByteReader list);
  bool ReadObject(ByteReader& list);
  // Null when damaged.
  const Bytes* Unpack(ByteReader& packed, std::size_t limit);

  SharedBytes file_;
  std::vector<Bytes> unpacked_;  // from parts of it
  std::size_t unpackable_ = 0;   // how many bytes may be unpacked yet
  std::vector<Object> objects_;
};

// The picture of a DAT_BITMAP object in the colour depth of the current mode, without an alpha
// channel; null without memory.
BitmapPtr MakePicture(const Datafile::Object& object);

}  // namespace zel
