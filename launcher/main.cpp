#include "launcher/launcher.h"
#include "launcher/result_files.h"
#include "toolkit/core/console_guard.h"

// Scripts must not take what a run wrote that ended in the middle for its result.
int main() { return zel::RunGuarded(zel::RunLauncher, zel::DeleteOutputFile); }
