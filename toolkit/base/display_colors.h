// Pixels of 16 bits for an X server whose pixels have 32.
#pragma once

#include <cstdint>

namespace zel {

// Writes `count` pixels of red, green and blue with 8 bits each, above nothing, for pixels with 5,
// 6 and 5. The fullest value becomes 255, and others are rounded down: as Allegro's tables have
// them.
void WidenPixels(const std::uint16_t* from, std::uint32_t* to, int count);

// Has Allegro bring what it shows of a mode of 16 bits to the server by that, which takes a quarter
// of the time of its own look-ups. Does nothing where the mode, the server's pixels, or Allegro's
// tables are others. To be called whenever a mode was set.
void SpeedUpDisplay();

}  // namespace zel
