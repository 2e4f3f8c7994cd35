#include "imageformats/png.h"

#include <csetjmp>
#include <cstring>

#include <png.h>

#include "imageformats/picture.h"

namespace zel {
namespace {

struct Source {
  const std::uint8_t* bytes;
  std::size_t length;
};

// What libpng's errors leave through. No object with a destructor lives between the setjmp and the
// longjmp.
struct Decoder {
  png_structp png;
  png_infop info;
  BITMAP* volatile picture;
  png_bytep volatile pixels;
};

[[noreturn]] void Escape(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void SayNothing(png_structp, png_const_charp) {}

void ReadBytes(png_structp png, png_bytep target, std::size_t count) {
  auto* source = static_cast<Source*>(png_get_io_ptr(png));
  if (count > source->length) png_error(png, "");
  std::memcpy(target, source->bytes, count);
  source->bytes += count;
  source->length -= count;
}

// Every kind of PNG becomes rows of red, green, blue and alpha bytes.
void AskForRgba(png_structp png) {
  png_set_expand(png);
  png_set_scale_16(png);
  png_set_gray_to_rgb(png);
  png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
}

void ReadRows(Decoder& decoder) {
  const png_structp png = decoder.png;
  const int passes = png_set_interlace_handling(png);
  png_read_update_info(png, decoder.info);
  const std::size_t rowBytes = png_get_rowbytes(png, decoder.info);
  const unsigned height = png_get_image_height(png, decoder.info);
  // An interlaced picture is complete only after the last pass, so all rows are kept.
  const std::size_t kept = passes > 1 ? height : 1;
  decoder.pixels = static_cast<png_bytep>(png_malloc(png, rowBytes * kept));
  for (int pass = 0; pass < passes; ++pass) {
    for (unsigned y = 0; y < height; ++y) {
      png_bytep row = decoder.pixels + (passes > 1 ? y * rowBytes : 0);
      png_read_row(png, row, nullptr);
      if (pass == passes - 1) WriteRgbaRow(decoder.picture, static_cast<int>(y), row);
    }
  }
  png_read_end(png, nullptr);
}

bool Decode(Decoder& decoder, Source& source, int depth) {
  if (setjmp(png_jmpbuf(decoder.png)) != 0) return false;
  png_set_user_limits(decoder.png, kLargestSide, kLargestSide);
  // Texts, profiles and the like say nothing about the pixels and may unpack to megabytes.
  png_set_keep_unknown_chunks(decoder.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
  png_set_read_fn(decoder.png, &source, ReadBytes);
  png_read_info(decoder.png, decoder.info);
  AskForRgba(decoder.png);
  decoder.picture = NewPicture(depth, png_get_image_width(decoder.png, decoder.info),
                               png_get_image_height(decoder.png, decoder.info));
  if (!decoder.picture) return false;
  ReadRows(decoder);
  return true;
}

}  // namespace

BITMAP* LoadPng(const char* fileName, RGB* palette) {
  const Bytes bytes = ReadPicture(fileName);
  Source source{bytes.data(), bytes.size()};
  const int depth = PictureDepth();
  Decoder decoder{};
  decoder.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Escape, SayNothing);
  decoder.info = png_create_info_struct(decoder.png);
  const bool whole = decoder.info && Decode(decoder, source, depth);
  png_free(decoder.png, decoder.pixels);
  png_destroy_read_struct(&decoder.png, &decoder.info, nullptr);
  if (whole) return FinishPicture(decoder.picture, depth, palette);
  destroy_bitmap(decoder.picture);
  return nullptr;
}

}  // namespace zel
