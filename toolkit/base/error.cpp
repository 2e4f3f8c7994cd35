#include "toolkit/base/error.h"

#include <cstdlib>
#include <iterator>

#include "toolkit/base/allegro.h"
#include "toolkit/base/graphics_mode.h"

namespace zel {
namespace {

constexpr const char* kDescriptions[] = {
    "No error.\n",
    "Error: initializing Allegro!\n",
    "Error: installing keyboard module!\n",
    "Error: installing mouse module!\n",
    "Error: installing timer module!\n",
    "Error: initializing graphics mode!\n",
    "Error: installing sound module!\n",
    "Error: ran out of memory!!!\n",
    "Error: ran out of video memory!\n",
    "Error: triple buffering unavailable!\n",
    "Error: skin description file not found!\n",
    "Error: skin data file not found!\n",
    "Error: file not found!\n",
    "Error: couldn't load file!\n",
    "Error: Allegro Font error!\n",
    "Error: array index out of bounds!\n",
    "An unknown error occured!\n",
};

}  // namespace

const char* Error::GetDescription() const {
  const bool known = code >= 0 && code < static_cast<int>(std::size(kDescriptions));
  return kDescriptions[known ? code : kUnknownError];
}

bool Error::IsError() const { return code != kNoError && code != kSoundError; }
bool Error::operator==(const Error& other) const { return code == other.code; }
bool Error::operator!=(const Error& other) const { return code != other.code; }

void Error::Report() const {
  SetTextMode();
  allegro_message("%s\n", GetDescription());
  allegro_exit();
  std::exit(EXIT_FAILURE);
}

}  // namespace zel
