// SPDX-License-Identifier: MIT
// Owners of what cairo gives, for the folders that keep pictures of their own.
#pragma once

#include <memory>

struct _cairo;
struct _cairo_surface;

namespace VSTGUI {

struct CairoDeleter {
  void operator()(_cairo* context) const noexcept;
  void operator()(_cairo_surface* surface) const noexcept;
};
using CairoContext = std::unique_ptr<_cairo, CairoDeleter>;
using CairoSurface = std::unique_ptr<_cairo_surface, CairoDeleter>;

}  // namespace VSTGUI
