// SPDX-License-Identifier: MIT
// The colours of what the toolkit draws by itself: menus, dialogs and the file browser.
#pragma once

#include "toolkit/base/CColor.h"

namespace VSTGUI::Theme {

inline constexpr CColor kBackColor{40, 42, 46};
inline constexpr CColor kSunkenColor{28, 30, 33};  // of lists and fields
inline constexpr CColor kBorderColor{90, 94, 102};
inline constexpr CColor kHoverColor{0, 114, 179};
inline constexpr CColor kTextColor{236, 238, 242};
inline constexpr CColor kWeakColor{128, 132, 140};

}  // namespace VSTGUI::Theme
