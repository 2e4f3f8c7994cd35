#include "tools/checker/skin_check.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/art.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/datafile.h"
#include "toolkit/draw/skin_values.h"
#include "toolkit/skin/skin_file.h"
#include "toolkit/widgets/list_view.h"
#include "tools/checker/files.h"
#include "tools/checker/lines.h"
#include "tools/checker/nearest.h"
#include "tools/checker/settings_check.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

using Section = SectionFile::Section;
using Object = Datafile::Object;

constexpr int kLastEffect = 26;  // of a transition

bool IsFontSection(const std::string& section) {
  return section.size() == 5 && Upper(section).starts_with("FONT");
}

bool IsOfLook(const SkinKey& key) {
  const MenuLook::Names names = MenuLook::ColorKeys();
  return std::any_of(names.begin(), names.end(), [&key](const auto& name) {
    return key.section == name.first && key.key == name.second;
  });
}

// Of a datafile's picture.
Size SizeOf(const Object& picture) {
  ByteReader content{picture.content};
  content.Big16();  // the colour depth
  const int w = content.Big16();
  return {w, content.Big16()};
}

class SkinCheck {
 public:
  SkinCheck(Findings& findings, const std::string& name) : findings_{findings}, name_{name} {
    for (SkinKey& key : SkinKeys()) {
      const std::string section = Upper(key.section);
      names_[section].push_back(key.key);
      keys_.emplace(std::pair{section, Upper(key.key)}, key);
      sections_.insert(key.section);
    }
  }

  bool Run(const Place& named) {
    std::string text;
    if (!ReadChecked(findings_, name_, kLongestConfigFile, &text, &named)) return false;
    if (!HoldsText(text)) {
      findings_.Add(Msg::kEmptyFile, At(1), {"says nothing"});
      return false;
    }
    content_ = CheckLines(findings_, name_, text, "Skin");
    if (const Section& project = content_.Find("PACK"); !project.Heads().empty()) {
      const std::string skin = Beside(project.GetText("name"));
      findings_.Add(Msg::kNotAFile, At(1), {name_, "the project of a skin"},
                    IsFile(skin.c_str()) ? skin : std::string{});
      return false;
    }
    for (const Section& section : content_.Sections()) CheckSection(section);
    const bool areElements = CheckDatafile("main_data");
    if (areElements) CheckElements();
    bool isSound = areElements;
    isSound = CheckDatafile("cursors") && isSound;
    isSound = CheckFonts() && isSound;
    const Skin skin{name_.c_str()};
    if (!skin.GetError().IsError()) {
      isSound = CheckListFont(skin) && isSound;
      if (areColors_ && areElements) CheckContrast(skin);
      if (areElements) CheckTitleBar(skin);
    }
    // A head that is none was taken for one above.
    for (const Section& section : content_.Sections())
      if (IsFontSection(section.Name()) && skin.File().Find(section.Name().c_str()).Heads().empty())
        isMeant_ = false;
    return isSound && isMeant_;
  }

 private:
  Place At(int line) const { return {name_, line}; }

  // The line of a key, or of its section, or 1.
  int LineOf(const char* section, const char* key) const {
    const Section& found = content_.Find(section);
    if (const auto* entry = found.Find(key)) return entry->line;
    return found.Heads().empty() ? 1 : found.Heads().front();
  }

  void CheckSection(const Section& section) {
    const std::string name = Upper(section.Name());
    const int line = section.Heads().front();
    if (name == kNoName) return;  // which is said
    if (!names_.contains(name)) {
      const std::string nearest = Nearest(section.Name(), {sections_.begin(), sections_.end()});
      isMeant_ = isMeant_ && nearest.empty() && !name.starts_with("FONT");
      findings_.Add(Msg::kUnknownSection, At(line), {section.Name()}, nearest);
      return;
    }
    for (const SectionFile::Entry& entry : section.Entries()) {
      const auto known = keys_.find({name, Upper(entry.name)});
      if (known != keys_.end())
        CheckEntry(known->second, entry);
      else if (!findings_.Has(Msg::kNoEquals, At(entry.line)))
        findings_.Add(Msg::kUnknownKey, At(entry.line), {entry.name},
                      Nearest(entry.name, names_[name]));
    }
  }

