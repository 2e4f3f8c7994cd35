#include "tools/skin/sheet.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/skin/skin.h"
#include "toolkit/skin/skin_file.h"
#include "toolkit/testing/offscreen.h"
#include "tools/checker/findings.h"
#include "tools/checker/skin_check.h"
#include "tools/skin/files.h"
#include "tools/support/input_file.h"

namespace zel {
namespace {

constexpr int kWidth = 1000, kMargin = 16, kGap = 12;
constexpr int kTallest = 16000;       // a picture of more is of no use
constexpr int kLargestPicture = 320;  // more of an element is cut off
constexpr int kCaptionSize = 13;

constexpr const char* kColorNames[kSkinColorCount] = {"face",    "fontface", "shad1",    "shad2",
                                                      "disable", "select",   "deselect", "focus",
                                                      "sunken",  "back"};
constexpr const char* kSetNames[kTextSetCount] = {
    "BOX",  "BUTTON",   "CHECKBOX", "RADIO", "LIST",    "WINDOW", "MENU",
    "TEXT", "PROGRESS", "HYPER",    "TAB",   "TOOLTIP", "LABEL"};
constexpr const char* kStateNames[kDrawStates] = {"normal", "selected", "disabled", "focused"};

std::string NumbersOf(Color color) {
  return std::to_string(color.r()) + ',' + std::to_string(color.g()) + ',' +
         std::to_string(color.b());
}

class SkinSheet {
 public:
  explicit SkinSheet(const Skin& skin) : skin_{skin}, menu_{skin.menu} {
    const char* file = skin.File().Find("FONT0").GetText("file", "none");
    const auto path = std::filesystem::path{*skin.skinFile}.parent_path() / file;
    if (!caption_.Load(path.c_str()).IsError()) caption_.SetSize(kCaptionSize);
    ground_ = skin.colors[kBack];
    ink_ = WithContrast(skin.colors[kFontFace], ground_, kReadableContrast);
  }

  // The same twice: on a picture of no height, to see how much it takes.
  SkinBitmap Draw() {
    SkinBitmap none{kWidth, 1, kMemoryBitmap};
    DrawOn(none);
    SkinBitmap sheet{kWidth, std::min(kTallest, place_.y), kMemoryBitmap};
    DrawOn(sheet);
    return sheet;
  }

 private:
  static constexpr double kReadableDisabled = 2.5;

  void DrawOn(SkinBitmap& canvas) {
    canvas_ = &canvas;
    canvas.clear_to_color(ground_);
    place_ = {kMargin, kMargin};
    rowHeight_ = 0;
    const std::string title = skin_.title && !skin_.title->IsEmpty() ? skin_.title->c_str() : "";
    Heading(title + (title.empty() ? "" : ", ") + *skin_.skinFile);
    DrawElements();
    DrawPointers();
    DrawFonts();
    DrawColors();
    DrawTexts();
    NextRow();
  }

  int Line() const { return caption_.TextHeight() + 2; }

  void Write(const std::string& text, int x, int y) {
    caption_.Textout(*canvas_, text.c_str(), x, y, ink_, Color{}, kAlignLeft);
  }

  void NextRow() {
    if (rowHeight_ > 0) place_.y += rowHeight_ + kGap;
    place_.x = kMargin;
    rowHeight_ = 0;
  }

  void Heading(const std::string& text) {
    NextRow();
    Write(text, kMargin, place_.y);
    const int y = place_.y + Line();
    canvas_->hline(kMargin, y, kWidth - kMargin - 1, ink_);
    place_.y = y + kGap;
  }

  // The place of what is that large, below captions.
  Point Cell(Size size, const std::vector<std::string>& captions) {
    for (const std::string& caption : captions)
      size.w = std::max(size.w, caption_.TextLength(caption.c_str()));
    size.h += Line() * static_cast<int>(captions.size());
    if (place_.x > kMargin && place_.x + size.w > kWidth - kMargin) NextRow();
    Point at = place_;
    place_.x += size.w + kGap;
    rowHeight_ = std::max(rowHeight_, size.h);
    for (const std::string& caption : captions) {
      Write(caption, at.x, at.y);
      at.y += Line();
    }
    return at;
  }

  void DrawElements() {
    Heading("Elements");
    for (int id = 0; id < kElementCount; ++id) {
      const SkinBitmap& picture = *skin_.bitmaps[id];
      if (picture.IsEmpty()) continue;
      const Size grid = kElementGrids[id];
      const Size frame{picture.Width() / grid.w, picture.Height() / grid.h};
      const Size tile{picture.GetTileWidth(), picture.GetTileHeight()},
          stored = picture.GetTileSize();
      const Size size{std::min(kLargestPicture, picture.Width()),
                      std::min(kLargestPicture, picture.Height())};
      const std::string tiles =
          NameOf({stored.w < 0 ? frame.w / 3 : tile.w, stored.h < 0 ? frame.h / 3 : tile.h});
      const Point at = Cell(size, {kElementNames[id], NameOf(frame) + ", " + tiles});
      canvas_->rectfill(at.x, at.y, at.x + size.w - 1, at.y + size.h - 1, skin_.colors[kFace]);
      picture.masked_blit(*canvas_, 0, 0, at.x, at.y, size.w, size.h);
    }
  }

