#include "launcher/little_memory.h"
#include "text/text_launcher.h"

int main(int argc, char** argv) {
  zel::EndWithoutMemory();
  return zel::RunTextLauncher(argc, argv);
}
