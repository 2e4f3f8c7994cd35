// What is drawn and no widget.
#include <algorithm>
#include <iterator>
#include <string>

#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/animator.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/skin/elements.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/button.h"
#include "tools/gallery/pages.h"

namespace zel {
namespace {

template <class G>
void BuildGrid(Sheet& sheet) {
  auto& grid = sheet.Make<G>();
  grid.Shape(sheet.Whole(grid.WantedSize(sheet.Room().w)));
}

// Marks: as they are, and enlarged.

constexpr Size kMarkSize{24, 20};
constexpr int kMagnified = 3;

struct Mark {
  const char* name;
  void (*draw)(SkinBitmap& canvas, const Skin& skin);
};

template <int kDirection>
void DrawArrow(SkinBitmap& canvas, const Skin& skin) {
  canvas.Arrow(9, 7, skin.colors[kFontFace], kDirection);
}

constexpr Mark kMarks[] = {
    {"Box3D, raised",
     [](SkinBitmap& canvas, const Skin& skin) {
       canvas.Box3D(3, 2, 20, 17, skin.colors[kFace], skin.colors[kShad1], skin.colors[kShad2]);
     }},
    {"Box3D, sunken",
     [](SkinBitmap& canvas, const Skin& skin) {
       canvas.Box3D(3, 2, 20, 17, skin.colors[kSunken], skin.colors[kShad2], skin.colors[kShad1]);
     }},
    {"Circle3D",
     [](SkinBitmap& canvas, const Skin& skin) {
       canvas.Circle3D(12, 10, 6, skin.colors[kSunken], skin.colors[kShad2], skin.colors[kShad1]);
     }},
    {"XMark",
     [](SkinBitmap& canvas, const Skin& skin) { canvas.XMark(12, 10, 6, skin.colors[kFontFace]); }},
    {"CheckMark",
     [](SkinBitmap& canvas, const Skin& skin) { canvas.CheckMark(8, 6, skin.colors[kFontFace]); }},
    {"Arrow, left", DrawArrow<kArrowLeft>},
    {"Arrow, right", DrawArrow<kArrowRight>},
    {"Arrow, up", DrawArrow<kArrowUp>},
    {"Arrow, down", DrawArrow<kArrowDown>},
    {"DottedRect",
     [](SkinBitmap& canvas, const Skin& skin) {
       canvas.DottedRect(3, 2, 20, 17, skin.colors[kFontFace]);
     }},
};

std::vector<const char*> MarkNames() {
  std::vector<const char*> names;
  for (const Mark& mark : kMarks) names.push_back(mark.name);
  return names;
}

class MarksGrid : public Grid {
 public:
  MarksGrid() : Grid{MarkNames(), {kMarkSize.w * (1 + kMagnified), kMarkSize.h * kMagnified}} {}

 protected:
  void DrawCell(Bitmap& cell, int index) override {
    const Skin& skin = *CurrentSkin();
    SkinBitmap mark{kMarkSize.w, kMarkSize.h, kMemoryBitmap};
    mark.clear_to_color(skin.colors[kFace]);
    kMarks[index].draw(mark, skin);
    mark.blit(cell, 0, 0, 0, (cell.Height() - kMarkSize.h) / 2, kMarkSize.w, kMarkSize.h);
    mark.stretch_blit(cell, 0, 0, kMarkSize.w, kMarkSize.h, kMarkSize.w, 0,
                      kMarkSize.w * kMagnified, kMarkSize.h * kMagnified);
  }
};

// Elements, frame by frame.

constexpr Size kFrameRoom{38, 38};
constexpr int kFramesInLine = 4;
constexpr int kFrameGap = 3;

class ElementsGrid : public Grid {
 public:
  ElementsGrid()
      : Grid{{std::begin(kElementNames), std::end(kElementNames)},
             {kFramesInLine * (kFrameRoom.w + kFrameGap), 2 * (kFrameRoom.h - 8)}} {}

