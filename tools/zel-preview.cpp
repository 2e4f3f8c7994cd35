// Shows what the launcher shows with a tree of menu files: as a picture, as pictures of everything,
// in a window or on a page.
//
// Leaves nothing behind but the pictures.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

#include "tools/preview/contact_sheet.h"
#include "tools/preview/options.h"
#include "tools/preview/picture.h"
#include "tools/preview/rehearsal.h"
#include "tools/preview/server.h"
#include "tools/preview/window.h"

int main(int argc, char** argv) {
  const zel::PreviewOptions options = zel::ReadPreviewOptions(argc, argv);
  if (chdir(options.directory.c_str()) != 0)
    zel::kPreview.Reject(options.directory + ": " + std::strerror(errno));
  const zel::Scene& scene = options.scene;
  if (scene.language || !options.sheet.empty())
    if (const std::string missing = zel::MissingCatalogues(scene); !missing.empty())
      std::fprintf(stderr, "zel-preview: no translations for %s; texts of zel's own are English\n",
                   missing.c_str());
  if (!options.sheet.empty()) return zel::MakeContactSheet(scene, options.sheet);
  zel::Scratch scratch;
  if (!options.png.empty())
    zel::MakePicture(scene, scratch, options.png, [&options](int error) {
      std::fprintf(stderr, "zel-preview: --png %s: %s\n", options.png.c_str(),
                   zel::WhyUnwritten(error).c_str());
      return zel::kFailedStatus;
    });
  std::error_code error;
  const std::string directory = std::filesystem::current_path(error);
  return options.serves ? zel::ServePage(directory, scene, scratch, options.port)
                        : zel::ShowInWindow(directory, scene, scratch);
}
