// The launcher's fixed texts.
#pragma once

#include <cstdint>
#include <string>

namespace zel {

struct TextEntry {
  std::uint32_t id;
  const char* english;
};

// The name of the catalogues that translate them, but for the brand's.
inline constexpr const char* kTextDomain = "quillon";

inline constexpr int kNotRootText = 174;
inline constexpr int kWaitTitleText = 1312;
inline constexpr int kCancelText = 1320;
inline constexpr int kNoGraphicsText = 1513;
inline constexpr int kBackText = 1515;
inline constexpr int kWaitingText = 1516;
inline constexpr int kSubmenuText = 1600;
inline constexpr int kNotAvailableText = 1601;
inline constexpr int kNumberText = 1602;
inline constexpr int kNumberOrBackText = 1603;
inline constexpr int kPlainHelpText = 1604;
inline constexpr int kNoEntryText = 1605;
inline constexpr int kNoHintText = 1606;
inline constexpr int kEnterCancelsText = 1607;
inline constexpr int kHowFarText = 1608;
inline constexpr int kMoveText = 1609;
inline constexpr int kKeysText = 1610;
inline constexpr int kChooseText = 1611;
inline constexpr int kScrollText = 1612;
inline constexpr int kDrawAgainText = 1613;
inline constexpr int kLeaveText = 1614;
inline constexpr int kTypeText = 1615;
inline constexpr int kSkinText = 1616;
inline constexpr int kSizeText = 1617;
inline constexpr int kHelpTitleText = 1618;
inline constexpr int kDefaultText = 1619;
inline constexpr int kPlainDefaultText = 1620;
inline constexpr int kPlaceText = 1630;
inline constexpr int kSpokenHelpText = 1631;

// English texts by ascending id; the last entry has id 0xFFFFFFFF and the empty text.
extern const TextEntry TextTable[];

// The text of an id, empty for an unknown one. Lives until the language or the encoding changes.
const char* Text(std::uint32_t id);

// A text with values in place of its "%1" and "%2".
std::string Filled(const char* text, const std::string& first, const std::string& second);

// Has the texts from this catalogue and in Allegro's current encoding from now on. Until then both
// are those of the process's environment, and it goes on to decide whether there is translation at
// all: in the locale C there is none.
//
// Allegro converts from UTF-8, in which the catalogues are, too: the C library can do that itself
// only with files of its own beside a program, which the rescue disc does not have.
void SetTextLanguage(const char* catalogue);

// Has the texts in the locale's encoding again, for a terminal. In a locale with UTF-8 that needs
// no such files either.
void UseEncodingOfLocale();

// What the menu keys of the language end with: "de" for "Title.de".
const char* LanguageSuffix();

}  // namespace zel