  void CheckEntry(const SkinKey& key, const SectionFile::Entry& entry) {
    const SkinKey::Kind kind = key.kind;
    const Place place = At(entry.line);
    const std::string value = WithoutComment(entry.value, kind >= SkinKey::kNumber);
    if (value.empty() || CheckQuotes(findings_, place, value)) return;
    if (kind == SkinKey::kColor) {
      std::string text = value;
      // Only what is older than looks may have them.
      if (!IsOfLook(key)) std::replace(text.begin(), text.end(), ';', ',');
      if (value == "-1" || MenuLook::ReadColor(text.c_str()).IsSet()) return;
      findings_.Add(Msg::kNoColor, place, {entry.name, value});
      areColors_ = areColors_ && Upper(key.section) != "COLORS";
      return;
    }
    if (Upper(key.key) == "CONTRAST") CheckLeastContrast(place, entry.name, value);
    if (kind != SkinKey::kNumber && kind != SkinKey::kFont) return;
    if (!CheckNumber(findings_, place, entry.name, value, true)) return;
    const int number = ParsedNumber(value);
    const auto section = "FONT" + value;
    const bool isEffect = Upper(key.key) == "ANIMATIONTYPE";
    const int highest = isEffect ? kLastEffect : key.highest;
    if (std::abs(1.0 * number) > kLargestSkinValue)
      findings_.Add(Msg::kLargeNumber, place, {entry.name, value, "absent"});
    else if (highest >= 0 && (number < 0 || number > highest))
      findings_.Add(Msg::kRange, place, {entry.name, value, "0", std::to_string(highest)});
    else if (Upper(key.key) == "DOTTEDRECT" && number != 0 && number != 1)
      findings_.Add(Msg::kNoSwitch, place, {entry.name, value});
    else if (kind == SkinKey::kFont && content_.Find(section.c_str()).Heads().empty() &&
             number != 0)
      findings_.Add(Msg::kNoFont, place, {entry.name, value});
  }

  void CheckLeastContrast(const Place& place, const std::string& key, const std::string& value) {
    char* end = nullptr;
    const double least = std::strtod(value.c_str(), &end);
    const std::string taken = value.substr(0, static_cast<std::size_t>(end - value.c_str()));
    if (*end != '\0')
      findings_.Add(Msg::kNoNumber, place, {key, value, taken.empty() ? "0" : taken});
    else if (least != 0 && (least < 1 || least > 21))
      findings_.Add(Msg::kRange, place, {key, value, "1", "21"});
  }

  std::string Beside(const std::string& file) const {
    const std::size_t slash = name_.rfind('/');
    return slash == std::string::npos || file.starts_with('/') ? file
                                                               : name_.substr(0, slash + 1) + file;
  }

  // A file that the section names with the key; empty for none.
  std::string FileOf(const char* section, const char* key) const {
    const std::string value = WithoutComment(content_.Find(section).GetText(key), false);
    return value.empty() ? value : Beside(value);
  }

  // False for a datafile that is to be there and cannot be read.
  bool CheckDatafile(const char* key) {
    const std::string file = FileOf("Skin", key);
    const Place place = At(LineOf("Skin", key));
    if (file.empty()) return true;
    if (!CheckFile(findings_, place, file)) return false;
    const bool isElements = key == std::string{"main_data"};
    Datafile data;
    if (!data.Load(file.c_str())) {
      findings_.Add(Msg::kBadData, place, {file});
      return false;
    }
    std::vector<std::string> names{std::begin(kElementNames), std::end(kElementNames)};
    std::vector<std::string> others{std::begin(kCursorNames), std::end(kCursorNames)};
    if (!isElements) names.swap(others);
    const auto has = [](const std::vector<std::string>& known, const Object& object) {
      return std::any_of(known.begin(), known.end(), [&object](const std::string& name) {
        return Upper(name) == Upper(object.name);
      });
    };
    const auto isAnyOf = [&](const std::vector<std::string>& known) {
      return std::any_of(data.Objects().begin(), data.Objects().end(),
                         [&](const Object& object) { return has(known, object); });
    };
    if (isAnyOf(others) && !isAnyOf(names)) {
      findings_.Add(Msg::kNotAFile, place,
                    {file, isElements ? "a datafile of pointer shapes" : "a datafile of elements"});
      return false;
    }
    names.emplace_back("XTRA_PALETTE");
    for (const Object& object : data.Objects()) {
      const bool isKnown = has(names, object);
      // An editor of datafiles writes about itself.
      const bool isInfo = object.type == DAT_ID('i', 'n', 'f', 'o') || object.name.empty();
      if (!isKnown && !isInfo)
        findings_.Add(Msg::kUnknownElement, place, {object.name, file},
                      Nearest(object.name, names));
    }
    return AreScaledSound(place, file, data);
  }

