// SPDX-License-Identifier: MIT
// How a view with the focus shows it.
#pragma once

namespace VSTGUI {

class CGraphicsPath;

class IFocusDrawing {
 public:
  virtual ~IFocusDrawing() = default;
  // Whether the mark lies over the view's own drawing.
  [[nodiscard]] virtual bool drawFocusOnTop() = 0;
  // Adds the mark's outline; false for no mark.
  virtual bool getFocusPath(CGraphicsPath& path) = 0;
};

}  // namespace VSTGUI
