// A dialog as an application writes it.
#pragma once

#include <memory>
#include <string>

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/list_view.h"
#include "toolkit/widgets/panel.h"

// Asks which disk to check, and whether to mend what is wrong with it.
class DiskQuestion : public zel::Dialog {
 public:
  DiskQuestion() {
    for (const char* disk : {"sda", "sdb", "nvme0n1"})
      disks_.InsertItem(std::make_unique<zel::TextListItem>(disk));
    title_.Setup(20, 20, 280, 20, 0, 0, "Which disk shall be checked?");
    disks_.Shape(20, 46, 280, 90);
    mend_.Setup(20, 150, 280, 20, 'm', 0, "Mend what is wrong");
    start_.Setup(20, 190, 130, 30, 's', zel::kFlagExit, "&Start");
    cancel_.Setup(170, 190, 130, 30, 'c', zel::kFlagExit, "&Cancel");
    Add(&back_);
    Add(&title_);
    Add(&disks_);
    Add(&mend_);
    Add(&start_);
    Add(&cancel_);
    SetFocus(&disks_.GetList());
  }

  void HandleEvent(zel::Widget* sender, int msg, zel::EventArg arg1, zel::EventArg arg2) override {
    if (sender == &start_ && msg == zel::MSG_ACTIVATE) accepted_ = true;
    Dialog::HandleEvent(sender, msg, arg1, arg2);  // closes the dialog for exit widgets
  }

  // "check sda" or "mend sda"; "nothing" when the question was cancelled.
  std::string Answer() const {
    if (!accepted_) return "nothing";
    return (mend_.Selected() ? "mend " : "check ") +
           std::string{disks_.GetItem(disks_.GetCurrent())->GetText()};
  }

 private:
  zel::ClearScreen back_;
  zel::Label title_;
  zel::ListBox disks_;
  zel::CheckBox mend_;
  zel::Button start_, cancel_;
  bool accepted_ = false;
};
