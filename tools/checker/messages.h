// All that zel-check can say of a menu tree.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace zel {

enum class Severity { kWarning, kError };

// In the order of the table and of the manual's list.
enum class Msg {
  // Files
  kMissingFile,
  kMissingDirectory,
  kMissingMenu,
  kMissingSettings,
  kMissingProgress,
  kNotAFile,
  kUnreadable,
  kWritable,
  kTooLarge,
  kBinary,
  kEmptyFile,
  kNameAscii,
  kNameLong,
  kNameOutside,
  kBadPicture,
  kScaledSize,
  // Lines and sections
  kLooseKey,
  kUnknownSection,
  kUnnamedSection,
  kSizeUnread,
  kUnknownKey,
  kWrongSection,
  kBadHead,
  kBehindHead,
  kNoEquals,
  kSectionTwice,
  kKeyTwice,
  kHeadMissing,
  kEmptyValue,
  kQuotes,
  kComment,
  kAllowUnknown,
  kAllowForm,
  kAllowUnused,
  // Values
  kNoNumber,
  kLargeNumber,
  kOctal,
  kNoColor,
  kNoZoom,
  kNoSwitch,
  kRange,
  kNoDepth,
  kNoMode,
  kNoDriver,
  kNoKeyboard,
  kNoWindow,
  kLookTwice,
  kLookLeft,
  // Items
  kLinesNumber,
  kEmptyMenu,
  kNoMenu,
  kAllDisabled,
  kNeverShown,
  kNotInEnglish,
  kSameTitle,
  kCircle,
  // Choices
  kNoDefault,
  kDefaultSubmenu,
  kStatusCut,
  kStatusFailure,
  kStatusZero,
  kNoStatus,
  kNoChoice,
  kSameChoice,
  kSameStatus,
  kStringLong,
  kStringAscii,
  kStringShell,
  kStringWord,
  kNotExecutable,
  kScriptEnds,
  kSubmenuChoice,
  kNoEffect,
  kBothWaits,
  kWaitRelative,
  kWildcard,
  kWaitSlash,
  kTimeoutAlone,
  kTimeoutEndless,
  kTimeoutLong,
  // Texts
  kMenuEncoding,
  kHintEncoding,
  kEncodedTwice,
  kMarkup,
  kNoLetter,
  kNoGlyph,
  kControl,
  kNoLanguage,
  kUntranslated,
  kFewTranslated,
  kLeftInEnglish,
  kTextLong,
  kWaitTextLong,
  kKeyHelp,
  kOtherLanguage,
  kNoHintFile,
  kNoHints,
  kHintMissing,
  kHintUntranslated,
  kHintCopied,
  kHintUnused,
  kHintTwice,
  kHintOpen,
  kHintOutside,
  kHintLong,
  kHintLineLong,
  kHintList,
  // Layout
  kNoLayout,
  kOutside,
  kOverlap,
  kNoWidth,
  kNoRow,
  kPanelNarrow,
  kTitleWide,
  kMenuNarrow,
  kPanelTitleWide,
  kFontHigh,
  kTitleBarLow,
  kIconLarge,
  kBackgroundLarge,
  kContrast,
  // Skins
  kBadFont,
  kBadData,
  kNoFont,
  kNoFontFile,
  kUnknownElement,
  kElementFrames,
  kElementTile,
  kElementMask,
  kElementMissing,
  kCount,
};

struct Message {
  Msg id;
  const char* name;  // for --explain and comments
  Severity severity;
  const char* what;    // {0}, {1}, ... stand for words
  const char* advice;  // likewise
};

const Message& MessageOf(Msg id);
// Null for a name that no message has.
const Message* FindMessage(const std::string& name);
std::vector<std::string> MessageNames();

// The paragraph of the manual on a message, in lines as they are to be printed.
std::string Explanation(const Message& message);

// A text with {0}, {1}, ... replaced.
std::string Filled(const char* text, std::span<const std::string> words);

}  // namespace zel
