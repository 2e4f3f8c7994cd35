// The launcher's own widgets.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "launcher/held_key.h"
#include "launcher/menu_config.h"
#include "toolkit/base/messages.h"
#include "toolkit/core/dialog.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/list_view.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_view.h"

namespace zel {

// The current entry has changed through a key or a press.
inline constexpr int MSG_ITEM_SELECTED = kFirstApplicationMessage;
// An entry was chosen; the first argument is the MenuEntry, or null.
inline constexpr int MSG_ITEM_CHOSEN = kFirstApplicationMessage + 1;

// Pictures by file name, each read once for all entries that show it. The entries keep them.
class IconCache {
 public:
  // Null when the file cannot be read.
  std::shared_ptr<BITMAP> Get(const char* fileName);

 private:
  std::unordered_map<std::string, std::shared_ptr<BITMAP>> icons_;
};

// Where things lie in an entry of which the skin says nothing, in pixels from the left or the
// right. The frame of the list's element begins behind the icon and ends before the mark of a
// submenu.
inline constexpr int kEntryIconLeft = 3, kEntryTextLeft = 25;
inline constexpr int kEntryFrameLeft = 22, kEntryFrameRight = 11;
inline constexpr int kEntrySeparatorRight = 15;

// One entry of the menu: draws its item with icon, title and the marks of its kind. Where the skin
// says something of entries or of the height of rows, they have its measures and colours.
class MenuEntry : public ListItem {
 public:
  // Without its icon.
  explicit MenuEntry(const MenuItem& menuItem);
  MenuEntry(const MenuItem& menuItem, IconCache& icons);

  void Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) override;
  const char* GetText() const override { return item_.title; }
  Rect PaintedPart(Size canvas) const override;
  int GetHeight() const override;
  bool ShowsCurrent() const override { return Look() && Look()->field.IsSet(); }

  const MenuItem& Item() const { return item_; }
  bool IsSeparator() const { return item_.flags & kItemSeparator; }
  // How many pixels of its row the title may take, and how large a picture may be beside it; in a
  // list.
  int TitleRoom() const;
  Size IconRoom() const;
  // The same of one line of a title that wraps.
  int LineRoom() const;

 private:
  struct TextLook;
  struct Columns {
    int left, width;
  };
  // What the skin says of entries; null when it says nothing.
  const MenuLook* Look() const;
  bool HasMark() const { return item_.flags & (kItemSubmenu | kItemBack); }
  Rect Field(const MenuLook& look, Size canvas) const;
  Columns TitlePlace(const MenuLook& look, int width) const;
  int TitleHeight(const MenuLook& look, int width) const;
  Color Ground(const MenuLook& look, const SkinBitmap* skinBitmap, int state) const;
  Color TextColor(const MenuLook& look, Color ground) const;
  Rect StyledPart(const MenuLook& look, Size canvas) const;
  Size StyledIconRoom(const MenuLook& look) const;
  void DrawStyled(Bitmap& canvas, const MenuLook& look, const SkinBitmap* skinBitmap, int state);
  void DrawMark(Bitmap& canvas, const MenuLook& look, const Font& font, Color color) const;
  void DrawSeparator(Bitmap& canvas) const;
  void DrawBack(Bitmap& canvas, const TextLook& look) const;
  void DrawItem(Bitmap& canvas, const TextLook& look) const;

  MenuItem item_;
  std::shared_ptr<BITMAP> icon_;  // null when there is none
  // How high the title is that was measured last, and with what.
  struct Measured {
    int width = 0, lineHeight = 0;
    const Font* font = nullptr;
    bool operator==(const Measured&) const = default;
  };
  mutable Measured measured_;
  mutable int titleHeight_ = 0;
};

// A list of menu entries: the keys pass over separators, and the numeric pad works without Num
// Lock. A key that is held chooses once, and not at all when it was down before the menu came: in
// the first second one that chooses waits for its release, and is dropped when it comes once more
// or with another key.
class MenuList : public ListView {
 public:
  void MsgStart() override;
  bool MsgChar(int code) override;
  void MsgGotFocus() override;
  void MsgLPress() override;
  void MsgTick() override;

  MenuEntry* GetEntry(int index) const;
  // What is down now chooses no more before it was let go of.
  void HoldKeys() { heldKey_.HoldAny(); }
  // The entry that is current after the key that is being handled; -1 for none.
  void SetPendingIndex(int index) { pendingIndex_ = index; }

 private:
  bool TakeKey(int code);
  void TakeReleasedKey();
  bool HandleKey(int code);
  bool HandlePadKey(int scancode);
  bool IsSeparatorAt(int index) const;

