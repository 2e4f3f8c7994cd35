#include "imageformats/jpeg.h"

#include <bit>
#include <csetjmp>
#include <cstdio>
#include <span>

#include <jpeglib.h>

// Needs the types of the other.
#include <jerror.h>

#include "imageformats/picture.h"

namespace zel {
namespace {

// libjpeg ends with error_exit, which must not return. No object with a destructor lives between
// the setjmp and the longjmp.
struct ErrorTrap {
  jpeg_error_mgr manager;
  std::jmp_buf escape;
};

[[noreturn]] void Escape(j_common_ptr info) {
  std::longjmp(reinterpret_cast<ErrorTrap*>(info->err)->escape, 1);
}

// Of the library's warnings those about odd headers are harmless; the others, such as the end of
// the file before the end of the picture, are damage.
void EscapeFromDamage(j_common_ptr info, int level) {
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_ADOBE_XFORM:
    case JWRN_BOGUS_ICC:
    case JWRN_EXTRANEOUS_DATA:
    case JWRN_JFIF_MAJOR:
      return;
  }
  Escape(info);
}

// More scans than any encoder makes only keep the decoder busy.
constexpr int kMostScans = 100;

void EscapeFromEndlessScans(j_common_ptr info) {
  if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMostScans) Escape(info);
}

// A picture in several scans, as every progressive one, is kept as a whole until the last of them;
// beyond this libjpeg gives up. Others need rows alone.
constexpr long kMostMemory = 128L << 20;

constexpr std::uint32_t kColorOf32 =
    0xFFFFFF;  // of a pixel; left in, the rest would unmask magenta

// Turns cyan, magenta, yellow and black into red, green, blue and alpha. Programs that leave an
// Adobe marker write them inverted.
void ConvertCmyk(JSAMPLE* pixel, JDIMENSION width, bool inverted) {
  const int flip = inverted ? 0 : 255;
  for (JDIMENSION x = 0; x < width; ++x, pixel += 4) {
    const int light = pixel[3] ^ flip;
    for (int i = 0; i < 3; ++i) pixel[i] = static_cast<JSAMPLE>((pixel[i] ^ flip) * light / 255);
    pixel[3] = 255;
  }
}

// What libjpeg calls pixels like the picture's, of three components and a byte without meaning;
// JCS_UNKNOWN where it has no such pixels.
J_COLOR_SPACE PixelsLike(BITMAP* picture) {
  constexpr bool kLowestFirst = std::endian::native == std::endian::little;
  if (!kLowestFirst || bitmap_color_depth(picture) != 32 || _rgb_g_shift_32 != 8)
    return JCS_UNKNOWN;
  if (_rgb_r_shift_32 == 16 && _rgb_b_shift_32 == 0) return JCS_EXT_BGRX;
  if (_rgb_r_shift_32 == 0 && _rgb_b_shift_32 == 16) return JCS_EXT_RGBX;
  return JCS_UNKNOWN;
}

struct Decoder {
  jpeg_decompress_struct info;
  ErrorTrap trap;
  jpeg_progress_mgr progress;
  BITMAP* volatile picture;
};

// Straight into the picture, which takes a third less time.
void ReadRowsInPlace(Decoder& decoder) {
  jpeg_decompress_struct& info = decoder.info;
  while (info.output_scanline < info.output_height) {
    JSAMPROW row = decoder.picture->line[info.output_scanline];
    jpeg_read_scanlines(&info, &row, 1);
    auto* const pixels = reinterpret_cast<std::uint32_t*>(row);
    for (JDIMENSION x = 0; x < info.output_width; ++x) pixels[x] &= kColorOf32;
  }
}

void ReadRows(Decoder& decoder) {
  jpeg_decompress_struct& info = decoder.info;
  if (info.out_color_space == PixelsLike(decoder.picture)) return ReadRowsInPlace(decoder);
  const JDIMENSION width = info.output_width;
  const bool isCmyk = info.out_color_space == JCS_CMYK;
  // libjpeg's own memory: freed with the decoder, whatever happens.
  const auto pool = reinterpret_cast<j_common_ptr>(&info);
  JSAMPARRAY row = info.mem->alloc_sarray(pool, JPOOL_IMAGE, width * 4, 1);
  while (info.output_scanline < info.output_height) {
    const int y = static_cast<int>(info.output_scanline);
    jpeg_read_scanlines(&info, row, 1);
    if (isCmyk) ConvertCmyk(row[0], width, info.saw_Adobe_marker);
    WriteRgbaRow(decoder.picture, y, row[0]);
  }
}

bool Decode(Decoder& decoder, std::span<const std::uint8_t> file, int depth) {
  jpeg_decompress_struct& info = decoder.info;
  info.err = jpeg_std_error(&decoder.trap.manager);
  decoder.trap.manager.error_exit = Escape;
  decoder.trap.manager.emit_message = EscapeFromDamage;
  if (setjmp(decoder.trap.escape) != 0) return false;
  jpeg_create_decompress(&info);
  info.mem->max_memory_to_use = kMostMemory;
  decoder.progress.progress_monitor = EscapeFromEndlessScans;
  info.progress = &decoder.progress;
  jpeg_mem_src(&info, file.data(), static_cast<unsigned long>(file.size()));
  jpeg_read_header(&info, TRUE);
  const bool isCmyk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
  info.out_color_space = isCmyk ? JCS_CMYK : JCS_EXT_RGBA;
  // What is coded arithmetically never runs out: a few damaged bytes fill the largest picture.
  if (!info.arith_code) decoder.picture = NewPicture(depth, info.image_width, info.image_height);
  if (decoder.picture) {
    if (const J_COLOR_SPACE like = PixelsLike(decoder.picture); like != JCS_UNKNOWN && !isCmyk)
      info.out_color_space = like;
    jpeg_start_decompress(&info);
    ReadRows(decoder);
    jpeg_finish_decompress(&info);
  }
  return decoder.picture != nullptr;
}

}  // namespace

BITMAP* LoadJpeg(const char* fileName, RGB* palette) {
  const Bytes bytes = ReadPicture(fileName);
  const int depth = PictureDepth();
  Decoder decoder{};
  const bool whole = Decode(decoder, bytes, depth);
  jpeg_destroy_decompress(&decoder.info);
  if (whole) return FinishPicture(decoder.picture, depth, palette);
  destroy_bitmap(decoder.picture);
  return nullptr;
}

}  // namespace zel
