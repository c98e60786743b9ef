// SPDX-License-Identifier: MIT
#include "toolkit/drawing/CairoPointers.h"

#include <cairo.h>

namespace VSTGUI {

void CairoDeleter::operator()(_cairo* context) const noexcept { cairo_destroy(context); }

void CairoDeleter::operator()(_cairo_surface* surface) const noexcept { cairo_surface_destroy(surface); }

}  // namespace VSTGUI
