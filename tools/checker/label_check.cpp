#include "tools/checker/label_check.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "launcher/menu_widgets.h"
#include "launcher/state.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/skin/skin.h"
#include "tools/checker/languages.h"
#include "tools/checker/skin_check.h"

namespace zel {
namespace {

Color MeanOf(BITMAP* picture, const Rect& area) {
  constexpr int kStep = 4;
  long long sums[3] = {}, count = 0;
  for (int y = std::max(0, area.y); y < std::min(area.Bottom(), picture->h); y += kStep)
    for (int x = std::max(0, area.x); x < std::min(area.Right(), picture->w); x += kStep, ++count) {
      const int pixel = getpixel(picture, x, y);
      sums[0] += getr(pixel);
      sums[1] += getg(pixel);
      sums[2] += getb(pixel);
    }
  if (count == 0) return Color{0, 0, 0};
  return {static_cast<int>(sums[0] / count), static_cast<int>(sums[1] / count),
          static_cast<int>(sums[2] / count)};
}

class LabelCheck {
 public:
  explicit LabelCheck(ScreenView& view) : view_{view} {}

  void Run(const MenuFile& menu, const MenuLevel& level, bool isMain) {
    CheckLabelLook(menu, "Heading", level.heading);
    CheckLabelLook(menu, "KeyHelp", level.keyHelp);
    if (isMain && level.keyHelp.text.IsEmpty()) CheckCountdown(menu);
    const LayoutValues& at = launcherState.layoutValues;
    const std::pair<const char*, Rect> panels[] = {
        {kMenuKeys.name, kMenuKeys.place(at)},
        {kHintKeys.name, menu.General().Find("HintFile") ? kHintKeys.place(at) : Rect{}},
        {kProgressKeys.name, kProgressKeys.place(at)}};
    for (const std::string& language : LanguagesOf(menu)) {
      const Label heading = ReadLabel(menu, "Heading", level.heading, language);
      const Label keyHelp = ReadLabel(menu, "KeyHelp", level.keyHelp, language);
      for (const Label* label : {&heading, &keyHelp})
        for (const auto& [name, panel] : panels) CheckLabelOverlap(menu, *label, name, panel);
      CheckLabelOverlap(menu, keyHelp, heading.name.c_str(), heading.area);
    }
  }

 private:
  // A text on the background, in one language.
  struct Label {
    const char* key;
    std::string name;  // as it is called in messages
    std::string text;
    int line;   // of the text; 0 where it is that of another menu
    Rect area;  // with all its lines; empty where it is not on the screen, which is said
    bool wraps;
  };

  // While the progress bar shows, the countdown is below it.
  void CheckCountdown(const MenuFile& menu) {
    const MenuSection& general = menu.General();
    if (general.Number("Default") == 0 || general.Number("DefaultTimeout") < 1) return;
    const int top = launcherState.layoutValues.progressY;
    const int height = static_cast<int>(CurrentSkin()->fonts[0]->TextHeight() / CurrentZoom());
    if (Fits(top, kProgressHeight, view_.size.h) &&
        !Fits(top, kCountdownBelow + height, view_.size.h) &&
        view_.IsNew("countdown", {top, 0, 0, 0}))
      view_.findings.Add(Msg::kOutside, view_.PlaceOf(menu, "ProgressY"),
                         {"the countdown below the progress bar", NameOf(view_.size)});
  }

  // What a menu says in a language, and otherwise in English or in the menu that led to it.
  static Label TextOf(const MenuFile& menu, const char* key, const ScreenText& text,
                      const std::string& language) {
    const MenuLine* line = language.empty() ? nullptr : menu.General().Find(key, language);
    if (line && !line->isCut && !line->entry.value.empty())
      return {key, line->entry.name, line->entry.value, line->entry.line, {}, false};
    line = menu.General().Find(key);
    return {key, key, std::string{text.text}, line ? line->entry.line : 0, {}, false};
  }

