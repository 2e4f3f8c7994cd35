#include "launcher/launcher.h"

int main() { return zel::RunLauncher(); }
