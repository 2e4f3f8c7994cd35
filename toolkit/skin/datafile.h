// Reading Allegro's datafiles.
#pragma once

#include <memory>

#include "toolkit/core/allegro.h"

namespace zel {

struct DatafileDeleter {
  void operator()(DATAFILE* datafile) const noexcept { unload_datafile(datafile); }
};
using DatafilePtr = std::unique_ptr<DATAFILE, DatafileDeleter>;

// True when load_datafile reads the file safely to its end. Allegro trusts the numbers in a
// datafile, so this looks at all of them first. Bitmaps, data that Allegro does not interpret
// (palettes, texts) and nested datafiles are accepted; sounds, fonts, RLE and compiled sprites are
// not.
bool IsSoundDatafile(const char* path);

// The datafile with its pictures in the colour depth of the current mode, or null when it is not
// sound.
DatafilePtr LoadDatafile(const char* path);

// The first object of that name; null when there is none or it is of another type (DAT_BITMAP and
// so on).
const DATAFILE* FindObject(const DATAFILE* datafile, const char* name, int type);

}  // namespace zel