  // Says where it is not on the screen.
  Label ReadLabel(const MenuFile& menu, const char* key, const ScreenText& text,
                  const std::string& language) {
    Label label = TextOf(menu, key, text, language);
    if (text.text.IsEmpty() || text.font < 0 || text.font >= Skin::kFonts) return label;
    const Font& font = *CurrentSkin()->fonts[static_cast<std::size_t>(text.font)];
    const auto inFile = [](int pixels) { return static_cast<int>(pixels / Scale()); };
    const int height = inFile(font.TextHeight());
    Rect area{text.left, text.top, inFile(font.TextLength(label.text.c_str())), height};
    const bool isWide = Fits(area.x, 1, view_.size.w);
    if (!isWide || !Fits(area.y, height, view_.size.h)) {
      // Whatever it says in which language and menu.
      if (view_.IsNew(key, {area.x, area.y, 0, height}))
        view_.findings.Add(Msg::kOutside, PlaceOf(menu, label, isWide ? "Top" : "Left"),
                           {key, NameOf(view_.size)});
      return label;
    }
    // What is too long for a line wraps.
    const int room = view_.size.w - area.x - inFile(Zoomed(kTextMargin));
    label.wraps = room > 0 && area.w > room;
    if (label.wraps) {
      const int pixels = static_cast<int>(room * Scale());
      area.w = room;
      area.h = inFile(font.MultilineHeight(label.text.c_str(), pixels));
      if (const int lines = area.h / std::max(1, height); lines > 1)
        label.name += ", in " + std::to_string(lines) + " lines,";
    }
    // A word that is too wide is cut.
    const bool isCut = label.wraps && WidestWord(font, label.text) / Scale() > room;
    if (!isCut && Fits(area.y, area.h, view_.size.h))
      label.area = area;
    else if (view_.findings.IsFirst(Msg::kOutside, key + label.text))
      view_.findings.Add(Msg::kOutside, PlaceOf(menu, label, "Top"),
                         {label.name, NameOf(view_.size)});
    return label;
  }

  // The place of a key that says how a text lies. Where it wraps, it is too long for its place; so
  // it is where the menu does not say the place.
  Place PlaceOf(const MenuFile& menu, const Label& label, const char* what) const {
    const std::string key = label.key + std::string{what};
    const MenuSection* own = view_.OwnSection(menu);
    const bool isSaid = menu.General().Find(key.c_str()) || (own && own->Find(key.c_str()));
    return isSaid && !label.wraps ? view_.PlaceOf(menu, key.c_str())
                                  : menu.At(std::max(1, label.line));
  }

  void CheckLabelOverlap(const MenuFile& menu, const Label& label, const char* other,
                         const Rect& place) {
    if (place.w < 1 || label.area.w < 1 || !Overlap(label.area, place)) return;
    // That it is too long for one screen and for others is one thing, and so is its place in all
    // languages.
    const bool isNew = label.wraps ? view_.findings.IsFirst(Msg::kOverlap, label.key + label.text)
                                   : view_.IsNew((std::string{label.key} + other).c_str(),
                                                 {label.area.x, label.area.y, 0, label.area.h});
    if (isNew)
      view_.findings.Add(Msg::kOverlap, PlaceOf(menu, label, "Top"),
                         {label.wraps ? label.name : label.key, other, NameOf(view_.size)});
  }

  void CheckLabelLook(const MenuFile& menu, const char* key, const ScreenText& text) {
    if (text.text.IsEmpty()) return;
    CheckLabelFont(menu, key, text.font);
    const MenuLook& look = CurrentSkin()->menu;
    const Color said = key == std::string_view{"Heading"} ? look.heading : look.keyHelp;
    const Rect area = ReadLabel(menu, key, text, {}).area;
    if (area.w > 0 && look.picture != 0 && view_.IsNew((std::string{"colour"} + key).c_str(), area))
      CheckLabelContrast(menu, key, said.IsSet() ? said : text.color, area);
  }

  // One that the skin does not have is Allegro's own, which is small.
  void CheckLabelFont(const MenuFile& menu, const std::string& key, int font) {
    const std::string section = "FONT" + std::to_string(font), fontKey = key + "Font";
    if (!CurrentSkin()->skinFile || font == 0 || !menu.General().Has(key.c_str()) ||
        !CurrentSkin()->File().Find(section.c_str()).Heads().empty())
      return;
    const bool isSaid = menu.General().Find(fontKey.c_str());
    // What a submenu has from the menu that led to it is said there.
    if (!view_.IsNew(fontKey.c_str(), {font, 0, 0, 0}, {}) && !isSaid) return;
    view_.findings.Add(Msg::kNoFont, view_.PlaceOf(menu, isSaid ? fontKey.c_str() : key.c_str()),
                       {fontKey, std::to_string(font)});
  }

  void CheckLabelContrast(const MenuFile& menu, const std::string& key, Color color,
                          const Rect& area) {
    const MenuLine* line = view_.Background(menu);
    BITMAP* picture = line ? view_.pictures.Get(line->entry.value) : nullptr;
    if (!picture) return;
    // Smaller pictures are centred.
    const Rect inPicture{area.x - std::max(0, (view_.size.w - picture->w) / 2),
                         area.y - std::max(0, (view_.size.h - picture->h) / 2), area.w, area.h};
    const double contrast = Contrast(color, MeanOf(picture, inPicture));
    if (contrast < kLeastContrast)
      view_.findings.Add(Msg::kContrast, view_.PlaceOf(menu, (key + "Color").c_str()),
                         {key, Decimal(contrast)});
  }

  ScreenView& view_;
};

}  // namespace

void CheckLabels(ScreenView& view, const MenuFile& menu, const MenuLevel& level, bool isMain) {
  LabelCheck{view}.Run(menu, level, isMain);
}

}  // namespace zel
