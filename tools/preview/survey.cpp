#include "tools/preview/survey.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <set>
#include <sstream>
#include <utility>

#include "launcher/layout.h"
#include "launcher/menu_session.h"
#include "launcher/paths.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "tools/preview/rehearsal.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

// What the process that reads tells the other one: lines of a letter and a value.
constexpr char kComplaint = '!', kSize = 's', kFile = 'f', kTitle = 't', kPosition = 'p',
               kAssumed = 'a', kTrouble = 'x';

void Tell(std::string& said, char what, std::string value) {
  std::replace(value.begin(), value.end(), '\n', ' ');
  said.append(1, what).append(value).append(1, '\n');
}

void TellSizes(std::string& said, const Scene& scene) {
  std::vector<Size> sizes;
  const auto add = [&sizes](Size size) {
    if (std::find(sizes.begin(), sizes.end(), size) == sizes.end()) sizes.push_back(size);
  };
  if (scene.size.w) {
    add(scene.size);
  } else {
    std::for_each(std::begin(kUsualScreens), std::end(kUsualScreens), add);
    add({settings.screenWidth, settings.screenHeight});
    // Without a zoom no other size has a section of its own.
    const SectionFile menu = SectionFile::FromUtf8(ReadWhole(kMainMenu));
    for (const SectionFile::Section& section : menu.Sections())
      if (Size size; settings.zoom != 1 && ReadSectionSize(section.Name(), &size)) add(size);
  }
  for (const Size size : sizes)
    Tell(said, kSize, std::to_string(size.w) + ' ' + std::to_string(size.h));
}

// How a menu is reached.
struct Way {
  std::vector<int> lines;         // of the entries that lead to it
  std::set<std::string> assumed;  // files that those ask about, and that are missing here
};

int EntryOfLine(const MenuSession& session, int line) {
  for (int index = 0; index < session.Count(); ++index)
    if (session.Entry(index).line == line) return index;
  return -1;
}

// Opens the menu to which these entries lead, and answers its position.
std::string Open(MenuSession& session, const Way& way, const Scene& scene) {
  paths.assumed = scene.assumed;
  for (const std::string& file : way.assumed) paths.assumed.emplace(file, true);
  session.Open(kMainMenu);
  std::string position;
  for (const int line : way.lines) {
    const int index = EntryOfLine(session, line);
    if (index < 0) break;
    session.Select(index);
    session.Choose(session.Entry(index));
    position += std::to_string(index) + ',';
  }
  return position.empty() ? position : position + '0';
}

// The files that hide submenus of the current menu, because they are missing here.
std::vector<std::string> HidingFiles(const MenuSession& session) {
  std::vector<std::string> files;
  const SectionFile menu = SectionFile::FromUtf8(ReadWhole(session.Level().fileName.c_str()));
  for (const int n : menu.Numbered("LINE", session.Config().lineCount)) {
    const SectionFile::Section& line = menu.Find(("LINE" + std::to_string(n)).c_str());
    const std::string file = line.GetText("ShowIfFileExists");
    const bool isHidden = !file.empty() && !ItemFileExists(file.c_str());
    if (isHidden && !std::string{line.GetText("Submenu")}.empty()) files.push_back(file);
  }
  return files;
}

// Each menu once, by way of what is shown here where there is such a way.
class MenuTour {
 public:
  MenuTour(std::string& said, const Scene& scene) : said_{said}, scene_{scene} {}

  void Run() {
    TellMenu({});
    for (std::size_t next = 0; !shown_.empty() || next < hidden_.size();) {
      const bool isShown = !shown_.empty();
      const Way way = isShown ? shown_.front() : hidden_[next++];
      if (isShown) {
        shown_.pop_front();
        TellMenu(way);
      } else {
        MenuSession session;
        Open(session, way, scene_);
        AddSubmenus(session, way);
      }
    }
  }

