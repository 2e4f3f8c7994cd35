#include "tools/checker/messages.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>

namespace zel {
namespace {

constexpr auto kW = Severity::kWarning;
constexpr auto kE = Severity::kError;

constexpr Message kMessages[] = {
    {Msg::kMissingFile, "missing-file", kE, "there is no file {0}", "make it, or correct the name"},
    {Msg::kMissingDirectory, "missing-directory", kE, "there is no directory {0}",
     "make it, with {1} in it, or correct the name"},
    {Msg::kMissingMenu, "missing-menu", kE, "there is no such file, and the menu is empty",
     "make it, or name the directory that holds it"},
    {Msg::kMissingSettings, "missing-settings", kW,
     "there is no such file, and all settings have their defaults",
     "make it: what depends on settings is looked at then"},
    {Msg::kMissingProgress, "missing-progress", kW,
     "there is no picture {0}, and the progress bar stays empty",
     "make it, or take the one of the example"},
    {Msg::kNotAFile, "not-a-file", kE, "{0} is {1}", "name a file"},
    {Msg::kUnreadable, "unreadable", kE, "{0} cannot be read: {1}",
     "see to the rights of file and directories"},
    {Msg::kWritable, "writable", kW, "other users may write to {0}",
     "take the right from them: chmod o-w {0}"},
    {Msg::kTooLarge, "too-large", kE, "is larger than {0}, and counts as empty", "make it smaller"},
    {Msg::kBinary, "binary", kE, "has zero bytes and is no text", "write it as plain UTF-8"},
    {Msg::kEmptyFile, "empty-file", kW, "{0}, as if it were not there", "write it anew"},
    {Msg::kNameAscii, "name-ascii", kW, "the name {0} has letters beyond ASCII",
     "rename it, for not every system and disc writes them alike"},
    {Msg::kNameLong, "name-long", kE, "the name is cut to {1} bytes", "shorten it"},
    {Msg::kNameOutside, "name-outside", kW, "{0} {1} the directory of the menu", "{2}"},
    {Msg::kBadPicture, "bad-picture", kE, "{0} is no picture that can be read",
     "save it anew as BMP, PCX, LBM, TGA, JPEG or PNG, with that extension"},
    {Msg::kScaledSize, "scaled-size", kW, "{0} is {1}, and {2} times {3} is {4}",
     "draw it anew, or remove it"},

    {Msg::kLooseKey, "loose-key", kE, "{0} stands before the first section, where nobody reads it",
     "move it below [{1}]"},
    {Msg::kUnknownSection, "unknown-section", kE, "nobody reads the section [{0}]",
     "correct its name, or remove it"},
    {Msg::kUnnamedSection, "unnamed-section", kW,
     "[{0}] holds the settings only because there is no [Toolkit]", "call it [Toolkit]"},
    {Msg::kSizeUnread, "size-unread", kE, "[{0}] is read only with a zoom other than 1",
     "write zoom = auto into zel.cfg, or remove the section"},
    {Msg::kUnknownKey, "unknown-key", kE, "nobody reads the key {0} here",
     "correct its name, or remove it"},
    {Msg::kWrongSection, "wrong-section", kE, "nobody reads {0} in [{1}]", "move it below {2}"},
    {Msg::kBadHead, "bad-head", kE, "\"{0}\" begins no section", "write it as [{1}]"},
    {Msg::kBehindHead, "behind-head", kE, "nobody reads {0} behind {1}",
     "write it on a line of its own"},
    {Msg::kNoEquals, "no-equals", kW, "there is no \"=\" {1} \"{0}\"",
     "write KEY = VALUE, or # before a comment"},
    {Msg::kSectionTwice, "section-twice", kW,
     "[{0}] has begun in line {1} already; of each key the first counts",
     "give it another number, or join the two"},
    {Msg::kKeyTwice, "key-twice", kW, "{0} stands in line {1} already, and that one counts",
     "remove one of the two"},
    {Msg::kHeadMissing, "head-missing", kE,
     "{0} and {1} keys behind it stand in this section already, and those count",
     "write the head of their own section above"},
    {Msg::kEmptyValue, "empty-value", kW, "{0} has no value, as if it were not there",
     "write a value, or remove the line"},
    {Msg::kQuotes, "quotes", kW, "the quotes around {0} are part of the value", "remove them"},
    {Msg::kComment, "comment", kW, "the comment behind {0} is part of the value",
     "write it on a line of its own, above"},
    {Msg::kAllowUnknown, "allow-unknown", kW, "there is no message {0} to allow",
     "see zel-check --explain for their names"},
    {Msg::kAllowForm, "allow-form", kW, "\"{0}\" allows nothing", "write ; zel-check: allow {1}"},
    {Msg::kAllowUnused, "allow-unused", kW, "there is no {0} on the next line",
     "remove the comment"},

    {Msg::kNoNumber, "no-number", kE, "\"{1}\" of {0} is no number and counts as {2}",
     "write digits only"},
    {Msg::kLargeNumber, "large-number", kE, "{1} of {0} is too large and counts as {2}",
     "write fewer digits"},
    {Msg::kOctal, "octal", kW, "{1} of {0} is octal for its leading 0, and counts as {2}",
     "write {2}, or 0 and x before a hexadecimal number"},
    {Msg::kNoColor, "no-colour", kE, "\"{1}\" of {0} is no colour",
     "write red, green and blue from 0 to 255, as 255,170,0"},
    {Msg::kNoZoom, "no-zoom", kE, "\"{1}\" of {0} is no zoom", "write a number from 1 to 8{2}"},
    {Msg::kNoSwitch, "no-switch", kW, "{1} of {0} counts as on", "write 0 or 1"},
    {Msg::kRange, "range", kW, "{1} of {0} is outside {2} to {3}", "write a number between them"},
    {Msg::kNoDepth, "no-depth", kE, "no screen has a colour depth of {0} bits",
     "write 8, 15, 16, 24 or 32"},
    {Msg::kNoMode, "no-mode", kW, "{2} screen has a mode of {0}",
     "take one of the usual sizes, such as {1}"},
    {Msg::kNoDriver, "no-driver", kE, "{0} is no driver of gfxMode, and the size is not taken",
     "write 0, with which one is found"},
    {Msg::kNoKeyboard, "no-keyboard", kW, "nobody can choose without a mouse",
     "write useKeyboard = 1"},
    {Msg::kNoWindow, "no-window", kW,
     "the console has no windows, and the size and the depth are not taken there",
     "write fullscreen = 1"},
    {Msg::kLookTwice, "look-twice", kW,
     "{0} stands in looks twice, and F2 does not get beyond the second one",
     "remove one of the two"},
    {Msg::kLookLeft, "look-left", kW,
     "F2 leads away from {0}, which is not in looks, and never back", "write it there too"},

    {Msg::kLinesNumber, "lines-number", kE, "LinesNumber is {0}, and {1} does not show",
     "write LinesNumber = {2}"},
    {Msg::kEmptyMenu, "empty-menu", kE, "the menu has no items", "write [LINE1] and so on"},
    {Msg::kNoMenu, "no-menu", kE, "{0} is no menu", "name a file with [LINE1] and so on"},
    {Msg::kAllDisabled, "all-disabled", kE, "no item of the menu can be chosen",
     "take Disable from one of them"},
    {Msg::kNeverShown, "never-shown", kE,
     "[{0}] never shows, for it has neither title nor icon nor separator", "write a Title"},
    {Msg::kNotInEnglish, "not-in-english", kE,
     "[{0}] shows in some languages only, for there is no {1} without one", "write {1}"},
    {Msg::kSameTitle, "same-title", kW,
     "nobody can tell [{0}] from [{1}], which has the same title", "write another title"},
    {Msg::kCircle, "circle", kW, "{0} leads back here",
     "end the circle: each menu has its way back"},

    {Msg::kNoDefault, "no-default", kE, "[LINE{0}] is no item that can be chosen by itself",
     "write the number of one that can"},
    {Msg::kDefaultSubmenu, "default-submenu", kW,
     "[LINE{0}] opens a submenu, where nothing more is chosen by itself",
     "write the number of an item without Submenu"},
    {Msg::kStatusCut, "status-cut", kE, "scripts see {0} as {1}", "write a number from 2 to 125"},
    {Msg::kStatusFailure, "status-failure", kW, "scripts take the status {0} for {1}",
     "write a number from 2 to 125"},
    {Msg::kStatusZero, "status-zero", kW,
     "status 0 without ExString tells scripts nothing, and the position is forgotten",
     "write an ExString, or a number from 2 to 125"},
    {Msg::kNoStatus, "no-status", kW, "without ExCode the status is 0, as after a failure",
     "write ExCode, 0 too where that is meant"},
    {Msg::kNoChoice, "no-choice", kE,
     "[{0}] has neither ExCode nor ExString, and scripts do not see what was chosen",
     "write ExCode"},
    {Msg::kSameChoice, "same-choice", kW,
     "scripts cannot tell [{0}] from [{1}] in {2}, which has the same ExCode and ExString",
     "give each one its own"},
    {Msg::kSameStatus, "same-status", kW,
     "[{0}] has the ExCode of [{1}] in {2}, and all others have one of their own",
     "give each one its own"},
    {Msg::kStringLong, "string-long", kE, "ExString is cut to 255 bytes", "shorten it"},
    {Msg::kStringAscii, "string-ascii", kW,
     "letters of ExString beyond ASCII reach scripts in the encoding of the language", "use ASCII"},
    {Msg::kStringShell, "string-shell", kW, "no shell reads ExString, and {0} of it does nothing",
     "write a script with this command, and its name here"},
    {Msg::kStringWord, "string-word", kW,
     "{0} is none of the words that have a meaning of their own", "write {1}"},
    {Msg::kNotExecutable, "not-executable", kE, "{0} cannot be started", "say chmod 755 {0}"},
    {Msg::kScriptEnds, "script-ends", kE,
     "{0} cannot be started, for its lines end with a carriage return",
     "save it with the line ends of Unix"},
    {Msg::kSubmenuChoice, "submenu-choice", kW, "{0} has no effect beside Submenu",
     "remove one of the two"},
    {Msg::kNoEffect, "no-effect", kW, "{0} has no effect {1}", "remove it"},
    {Msg::kBothWaits, "both-waits", kW, "beside WaitWhileFile, WaitForFile has no effect",
     "remove one of the two"},
    {Msg::kWaitRelative, "wait-relative", kW, "{0} of {1} is looked for among the menu's files",
     "write the whole path, from / on"},
    {Msg::kWildcard, "wildcard", kW, "{0} of {1} is looked for as it is written",
     "write the name of one file"},
    {Msg::kWaitSlash, "wait-slash", kW, "{0} of {1} can only be a directory",
     "remove the / at its end"},
    {Msg::kTimeoutAlone, "timeout-alone", kW, "there is no file that Timeout would wait for",
     "write WaitForFile or WaitWhileFile, or remove it"},
    {Msg::kTimeoutEndless, "timeout-endless", kW, "a Timeout of {0} waits without end",
     "write a number of seconds, or remove it"},
    {Msg::kTimeoutLong, "timeout-long", kW, "a Timeout of {0} seconds is more than an hour",
     "write seconds, not milliseconds"},

    {Msg::kMenuEncoding, "menu-encoding", kE, "this line is not UTF-8",
     "convert the file, as by iconv -f ISO-8859-15 -t UTF-8"},
    {Msg::kHintEncoding, "hint-encoding", kE,
     "this line is {0}, but explanations in {1} are read as {2}",
     "convert the file, as by iconv -f {3} -t {2}"},
    {Msg::kEncodedTwice, "encoded-twice", kE, "\"{0}\" was converted to UTF-8 twice",
     "convert the file back once, as by iconv -f UTF-8 -t ISO-8859-1"},
    {Msg::kMarkup, "markup", kW, "\"{0}\" shows as it is written",
     "write the character itself, and no tags"},
    {Msg::kNoLetter, "no-letter", kW,
     "\"{0}\" shows as ^ in {1}, whose encoding {2} does not have it",
     "write it otherwise, or unicode = 1 into zel.cfg"},
    {Msg::kNoGlyph, "no-glyph", kW, "the skin's font {1} has no picture of \"{0}\"",
     "name one that has it in fallback = of [FONT{1}], or write it otherwise"},
    {Msg::kControl, "control", kW, "{0} shows as a box", "remove it, or write a blank"},
    {Msg::kNoLanguage, "no-language", kE, "{0}: no language has the suffix {1}", "use one of {2}"},
    {Msg::kUntranslated, "untranslated", kW, "there is no {0}, which its neighbours have",
     "write {1}"},
    {Msg::kFewTranslated, "few-translated", kW, "in {0} only {1} of {2} {3} are translated",
     "translate the others too"},
    {Msg::kLeftInEnglish, "left-in-english", kW, "{0} says the same as in English", "translate it"},
    {Msg::kTextLong, "text-long", kW, "{0} is cut to {1} bytes", "shorten it"},
    {Msg::kWaitTextLong, "wait-text-long", kW,
     "{0} is {1} pixels wide, and two lines of the waiting window have room for {2}", "shorten it"},
    {Msg::kKeyHelp, "key-help", kW, "{0} does nothing, of which KeyHelp tells",
     "write {1} into zel.cfg, or tell of other keys"},
    {Msg::kOtherLanguage, "other-language", kW, "{0} names {1}, which is called like one in {2}",
     "name the file of this language"},
    {Msg::kNoHintFile, "no-hint-file", kE, "there is no HintFile for the text {0}",
     "write HintFile into [MENU_CONFIGURATION]"},
    {Msg::kNoHints, "no-hints", kE, "{0} is {1}, and nothing is explained",
     "name a file with a text between [NAME] and [end:NAME] for each item"},
    {Msg::kHintMissing, "hint-missing", kE, "there is no text {0} in {1}",
     "write it, or correct the name"},
    {Msg::kHintUntranslated, "hint-untranslated", kW, "the text {0} is in {2}, but not in {1}",
     "{3}"},
    {Msg::kHintCopied, "hint-copied", kW, "{1} of {2} texts are those of {0}",
     "translate them, or write the file anew in its language"},
    {Msg::kHintUnused, "hint-unused", kW, "no item shows the text {0}{1}",
     "name it as HintSection of an item, or remove it"},
    {Msg::kHintTwice, "hint-twice", kW,
     "the text {0} begins in line {1} already, and that one counts", "remove one of the two"},
    {Msg::kHintOpen, "hint-open", kE, "no line closes the text {0}{1}",
     "write [end:{0}] behind it"},
    {Msg::kHintOutside, "hint-outside", kE,
     "nobody sees the lines from here to [end:{0}], for no head begins their text",
     "write [{0}] above them"},
    {Msg::kHintLong, "hint-long", kE, "the text {0} is cut to 4096 characters", "shorten it"},

    {Msg::kHintLineLong, "hint-line-long", kW, "the line is cut to 2047 bytes",
     "break it into several lines"},
    {Msg::kHintList, "hint-list", kW, "the lines of this list are joined to one",
     "write sentences"},
    {Msg::kNoLayout, "no-layout", kW, "there is no layout for a screen of {0}{2}",
     "write a section [MENU_CONFIGURATION_{0}]{1}"},
    {Msg::kOutside, "outside", kE, "{0} does not fit a screen of {1}", "correct its place or size"},
    {Msg::kOverlap, "overlap", kW, "{0} and {1} lie one over the other on a screen of {2}",
     "move one of the two"},
    {Msg::kNoWidth, "no-width", kE, "{0} has no {1} on a screen of {2}", "write a number above 0"},
    {Msg::kNoRow, "no-row", kE, "{0} has no room for one row on a screen of {1}",
     "make it {2} pixels higher"},
    {Msg::kPanelNarrow, "panel-narrow", kE, "{0} has no room for a word on a screen of {1}",
     "make it wider, or take a smaller font"},
    {Msg::kTitleWide, "title-wide", kW,
     "{0} is {1} pixels wide and has room for {2} on a screen of {3}",
     "shorten it, or widen the menu"},
    {Msg::kMenuNarrow, "menu-narrow", kW,
     "{0} of {1} titles are wider than the menu on a screen of {2}",
     "widen it, or take a smaller font"},
    {Msg::kPanelTitleWide, "panel-title-wide", kW,
     "{0} is {1} pixels wide and its panel has room for {2} on a screen of {3}",
     "shorten it, or widen the panel"},
    {Msg::kFontHigh, "font-high", kW, "the list's font is {0} pixels high, {1}", "{2}"},
    {Msg::kTitleBarLow, "title-bar-low", kW,
     "titles of windows are {0} pixels high from {1} on, and their bar is {2}",
     "draw a higher WINGRIP, or write a smaller textY or font into [WINDOW]"},
    {Msg::kIconLarge, "icon-large", kW, "{0} {3} {1}, and there is room for {2}", "{4}"},
    {Msg::kBackgroundLarge, "background-large", kW,
     "{0} is {1}, and a screen of {2} shows only its upper left part",
     "name a smaller one in [MENU_CONFIGURATION_{2}]"},
    {Msg::kContrast, "contrast", kW, "{0} can hardly be read on its ground: {1} to 1",
     "take colours that differ more, at least 2.5 to 1"},

    {Msg::kBadFont, "bad-font", kE, "{0} is no font that can be read",
     "take one that is sound, in TrueType, OpenType or a format of Allegro's"},
    {Msg::kBadData, "bad-data", kE, "{0} is no datafile that can be read, and the rest is not read",
     "make it anew"},
    {Msg::kNoFont, "no-font", kE, "{0} is {1}, and there is no font of that number",
     "write a number of one of the sections [FONT0] to [FONT7]"},
    {Msg::kNoFontFile, "no-font-file", kE, "[{0}] names no file, and Allegro's own font is taken",
     "write file = and the name of a font"},
    {Msg::kUnknownElement, "unknown-element", kW, "nobody draws the object {0} of {1}",
     "correct its name, or remove it"},
    {Msg::kElementFrames, "element-frames", kE, "{0} is {1} and cannot be cut into {2} alike",
     "draw all frames in the same size"},
    {Msg::kElementTile, "element-tile", kE, "a tile of {1} does not fit {0}, whose frames are {2}",
     "write a number of pixels within the frame"},
    {Msg::kElementMask, "element-mask", kW, "{0} has transparent pixels, which show in magenta",
     "give them the colour of what is behind"},
    {Msg::kElementMissing, "element-missing", kW,
     "there is no {1} in {0}, and large screens show the built-in look there",
     "put it in, or remove the file"},
};
static_assert(std::size(kMessages) == static_cast<std::size_t>(Msg::kCount));
static_assert(std::is_sorted(std::begin(kMessages), std::end(kMessages),
                             [](const Message& a, const Message& b) { return a.id < b.id; }));

// The manual page, from which --explain reads.
constexpr std::string_view kManual =
#include "zel-check.1.inc"
    ;

}  // namespace

const Message& MessageOf(Msg id) { return kMessages[static_cast<std::size_t>(id)]; }

const Message* FindMessage(const std::string& name) {
  const auto* found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                   [&name](const Message& m) { return name == m.name; });
  return found == std::end(kMessages) ? nullptr : found;
}

std::vector<std::string> MessageNames() {
  std::vector<std::string> names;
  for (const Message& message : kMessages) names.emplace_back(message.name);
  return names;
}

std::string Explanation(const Message& message) {
  std::istringstream manual{std::string{kManual}};
  std::string line;
  const std::string head = std::string{".It Cm "} + message.name;
  while (std::getline(manual, line) && line != head) continue;
  std::string text;
  // Of the macros only those that say how a word looks.
  while (std::getline(manual, line) && !line.starts_with(".It") && !line.starts_with(".El"))
    text += (line.starts_with('.') ? line.substr(line.find(' ') + 1) : line) + '\n';
  return text;
}

std::string Filled(const char* text, std::span<const std::string> words) {
  std::string filled;
  for (std::string_view rest{text}; !rest.empty();) {
    const std::size_t number = rest.size() > 2 && rest[0] == '{' ? rest[1] - '0' : words.size();
    if (number < words.size()) filled += words[number];
    const std::size_t length = rest[0] == '{' ? 3 : 1;
    if (length == 1) filled += rest[0];
    rest.remove_prefix(std::min(length, rest.size()));
  }
  return filled;
}

}  // namespace zel
