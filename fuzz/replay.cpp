// Runs a target on files, without a fuzzer:
//
//   zel_replay [--limit SECONDS] TARGET FILE...
//   zel_replay --list
//
// Says each file's name before it is read, so that a fault has one. Fails for a file that takes
// more processor time than the limit. The list has a target on each line: its name, the longest
// input and the sources that hold the words of its format.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/targets.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

void List() {
  for (const zel::FuzzTarget& target : zel::FuzzTargets())
    std::printf("%s %zu %s\n", target.name, target.longest, target.words);
}

// All at once: the names may be relative to the directory that is current now.
std::vector<Bytes> ReadFiles(char** names) {
  std::vector<Bytes> files;
  for (; *names; ++names) {
    std::ifstream file{*names, std::ios::binary};
    files.emplace_back(std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{});
  }
  return files;
}

// Processor time, in seconds.
double Run(const zel::FuzzTarget& target, const Bytes& file) {
  const std::clock_t start = std::clock();
  zel::RunFuzzTarget(target, file);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Answers how many files took too long.
int Replay(const zel::FuzzTarget& target, char** names, double limit) {
  const std::vector<Bytes> files = ReadFiles(names);
  zel::PrepareFuzzing();
  int slow = 0;
  double longest = 0;
  for (const Bytes& file : files) {
    std::fprintf(stderr, "%s\n", *names++);
    double seconds = Run(target, file);
    if (seconds > limit) seconds = Run(target, file);  // the machine may have had other work
    if (seconds > longest) longest = seconds;
    if (seconds <= limit) continue;
    std::fprintf(stderr, "  takes %.2f s\n", seconds);
    ++slow;
  }
  std::fprintf(stderr, "%zu files, at most %.3f s for one\n", files.size(), longest);
  return slow;
}

}  // namespace

int main(int argc, char** argv) {
  char** next = argv + 1;
  double limit = 1e9;
  if (argc == 2 && std::strcmp(*next, "--list") == 0) return List(), EXIT_SUCCESS;
  if (argc > 2 && std::strcmp(*next, "--limit") == 0) {
    limit = std::atof(next[1]);
    next += 2;
  }
  const zel::FuzzTarget* target = *next ? zel::FindFuzzTarget(*next) : nullptr;
  if (!target || !next[1]) {
    std::fputs("usage: zel_replay [--limit SECONDS] TARGET FILE...\n       zel_replay --list\n",
               stderr);
    return 2;
  }
  return Replay(*target, next + 1, limit) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
