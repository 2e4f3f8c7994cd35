// The numbers of the texts that only a terminal shows, or that the faces share.
#pragma once

namespace zel {

inline constexpr int kWaitTitleText = 1312;
inline constexpr int kCancelText = 1320;
inline constexpr int kSubmenuText = 1600;
inline constexpr int kNotAvailableText = 1601;
inline constexpr int kNumberText = 1602;
inline constexpr int kNumberOrBackText = 1603;
inline constexpr int kPlainHelpText = 1604;
inline constexpr int kNoEntryText = 1605;
inline constexpr int kNoHintText = 1606;
inline constexpr int kEnterCancelsText = 1607;
inline constexpr int kProgressText = 1608;
inline constexpr int kMoveText = 1609;
inline constexpr int kKeysText = 1610;
inline constexpr int kChooseText = 1611;
inline constexpr int kScrollText = 1612;
inline constexpr int kDrawAgainText = 1613;
inline constexpr int kLeaveText = 1614;
inline constexpr int kTypeText = 1615;
inline constexpr int kDefaultText = 1619;
inline constexpr int kPlainDefaultText = 1620;
inline constexpr int kPlaceText = 1630;
inline constexpr int kSpokenHelpText = 1631;

}  // namespace zel
