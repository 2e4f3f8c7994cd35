// Bringing the toolkit up and taking it down again.
#pragma once

#include "toolkit/base/error.h"

namespace zel {

class Dialog;

// Installs Allegro (once), reads the settings from `configFile` (when not null), sets the graphics
// mode, installs keyboard, timer and mouse, calls `ready` (when not null), starts the font engine
// and loads the current skin. May be called again after a failure, with other settings and no file.
// `settled` (when not null) is called once the settings are read, and may change them.
Error InstallToolkit(const char* configFile, void (*ready)() = nullptr,
                     void (*settled)() = nullptr);

// Sets a graphics mode and makes everything follow it: settings, named colours and, when `root` is
// given, the screen update, the skin and the widgets. `card` is an Allegro driver id. When neither
// the depth nor its paired depth can be set, the settings stay and, with a root, so does the old
// mode.
Error ChangeScreenMode(int card, bool fullscreen, int w, int h, int depth, Dialog* root);

// Destroys the current skin, stops the font engine, and destroys all else that lives once per
// process but the settings. From here to the next start-up no dialog can run. Allegro itself ends
// with the process. While a root runs, only the skin and the engine go.
void ExitToolkit();

}  // namespace zel