  // Those for larger screens beside it.
  bool AreScaledSound(const Place& place, const std::string& file, const Datafile& data) {
    bool areSound = true;
    for (const int scale : {2, 3}) {
      const std::string scaled = ArtName(file, scale);
      if (!IsThere(scaled)) continue;
      if (!CheckFile(findings_, place, scaled)) {
        areSound = false;
        continue;
      }
      if (Datafile larger; larger.Load(scaled.c_str())) {
        CheckScaledSizes(place, data, larger, scaled, scale);
        continue;
      }
      findings_.Add(Msg::kBadData, place, {scaled});
      areSound = false;
    }
    return areSound;
  }

  // One that was drawn for another datafile has many such pictures.
  void CheckScaledSizes(const Place& place, const Datafile& data, const Datafile& larger,
                        const std::string& file, int scale) {
    std::string name;
    Size first, wanted, drawn;
    int count = 0;
    for (const Object& object : data.Objects()) {
      const Object* other = larger.Find(object.name.c_str(), DAT_BITMAP);
      if (object.type != DAT_BITMAP || !other) continue;
      const Size size = SizeOf(object), scaled{size.w * scale, size.h * scale};
      if (SizeOf(*other) == scaled || count++ > 0) continue;
      name = object.name;
      first = size, wanted = scaled, drawn = SizeOf(*other);
    }
    const std::string others = " (as " + std::to_string(count - 1) + " more)";
    if (count > 0)
      findings_.Add(Msg::kScaledSize, place,
                    {name + " of " + file + (count > 1 ? others : ""), NameOf(drawn),
                     std::to_string(scale), NameOf(first), NameOf(wanted)});
  }

  void CheckElements() {
    const std::string file = FileOf("Skin", "main_data");
    const Place place = At(LineOf("Skin", "main_data"));
    Datafile data;
    if (file.empty() || !data.Load(file.c_str())) return;
    for (int id = 0; id < kElementCount; ++id) {
      const char* name = kElementNames[id];
      const Object* object = data.Find(name, DAT_BITMAP);
      const BitmapPtr picture = object ? MakePicture(*object) : nullptr;
      if (!picture) continue;
      const Size grid = kElementGrids[id], size{picture->w, picture->h};
      if (size.w % grid.w != 0 || size.h % grid.h != 0) {
        const std::string frames = grid.w == 1   ? std::to_string(grid.h) + " rows"
                                   : grid.h == 1 ? std::to_string(grid.w) + " columns"
                                                 : std::to_string(grid.w) + " columns and " +
                                                       std::to_string(grid.h) + " rows";
        findings_.Add(Msg::kElementFrames, place, {name, NameOf(size), frames});
        continue;
      }
      const Size frame{size.w / grid.w, size.h / grid.h};
      const Size tile = ReadTile(content_, name, *object);
      CheckTile(name, kTileNumbers[0], tile.w, frame, frame.w);
      CheckTile(name, kTileNumbers[1], tile.h, frame, frame.h);
      CheckMask(id, *picture, place);
    }
    std::map<std::string, std::string> files;  // by what they lack
    for (const int scale : {2, 3})
      if (const Art art = FindArt(file.c_str(), scale); art.scale == scale) {
        std::string& names = files[Missing(data, art.path)];
        names += (names.empty() ? "" : ", ") + art.path;
      }
    for (const auto& [missing, names] : files)
      if (!missing.empty()) findings_.Add(Msg::kElementMissing, place, {names, missing});
  }

  // What shows magenta where its picture is transparent.
  void CheckMask(int id, BITMAP& picture, const Place& place) {
    constexpr int kOpaque[] = {BUTTON,       LIST,         PANEL_RAISED, PANEL_SUNKEN,
                               PANEL_RIDGE,  PANEL_GROOVE, BOX_SHADDOW,  WINDOW,
                               SCROLL_HBACK, SCROLL_VBACK, SCROLL_HGRIP, SCROLL_VGRIP};
    if (std::find(std::begin(kOpaque), std::end(kOpaque), id) == std::end(kOpaque)) return;
    const int mask = bitmap_mask_color(&picture);
    for (int y = 0; y < picture.h; ++y)
      for (int x = 0; x < picture.w; ++x)
        if (getpixel(&picture, x, y) == mask)
          return findings_.Add(Msg::kElementMask, place, {kElementNames[id]});
  }

  // The elements that the datafile for a larger screen lacks, where it stands for the whole one.
  static std::string Missing(const Datafile& data, const std::string& file) {
    Datafile scaled;
    std::string missing;
    if (!scaled.Load(file.c_str())) return missing;
    for (const char* name : kElementNames)
      if (data.Find(name, DAT_BITMAP) && !scaled.Find(name, DAT_BITMAP))
        missing += (missing.empty() ? "" : ", ") + std::string{name};
    return missing;
  }

