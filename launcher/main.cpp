#include "launcher/launcher.h"
#include "launcher/little_memory.h"
#include "launcher/result_files.h"
#include "toolkit/base/console_guard.h"

int main() {
  zel::EndWithoutMemory();
  zel::LimitLauncher();
  // Scripts must not take what a run wrote that ended in the middle for its result.
  return zel::RunGuarded(zel::RunLauncher, [] { zel::DeleteOutputFile(); });
}
