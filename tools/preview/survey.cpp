#include "tools/preview/survey.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <set>
#include <sstream>

#include "launcher/layout.h"
#include "launcher/menu_session.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "tools/preview/rehearsal.h"

namespace zel {
namespace {

// What the process that reads tells the other one: lines of a letter and a value.
constexpr char kComplaint = '!', kSize = 's', kFile = 'f', kTitle = 't', kPosition = 'p';

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

// Opens the menu to which these entries lead.
void Open(MenuSession& session, const std::vector<int>& way) {
  session.Open(kMainMenu);
  for (const int index : way) {
    session.Select(index);
    session.Choose(session.Entry(index));
  }
}

void TellMenus(std::string& said) {
  std::set<std::string> seen{kMainMenu};
  std::vector<std::vector<int>> ways{{}};
  for (std::size_t i = 0; i < ways.size(); ++i) {
    const std::vector<int> way = ways[i];
    MenuSession session;
    Open(session, way);
    std::string position;
    for (const int index : way) position += std::to_string(index) + ',';
    Tell(said, kFile, session.Level().fileName.c_str());
    Tell(said, kTitle, Converted(session.Config().menuTitle.c_str(), U_CURRENT, U_UTF8));
    Tell(said, kPosition, way.empty() ? std::string{} : position + '0');
    for (int index = 0; index < session.Count(); ++index) {
      const MenuItem& item = session.Entry(index);
      const bool opens = (item.flags & kItemSubmenu) && !(item.flags & kItemDisabled);
      if (!opens || !seen.insert(item.submenu.c_str()).second) continue;
      ways.push_back(way);
      ways.back().push_back(index);
    }
  }
}

std::string Read(const Scene& scene, Scratch& scratch) {
  std::string said;
  Rehearsal rehearsal{scene, scratch};
  if (const std::string complaint = rehearsal.SetUp(); !complaint.empty()) {
    Tell(said, kComplaint, complaint);
    return said;
  }
  TellSizes(said, scene);
  TellMenus(said);
  return said;
}

void Understand(const std::string& line, Survey& survey) {
  const std::string value = line.substr(1);
  if (line[0] == kComplaint) survey.complaint = value;
  if (line[0] == kFile) survey.menus.push_back({value, {}, {}});
  if (line[0] == kTitle && !survey.menus.empty()) survey.menus.back().title = value;
  if (line[0] == kPosition && !survey.menus.empty()) survey.menus.back().position = value;
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
