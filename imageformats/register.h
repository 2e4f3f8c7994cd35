// Picture formats beside those that Allegro reads itself.
#pragma once

namespace zel {

// Lets load_bitmap read ".jpg", ".jpeg" and ".png" files. Once, after Allegro is installed.
void RegisterPictureFormats();

}  // namespace zel
