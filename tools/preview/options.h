// The command line of zel-preview.
#pragma once

#include <filesystem>
#include <string>

#include "tools/preview/scene.h"
#include "tools/support/options.h"

namespace zel {

inline constexpr OptionReader kPreview{"zel-preview"};

struct PreviewOptions {
  std::string directory = "/etc/zel";
  std::filesystem::path png;    // a picture
  std::filesystem::path sheet;  // or a directory for pictures of everything
  bool serves = false;          // or a page
  int port = 0;                 // of it; 0 for any
  Scene scene;                  // without all of them: in a window
};

// Ends the program where they are wrong, and for those that only ask.
PreviewOptions ReadPreviewOptions(int argc, char** argv);

}  // namespace zel
