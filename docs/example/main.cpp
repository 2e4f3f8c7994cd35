// Shows the dialog in a window and prints the answer.
#include <cstdio>

#include "docs/example/disk_question.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/startup.h"

int main(int argc, char** argv) {
  zel::settings.fullscreen = false;
  if (argc > 1) zel::settings.skinPath.Assign(argv[1]);
  const zel::Error error = zel::InstallToolkit(nullptr);
  if (error.IsError()) error.Report();
  {
    DiskQuestion question;
    question.Execute(nullptr);
    std::puts(question.Answer().c_str());
  }
  zel::ExitToolkit();
}
