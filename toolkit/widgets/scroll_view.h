// Views of content that is larger than they are.
#pragma once

#include <string>
#include <vector>

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/scroll_bar.h"

namespace zel {

class ScrollView;

// The child of a view in whose place the content is drawn.
class ScrollContent : public Widget {
 public:
  explicit ScrollContent(ScrollView& owner) : view_{owner} {}
  void Draw(Bitmap& canvas) override;

 private:
  ScrollView& view_;
};

// Fills the place between two scroll bars, not all of its view.
class ScrollCorner : public ClearScreen {
 public:
  void MsgStart() override { Widget::MsgStart(); }
};

// When a view shows a scroll bar.
enum ScrollMode : int { kNeverScroll = 0, kAlwaysScroll = 1, kScrollAsNeeded = 2 };

// Shows a part of some content, with scroll bars as they are needed. Derived classes draw the
// content. The wheel over the content scrolls it vertically.
class ScrollView : public Dialog {
 public:
  ScrollView();

  void MsgInitSkin() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void Unhide() override;

  // The virtual operations that a view adds; their order is part of the interface.
  // Draws the content; the canvas is the visible area, at (scrollX, scrollY) of the content.
  virtual void DrawContent(Bitmap& canvas);
  // Draws the content inside the margins of a canvas that covers the view.
  virtual void DrawVisible(Bitmap& canvas);
  // The content was scrolled by a bar or by the wheel.
  virtual void Scrolled();

  void SetContentSize(int width, int height);
  // Scrolls as little as it takes to bring a rectangle of the content into view.
  void ScrollTo(int left, int top, int width, int height);
  // Shows the middle of the content.
  void Center();
  void SetScrollModes(int horizontal, int vertical);
  void SetMargins(int left, int top, int right, int bottom);
  // This colour instead of the frame; none for the frame.
  void SetGround(Color color) { panel.SetPlain(color); }
  int VisibleWidth() const;
  int VisibleHeight() const;
  int ScrollX() const { return scrollX; }
  int ScrollY() const { return scrollY; }
  // What the vertical bar takes of the width while it shows.
  int BarThickness() const { return vBar.Thickness(); }
  bool HorizontalShown() const { return hShown; }
  bool VerticalShown() const { return vShown; }
  bool CornerShown() const { return !corner.Hidden(); }

 protected:
  ScrollBar hBar;
  ScrollBar vBar;
  ScrollCorner corner;
  Color backColor;
  PanelSunken panel;
  ScrollContent content;
  int contentW = 0;
  int contentH = 0;
  int scrollX = 0;
  int scrollY = 0;
  int hMode = kScrollAsNeeded;
  int vMode = kScrollAsNeeded;
  int marginBottom = 0;
  int marginRight = 0;
  int marginLeft = 0;
  int marginTop = 0;
  bool hShown = false;
  bool vShown = false;

  // The same as SetContentSize for a content that changes only where the old one was and where the
  // new one is; pictures may reach `overhang` pixels farther.
  void ReplaceContent(int width, int height, int overhang);

 private:
  // What the margins leave, with or without bars.
  Size Room() const;
  void ClampScroll();
  void ScrollByWheel(const Widget* sender, int steps);
  bool NeedsBars(int width, int height) const;
  void DecideBars();
  void PlaceBars();
};

// Shows lines of text; a new text shows from its start. Tabs become spaces.
class TextView : public ScrollView {
 public:
  void MsgGotFocus() override;
  void MsgLostFocus() override;
  void MsgInitSkin() override;
  void DrawContent(Bitmap& canvas) override;

  // Shows a file, at most its first 4 MiB, and one empty line below it; an unreadable one gives a
  // view without text.
  void LoadFile(const char* path);
  // Shows the lines of a text; empty lines are left out.
  void SetText(const char* text);
  // Shows lines, empty ones too. Tabs are kept.
  void SetLines(std::vector<std::string> newLines);
  // Adds lines below those that are there, empty ones too, and stays where it is. Tabs are kept.
  void AppendLines(std::vector<std::string> more);
  const std::vector<std::string>& Lines() const { return lines; }
  // The line at the top, and bringing one there as far as there are lines below it.
  int FirstLine() const;
  void ShowLine(int line);

 protected:
  void UpdateContentSize();

  std::vector<std::string> lines;

 private:
  void Clear();
  void AddLine(const std::string& line);
  // Font and colours may be others with the focus than without.
  void TakeFocusLook();
};

}  // namespace zel
