// SPDX-License-Identifier: MIT
#include "toolkit/drawing/DrawTypes.h"

namespace VSTGUI {

const CLineStyle kLineSolid;
const CLineStyle kLineOnOffDash(CLineStyle::kLineCapButt, CLineStyle::kLineJoinMiter, 0, {1.0, 1.0});

}  // namespace VSTGUI
