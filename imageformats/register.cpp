#include "imageformats/register.h"

#include "imageformats/jpeg.h"
#include "imageformats/png.h"
#include "toolkit/base/text.h"

namespace zel {

void RegisterPictureFormats() {
  register_bitmap_file_type(Ascii("jpg"), LoadJpeg, nullptr);
  register_bitmap_file_type(Ascii("jpeg"), LoadJpeg, nullptr);
  register_bitmap_file_type(Ascii("png"), LoadPng, nullptr);
}

}  // namespace zel