  void CheckTile(const char* name, const ObjectNumber& number, int tile, Size frame, int most) {
    if (tile == -1 || (tile > 0 && tile <= most)) return;
    const std::string key = KeyOf(name, number);
    const bool isHere = content_.Find(number.section).Find(key.c_str());
    findings_.Add(Msg::kElementTile,
                  At(isHere ? LineOf(number.section, key.c_str()) : LineOf("Skin", "main_data")),
                  {name, std::to_string(tile), NameOf(frame)});
  }

  // A font file that is named there. False for one that is none.
  bool CheckFont(const Place& place, const std::string& file) {
    if (!CheckFile(findings_, place, file)) return false;
    Font font;
    if (!font.Load(file.c_str()).IsError()) return true;
    findings_.Add(Msg::kBadFont, place, {file});
    return false;
  }

  bool CheckFonts() {
    bool areSound = true;
    for (const Section& section : content_.Sections()) {
      if (!IsFontSection(section.Name())) continue;
      const char* name = section.Name().c_str();
      for (const std::string& file : ListParts(section.GetText("fallback")))
        areSound = CheckFont(At(LineOf(name, "fallback")), Beside(file)) && areSound;
      const std::string file = FileOf(name, "file");
      if (file.empty() && !section.Entries().empty() && names_.contains(Upper(section.Name())))
        findings_.Add(Msg::kNoFontFile, At(section.Heads().front()), {section.Name()});
      // Texts are in font 0 that no skin says otherwise.
      if (!file.empty() && content_.Find("FONT0").Heads().empty() && areSound) {
        findings_.Add(Msg::kNoFontFile, At(section.Heads().front()), {"FONT0"});
        areSound = false;
      }
      if (!file.empty()) areSound = CheckFont(At(LineOf(name, "file")), file) && areSound;
      if (const auto* size = section.Find("size")) CheckSize(*size);
    }
    return areSound;
  }

  void CheckSize(const SectionFile::Entry& size) {
    constexpr int kDecimal = 10, kMost = 1000;
    char* end = nullptr;
    const long height = std::strtol(size.value.c_str(), &end, kDecimal);
    // Whether it is a number has been looked at.
    if (end != size.value.c_str() && (height < 1 || height > kMost))
      findings_.Add(Msg::kRange, At(size.line), {"size", size.value, "1", std::to_string(kMost)});
  }

  void Compare(const char* section, const char* key, Color text, Color ground) {
    if (!text.IsSet() || !ground.IsSet()) return;
    const double contrast = Contrast(text, ground);
    if (contrast >= kLeastContrast) return;
    findings_.Add(Msg::kContrast, At(LineOf(section, key)),
                  {std::string{"["} + section + "] " + key, Decimal(contrast)});
  }

  void CheckContrast(const Skin& skin) {
    const auto color = [&skin](TextSet set, DrawState state) { return skin.fontColor[set][state]; };
    Compare("COLORS", "fontface", skin.colors[kFontFace], skin.colors[kFace]);
    // Otherwise the look sees to it.
    if (skin.menu.leastContrast <= 0) {
      Compare("LIST", "f_col1", color(kListText, kNormal), MiddleOf(skin, LIST, 0, kListStates));
      Compare("LIST", "f_col2", color(kListText, kSelected), MiddleOf(skin, LIST, 5, kListStates));
      Compare("TEXT", "f_col1", color(kEditText, kNormal), MiddleOf(skin, PANEL_SUNKEN, 0, 1));
    }
    const MenuLook& look = skin.menu;
    // Where the skin says none, it is dark blue.
    Compare("WAIT", "countdownColor", look.countdown.IsSet() ? look.countdown : Color{darkblue},
            look.countdownGround.IsSet() ? look.countdownGround : skin.colors[kBack]);
    Compare("TOOLTIP", "f_col1", color(kTooltipText, kNormal), skin.tooltipBackColor);
    Compare("WINDOW", "f_col2", color(kWindowText, kSelected), MiddleOf(skin, WINGRIP, 0, 2));
    const char* keys[] = {"f_col1", "f_col2", "f_col3", "f_col4"};
    for (int state = 0; state < kDrawStates; ++state)
      if (state != kDisabled)
        Compare("BUTTON", keys[state], color(kButtonText, static_cast<DrawState>(state)),
                MiddleOf(skin, BUTTON, state, kDrawStates));
  }

