// The looks and sizes of text that one can go round while the menu is shown.
#pragma once

#include <string>
#include <vector>

#include "launcher/layout.h"

namespace zel {

// The skins that zel.cfg names as `looks`, and every zoom where it has one. The kernel's command
// line may say which is the first (zel.look=NAME, zel.zoom=NUMBER), and what is chosen is kept in a
// file for the next start. What cannot be used is as if it were not there.
class Looks {
 public:
  // Takes over what was kept or is said into the settings, which have just been read.
  void Begin();
  // The layout of the main menu for the screen that there is. Sets the zoom.
  ScreenLayout Fit() const;
  // Makes the usual skin the current one where that of the start cannot be used, or else the first
  // of the others, or what is built in. False without looks.
  bool FallBack();

  bool HasLooks() const { return !names_.empty(); }
  bool HasSizes() const { return hasSizes_; }

  // Make the next skin that can be used, or the skin in the next size, the current one, and keep
  // the choice. False when there is none. Widgets have to follow (Dialog::SetSkin).
  bool ChangeSkin();
  bool ChangeSize(bool isLarger);

 private:
  void TakeSkin(const std::string& said);
  void TakeSize(const std::string& said);
  void Keep() const;

  std::vector<std::string> names_;
  std::string usual_;        // the skin of zel.cfg
  std::string commandLine_;  // what it says of looks
  bool hasSizes_ = false;
  double zoom_ = 1;
};

}  // namespace zel