  // On light and dark; a red spot is the point that points.
  void DrawPointers() {
    Heading("Pointer shapes");
    for (int i = 0; i < kCursorCount; ++i) {
      const std::vector<SkinBitmap>& frames = skin_.cursors[i]->GetFrames();
      if (frames.empty()) continue;
      const Size frame{std::min(kLargestPicture, frames[0].Width()),
                       std::min(kLargestPicture, frames[0].Height())};
      const Point spot = skin_.cursors[i]->GetHotspot();
      const int room = frame.w + kGap;
      std::string about = std::to_string(spot.x) + ' ' + std::to_string(spot.y);
      if (frames.size() > 1) about += ", " + std::to_string(frames.size()) + " frames";
      const Point at = Cell({2 * room, frame.h + kGap}, {kCursorNames[i], about});
      for (const int side : {0, 1}) {
        const int x = at.x + side * room;
        canvas_->rectfill(x, at.y, x + room - 1, at.y + frame.h + kGap - 1,
                          side ? Color{24, 32, 44} : Color{255, 255, 255});
        frames[side * (frames.size() - 1) / 2].masked_blit(*canvas_, 0, 0, x + kGap / 2,
                                                           at.y + kGap / 2, frame.w, frame.h);
        canvas_->putpixel(x + kGap / 2 + spot.x, at.y + kGap / 2 + spot.y, red);
      }
    }
  }

  static std::vector<std::string> Wrapped(const std::string& text, const Font& font) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();
         at = std::min(text.find_first_not_of(' ', at), text.size())) {
      int ignored = 0;
      const int count = font.WrapCount(text.c_str() + at, kWidth - 2 * kMargin, &ignored);
      lines.push_back(text.substr(at, static_cast<std::size_t>(std::max(1, count))));
      at += lines.back().size();
    }
    return lines;
  }

  void DrawFonts() {
    Heading("Fonts");
    for (int i = 0; i < Skin::kSkinFonts; ++i) {
      const SectionFile::Section& font = skin_.File().Find(("FONT" + std::to_string(i)).c_str());
      if (font.Heads().empty()) continue;
      const Font& face = *skin_.fonts[i];
      const std::string about = font.Name() + ": " + Readable(font.GetText("file", "none")) + ", " +
                                std::to_string(face.TextHeight());
      constexpr const char* kSample = "Restore the disc, 0123456789, \xC3\x84\xC3\x96\xC3\xBC";
      const std::vector<std::string> lines = Wrapped(kSample, face);
      const int height = std::min(kLargestPicture, face.TextHeight());
      Point at = Cell({kWidth - 2 * kMargin, height * static_cast<int>(lines.size())}, {about});
      for (const std::string& line : lines) {
        face.Textout(*canvas_, line.c_str(), at.x, at.y, ink_, Color{}, kAlignLeft);
        at.y += height;
      }
    }
  }

  void Swatch(const std::string& name, Color color) {
    if (!color.IsSet()) return;
    constexpr Size kSwatch{104, 28};
    const Point at = Cell(kSwatch, {name, NumbersOf(color)});
    canvas_->rectfill(at.x, at.y, at.x + kSwatch.w - 1, at.y + kSwatch.h - 1, color);
    canvas_->rect(at.x, at.y, at.x + kSwatch.w - 1, at.y + kSwatch.h - 1, ink_);
  }

  void DrawColors() {
    Heading("Colours");
    for (int i = 0; i < kSkinColorCount; ++i) Swatch(kColorNames[i], skin_.colors[i]);
    Swatch("TOOLTIP backColor", skin_.tooltipBackColor);
    Swatch("TOOLTIP borderColor", skin_.tooltipBorderColor);
    Swatch("BOX backColor", skin_.boxBackColor);
    const std::vector<Color*> colors = menu_.Colors();
    const MenuLook::Names names = MenuLook::ColorKeys();
    for (std::size_t i = 0; i < std::min(colors.size(), names.size()); ++i)
      Swatch(std::string{names[i].first} + ' ' + names[i].second, *colors[i]);
  }

  // What a text set stands on in a state.
  Color GroundOf(int set, int state) const {
    constexpr int kRows[kDrawStates] = {0, 5, 6, 2};
    Color ground;
    if (set == kBoxText) ground = skin_.boxBackColor;
    if (set == kTooltipText) ground = skin_.tooltipBackColor;
    if (set == kButtonText) ground = MiddleOf(skin_, BUTTON, state, kDrawStates);
    if (set == kTabText) ground = MiddleOf(skin_, TAB_BUTTON, state, kDrawStates);
    if (set == kListText) ground = MiddleOf(skin_, LIST, kRows[state], kListStates);
    if (set == kMenuText)
      ground = MiddleOf(skin_, MENU_ITEM, state == kSelected ? 1 : 0, kElementGrids[MENU_ITEM].h);
    if (set == kWindowText)
      ground = MiddleOf(skin_, WINGRIP, state == kDisabled ? 1 : 0, kWindowStates);
    if (set == kEditText) ground = MiddleOf(skin_, PANEL_SUNKEN, 0, 1);
    if (set == kProgressText) ground = MiddleOf(skin_, PROGRESSH, 0, 2);
    return ground.IsSet() ? ground : skin_.colors[kFace];
  }

