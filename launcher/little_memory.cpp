#include "launcher/little_memory.h"

#include <pthread.h>
#include <sys/mman.h>

#include <cstddef>
#include <new>

#include "toolkit/base/console_guard.h"

namespace zel {
namespace {

[[noreturn]] void End() { EndAtOnce("zel: out of memory\n"); }

std::size_t StackOfAThread() {
  std::size_t size = 0;
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return size;
  pthread_attr_getstacksize(&attributes, &size);
  pthread_attr_destroy(&attributes);
  return size;
}

}  // namespace

void EndWithoutMemory() { std::set_new_handler(End); }

void NeedRoomForARun() {
  constexpr std::size_t kThreads = 2;         // of Allegro, for input and timers
  constexpr std::size_t kPictures = 2 << 20;  // bytes
  const std::size_t room = kThreads * StackOfAThread() + kPictures;
  void* const tried = mmap(nullptr, room, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (tried == MAP_FAILED) End();
  munmap(tried, room);
}

}  // namespace zel
