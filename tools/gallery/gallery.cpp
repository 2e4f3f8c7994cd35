#include "tools/gallery/gallery.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/dialog_template.h"

namespace zel {
namespace {

int Margin() { return Zoomed(6); }
int FrameRoom() { return Zoomed(10); }  // of a field around a line of text
constexpr int kListLetters = 17;
constexpr int kBoxLetters = 14;

constexpr Size kSizes[] = {{640, 480}, {800, 600}, {1024, 768}, {1280, 1024}};
enum SkinChoice : int { kBuiltIn, kFromFile };

std::vector<std::string> SizeNames() {
  std::vector<std::string> names;
  for (const Size& size : kSizes)
    names.push_back(std::to_string(size.w) + " x " + std::to_string(size.h));
  return names;
}

std::vector<std::string> DepthNames() {
  std::vector<std::string> names;
  for (const int depth : kColorDepths) names.push_back(std::to_string(depth) + " bits");
  return names;
}

template <class T, std::size_t kCount>
int IndexOf(const T (&table)[kCount], const T& value) {
  const auto found = std::find(std::begin(table), std::end(table), value);
  return found == std::end(table) ? 0 : static_cast<int>(found - std::begin(table));
}

}  // namespace

Gallery::Gallery(const std::string& skinFile) : skinFile_{skinFile} {
  Add(&back_);
  Add(&pages_);
  for (const Page& page : Pages()) pages_.InsertItem(std::make_unique<TextListItem>(page.name));
  Fill(skin_, "Skin",
       skinFile.empty() ? std::vector<std::string>{"default"}
                        : std::vector<std::string>{"default", skinFile});
  Fill(size_, "Screen", SizeNames());
  Fill(depth_, "Depth", DepthNames());
  for (Choice* choice : {&skin_, &size_, &depth_}) {
    Add(&choice->label);
    Add(&choice->box);
  }
  Add(&message_);
  reload_.Setup(KEY_F5, 0, nullptr);
  Add(&reload_);
  const bool fromFile = CurrentSkin()->skinFile != nullptr;
  skin_.box.GetListBox().SelectItem(fromFile ? kFromFile : kBuiltIn);
  size_.box.GetListBox().SelectItem(
      IndexOf(kSizes, Size{settings.screenWidth, settings.screenHeight}));
  depth_.box.GetListBox().SelectItem(IndexOf(kColorDepths, settings.colorDepth));
}

void Gallery::Fill(Choice& choice, const char* text, const std::vector<std::string>& entries) {
  choice.label.SetText(text);
  for (const std::string& entry : entries)
    choice.box.GetListBox().InsertItem(std::make_unique<TextListItem>(get_filename(entry.c_str())));
}

// One field behind the other, each with its label, and the message in what is left.
void Gallery::PlaceBar() {
  const DialogUnits units{GetFont(kNormal)};
  const int height = GetFont(kNormal).TextHeight() + FrameRoom();
  int x = Margin();
  for (Choice* choice : {&skin_, &size_, &depth_}) {
    choice->label.UpdateSize();
    choice->label.Place(x, Margin() + FrameRoom() / 2);
    x += choice->label.w() + Margin();
    const int width = units.X(kBoxLetters * 4);
    choice->box.Setup(x, Margin(), width, height, 0, 0, choice->box.GetListBox().GetCurrent());
    x += width + 2 * Margin();
  }
  message_.Place(x, Margin() + FrameRoom() / 2);
  const int top = height + 2 * Margin();
  const int list = units.X(kListLetters * 4);
  pages_.Shape(Margin(), top, list, std::max(0, h() - top - Margin()));
  const int left = list + 2 * Margin();
  pageRoom_ = {left, top, std::max(1, w() - left), std::max(1, h() - top)};
}

void Gallery::UpdateLayout() {
  PlaceBar();
  pageChanges_ = true;
  Dialog::UpdateLayout();
}

void Gallery::MsgInitSkin() {
  Dialog::MsgInitSkin();
  UpdateLayout();
}

void Gallery::Complain(Error error) {
  std::string text = error.IsError() ? error.GetDescription() : "";
  if (!text.empty()) text.pop_back();  // the line feed
  message_.SetText(text.c_str());
}

void Gallery::ChangeSkin() {
  Skin& current = *CurrentSkin();
  Error result;
  if (skin_.box.GetListBox().GetCurrent() == kFromFile) {
    result = current.Load(skinFile_.c_str());
  } else {
    current.skinFile.reset();
    current.Reset();
  }
  SetSkin(&current);
  SetCursor(MOUSE_NORMAL);
  Complain(result);
}

void Gallery::ChangeMode() {
  const Size size = kSizes[size_.box.GetListBox().GetCurrent()];
  const int depth = kColorDepths[depth_.box.GetListBox().GetCurrent()];
  Complain(ChangeScreenMode(settings.gfxMode, settings.fullscreen, size.w, size.h, depth, this));
}

void Gallery::BuildCurrentPage() {
  if (page_) Remove(page_.get());
  page_ =
      BuildPage(Pages()[static_cast<std::size_t>(pages_.GetCurrent())], {pageRoom_.w, pageRoom_.h});
  page_->Place(pageRoom_.x, pageRoom_.y);
  Add(page_.get());
  // The lists of the bar open over the page.
  for (Choice* choice : {&skin_, &size_, &depth_}) BringToFront(&choice->box);
}

void Gallery::MsgTick() {
  Dialog::MsgTick();
  if (std::exchange(modeChanges_, false)) ChangeMode();
  if (std::exchange(skinChanges_, false)) ChangeSkin();
  if (std::exchange(pageChanges_, false)) BuildCurrentPage();
}

void Gallery::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_SCROLL && sender == &pages_) pageChanges_ = true;
  if (msg != MSG_ACTIVATE) return;
  if (sender == &skin_.box || sender == &reload_) skinChanges_ = true;
  if (sender == &size_.box || sender == &depth_.box) modeChanges_ = true;
}

}  // namespace zel