  struct Sample {
    std::string name;
    Color color, shadow, ground;
    const Font* font;
    double least;
  };

  // A line below marks what can hardly be read.
  void Show(const Sample& sample) {
    if (!sample.color.IsSet() || !sample.ground.IsSet()) return;
    char contrast[32];
    const double ratio = Contrast(sample.color, sample.ground);
    const bool isLow = ratio < sample.least;
    std::snprintf(contrast, sizeof contrast, "%.1f%s", ratio, isLow ? ", low" : "");
    const int width = (kWidth - 2 * kMargin - 3 * kGap) / 4;
    const int height = std::min(kLargestPicture, sample.font->TextHeight()) + 8;
    const Point at = Cell({width, height}, {sample.name + ": " + contrast});
    SkinBitmap box{width, height, kMemoryBitmap};
    box.clear_to_color(sample.ground);
    sample.font->TextoutShadow(box, "Restore the disc", {6, 4}, sample.color, sample.shadow,
                               Color{}, kAlignLeft);
    if (isLow) box.rectfill(0, height - 3, width - 1, height - 1, red);
    box.blit(*canvas_, 0, 0, at.x, at.y, width, height);
  }

  void DrawTexts() {
    Heading("Texts and their contrast");
    const double least =
        skin_.menu.leastContrast > 0 ? skin_.menu.leastContrast : kReadableContrast;
    const Font& plain = *skin_.fonts[0];
    for (int set = 0; set < kTextSetCount; ++set) {
      NextRow();
      if (set == kPlainText && !skin_.menu.hasLabels) continue;
      for (int state = 0; state < kDrawStates; state += set == kBoxText ? kDisabled : 1)
        Show({std::string{kSetNames[set]} + ' ' + kStateNames[state], skin_.fontColor[set][state],
              skin_.shadowColor[set][state], GroundOf(set, state),
              skin_.fonts[skin_.fontIndex[set][state]].get(),
              state == kDisabled ? kReadableDisabled : least});
    }
    NextRow();
    const Color panel = menu_.ground.IsSet() ? menu_.ground : GroundOf(kListText, kNormal);
    const Color row = GroundOf(kListText, kSelected);
    const Color behind = skin_.colors[kBack];
    const Sample samples[] = {
        {"ENTRY color", menu_.text, {}, panel, &plain, least},
        {"ENTRY selectColor",
         menu_.selectedText,
         {},
         menu_.field.IsSet() ? menu_.field : row,
         &plain,
         least},
        {"ENTRY disableColor", menu_.disabledText, {}, panel, &plain, kReadableDisabled},
        {"ENTRY returnColor", menu_.returnText, {}, panel, &plain, least},
        {"TITLE color",
         menu_.titleText,
         {},
         menu_.titleGround.IsSet() ? menu_.titleGround : panel,
         &plain,
         least},
        {"SCREEN headingColor", menu_.heading, {}, behind, &plain, least},
        {"SCREEN keyHelpColor", menu_.keyHelp, {}, behind, &plain, least},
        {"WAIT countdownColor",
         menu_.countdown,
         {},
         menu_.countdownGround.IsSet() ? menu_.countdownGround : behind,
         &plain,
         least},
        {"COLORS fontface", skin_.colors[kFontFace], {}, skin_.colors[kFace], &plain, least},
        {"COLORS disable",
         skin_.colors[kDisable],
         {},
         skin_.colors[kFace],
         &plain,
         kReadableDisabled},
    };
    for (const Sample& sample : samples) Show(sample);
  }

  const Skin& skin_;
  MenuLook menu_;
  Font caption_;
  Color ground_, ink_;
  SkinBitmap* canvas_ = nullptr;
  Point place_;
  int rowHeight_ = 0;
};

}  // namespace

void DrawSkinSheet(const std::string& skin, const std::string& png, Complaints& complaints) {
  constexpr Size kScreen{64, 64};
  constexpr int kDepth = 32;
  Offscreen offscreen;
  if (const std::string why = WhyNoFile(skin); !why.empty()) return complaints.Add(skin, 0, why);
  if (!DescribesSkin(ReadText(skin.c_str(), kLongestConfigFile)))
    return complaints.Add(skin, 0, "is no description of a skin");
  if (!offscreen.SetMode(kScreen, kDepth)) return;
  const std::string complaint = Offscreen::LoadSkin(skin.c_str());
  if (!complaint.empty()) return complaints.Add(skin, 0, complaint.substr(skin.size() + 2));
  const SkinBitmap sheet = SkinSheet{*CurrentSkin()}.Draw();
  if (!SavePng(png.c_str(), sheet.GetBitmap())) complaints.Add("--png " + png, 0, WhyNotWritten());
}

}  // namespace zel