  int pendingIndex_ = -1;
  HeldKey heldKey_;
  int waitingKey_ = 0;  // what was read, until its release; 0 for none
};

// A dialog with a title band around one child, which it borrows.
class TitledPanel : public Dialog {
 public:
  // The child is a member of the derived class, which adds it once it is made.
  explicit TitledPanel(Widget& childWidget);

  void Draw(Bitmap& canvas) override;
  bool MsgXChar(int code) override;
  void MsgInitSkin() override;
  void UpdateLayout() override;

  void MsgGotFocus() override;
  void MsgLostFocus() override;

  void SetTitle(const char* text);
  // How many pixels wide the title may be, and in which font.
  int TitleRoom() const;
  const Font& TitleFont() const;

 protected:
  int TitleHeight() const;
  // The skin wants a plain box.
  bool IsFlat() const { return skin && skin->menu.IsFlat(); }
  // The ground of such a box; none without one.
  Color FlatGround() const { return IsFlat() ? skin->menu.ground : Color{}; }

 private:
  void DrawTitle(Bitmap& band, Color ground) const;
  void DrawFlat(Bitmap& canvas) const;
  void ShowFocus();

 protected:
  Widget& child;
  int horizontalMargin = 0;
  int verticalMargin = 0;
  FixedText<kTextBytes> title;
};

// The list of the menu. Tells its parent MSG_ITEM_CHOSEN.
class MenuPanel final : public TitledPanel {
 public:
  MenuPanel();

  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void MsgInitSkin() override;

  MenuList& List() { return *list_; }
  MenuEntry* CurrentEntry() const { return list_->GetEntry(list_->GetCurrent()); }

 private:
  explicit MenuPanel(std::unique_ptr<MenuList> menuList);

  MenuList* list_;  // owned by the list box
  ListBox listBox_;
};

// Shows the explanation, in a colour that can be read on its ground.
class HintView final : public TextView {
 public:
  void MsgInitSkin() override;
};

// The explanation of the current entry.
class HintPanel final : public TitledPanel {
 public:
  HintPanel();

  void Draw(Bitmap& canvas) override;
  void UpdateLayout() override;
  void MsgInitSkin() override;

  // Shows an entry's hint, wrapped with a font; null shows none.
  void ShowHint(const MenuEntry* entry, const Font& font);
  // The same hint, wrapped anew, with the same part of it in view.
  void WrapAgain(const MenuEntry* entry, const Font& font);
  // How many pixels it is higher than one line needs, and how wide a line may be.
  int LineRoom() const;
  int WordRoom() const;

 private:
  // The skin says how far the text is from the panel's edges.
  bool HasHintMargins() const {
    return skin && (IsFlat() || skin->menu.hintX >= 0 || skin->menu.hintY >= 0);
  }

  HintView view_;
};

// Pixels between a text on the background and the layout's right end: a longer one wraps.
inline constexpr int kTextMargin = 16;

// A text on the background, wrapped where it would reach beyond the layout.
class ScreenLabel final : public Label {
 public:
  void Show(const ScreenText& text);
  void MsgInitSkin() override;
  // Its colour where the skin has one for it, a member of MenuLook.
  explicit ScreenLabel(Color MenuLook::*skinColor) : skinColor_{skinColor} {}
  // What lies behind it is what the pointer is over.
  bool MsgWantMouse() override { return false; }

 private:
  void TakeLook();
  void Wrap();

  Color MenuLook::*skinColor_;
  int font_ = 0;
  Color color_;
};

// A picture that is centred, or cut at its right and bottom where it is too large.
class CenteredImage final : public Image {
 public:
  CenteredImage();
  void Draw(Bitmap& canvas) override;
  void MsgResize() override;
  void MsgShape() override;
  void ResetSource() { sourceX_ = sourceY_ = 0; }
  // Null for no picture.
  void Take(BitmapPtr picture);

 private:
  void UpdateOpacity();

  int sourceX_ = 0;
  int sourceY_ = 0;
};

// The background of the screen.
class WallpaperPanel final : public Dialog {
 public:
  WallpaperPanel();
  // Shows a picture file; one that cannot be read leaves the plain background, and so does a skin
  // that wants none.
  void SetPicture(const char* fileName);
  void MsgInitSkin() override;
  // Repaints what lies in an area of the screen.
  void Uncover(const Rect& area);

 private:
  bool WantsPicture() const { return !skin || skin->menu.picture != 0; }

  std::string file_;
  bool hasPicture_ = true;  // the skin wanted it when the file was set
  ClearScreen clearScreen_;
  CenteredImage image_;
};

}  // namespace zel
