// Every absolute path that the launcher knows, in one record.
//
// The launcher itself never changes it. The options of zel-text, tests and tools point it at places
// of their own.
#pragma once

#include <map>
#include <string>

namespace zel {

struct Paths {
  const char* configDirectory = "/etc/zel";            // working directory during the run
  const char* settings = "zel.cfg";                    // in it
  const char* mouseServerPid = "/var/run/gpm.pid";     // exists while the console mouse server runs
  const char* languageFile = "/etc/sysconfig/i18n";    // its LANG line chooses the language
  const char* catalogues = "/usr/local/share/locale";  // translated texts
  const char* progressFile = "/tmp/progress";          // written by other programs
  const char* outputFile = "/root/output.txt";         // the chosen item's string
  const char* positionFile = "/tmp/menupos.txt";       // the way through the submenus
  const char* lookFile = "/tmp/menulook.txt";          // the look that was chosen last
  const char* kernelCommandLine = "/proc/cmdline";

  // Whether files that items ask about are to count as existing, whatever there is.
  std::map<std::string, bool> assumed = {};
};

inline Paths paths;

}  // namespace zel
