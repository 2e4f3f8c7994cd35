// The toolkit's settings, one set for the whole process.
#pragma once

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"

namespace zel {

// The fields hold what the program or the file said, unchecked; whoever uses a value that could
// stop the program from working (a frame rate of 0) takes the nearest one that works: see the
// Usable... operations. Durations are milliseconds, rates are per second.
class Settings {
 public:
  int screenWidth = 640;   // pixels; once a mode is set, that of the mode
  int screenHeight = 480;  // likewise
  int gfxMode = 0;         // Allegro's driver id; below 3 `fullscreen` decides
  bool fullscreen = true;
  int colorDepth = 16;  // bits per pixel; 0 or less means that of the desktop
  int refreshRate = 60;
  bool useVideoMemory = false;  // draw into a video-memory page
  bool fullDrag = true;         // only stored and saved, like all marked so below
  bool fullResize = true;       // only stored and saved
  int logicFrameRate = 50;      // logic ticks of the event loop
  bool unlimitedFrameRate = false;
  bool showFrameRate = false;  // only stored and saved
  bool antialiasing = true;    // of text
  bool guiSound = true;        // only stored and saved
  int soundVolume = 255;       // only stored and saved
  int soundDriver = -1;        // only stored and saved
  int midiDriver = -1;         // only stored and saved
  bool showMouse = true;
  bool mouseShadow = true;  // of the pointer; forced off in 8-bit modes
  int doubleClickDelay = 200;
  int mouseSpeed = 2;
  bool useKeyboard = true;
  int keyDelay = 160;  // -1 leaves the system's rate alone
  int keyRepeat = 80;  // likewise
  bool useJoystick = false;
  int screenUpdateMethod = 3;  // see ScreenUpdate
  bool vsync = false;
  bool yield = true;            // give up the processor while there is nothing to do
  bool runInBackground = true;  // keep running while the display is switched away
  int maxFrameSkip = 5;         // backlog of ticks after which the rest is dropped
  int tooltipDelay = 200;
  int tooltipAutohideDelay = 5000;

  FixedText<1024> skinPath{"default"};
  double zoom = 1;  // see zoom.h; stored only where it is not 1

  // Of the menu; stored only where they say something.
  bool help = false;       // a key shows what the keys do
  bool typeAhead = false;  // letters and digits go to entries
  FixedText<1024> looks;   // skins that one can go round, separated by commas

  FixedText<1024> fileName{"allegro.cfg"};  // the file last loaded
  bool fileLoaded = false;

  // Reads the settings section of `file`: "Toolkit" or, in a file without one, the first section
  // that holds one of the keys. What the file does not say stays as it was. Nothing for a null
  // name.
  void Load(const char* file);
  // The name of that section in the file last loaded.
  const std::string& Section() const { return section_; }
  // Writes every field back to the section that Load used; nothing when no file was loaded.
  void Save() const;
  // The settings section of a file.
  static const SectionFile::Section& SectionOf(const SectionFile& file);
  // The key of programs whose texts may have letters of all languages in each: whoever sets the
  // text format looks there, which is before these settings are loaded.
  static constexpr const char* kUnicode = "unicode";
  // True for the name of a key, in any case.
  static bool IsKey(const char* name);
  struct Range {
    int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();

    bool Has(int number) const { return least <= number && number <= most; }
    int Nearest(int number) const { return std::clamp(number, least, most); }
  };
  struct KeyInfo {
    const char* name;
    enum Kind { kText, kFiles, kZoom, kNumber, kSwitch, kDriver } kind;
    Range range = {};  // of the numbers that make sense
  };
  static std::vector<KeyInfo> Keys();

  // logicFrameRate brought to 1..1000, the rates that Allegro's timers can keep.
  int UsableFrameRate() const;
  // mouseSpeed brought to a speed at which the pointer moves.
  int UsableMouseSpeed() const;
  // maxFrameSkip brought to the least with which ticks are worked off: 1, with `yield` 2.
  int UsableFrameSkip() const;
  // Milliseconds as logic ticks (integer division); a negative duration gives 0.
  int Ticks(int milliseconds) const;

 private:
  std::string section_ = "Toolkit";
};

// The process has one, from its start to its end.
extern Settings& settings;

}  // namespace zel
