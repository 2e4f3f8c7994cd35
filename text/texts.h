// The numbers of the texts that only a terminal shows, or that the faces share.
#pragma once

namespace zel {

inline constexpr int kWaitTitleText = 1312;
inline constexpr int kCancelText = 1320;
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
inline constexpr int kProgressText = 1608;
inline constexpr int kScreenHelpText = 1609;
inline constexpr int kKeysText = 1610;

}  // namespace zel
