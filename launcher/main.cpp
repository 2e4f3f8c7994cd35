#include "launcher/command.h"
#include "launcher/little_memory.h"

int main(int argc, char** argv) {
  zel::EndWithoutMemory();
  return zel::RunCommand(argc, argv);
}
