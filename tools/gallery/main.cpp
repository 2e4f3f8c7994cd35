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
#include "tools/support/options.h"

namespace zel {
namespace {

constexpr int kFrames = 60;  // until transitions have ended

struct Options {
  std::string png;
  std::string skin = "default";
  Size size;  // (0, 0): not given
  int depth = 32;
  const Page* page = nullptr;
};

constexpr OptionReader kReader{"zel-gallery"};

constexpr const char* kUsage =
    "usage: zel-gallery [--size WxH] [--depth N] [--zoom Z] [--skin FILE]\n"
    "       zel-gallery --png FILE [--page NAME] [--size WxH] [--depth N] [--zoom Z] "
    "[--skin FILE]\n"
    "       zel-gallery --list | --help | --version\n";

[[noreturn]] void ExplainUsage() {
  std::fputs(kUsage, stderr);
  std::exit(kFailedStatus);
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
      {"list", no_argument, nullptr, 'l'},        {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'},     {nullptr, 0, nullptr, 0},
  };
  Options options;
  for (int letter; (letter = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
    if (letter == 'o') options.png = optarg;
    if (letter == 's') options.size = kReader.ReadSize(optarg);
    if (letter == 'd') options.depth = kReader.ReadDepth(optarg);
    if (letter == 'z') settings.zoom = kReader.ReadZoom(optarg);
    if (letter == 'k') options.skin = optarg;
    if (letter == 'p' && !(options.page = FindPage(optarg)))
      kReader.Reject(std::string{"--page "} + optarg + ": there is no such page; --list names all");
    if (letter == 'l') ListPages();
    if (letter == 'h') kReader.Help(kUsage);
    if (letter == 'v') kReader.ShowVersion();
    if (letter == '?') ExplainUsage();
  }
  if (optind != argc) kReader.Reject(std::string{argv[optind]} + ": there is no such option");
  if (options.page && options.png.empty()) kReader.Reject("--page needs --png");
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
  if (!offscreen.SetMode(size, depth)) kReader.Reject("--size: there is no such screen");
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
  if (!complaint.empty()) kReader.Reject(complaint);
  if (options.page && !options.size.w)
    SetMode(offscreen, BuildPage(*options.page, given)->Extent(), options.depth);
  if (options.page) {
    PageScreen screen{*options.page};
    offscreen.Run(screen, kFrames);
  } else {
    Gallery gallery{SkinFile(options.skin)};
    offscreen.Run(gallery, kFrames);
  }
  if (!SavePng(options.png.c_str(), offscreen.Frame()))
    kReader.Reject("--png " + options.png + ": cannot be written");
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
