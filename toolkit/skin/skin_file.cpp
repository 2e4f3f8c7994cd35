#include "toolkit/skin/skin_file.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "toolkit/base/zoom.h"
#include "toolkit/draw/skin_values.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

struct NamedColorKey {
  const char* key;
  const char* value;  // in the built-in look and in a file without the key
};
constexpr NamedColorKey kNamedColors[kSkinColorCount] = {
    {"face", "210,210,210"},     {"fontface", "16,16,16"},   {"shad1", "255,255,255"},
    {"shad2", "80,80,80"},       {"disable", "128,128,128"}, {"select", "128,192,128"},
    {"deselect", "224,224,224"}, {"focus", "128,192,128"},   {"sunken", "232,232,232"},
    {"back", "180,180,180"},
};

struct NumberKey {
  const char* section;
  const char* key;
  int fallback;  // in a file without the key
  int builtin;   // in the built-in look
  int& (*field)(Skin& skin);
  bool isPixels = false;

  int Shown(int value) const { return isPixels ? Zoomed(value) : value; }
};

constexpr NumberKey Number(const char* section, const char* key, int value,
                           int& (*field)(Skin& skin)) {
  return {section, key, value, value, field};
}
constexpr NumberKey Pixels(const char* section, const char* key, int value,
                           int& (*field)(Skin& skin)) {
  return {section, key, value, value, field, true};
}

constexpr NumberKey kNumbers[] = {
    Number("WALLPAPER", "style", 3, [](Skin& skin) -> int& { return skin.wallpaperStyle; }),
    Pixels("BUTTON", "displacement", 1, [](Skin& skin) -> int& { return skin.buttonDisplacement; }),
    Number("BUTTON", "animationType", 0,
           [](Skin& skin) -> int& { return skin.buttonAnimationType; }),
    Number("BUTTON", "animationLength", 0,
           [](Skin& skin) -> int& { return skin.buttonAnimationLength; }),
    {"BOX", "offX", 6, 10, [](Skin& skin) -> int& { return skin.boxOffset.x; }, true},
    Pixels("BOX", "offY", 1, [](Skin& skin) -> int& { return skin.boxOffset.y; }),
    Number("BOX", "alignment", 0, [](Skin& skin) -> int& { return skin.boxAlignment; }),
    Pixels("WINDOW", "textX", 10, [](Skin& skin) -> int& { return skin.windowTextPos.x; }),
    Pixels("WINDOW", "textY", 8, [](Skin& skin) -> int& { return skin.windowTextPos.y; }),
    Number("WINDOW", "alignment", 0, [](Skin& skin) -> int& { return skin.windowAlignment; }),
    Number("WINDOW", "textBack", 0, [](Skin& skin) -> int& { return skin.windowTextBack; }),
    Pixels("WINDOW", "exitX", -22, [](Skin& skin) -> int& { return skin.windowExitPos.x; }),
    Pixels("WINDOW", "exitY", 6, [](Skin& skin) -> int& { return skin.windowExitPos.y; }),
    Pixels("WINDOW", "maxX", -40, [](Skin& skin) -> int& { return skin.windowMaxPos.x; }),
    Pixels("WINDOW", "maxY", 6, [](Skin& skin) -> int& { return skin.windowMaxPos.y; }),
    Pixels("WINDOW", "minX", -56, [](Skin& skin) -> int& { return skin.windowMinPos.x; }),
    Pixels("WINDOW", "minY", 6, [](Skin& skin) -> int& { return skin.windowMinPos.y; }),
    Number("WINDOW", "animationType", 0,
           [](Skin& skin) -> int& { return skin.windowAnimationType; }),
    Number("WINDOW", "animationLength", 0,
           [](Skin& skin) -> int& { return skin.windowAnimationLength; }),
    Number("COMBOBOX", "animationType", 0,
           [](Skin& skin) -> int& { return skin.comboAnimationType; }),
    Number("COMBOBOX", "animationLength", 0,
           [](Skin& skin) -> int& { return skin.comboAnimationLength; }),
    Pixels("MENU", "height", 16, [](Skin& skin) -> int& { return skin.menuHeight; }),
    Number("MENU", "delay", 300, [](Skin& skin) -> int& { return skin.menuDelay; }),
    Number("MENU", "animationType", 0, [](Skin& skin) -> int& { return skin.menuAnimationType; }),
    Number("MENU", "animationLength", 0,
           [](Skin& skin) -> int& { return skin.menuAnimationLength; }),
    Number("TOOLTIP", "animationType", 0,
           [](Skin& skin) -> int& { return skin.tooltipAnimationType; }),
    Number("TOOLTIP", "animationLength", 0,
           [](Skin& skin) -> int& { return skin.tooltipAnimationLength; }),
    {"Skin", "dottedRect", 0, 1, [](Skin& skin) -> int& { return skin.dottedRect; }},
    {"Skin", "focus", 1, 0, [](Skin& skin) -> int& { return skin.focus; }},
};