  // False for a font with which nothing fits.
  bool CheckListFont(const Skin& skin) {
    constexpr int kRows = 4, kHeight = 480;  // of the least usual screen
    const int number = skin.fontIndex[kListText][kNormal];
    if (number < 0 || number >= Skin::kFonts) return true;
    const int height = skin.fonts[static_cast<std::size_t>(number)]->TextHeight();
    if (kRows * height <= kHeight) return true;
    const std::string section = "FONT" + std::to_string(number);
    findings_.Add(Msg::kFontHigh, At(LineOf(section.c_str(), "size")),
                  {std::to_string(height), "of 480 that a screen may have", "take a smaller size"});
    return false;
  }

  // A bar that the skin does not draw as high as its font cuts the titles.
  void CheckTitleBar(const Skin& skin) {
    const int font = skin.fontIndex[kWindowText][kSelected];
    // Bars grow with the rows, of which it is said.
    const int list = skin.fontIndex[kListText][kNormal];
    if (font < 0 || font >= Skin::kFonts || (list == font && HasLowRows(skin))) return;
    const auto height = [&skin](int element) {
      return skin.bitmaps[static_cast<std::size_t>(element)]->Height() / 2;
    };
    const int bar = height(WINTOP) + height(WINGRIP), top = skin.windowTextPos.y;
    const int text = skin.fonts[static_cast<std::size_t>(font)]->TextHeight();
    // Few letters reach down into the last of it. One that is too high for anything is said to be.
    if (top + text - bar > text / 5 && text < 2 * bar)
      findings_.Add(Msg::kTitleBarLow, At(LineOf("WINDOW", "textY")),
                    {std::to_string(text), std::to_string(top), std::to_string(bar)});
  }

  Findings& findings_;
  std::string name_;
  bool areColors_ = true;  // that others stand on
  bool isMeant_ = true;    // no section is misspelt
  SectionFile content_;
  std::map<std::pair<std::string, std::string>, SkinKey> keys_;
  std::map<std::string, std::vector<std::string>> names_;
  std::set<std::string> sections_;
};

// A file with sections, none of which is one of a skin's or nearly so.
bool IsMeantOtherwise(const std::string& text) {
  std::vector<std::string> known{"PACK"};  // of a project, which has a message of its own
  for (const SkinKey& key : SkinKeys()) known.push_back(key.section);
  const SectionFile content = SectionFile::FromUtf8(text);
  return !content.Sections().empty() &&
         std::none_of(content.Sections().begin(), content.Sections().end(),
                      [&known](const Section& s) {
                        return Upper(s.Name()) != Upper(kSettingsSection) &&
                               !Nearest(s.Name(), known).empty();
                      });
}

}  // namespace

bool IsSkinSection(const std::string& name) {
  const std::vector<SkinKey> keys = SkinKeys();
  return std::any_of(keys.begin(), keys.end(),
                     [&name](const SkinKey& key) { return Upper(key.section) == Upper(name); });
}

bool DescribesSkin(const std::string& text) {
  const SectionFile content = SectionFile::FromUtf8(text);
  return std::any_of(content.Sections().begin(), content.Sections().end(),
                     [](const Section& section) { return IsSkinSection(section.Name()); });
}

Color MiddleOf(const Skin& skin, int element, int frame, int frames) {
  const SkinBitmap& picture = *skin.bitmaps[static_cast<std::size_t>(element)];
  if (picture.IsEmpty()) return {};
  const int height = picture.Height() / frames;
  const int pixel = getpixel(picture.GetBitmap(), picture.Width() / 2, frame * height + height / 2);
  Color color;
  if (pixel >= 0 && pixel != magenta) color = Color{getr(pixel), getg(pixel), getb(pixel)};
  return color;
}

bool HasLowRows(const Skin& skin) {
  const SectionFile& file = skin.File();
  return skin.skinFile && !file.Find("Skin").Find("main_data") && !file.Find("LIST").Find("height");
}

bool CheckSkin(Findings& findings, const Place& named, const std::string& name) {
  if (name.empty() || name == "default") return true;
  if (!CheckFile(findings, named, name)) return false;
  if (Datafile data; data.Load(name.c_str())) {
    const std::string skin = name.substr(0, name.rfind('.')) + ".skin";
    findings.Add(Msg::kNotAFile, named, {name, "a datafile"},
                 IsFile(skin.c_str()) ? skin : std::string{});
    return false;
  }
  if (IsMeantOtherwise(ReadText(name.c_str(), kLongestConfigFile))) {
    findings.Add(Msg::kNotAFile, named, {name, "no description of a skin"});
    return false;
  }
  return SkinCheck{findings, name}.Run(named);
}

}  // namespace zel
