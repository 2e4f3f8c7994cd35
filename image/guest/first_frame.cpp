// Runs a program until the framebuffer shows what the first frame brings to a place that it reaches
// last, then prints, in milliseconds, how long that took and how long the system has been up.
//
//   first_frame OFFSET VALUE PROGRAM [ARG]...    of a byte in the framebuffer
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double Now() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

}  // namespace

int main(int count, char** words) {
  if (count < 4) return 2;
  const auto offset = static_cast<std::size_t>(std::atol(words[1]));
  const int value = std::atoi(words[2]);
  const int device = open("/dev/fb0", O_RDONLY | O_CLOEXEC);
  void* memory = mmap(nullptr, offset + 1, PROT_READ, MAP_SHARED, device, 0);
  if (device < 0 || memory == MAP_FAILED) return 1;
  const auto* byte = static_cast<const volatile unsigned char*>(memory) + offset;
  const pid_t watcher = getpid();
  const double start = Now();
  if (fork() != 0) {  // the program is the parent, so that its end is the end of the whole
    execvp(words[3], words + 3);
    return 1;
  }
  while (*byte != value && getppid() == watcher) usleep(2000);
  const double seen = Now();
  FILE* file = std::fopen("/tmp/test/first-frame", "w");
  if (file) std::fprintf(file, "%.0f %.0f\n", seen - start, seen);
  return 0;
}
