// The targets for libFuzzer, which has the main program. The environment variable ZEL_FUZZ_TARGET
// names the one that is run: the argument list is libFuzzer's.
#include <cstdio>
#include <cstdlib>

#include "fuzz/targets.h"

namespace {

const zel::FuzzTarget* target = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  const char* name = std::getenv("ZEL_FUZZ_TARGET");
  target = zel::FindFuzzTarget(name ? name : "");
  if (!target) {
    std::fputs("zel_fuzz: ZEL_FUZZ_TARGET names no target\n", stderr);
    std::exit(2);
  }
  zel::PrepareFuzzing();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zel::RunFuzzTarget(*target, {bytes, count});
  return 0;
}
