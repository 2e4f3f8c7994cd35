// The pages of the gallery: what they are laid out with.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "toolkit/core/dialog.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/scroll_view.h"

namespace zel {

// A widget with a picture of its own.
class Drawing : public Widget {
 public:
  using Painter = std::function<void(Bitmap& canvas)>;

  void Draw(Bitmap& canvas) override { painter_(canvas); }
  bool MsgWantMouse() override { return false; }
  void SetPainter(Painter painter) { painter_ = std::move(painter); }

 private:
  Painter painter_ = [](Bitmap&) {};
};

// Widgets in rows and columns under small captions, from the top downward.
//
// Owns its widgets. Everything is measured in lines and letters of the skin's first font, so a
// sheet fits the skin that was current when it was made.
class Sheet : public Dialog {
 public:
  // How much the sheet should take; rows that do not fit are cut.
  explicit Sheet(Size room);

  void Draw(Bitmap& canvas) override;

  // Pixels.
  int Line() const;  // of text
  int Letters(int count) const;
  int Tall() const;  // of a widget with a frame around a line of text
  int CaptionHeight() const;
  Size Room() const { return room_; }

  template <class W>
  W& Make() {
    auto made = std::make_unique<W>();
    W& widget = *made;
    widgets_.push_back(std::move(made));
    Add(&widget);
    return widget;
  }

  // Starts columns of a width that is given in letters.
  void Columns(std::initializer_list<const char*> captions, int letters);
  // Starts a column for each DrawState.
  void StateColumns(int letters = 13);
  // Fills a row: calls `fill` with each column and the place in it.
  using Fill = std::function<void(const Rect& place, int column)>;
  void Row(int height, const Fill& fill);
  // A place of its own under a caption; as wide as the sheet, or as so many letters.
  Rect Band(const char* caption, int height, int letters = 0);
  // Leaves room below the last row.
  void Space(int height);
  // The whole room, for one widget that needs `wanted` to show everything.
  Rect Whole(Size wanted);
  // What everything on the sheet takes together.
  Size Extent() const { return extent_; }

 private:
  void Caption(const char* text, int x, int width);
  void Take(int right, int bottom);

  Size room_;
  Size extent_;
  int next_;  // y of the next row
  int columnWidth_ = 0;
  int columns_ = 0;
  std::vector<std::unique_ptr<Widget>> widgets_;
};

// Poses a widget in a DrawState; of those that one can press, kSelected is the pressed look.
void Pose(Widget& widget, int state);

// Pictures in cells of equal size, each under its name, as many in a row as fit; scrolled when
// there are too many. Borrows the names.
class Grid : public ScrollView {
 public:
  // `picture` is zoomed.
  Grid(std::vector<const char*> names, Size picture);

  void UpdateLayout() override;
  void DrawContent(Bitmap& canvas) override;
  // What all cells take in a room of that width.
  Size WantedSize(int width) const;

 protected:
  // Draws on a canvas of the size of a picture, cleared to the skin's face.
  virtual void DrawCell(Bitmap& cell, int index) = 0;

 private:
  Size ContentIn(int width) const;
  int ColumnsIn(int width) const;

  std::vector<const char*> names_;
  Size picture_;
  Size cell_;  // with name and gaps
};

// Small print. The font is a slot of the current skin that LoadCaptionFont fills, as Skin::Reload
// empties it.
inline constexpr int kCaptionFont = Skin::kSkinFonts;
void LoadCaptionFont();
const Font& CaptionFont();
Color CaptionColor();

}  // namespace zel
