#include "imageformats/memory_file.h"

#include <algorithm>
#include <cstdio>

namespace zel {
namespace {

struct Rest {
  const std::uint8_t* next;
  const std::uint8_t* end;
};

Rest& RestOf(void* file) { return *static_cast<Rest*>(file); }

int ReadByte(void* file) {
  Rest& rest = RestOf(file);
  return rest.next == rest.end ? EOF : *rest.next++;
}

long ReadBlock(void* target, long count, void* file) {
  Rest& rest = RestOf(file);
  count = std::min<long>(count, rest.end - rest.next);
  std::copy_n(rest.next, count, static_cast<std::uint8_t*>(target));
  rest.next += count;
  return count;
}

int IsAtEnd(void* file) { return RestOf(file).next == RestOf(file).end; }

int Succeed(void*) { return 0; }
int RefuseByte(int, void*) { return EOF; }
long RefuseBlock(const void*, long, void*) { return 0; }
int RefuseSeek(void*, int) { return -1; }

constexpr PACKFILE_VTABLE kReading{Succeed,     ReadByte,   RefuseByte, ReadBlock, RefuseByte,
                                   RefuseBlock, RefuseSeek, IsAtEnd,    Succeed};

}  // namespace

BITMAP* LoadFromMemory(const Bytes& bytes, Loader load, bool isPaletted, RGB* palette) {
  Rest rest{bytes.data(), bytes.data() + bytes.size()};
  PACKFILE* file = pack_fopen_vtable(&kReading, &rest);
  if (!file) return nullptr;
  PALETTE own;
  if (isPaletted) {
    if (!palette) palette = own;
    // Where the file has no colour, the loader leaves what it finds.
    std::fill_n(palette, PAL_SIZE, RGB{});
  }
  BITMAP* picture = load(file, palette);
  pack_fclose(file);
  return picture;
}

}  // namespace zel
