#include "tools/skin/look_description.h"

#include <algorithm>
#include <map>
#include <utility>

namespace zel {
namespace {

struct NamedLookColor {
  const char* name;
  Color LookColors::*color;
};
constexpr NamedLookColor kColors[] = {
    {"face", &LookColors::face},         {"sunken", &LookColors::sunken},
    {"back", &LookColors::back},         {"panel", &LookColors::panel},
    {"button", &LookColors::button},     {"tooltip", &LookColors::tooltip},
    {"text", &LookColors::text},         {"quiet", &LookColors::quiet},
    {"disabled", &LookColors::disabled}, {"mark", &LookColors::mark},
    {"onAccent", &LookColors::onAccent}, {"select", &LookColors::select},
    {"field", &LookColors::fieldEdge},   {"focus", &LookColors::focus},
    {"idle", &LookColors::idle},         {"light", &LookColors::light},
    {"edge", &LookColors::edge},         {"edgeOff", &LookColors::edgeOff},
    {"grey", &LookColors::grey},         {"rule", &LookColors::rule},
};

// What the room above and below a menu's panels holds, in pixels.
constexpr int kHeading = 36, kSmallPrint = 18;

// Words in braces are colours, names and measures.
constexpr const char* kBeginning = R"(# {title}
#
# The pictures and this text are made to be changed; zel-skin pack makes the skin of them.

[Skin]
title = {title}
main_data = {elements}
cursors = {pointers}
dottedRect = 0
focus = 2

[COLORS]
face = {face}
fontface = {text}
shad1 = {light}
shad2 = {edge}
disable = {disabled}
select = {select}
deselect = {button}
focus = {focus}
sunken = {sunken}
back = {back}
contrast = 4.5
)";

// Behind those of the text sections that have more.
constexpr const char* kMore[][2] = {
    {"BUTTON", "displacement = 1\nanimationType = 1\nanimationLength = 120\n"},
    {"LIST", "height = {row}\n"},
    {"MENU", "height = {menuRow}\ndelay = 300\n"},
    {"WINDOW",
     "textX = {barText}\ntextY = {barTextY}\nalignment = 0\ntextBack = 0\nexitX = {exitX}\n"
     "exitY = {iconY}\nmaxX = {maxX}\nmaxY = {iconY}\nminX = {minX}\nminY = {iconY}\n"},
    {"TOOLTIP",
     "backColor = {tooltip}\nborderColor = {edge}\nanimationType = 1\nanimationLength = 120\n"},
};

constexpr const char* kEnd = R"(
[BOX]
font1 = 0
f_col1 = {text}
f_col2 = {disabled}
s_col1 = -1
s_col2 = -1
offX = 8
offY = 1
backColor = {face}
alignment = 0
borderColor = {edgeOff}

[PANEL]
backColor = {panel}
borderColor = {edgeOff}
focusBorderColor = {field}
border = 1
radius = 8
paddingX = 8
paddingY = 8

[TITLE]
font = 1
color = {quiet}
height = {titleHeight}
alignment = 0
textX = 10

[ENTRY]
color = {text}
selectColor = {text}
disableColor = {disabled}
returnColor = {quiet}
separatorColor = {rule}
fieldColor = {select}
fieldBorderColor = {field}
idleColor = {idle}
idleBorderColor = {edgeOff}
fieldX = 0
fieldY = 0
fieldRadius = 6
fieldBorder = 1
iconX = 10
textX = 44
markX = 14
separatorHeight = 10
wrap = 1

[HINT]
paddingX = 10
paddingY = 4

# The picture behind the menu shows with 1; its colours are to suit these.
[SCREEN]
picture = 0
headingColor = {text}
keyHelpColor = {quiet}

[WAIT]
countdownColor = {mark}
countdownBackColor = {face}

[BAR]
color = {field}
backColor = {grey}
borderColor = {grey}

[WALLPAPER]
style = 3

[COMBOBOX]
animationType = 6
animationLength = 120

[MOUSE]
shadowColor = 0,0,0
shadowSize = 2
shadowOffsetX = 2
shadowOffsetY = 2
)";