 private:
  void TellMenu(const Way& way) {
    MenuSession session;
    const std::string position = Open(session, way, scene_);
    const std::string file = session.Level().fileName.c_str();
    Tell(said_, kFile, file);
    Tell(said_, kTitle, Converted(session.Config().menuTitle.c_str(), U_CURRENT, U_UTF8));
    Tell(said_, kPosition, position);
    Tell(said_, kTrouble, WhyNoText(file, kLongestWholeFile));
    for (const std::string& assumed : way.assumed) Tell(said_, kAssumed, assumed);
    AddSubmenus(session, way);
    for (const std::string& hiding : HidingFiles(session)) {
      if (scene_.assumed.contains(hiding) || !hidings_.emplace(file, hiding).second) continue;
      hidden_.push_back(way);
      hidden_.back().assumed.insert(hiding);
    }
  }

  void AddSubmenus(const MenuSession& session, const Way& way) {
    for (int index = 0; index < session.Count(); ++index) {
      const MenuItem& item = session.Entry(index);
      const bool opens = (item.flags & kItemSubmenu) && !(item.flags & kItemDisabled);
      if (!opens || !seen_.insert(item.submenu.c_str()).second) continue;
      shown_.push_back(way);
      shown_.back().lines.push_back(item.line);
    }
  }

  std::string& said_;
  const Scene& scene_;
  std::set<std::string> seen_{kMainMenu};
  std::set<std::pair<std::string, std::string>> hidings_;  // menus, and files that hide in them
  std::deque<Way> shown_;                                  // to menus that are to be told
  std::vector<Way> hidden_;                                // to menus with what they hide
};

std::string Read(const Scene& scene, Scratch& scratch) {
  std::string said;
  Rehearsal rehearsal{scene, scratch};
  if (const std::string complaint = rehearsal.SetUp(); !complaint.empty()) {
    Tell(said, kComplaint, complaint);
    return said;
  }
  TellSizes(said, scene);
  MenuTour{said, scene}.Run();
  return said;
}

void Understand(const std::string& line, Survey& survey) {
  const std::string value = line.substr(1);
  if (line[0] == kComplaint) survey.complaint = value;
  if (line[0] == kFile) survey.menus.push_back({value, {}, {}, {}, {}});
  if (line[0] == kTitle && !survey.menus.empty()) survey.menus.back().title = value;
  if (line[0] == kPosition && !survey.menus.empty()) survey.menus.back().position = value;
  if (line[0] == kTrouble && !survey.menus.empty()) survey.menus.back().complaint = value;
  if (line[0] == kAssumed && !survey.menus.empty()) survey.menus.back().assumed.push_back(value);
  if (line[0] != kSize) return;
  Size size;
  std::istringstream{value} >> size.w >> size.h;
  survey.sizes.push_back(size);
}

}  // namespace

Survey SurveyMenus(const Scene& scene) {
  Survey survey;
  int ends[2];
  if (pipe(ends) != 0) return {"there is no pipe", {}, {}};
  const pid_t reader = fork();
  if (reader == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    Scratch scratch;
    scratch.RemoveOnSignals();
    const std::string said = Read(scene, scratch);
    scratch.Remove();
    const ssize_t count = write(ends[1], said.data(), said.size());
    _exit(count == static_cast<ssize_t>(said.size()) ? EXIT_SUCCESS : EXIT_FAILURE);
  }
  close(ends[1]);
  std::string said;
  char block[4096];
  for (ssize_t count = 0; (count = read(ends[0], block, sizeof block)) > 0;)
    said.append(block, static_cast<std::size_t>(count));
  close(ends[0]);
  int status = 0;
  if (reader > 0) waitpid(reader, &status, 0);
  std::istringstream lines{said};
  for (std::string line; std::getline(lines, line);)
    if (!line.empty()) Understand(line, survey);
  if (survey.complaint.empty() && (reader < 0 || status != 0 || survey.menus.empty()))
    survey.complaint = "the menus cannot be read";
  return survey;
}

}  // namespace zel
