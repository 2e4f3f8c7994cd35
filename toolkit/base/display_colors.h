// Pixels of 16 bits for an X server whose pixels have 32.
#pragma once

#include <cstdint>

namespace zel {

// Writes `count` pixels with 8 bits each of red, green and blue for pixels with 5, 6 and 5, to the
// bit as Allegro's own conversion does.
void WidenPixels(const std::uint16_t* from, std::uint32_t* to, int count);

// Has Allegro bring what it shows of a mode of 16 bits to the server by that, which takes a
// fraction of the time of its own look-ups. Does nothing where the mode or the server's pixels are
// others, so that Allegro would show something else. To be called whenever a mode was set, of at
// least 64 pixels a line.
void SpeedUpDisplay();

}  // namespace zel
