// What tests of the launcher start from.
#pragma once

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {

// Works in an empty directory, where all files of the launcher have their last names. Leaves the
// launcher's state as a program start finds it.
template <class Base>
class InLauncherDirectory : public Base {
 protected:
  InLauncherDirectory() {
    paths = {.configDirectory = ".",
             .mouseServerPid = "gpm.pid",
             .languageFile = "i18n",
             .catalogues = "/nowhere",
             .progressFile = "progress",
             .outputFile = "output.txt",
             .positionFile = "menupos.txt",
             .lookFile = "menulook.txt",
             .kernelCommandLine = "cmdline"};
  }
  ~InLauncherDirectory() override {
    paths = {};
    launcherState = {};
  }

 private:
  const WorkingDir directory_;
};

using LauncherFixture = InLauncherDirectory<AllegroFixture>;

}  // namespace zel
