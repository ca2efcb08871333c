// The system's colours that only this layer draws with; GetSysColor answers them too, and win32_windows.h has the rest.
#pragma once

namespace framereel {

inline constexpr int kColourInactiveCaption = 3;
inline constexpr int kColourMenuText = 7;
inline constexpr int kColourCaptionText = 9;
inline constexpr int kColourHighlight = 13;
inline constexpr int kColourHighlightText = 14;
inline constexpr int kColourButtonText = 18;
inline constexpr int kColourInactiveCaptionText = 19;
inline constexpr int kColourButtonHighlight = 20;
inline constexpr int kColourButtonDarkShadow = 21;

} // namespace framereel