struct ColorKey {
  const char* section;
  const char* key;
  const char* fallback;
  Color& (*field)(Skin& skin);
};
constexpr const char* kNoShadow = "-1";
constexpr const char* kBox = "BOX";
constexpr const char* kTooltip = "TOOLTIP";
// Boxes know two states only, and the second pair of keys is that of the disabled one.
constexpr ColorKey kColorKeys[] = {
    {kBox, "f_col1", "32,32,32",
     [](Skin& skin) -> Color& { return skin.fontColor[kBoxText][kNormal]; }},
    {kBox, "f_col2", "128,128,128",
     [](Skin& skin) -> Color& { return skin.fontColor[kBoxText][kDisabled]; }},
    {kBox, "s_col1", kNoShadow,
     [](Skin& skin) -> Color& { return skin.shadowColor[kBoxText][kNormal]; }},
    {kBox, "s_col2", "255,255,255",
     [](Skin& skin) -> Color& { return skin.shadowColor[kBoxText][kDisabled]; }},
    {kBox, "backColor", "222,222,222", [](Skin& skin) -> Color& { return skin.boxBackColor; }},
    {kTooltip, "backColor", "255,255,192",
     [](Skin& skin) -> Color& { return skin.tooltipBackColor; }},
    {kTooltip, "borderColor", "0,0,0",
     [](Skin& skin) -> Color& { return skin.tooltipBorderColor; }},
};

// The sections with keys for all four drawing states.
struct TextSection {
  const char* section;
  TextSet set;
};
constexpr TextSection kTextSections[] = {
    {"BUTTON", kButtonText},     {"CHECKBOX", kCheckBoxText}, {"RADIO", kRadioText},
    {"LIST", kListText},         {"TEXT", kEditText},         {"MENU", kMenuText},
    {"PROGRESS", kProgressText}, {"WINDOW", kWindowText},     {"HYPER", kHyperText},
    {"TAB", kTabText},           {"TOOLTIP", kTooltipText},
};

struct TextKeys {
  const char* font;
  const char* fontColor;
  const char* fontColorFallback;
  const char* shadowColor;
};
constexpr TextKeys kTextKeys[kDrawStates] = {
    {"font1", "f_col1", "0,0,0", "s_col1"},
    {"font2", "f_col2", "0,0,0", "s_col2"},
    {"font3", "f_col3", "128,128,128", "s_col3"},
    {"font4", "f_col4", "0,0,0", "s_col4"},
};
constexpr const char* kBoxFont = kTextKeys[kNormal].font;
constexpr const char* kList = "LIST";
constexpr const char* kHeight = "height";
constexpr const char* kLabel = "LABEL";
constexpr int kHighestRow = 400;

constexpr const char* kSkin = "Skin";
constexpr const char* kTitle = "title";
constexpr const char* kColors = "COLORS";
constexpr const char* kBuiltin = "builtin";

// The keys of a font, in a section of its own.
constexpr const char* kFontFile = "file";
constexpr const char* kFontSize = "size";
constexpr const char* kFontFallback = "fallback";
std::string FontSection(int index) { return "FONT" + std::to_string(index); }

// A value of the section "Skin"; null when it is absent.
const char* SkinText(const SectionFile& file, const char* key) {
  return file.Find(Ascii(kSkin)).GetText(Ascii(key), nullptr);
}

// A file beside the skin file.
std::string Beside(const char* skinFile, const char* name) {
  constexpr int kPathBytes = 2048;
  char directory[kPathBytes];
  char path[kPathBytes];
  replace_filename(directory, skinFile, Ascii(""), kPathBytes);
  append_filename(path, directory, name, kPathBytes);
  return path;
}