// Text colours of the states normal, selected, disabled, focused.
struct TextColors {
  const char* section;
  const char* colors[4];
};
constexpr TextColors kTexts[] = {
    {"BUTTON", {"text", "onAccent", "disabled", "text"}},
    {"CHECKBOX", {"text", "text", "disabled", "text"}},
    {"RADIO", {"text", "text", "disabled", "text"}},
    {"LIST", {"text", "text", "disabled", "text"}},
    {"TEXT", {"text", "text", "disabled", "text"}},
    {"MENU", {"text", "onAccent", "disabled", "text"}},
    {"PROGRESS", {"text", "text", "disabled", "text"}},
    {"WINDOW", {"text", "text", "quiet", "text"}},
    {"HYPER", {"mark", "mark", "disabled", "mark"}},
    {"TAB", {"text", "text", "disabled", "text"}},
    {"TOOLTIP", {"text", "text", "disabled", "text"}},
    {"LABEL", {"text", "text", "disabled", "text"}},
};

std::string FontSections() {
  // The sizes are those of plain texts, titles, headings, the heading of the menu and small print.
  constexpr const char* kFonts[][2] = {{"{font}", "{size}"},
                                       {"{bold}", "{size}"},
                                       {"{bold}", "{size2}"},
                                       {"{bold}", "{size3}"},
                                       {"{font}", "{size4}"}};
  std::string text;
  for (int i = 0; const auto& [font, size] : kFonts)
    text +=
        "\n[FONT" + std::to_string(i++) + "]\nfile = " + font + "\n{fallback}size = " + size + '\n';
  return text;
}

std::string TextSections() {
  std::string text;
  for (const TextColors& set : kTexts) {
    const std::string section = set.section;
    text += "\n[" + section + "]\n";
    for (int i = 1; i <= 4; ++i)
      text += "font" + std::to_string(i) + " = " + (section == "WINDOW" ? "1" : "0") + '\n';
    for (int i = 1; const char* color : set.colors)
      text += "f_col" + std::to_string(i++) + " = {" + color + "}\n";
    for (int i = 1; i <= 4; ++i) text += "s_col" + std::to_string(i) + " = -1\n";
    for (const auto& [name, more] : kMore)
      if (section == name) text += more;
  }
  return text;
}

std::string Filled(const std::string& form, const std::map<std::string, std::string>& words) {
  std::string text;
  for (std::size_t at = 0; at < form.size();) {
    const std::size_t open = form.find('{', at), close = form.find('}', open);
    text += form.substr(at, open - at);
    if (close == std::string::npos) break;
    text += words.at(form.substr(open + 1, close - open - 1));
    at = close + 1;
  }
  return text;
}

}  // namespace

std::string DescribeLook(const Look& look, const LookNames& names) {
  const int size = look.TextSize(), icon = look.Units(16), bar = look.BarHeight();
  const int between = icon + look.Units(6), exit = -icon - look.Units(12);
  std::string fallbacks;
  for (const std::string& font : names.fallbacks)
    fallbacks += (fallbacks.empty() ? "fallback = " : ", ") + font;
  std::map<std::string, std::string> words{
      {"title", names.title},       {"elements", names.elements},
      {"pointers", names.pointers}, {"font", names.font},
      {"bold", names.bold},         {"fallback", fallbacks.empty() ? fallbacks : fallbacks + '\n'},
  };
  for (const NamedLookColor& named : kColors) {
    const Color color = look.Colors().*named.color;
    words[named.name] = std::to_string(color.r()) + ',' + std::to_string(color.g()) + ',' +
                        std::to_string(color.b());
  }
  const std::pair<const char*, int> numbers[] = {
      {"size", size},
      {"size2", size * 4 / 3},
      {"size3", std::max(size, std::min(size * 16 / 9, kHeading))},
      {"size4", std::min(size * 8 / 9, kSmallPrint)},
      {"row", look.RowHeight()},
      {"menuRow", look.Units(20)},
      {"titleHeight", 2 * size},
      {"barText", look.Units(14)},
      {"barTextY", Look::BarBorder() + (bar - size) / 2},
      {"iconY", Look::BarBorder() + (bar - icon) / 2},
      {"exitX", exit},
      {"maxX", exit - between},
      {"minX", exit - 2 * between},
  };
  for (const auto& [name, number] : numbers) words[name] = std::to_string(number);
  return Filled(kBeginning + FontSections() + TextSections() + kEnd, words);
}

std::vector<Color> LookTextColors(const LookColors& colors) {
  std::vector<Color> all{{0, 0, 0}, {255, 255, 255}};
  for (const NamedLookColor& named : kColors) all.push_back(colors.*named.color);
  return all;
}

}  // namespace zel
