#include "tools/preview/contact_sheet.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "launcher/language.h"
#include "tools/preview/markup.h"
#include "tools/preview/options.h"
#include "tools/preview/picture.h"
#include "tools/preview/survey.h"

namespace zel {
namespace {

constexpr const char* kPage =
#include "contact_sheet.html.inc"
    ;
constexpr std::string_view kTitlePlace = "@TITLE@", kPlace = "@MENUS@";

struct Picture {
  std::size_t menu;
  Size size;
  const char* language;
  std::string file;
};

std::string NameOf(Size size) { return std::to_string(size.w) + 'x' + std::to_string(size.h); }

// Names of menu files as parts of names, each once.
std::vector<std::string> StemsOf(const std::vector<Survey::Menu>& menus) {
  std::vector<std::string> stems;
  for (const Survey::Menu& menu : menus) {
    std::string stem =
        menu.file.ends_with(".cfg") ? menu.file.substr(0, menu.file.size() - 4) : menu.file;
    std::replace_if(
        stem.begin(), stem.end(),
        [](unsigned char c) { return !std::isalnum(c) && c != '-' && c != '_'; }, '_');
    constexpr std::size_t kLongest = 100;
    stem.resize(std::min(stem.size(), kLongest));
    if (std::find(stems.begin(), stems.end(), stem) != stems.end())
      stem += '_' + std::to_string(stems.size());
    stems.push_back(stem);
  }
  return stems;
}

std::vector<Picture> PicturesOf(const Survey& survey, const Scene& scene) {
  std::vector<Picture> pictures;
  const std::vector<std::string> stems = StemsOf(survey.menus);
  for (std::size_t menu = 0; menu < stems.size(); ++menu)
    for (const Size size : survey.sizes)
      for (const LanguageRow& row : Languages()) {
        if (scene.language && scene.language != row.code) continue;
        pictures.push_back(
            {menu, size, row.code, stems[menu] + '-' + NameOf(size) + '-' + row.code + ".png"});
      }
  return pictures;
}

// The status of a process whose picture cannot be written is this and the system's error. What
// keeps one from being written keeps all, and is said once.
constexpr int kUnwritten = 100;

// True when the process that made a picture has made it. Ends the program where it cannot be
// written.
bool AwaitOne(const std::filesystem::path& directory) {
  int status = 0;
  if (wait(&status) < 0 || !WIFEXITED(status)) return false;
  if (const int error = WEXITSTATUS(status) - kUnwritten; error >= 0)
    kPreview.Reject("--all " + directory.string() + ": " + WhyUnwritten(error));
  return WEXITSTATUS(status) == EXIT_SUCCESS;
}

// Each picture is made by a process of its own, as many at a time as there are processors.
bool MakePictures(const std::vector<Picture>& pictures, const Survey& survey, const Scene& scene,
                  const std::filesystem::path& directory) {
  const unsigned atOnce = std::max(1U, std::thread::hardware_concurrency());
  unsigned running = 0;
  bool isWell = true;
  for (const Picture& picture : pictures) {
    for (; running >= atOnce; --running) isWell &= AwaitOne(directory);
    const pid_t child = fork();
    if (child == 0) {
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      Scene own = scene;
      own.size = picture.size;
      own.language = picture.language;
      for (const std::string& file : survey.menus[picture.menu].assumed)
        own.assumed.emplace(file, true);
      if (own.select.empty()) own.position = survey.menus[picture.menu].position;
      Scratch scratch;
      MakePicture(own, scratch, directory / picture.file,
                  [](int error) { return kUnwritten + error; });
    }
    child > 0 ? ++running : isWell = false;
  }
  for (; running > 0; --running) isWell &= AwaitOne(directory);
  return isWell;
}

std::string ReadBytes(const std::filesystem::path& file) {
  std::ifstream stream{file, std::ios::binary};
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

void WriteFigure(std::ostream& page, const Picture& picture, const Survey::Menu& menu,
                 const std::filesystem::path& directory) {
  const std::string size = NameOf(picture.size);
  page << "<figure data-size=\"" << size << "\" data-language=\"" << picture.language
       << "\"><img width=\"" << picture.size.w << "\" height=\"" << picture.size.h << "\" alt=\""
       << HtmlText(menu.file + ", " + size + ", " + picture.language)
       << "\" src=\"data:image/png;base64," << Base64(ReadBytes(directory / picture.file))
       << "\"><figcaption>" << picture.language << " <span>" << size
       << "</span></figcaption></figure>\n";
}

bool WritePage(const std::vector<Picture>& pictures, const Survey& survey,
               const std::filesystem::path& directory) {
  std::ofstream page{directory / "index.html", std::ios::binary};
  std::string text = kPage;
  std::error_code error;
  const std::string title = HtmlText(std::filesystem::current_path(error).filename().string());
  for (std::size_t at = 0; (at = text.find(kTitlePlace, at)) != std::string::npos;)
    text.replace(at, kTitlePlace.size(), title), at += title.size();
  const std::size_t place = text.find(kPlace);
  page << text.substr(0, place);
  std::size_t menu = survey.menus.size();
  for (const Picture& picture : pictures) {
    const Survey::Menu& shown = survey.menus[picture.menu];
    if (menu != picture.menu) {
      page << (picture.menu ? "</section>\n" : "") << "<section id=\"menu" << picture.menu
           << "\"><h2>" << HtmlText(shown.file) << " <span>" << HtmlText(shown.title)
           << "</span></h2>\n";
      if (!shown.complaint.empty()) page << "<p>" << HtmlText(shown.complaint) << "</p>\n";
      for (const std::string& file : shown.assumed)
        page << "<p>as it is where there is " << HtmlText(file) << ", which is missing here</p>\n";
      menu = picture.menu;
    }
    WriteFigure(page, picture, shown, directory);
  }
  page << "</section>\n" << text.substr(place + kPlace.size());
  page.close();
  return !page.fail();
}

}  // namespace

int MakeContactSheet(const Scene& scene, const std::filesystem::path& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) kPreview.Reject("--all " + directory.string() + ": " + error.message());
  const Survey survey = SurveyMenus(scene);
  if (!survey.complaint.empty()) kPreview.Reject(survey.complaint);
  const std::vector<Picture> pictures = PicturesOf(survey, scene);
  bool isWell = MakePictures(pictures, survey, scene, directory);
  if (!WritePage(pictures, survey, directory)) {
    std::filesystem::remove(directory / "index.html", error);
    kPreview.Reject("--all " + directory.string() + ": index.html cannot be written");
  }
  // The launcher shows an empty menu there.
  for (const Survey::Menu& menu : survey.menus) {
    if (menu.complaint.empty()) continue;
    std::fprintf(stderr, "zel-preview: %s: %s\n", menu.file.c_str(), menu.complaint.c_str());
    isWell = false;
  }
  return isWell ? EXIT_SUCCESS : kFailedStatus;
}

}  // namespace zel