void ReadFonts(Skin& skin, const SectionFile& file, const char* path) {
  constexpr int kSize = 10;
  for (int i = 0; i < Skin::kSkinFonts; ++i) {
    const std::string section = FontSection(i);
    const int size = ReadSkinInt(file, section.c_str(), kFontSize, kSize);
    // A copy: what stands in for an absent key ends with the line.
    const std::string name =
        file.Find(Ascii(section.c_str())).GetText(Ascii(kFontFile), Ascii("none"));
    skin.fonts[i]->Load(Beside(path, name.c_str()).c_str());
    std::vector<std::string> fallbacks;
    for (const std::string& file :
         ListParts(file.Find(Ascii(section.c_str())).GetText(Ascii(kFontFallback))))
      fallbacks.push_back(Beside(path, file.c_str()));
    skin.fonts[i]->SetFallbacks(fallbacks);
    Skin::SetFontSize(*skin.fonts[i], size);
  }
}

int ReadFontIndex(const SectionFile& file, const char* section, const char* key) {
  return ReadSkinInt(file, section, key, 0, 0, Skin::kFonts - 1);
}

void ReadTextSet(Skin& skin, const SectionFile& file, const TextSection& text) {
  const auto& [section, set] = text;
  for (int state = 0; state < kDrawStates; ++state) {
    const TextKeys& keys = kTextKeys[state];
    skin.fontIndex[set][state] = ReadFontIndex(file, section, keys.font);
    skin.fontColor[set][state] =
        ReadSkinColor(file, section, keys.fontColor, keys.fontColorFallback);
    skin.shadowColor[set][state] = ReadSkinColor(file, section, keys.shadowColor, kNoShadow);
  }
}

void ReadTextSets(Skin& skin, const SectionFile& file) {
  for (const TextSection& text : kTextSections) ReadTextSet(skin, file, text);
  if (skin.menu.hasLabels) ReadTextSet(skin, file, {kLabel, kPlainText});
}

// A row is at least as high as its text. Where nobody has drawn pictures for it, the built-in ones
// are drawn so large that a title bar is as high as a row, and what belongs to its place follows.
int ReadRowHeight(Skin& skin, const SectionFile& file) {
  const int said = ReadSkinInt(file, kList, kHeight, 0, 0, kHighestRow);
  if (said < 1) return 0;
  int height = Zoomed(said);
  for (const int font : skin.fontIndex[kListText])
    height = std::max(height, skin.fonts[font]->TextHeight());
  return height;
}

double PictureScale(int rowHeight) {
  constexpr double kTitleBar = 18;  // pixels
  return std::max(1.0, rowHeight / CurrentZoom() / kTitleBar);
}

// In the middle of the bar.
void CentreTitle(Skin& skin) {
  const auto part = [&skin](int id) { return skin.bitmaps[id]->Height() / kElementGrids[id].h; };
  const Font& font = *skin.fonts[skin.fontIndex[kWindowText][kSelected]];
  skin.windowTextPos.y = part(WINTOP) + (part(WINGRIP) - font.TextHeight()) / 2;
}

void ReadControls(Skin& skin, const SectionFile& file) {
  const double scale = skin.GetPictureScale();
  for (const NumberKey& number : kNumbers) {
    const double grown = number.fallback * (number.isPixels ? scale : 1);
    const int fallback = static_cast<int>(std::lround(grown));
    number.field(skin) = number.Shown(ReadSkinInt(file, number.section, number.key, fallback));
  }
  if (scale != 1 && !file.Find(Ascii("WINDOW")).Find(Ascii("textY"))) CentreTitle(skin);
  skin.fontIndex[kBoxText][kNormal] = ReadFontIndex(file, kBox, kBoxFont);
  for (const auto& [section, key, fallback, field] : kColorKeys)
    field(skin) = ReadSkinColor(file, section, key, fallback);
}

}  // namespace

void ResetNamedColors(Skin& skin) {
  for (int i = 0; i < kSkinColorCount; ++i)
    skin.colors[i] = Color::FromText(Ascii(kNamedColors[i].value));
}

void ResetNumbers(Skin& skin) {
  for (const NumberKey& number : kNumbers) number.field(skin) = number.Shown(number.builtin);
}

std::string KeyOf(const char* object, const ObjectNumber& number) {
  return std::string{object} + '_' + number.property;
}

