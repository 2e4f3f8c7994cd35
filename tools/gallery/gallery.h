// The gallery's window.
#pragma once

#include <memory>
#include <string>

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/accelerator.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/list_view.h"
#include "toolkit/widgets/panel.h"
#include "tools/gallery/pages.h"

namespace zel {

// A list of the pages, the chosen page beside it, and above both what changes the look: the skin
// and the graphics mode. F5 reads the skin description again.
class Gallery final : public Dialog {
 public:
  // `skinFile` is what can be chosen beside the built-in look; empty for nothing.
  explicit Gallery(const std::string& skinFile);

  void MsgTick() override;
  void MsgInitSkin() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

  void ShowPage(int index) { pages_.SetCurrent(index); }
  const Sheet& CurrentPage() const { return *page_; }

 private:
  struct Choice {
    Label label;
    ComboBox box;
  };
  static void Fill(Choice& choice, const char* text, const std::vector<std::string>& entries);
  void PlaceBar();
  void ChangeSkin();
  void ChangeMode();
  void BuildCurrentPage();
  void Complain(Error error);

  std::string skinFile_;
  ClearScreen back_;
  ListBox pages_;
  std::unique_ptr<Sheet> page_;
  Choice skin_, size_, depth_;
  Label message_;
  Accelerator reload_;
  Rect pageRoom_;
  // What the next tick does, when no widget is at work any more.
  bool skinChanges_ = false, modeChanges_ = false, pageChanges_ = true;
};

}  // namespace zel