 protected:
  void DrawCell(Bitmap& cell, int index) override {
    const Skin& skin = *CurrentSkin();
    // A ground on which elements in the colour of the face show.
    cell.clear_to_color(MixNear(skin.colors[kFace], skin.colors[kShad2]));
    const SkinBitmap& element = *skin.bitmaps[index];
    const Size frames = kElementGrids[index];
    const int w = std::min(Zoomed(kFrameRoom.w), element.Width() / frames.w);
    const int h = std::min(Zoomed(kFrameRoom.h), element.Height() / frames.h);
    for (int i = 0; i < frames.w * frames.h; ++i) {
      const int x = i % kFramesInLine * (w + Zoomed(kFrameGap));
      const int y = i / kFramesInLine * (h + Zoomed(kFrameGap));
      element.DrawAreaMasked(cell, i / frames.h, i % frames.h, x, y, w, h, frames.w, frames.h);
    }
  }
};

// Cursors on both grounds; a red pixel marks the place that points.

constexpr int kCursorGround = 48;

class CursorsGrid : public Grid {
 public:
  CursorsGrid()
      : Grid{{std::begin(kCursorNames), std::end(kCursorNames)},
             {2 * kCursorGround, kCursorGround}} {}

  void MsgTick() override {
    Grid::MsgTick();
    for (int i = 0; i < kCursorCount; ++i) {
      Cursor* cursor = CurrentSkin()->cursors[i].get();
      if (!CurrentPointer() || CurrentPointer()->GetCursor() != cursor) cursor->Update();
    }
    Redraw();
  }

 protected:
  void DrawCell(Bitmap& cell, int index) override {
    const int ground = Zoomed(kCursorGround);
    cell.rectfill(0, 0, ground - 1, ground - 1, white);
    cell.rectfill(ground, 0, 2 * ground - 1, ground - 1, Color{24, 44, 72});
    Cursor& cursor = *CurrentSkin()->cursors[index];
    for (const int left : {0, ground}) DrawCursor(cell, cursor, left);
  }

 private:
  static void DrawCursor(Bitmap& cell, Cursor& cursor, int left) {
    const SkinBitmap* frame = cursor.GetFrame();
    if (!frame) return;
    const int x = left + (Zoomed(kCursorGround) - frame->Width()) / 2;
    const int y = (Zoomed(kCursorGround) - frame->Height()) / 2;
    if (settings.mouseShadow && bitmap_color_depth(cell.GetBitmap()) > 8) {
      const CursorShadow& look = cursor.GetShadowLook();
      set_alpha_blender();
      cursor.GetShadow()->draw_trans_sprite(cell, x + look.offset.x - look.size,
                                            y + look.offset.y - look.size);
    }
    frame->draw_sprite(cell, x, y);
    cell.putpixel(x + cursor.GetHotspot().x, y + cursor.GetHotspot().y, red);
  }
};

// Transitions: four frames of each, and one that plays.

constexpr const char* kEffects[] = {
    "0 none",
    "1 fade",
    "2 slide from top",
    "3 slide from bottom",
    "4 slide from right",
    "5 slide from left",
    "6 wipe down",
    "7 wipe up",
    "8 wipe left",
    "9 wipe right",
    "10 lines down",
    "11 lines up",
    "12 lines left",
    "13 lines right",
    "14 unfold, line",
    "15 unfold, column",
    "16 unfold, point",
    "17 open, band",
    "18 open, column",
    "19 open, box",
    "20 halves, vertical",
    "21 halves, across",
    "22 quarters",
    "23 shut, vertical",
    "24 shut, across",
    "25 corners",
    "26 cross",
};
constexpr Size kStill{44, 32};
constexpr int kStills = 4;
constexpr int kStillGap = 4;
constexpr int kTransitionFrames = 40;
constexpr int kPause = 20;  // of the one that plays, in ticks

class TransitionsGrid : public Grid {
 public:
  TransitionsGrid()
      : Grid{{std::begin(kEffects), std::end(kEffects)},
             {(kStills + 1) * (kStill.w + kStillGap), kStill.h}} {}

  void MsgTick() override {
    Grid::MsgTick();
    tick_ = (tick_ + 1) % (kTransitionFrames + kPause);
    Redraw();
  }

 protected:
  void DrawCell(Bitmap& cell, int index) override {
    for (int i = 0; i < kStills; ++i)
      DrawFrame(cell, index, i, (2 * i + 1) * kTransitionFrames / (2 * kStills));
    DrawFrame(cell, index, kStills, std::clamp(tick_, 1, kTransitionFrames));
  }

