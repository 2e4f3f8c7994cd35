// Shows every widget of the toolkit in every state, in a window or as a picture file.
#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/startup.h"
#include "toolkit/testing/offscreen.h"
#include "tools/gallery/gallery.h"

namespace zel {
namespace {

constexpr int kUsageStatus = 2;
constexpr int kFrames = 60;  // until transitions have ended

struct Options {
  std::string png;
  std::string skin = "default";
  Size size;  // (0, 0): not given
  int depth = 32;
  const Page* page = nullptr;
};

[[noreturn]] void Fail(const std::string& message) {
  std::fprintf(stderr, "zel-gallery: %s\n", message.c_str());
  std::exit(EXIT_FAILURE);
}

[[noreturn]] void ExplainUsage() {
  std::fputs(
      "usage: zel-gallery [--size WxH] [--depth N] [--zoom Z] [--skin FILE]\n"
      "       zel-gallery --png FILE [--page NAME] [--size WxH] [--depth N] [--zoom Z] "
      "[--skin FILE]\n"
      "       zel-gallery --list\n",
      stderr);
  std::exit(kUsageStatus);
}

[[noreturn]] void ListPages() {
  for (const Page& page : Pages()) std::puts(page.name);
  std::exit(EXIT_SUCCESS);
}

Options ReadOptions(int argc, char** argv) {
  static const option kOptions[] = {
      {"png", required_argument, nullptr, 'o'},   {"size", required_argument, nullptr, 's'},
      {"depth", required_argument, nullptr, 'd'}, {"skin", required_argument, nullptr, 'k'},
      {"zoom", required_argument, nullptr, 'z'},  {"page", required_argument, nullptr, 'p'},
      {"list", no_argument, nullptr, 'l'},        {nullptr, 0, nullptr, 0},
  };
  Options options;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    bool good = true;
    if (letter == 'o') options.png = optarg;
    if (letter == 's') good = ParseSize(optarg, &options.size);
    if (letter == 'd') options.depth = std::atoi(optarg);
    if (letter == 'z') settings.zoom = ParseZoom(optarg);
    if (letter == 'k') options.skin = optarg;
    if (letter == 'p') good = (options.page = FindPage(optarg)) != nullptr;
    if (letter == 'l') ListPages();
    if (!good || letter == '?') ExplainUsage();
  }
  if (optind != argc || (options.page && options.png.empty())) ExplainUsage();
  return options;
}

// A page alone.
class PageScreen : public Dialog {
 public:
  explicit PageScreen(const Page& page)
      : sheet_{BuildPage(page, {settings.screenWidth, settings.screenHeight})} {
    Add(&back_);
    Add(sheet_.get());
  }

 private:
  ClearScreen back_;
  std::unique_ptr<Sheet> sheet_;
};

void SetMode(Offscreen& offscreen, Size size, int depth) {
  if (!offscreen.SetMode(size, depth)) Fail("there is no such screen");
}

std::string SkinFile(const std::string& name) { return name == "default" ? "" : name; }

int MakePicture(const Options& options) {
  constexpr Size kUsualSize{800, 600};
  // A page whose size is not given gets what it takes in a width that suits documents.
  constexpr int kPageWidth = 640;
  Offscreen offscreen;
  SetZoom(settings.zoom);
  const Size room{Zoomed(kPageWidth), 1};
  const Size given = options.size.w ? options.size : options.page ? room : kUsualSize;
  SetMode(offscreen, given, options.depth);
  const std::string complaint = Offscreen::LoadSkin(options.skin.c_str());
  if (!complaint.empty()) Fail(complaint);
  if (options.page && !options.size.w)
    SetMode(offscreen, BuildPage(*options.page, given)->Extent(), options.depth);
  if (options.page) {
    PageScreen screen{*options.page};
    offscreen.Run(screen, kFrames);
  } else {
    Gallery gallery{SkinFile(options.skin)};
    offscreen.Run(gallery, kFrames);
  }
  if (!SavePng(options.png.c_str(), offscreen.Frame())) Fail("cannot write " + options.png);
  return EXIT_SUCCESS;
}

int ShowWindow(const Options& options) {
  settings.fullscreen = false;
  settings.screenWidth = options.size.w ? options.size.w : 800;
  settings.screenHeight = options.size.h ? options.size.h : 600;
  settings.colorDepth = options.depth;
  settings.skinPath.Assign(options.skin.c_str());
  Error error = InstallToolkit(nullptr);
  if (error == Error{kGraphicsError}) {
    settings.fullscreen = true;  // as on a console
    error = InstallToolkit(nullptr);
  }
  if (error.IsError()) error.Report();
  {
    Gallery gallery{SkinFile(options.skin)};
    gallery.Execute(nullptr);
  }
  ExitToolkit();
  return EXIT_SUCCESS;
}

int Run(int argc, char** argv) {
  const Options options = ReadOptions(argc, argv);
  return options.png.empty() ? ShowWindow(options) : MakePicture(options);
}

}  // namespace
}  // namespace zel

int main(int argc, char** argv) { return zel::Run(argc, argv); }
