#include "launcher/menu_session.h"

#include <algorithm>

#include "launcher/item_wait.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "toolkit/base/console_guard.h"

namespace zel {

void MenuSession::Open(const char* menuFile) {
  configuration_.ReadWithoutHints(menuFile);
  entries_.clear();
  if (Depth() > 1) {
    back_ = std::make_unique<MenuItem>();
    back_->flags = kItemBack;
    back_->color = launcherState.backLineColor;
    back_->hasOwnColor = launcherState.hasBackLineColor;
    entries_.push_back(back_.get());
  }
  for (const auto& item : configuration_.items) entries_.push_back(item.get());
  current_ = entries_.empty() ? -1 : 0;
}

const char* MenuSession::Title(int index) const { return TitleOf(Entry(index)); }

int MenuSession::EntryOfNumber(int number) const {
  if (number == 0 && Depth() > 1) return 0;
  for (int index = 0; index < Count(); ++index)
    if (!(Entry(index).flags & (kItemSeparator | kItemBack)) && --number == 0) return index;
  return -1;
}

void MenuSession::Select(int index) {
  if (0 <= index && index < Count()) current_ = index;
  const MenuItem* item = CurrentItem();
  if (!item) return;
  launcherState.exitCode = item->exitCode;
  launcherState.outputString.Assign(item->exitString);
  configuration_.CurrentLevel().index = current_;
}

void MenuSession::SelectFirst() {
  int index = 0;
  while (index < Count() && (Entry(index).flags & kItemSeparator)) ++index;
  Select(index);
}

// Opens a level on the way. False at the end of the way.
bool MenuSession::RestoreLevel(int level, int index) {
  if (level > 0) {
    const MenuItem* item = CurrentItem();
    if (!item || !(item->flags & kItemSubmenu)) return false;
    const FixedText<kNameBytes> submenu = item->submenu;
    Open(submenu);
  }
  const int last = Count() - 1;
  Select(std::min(index, last));
  return index <= last;
}

void MenuSession::Restore() {
  SelectFirst();
  const std::vector<int> indices = ReadMenuPosition();
  hasReturned_ = !indices.empty();
  for (std::size_t level = 0; level < indices.size(); ++level)
    if (!RestoreLevel(static_cast<int>(level), indices[level])) break;
}

MenuSession::Step MenuSession::Choose(const MenuItem& item) {
  if (item.flags & kItemBack) {
    Open(nullptr);
    Select(Level().index);
    return Step::kOther;
  }
  if (item.flags & kItemDisabled) return Step::kNothing;
  if (item.flags & kItemSubmenu) {
    // Opening it ends the item.
    const FixedText<kNameBytes> submenu = item.submenu;
    Open(submenu);
    Select(0);
    return Step::kOther;
  }
  if (ItemWait::IsNeeded(item)) return Step::kWaits;
  chosen_ = true;
  return Step::kChosen;
}

int MenuSession::Commit() const {
  // Whoever finds the output has the exit status, too.
  HoldSignals();
  return WriteResultFiles(configuration_);
}

}  // namespace zel
