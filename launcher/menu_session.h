// A person's way through the menus, without anything that shows it.
#pragma once

#include <memory>
#include <vector>

#include "launcher/menu_config.h"

namespace zel {

// Holds the menu that is open with its entries, opens submenus and comes back from them, takes up
// where the last run was, and leaves the choice in the result files. Each face of the launcher
// shows what it says, so that they cannot disagree.
//
// Keeps the exit code and the output string of launcherState in step with the current entry.
class MenuSession {
 public:
  // What choosing an item has come to.
  enum class Step {
    kNothing,
    kOther,   // another level is open
    kWaits,   // the item is chosen when what it waits for is there, see ItemWait
    kChosen,  // the run may end
  };

  // Shows a menu file as a new level, or with null the one below the current one again; its first
  // entry is current, but launcherState is as it was. The entries have no hints yet.
  void Open(const char* menuFile);
  void ReadHints() { configuration_.ReadHints(); }
  void ReadScreenAgain() { configuration_.ReadScreenAgain(); }

  const MenuConfig& Config() const { return configuration_; }
  const MenuLevel& Level() const { return *configuration_.levels.back(); }
  int Depth() const { return configuration_.Depth(); }
  // Below the main menu, the first entry leads back.
  int Count() const { return static_cast<int>(entries_.size()); }
  const MenuItem& Entry(int index) const { return *entries_[static_cast<std::size_t>(index)]; }
  // What an entry is called.
  const char* Title(int index) const;
  // The entry of a number: 0 is the one that leads back, and from 1 on they are counted without it
  // and without separators. -1 for none.
  int EntryOfNumber(int number) const;
  int Current() const { return current_; }  // -1 in an empty menu
  const MenuItem* CurrentItem() const { return current_ < 0 ? nullptr : &Entry(current_); }

  // Makes an entry current. Where there is none of that index, the current one stays.
  void Select(int index);
  // The first that is no separator.
  void SelectFirst();
  // Selects the first entry that is no separator, and goes on to where the position file says, as
  // far as that fits. The last level has no hints yet if it is another one than before.
  void Restore();
  // Whether there was such a file.
  bool HasReturned() const { return hasReturned_; }

  // Chooses an entry of the current level.
  Step Choose(const MenuItem& item);
  // Nothing keeps the item that waited from being chosen any longer.
  void EndWaiting() { chosen_ = true; }
  bool IsChosen() const { return chosen_; }
  // Leaves the choice in the result files; from here on no signal ends the process. Answers 0, or
  // the number of the error that kept the choice from being written.
  int Commit() const;

 private:
  bool RestoreLevel(int level, int index);

  MenuConfig configuration_;
  std::vector<const MenuItem*> entries_;
  std::unique_ptr<MenuItem> back_;
  int current_ = -1;
  bool chosen_ = false;
  bool hasReturned_ = false;
};

}  // namespace zel
