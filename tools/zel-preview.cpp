// Shows what the launcher shows with a tree of menu files: as a picture, as pictures of everything,
// in a window or on a page.
//
// Leaves nothing behind but the pictures.
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tools/preview/contact_sheet.h"
#include "tools/preview/options.h"
#include "tools/preview/picture.h"

int main(int argc, char** argv) {
  const zel::PreviewOptions options = zel::ReadPreviewOptions(argc, argv);
  if (chdir(options.directory.c_str()) != 0)
    zel::kPreview.Reject(options.directory + ": " + std::strerror(errno));
  if (!options.sheet.empty()) return zel::MakeContactSheet(options.scene, options.sheet);
  zel::Scratch scratch;
  zel::MakePicture(options.scene, scratch, options.png);
}
