#include "tools/preview/picture.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tools/preview/options.h"
#include "tools/preview/rehearsal.h"

namespace zel {
namespace {

// Perhaps with a window open over the menu.
[[noreturn]] void End(Scratch& scratch, int status) {
  std::fflush(nullptr);
  scratch.Remove();
  _exit(status);
}

[[noreturn]] void Complain(Scratch& scratch, const std::string& complaint) {
  std::fprintf(stderr, "zel-preview: %s\n", complaint.c_str());
  End(scratch, kFailedStatus);
}

}  // namespace

std::string WhyUnwritten(int error) { return error ? strerrordesc_np(error) : "cannot be written"; }

void MakePicture(const Scene& scene, Scratch& scratch, const std::filesystem::path& png,
                 const std::function<int(int error)>& onUnwritten) {
  scratch.RemoveOnSignals();
  Rehearsal rehearsal{scene, scratch};
  const std::string complaint = rehearsal.SetUp();
  if (!complaint.empty()) Complain(scratch, complaint);
  const auto finish = [&] {
    const bool isWritten = SavePng(png.c_str(), rehearsal.Frame());
    End(scratch, isWritten ? EXIT_SUCCESS : onUnwritten(errno));
  };
  rehearsal.Run([&finish](bool isReady) {
    if (isReady) finish();
  });
  finish();  // an item was chosen
  std::abort();
}

}  // namespace zel