 private:
  // A disc, so that one sees what slides and what stays.
  static SkinBitmap Look(Color ground, Color disc) {
    SkinBitmap look{kStill.w, kStill.h, kMemoryBitmap};
    look.clear_to_color(ground);
    look.circlefill(kStill.w / 2, kStill.h / 2, kStill.h / 3, disc);
    return look;
  }

  void DrawFrame(Bitmap& cell, int effect, int place, int frame) {
    Animator animator;
    animator.Start(Look(Color{30, 60, 100}, Color{120, 160, 210}),
                   (kTransitionFrames * 1000 + 999) / settings.UsableFrameRate());
    Look(Color{235, 180, 70}, Color{190, 60, 40})
        .blit(animator.NewImage(), 0, 0, 0, 0, kStill.w, kStill.h);
    for (int i = 1; i < frame; ++i) animator.Step();
    SubCanvas canvas{cell, place * (kStill.w + kStillGap), 0, kStill.w, kStill.h};
    animator.Draw(canvas, effect);
  }

  int tick_ = 0;
};

// Text.

constexpr const char* kSample = "Nothing on the disks is changed until you say so.";

void DrawLines(Bitmap& canvas, const Font& font, const Skin& skin) {
  const Color text = skin.colors[kFontFace];
  canvas.clear_to_color(skin.colors[kSunken]);
  const int h = font.TextHeight(), w = canvas.Width();
  font.Textout(canvas, "left", 4, 0, text, Color{}, kAlignLeft);
  font.Textout(canvas, "centre", w / 2, 0, text, Color{}, kAlignCentre);
  font.Textout(canvas, "right", w - 4, 0, text, Color{}, kAlignRight);
  font.TextoutShadow(canvas, "with a shadow", {4, h}, text, skin.colors[kShad2], Color{},
                     kAlignLeft);
  font.Textout(canvas, "on a colour", w / 2, h, text, skin.colors[kSelect], kAlignLeft);
  font.HotkeyTextout(canvas, "&Hot key, Fish && Chips", 4, 2 * h, text, Color{}, Color{},
                     kAlignLeft);
}

}  // namespace

void BuildMarksPage(Sheet& sheet) { BuildGrid<MarksGrid>(sheet); }
void BuildElementsPage(Sheet& sheet) { BuildGrid<ElementsGrid>(sheet); }
void BuildCursorsPage(Sheet& sheet) { BuildGrid<CursorsGrid>(sheet); }
void BuildTransitionsPage(Sheet& sheet) { BuildGrid<TransitionsGrid>(sheet); }

void BuildTextPage(Sheet& sheet) {
  const Rect lines =
      sheet.Band("one line: left, centre, right, shadow, background, hot key", 4 * sheet.Line());
  auto& drawn = sheet.Make<Drawing>();
  drawn.Shape(lines);
  drawn.SetPainter(
      [](Bitmap& canvas) { DrawLines(canvas, *CurrentSkin()->fonts[0], *CurrentSkin()); });
  sheet.Columns({"left, top", "centre, middle", "right, bottom"}, 17);
  sheet.Row(5 * sheet.Line(), [&sheet](const Rect& place, int column) {
    constexpr int kAcross[] = {kAlignLeft, kAlignCentre, kAlignRight};
    constexpr int kDown[] = {kAlignTop, kAlignMiddle, kAlignBottom};
    auto& label = sheet.Make<Label>();
    label.ClearFlag(kFlagAutoSize);
    label.SetTextBackColor(CurrentSkin()->colors[kSunken]);
    label.Setup(place.x, place.y, place.w, place.h, 0, 0, kSample, kAcross[column]);
    label.SetMultiline(true);
    label.SetVAlignment(kDown[column]);
  });
  sheet.Columns({"the fonts of the skin"}, 60);
  for (int i = 0; i < Skin::kSkinFonts; ++i) {
    const Font& font = *CurrentSkin()->fonts[i];
    sheet.Row(font.TextHeight(), [&](const Rect& place, int) {
      auto& label = sheet.Make<Label>();
      label.SetFont(i, kNormal);
      label.Place(place.x, place.y);
      label.SetText(("FONT" + std::to_string(i) + ", " + std::to_string(font.TextHeight()) +
                     " pixels: the quick brown fox")
                        .c_str());
    });
  }
}

}  // namespace zel
