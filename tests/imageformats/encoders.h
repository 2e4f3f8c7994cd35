// Pictures to test the loaders with, written by the libraries that read them.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>

#include <jpeglib.h>
#include <png.h>

#include "toolkit/core/bytes.h"

namespace zel {

inline constexpr int kBlock = 8;  // the squares that JPEG works in

using Adjust = std::function<void(jpeg_compress_struct*)>;

// A JPEG picture of one block beside another, each of one colour.
inline Bytes EncodeJpeg(J_COLOR_SPACE colors, const Bytes& left, const Bytes& right,
                        const Adjust& adjust = {}) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* bytes = nullptr;
  unsigned long length = 0;
  jpeg_mem_dest(&info, &bytes, &length);
  info.image_width = 2 * kBlock;
  info.image_height = kBlock;
  info.input_components = static_cast<int>(left.size());
  info.in_color_space = colors;
  jpeg_set_defaults(&info);
  if (adjust) adjust(&info);
  // Colours must not spread over the edge of the block.
  for (int i = 0; i < info.num_components; ++i)
    info.comp_info[i].h_samp_factor = info.comp_info[i].v_samp_factor = 1;
  jpeg_start_compress(&info, TRUE);
  Bytes row;
  for (int x = 0; x < 2 * kBlock; ++x)
    for (const std::uint8_t sample : x < kBlock ? left : right) row.push_back(sample);
  JSAMPROW rows = row.data();
  for (int y = 0; y < kBlock; ++y) jpeg_write_scanlines(&info, &rows, 1);
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  const Bytes file{bytes, bytes + length};
  std::free(bytes);
  return file;
}

// A picture as PNG stores it.
struct Stored {
  png_uint_32 width, height;
  int colorType, bits;
  Bytes samples;         // all rows
  Bytes palette{};       // red, green, blue
  int transparent = -1;  // grey, or the last entry of the palette that is transparent
};

inline Bytes EncodePng(Stored picture, int interlace = PNG_INTERLACE_NONE) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  Bytes file;
  const auto append = [](png_structp writer, png_bytep bytes, std::size_t count) {
    auto* whole = static_cast<Bytes*>(png_get_io_ptr(writer));
    whole->insert(whole->end(), bytes, bytes + count);
  };
  png_set_write_fn(png, &file, append, nullptr);
  png_set_IHDR(png, info, picture.width, picture.height, picture.bits, picture.colorType, interlace,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!picture.palette.empty())
    png_set_PLTE(png, info, reinterpret_cast<png_colorp>(picture.palette.data()),
                 static_cast<int>(picture.palette.size() / 3));
  const Bytes alpha(static_cast<std::size_t>(picture.transparent + 1));
  const png_color_16 key{0, 0, 0, 0, static_cast<png_uint_16>(picture.transparent)};
  if (!alpha.empty()) png_set_tRNS(png, info, alpha.data(), picture.transparent + 1, &key);
  std::vector<png_bytep> rows;
  for (std::size_t y = 0; y < picture.height; ++y)
    rows.push_back(picture.samples.data() + picture.samples.size() / picture.height * y);
  png_set_rows(png, info, rows.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

}  // namespace zel