std::vector<SkinKey> SkinKeys() {
  std::vector<SkinKey> keys{{kSkin, kTitle, SkinKey::kText},
                            {kSkin, kElementsKey, SkinKey::kFile},
                            {kSkin, kPointersKey, SkinKey::kFile},
                            {kBox, kBoxFont, SkinKey::kFont}};
  for (const auto& [key, value] : kNamedColors) keys.push_back({kColors, key, SkinKey::kColor});
  for (const NumberKey& number : kNumbers)
    keys.push_back({number.section, number.key, SkinKey::kNumber});
  const auto addTextSection = [&keys](const char* section) {
    for (const TextKeys& state : kTextKeys) {
      keys.push_back({section, state.font, SkinKey::kFont});
      keys.push_back({section, state.fontColor, SkinKey::kColor});
      keys.push_back({section, state.shadowColor, SkinKey::kColor});
    }
  };
  for (const TextSection& text : kTextSections) addTextSection(text.section);
  addTextSection(kLabel);
  keys.push_back({kList, kHeight, SkinKey::kNumber, kHighestRow});
  keys.push_back({MenuLook::kContrastKey.first, MenuLook::kContrastKey.second, SkinKey::kText});
  keys.push_back({kColors, kBuiltin, SkinKey::kNumber});
  for (const auto& [section, key] : MenuLook::ColorKeys())
    keys.push_back({section, key, SkinKey::kColor});
  for (const auto& [section, key, highest, isFont] : MenuLook::MeasureKeys())
    if (isFont)
      keys.push_back({section, key, SkinKey::kFont});
    else
      keys.push_back({section, key, SkinKey::kNumber, highest});
  for (const ColorKey& color : kColorKeys)
    keys.push_back({color.section, color.key, SkinKey::kColor});
  for (int i = 0; i < Skin::kSkinFonts; ++i) {
    keys.push_back({FontSection(i), kFontFile, SkinKey::kFile});
    keys.push_back({FontSection(i), kFontSize, SkinKey::kNumber});
    keys.push_back({FontSection(i), kFontFallback, SkinKey::kFiles});
  }
  for (const char* name : kElementNames)
    for (const ObjectNumber& number : kTileNumbers)
      keys.push_back({number.section, KeyOf(name, number), SkinKey::kNumber});
  for (const char* name : kCursorNames)
    for (const ObjectNumber& number : kPointerNumbers)
      keys.push_back({number.section, KeyOf(name, number), SkinKey::kNumber});
  keys.push_back({CursorShadow::kSection, CursorShadow::kColorKey, SkinKey::kColor});
  for (const char* key : CursorShadow::kNumberKeys)
    keys.push_back({CursorShadow::kSection, key, SkinKey::kNumber});
  return keys;
}

Error ReadSkinFile(Skin& skin, const SectionFile& file, const char* path) {
  const char* data = SkinText(file, kElementsKey);
  if (data) {
    const Error result = skin.LoadData(Beside(path, data).c_str());
    if (result.IsError()) return result;
  }
  for (int i = 0; i < kSkinColorCount; ++i)
    skin.colors[i] = ReadSkinColor(file, kColors, kNamedColors[i].key, kNamedColors[i].value);
  // The built-in pictures again, in the colours of the file.
  if (!data)
    skin.GenerateDefaultBitmaps();
  else if (ReadSkinInt(file, kColors, kBuiltin, 0) != 0)
    skin.GenerateMissingBitmaps();
  if (const char* shapes = SkinText(file, kPointersKey)) {
    const Error result = skin.LoadCursors(Beside(path, shapes).c_str());
    if (result.IsError()) return result;
  }
  skin.title = std::make_unique<FixedText<512>>(SkinText(file, kTitle));
  ReadFonts(skin, file, path);
  skin.menu.Read(file);
  ReadTextSets(skin, file);
  skin.listHeight = ReadRowHeight(skin, file);
  if (const double scale = PictureScale(skin.listHeight); !data && scale != 1) {
    skin.SetPictureScale(scale);
    skin.GenerateDefaultBitmaps();
  }
  ReadControls(skin, file);
  constexpr RGB kBlack{0, 0, 0, 0};
  set_color(0, &kBlack);
  return kNoError;
}

}  // namespace zel
