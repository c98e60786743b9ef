// SPDX-License-Identifier: MIT
// Images kept as SVG text: read once from the bundle, painted anew for each size of the window. [ui]
//
// The split is that of bitmaps: CTarnelSVG is what the editor holds, IPlatformSVG the text behind it, CGSVG the one
// implementation, which reads a file. Nothing is parsed here.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/CResourceDescription.h"

namespace VSTGUI {

class IPlatformSVG : public CBaseObject {
 public:
  // An empty image; the caller owns it.
  [[nodiscard]] static IPlatformSVG* create();

  // A name is looked up in the bundle as it stands, a number as "svg%05d" with the ending "svg"; a name that starts
  // with "/" is a path. False, with a size of 0, if there is no bundle or no such file, or if it can't be read.
  virtual bool load(const CResourceDescription& description) = 0;
  // Bytes of the text.
  [[nodiscard]] virtual const std::int32_t& getSize() const = 0;
  // The text, which belongs to this object; without an end mark. Null before the first load.
  [[nodiscard]] virtual char* getPointer() = 0;

  VSTGUI_CLASS(IPlatformSVG, CBaseObject)
};

class CGSVG : public IPlatformSVG {
 public:
  bool load(const CResourceDescription& description) override;
  [[nodiscard]] const std::int32_t& getSize() const override { return size; }
  [[nodiscard]] char* getPointer() override { return text.get(); }

  VSTGUI_CLASS(CGSVG, IPlatformSVG)

 private:
  std::int32_t size = 0;
  std::unique_ptr<char[]> text;
};

class CTarnelSVG : public CBaseObject {
 public:
  explicit CTarnelSVG(const CResourceDescription& description);
  // With one reference more, which the caller gives back by `forget`; null if loading failed.
  [[nodiscard]] IPlatformSVG* getPlatformSVG() const;

  VSTGUI_CLASS(CTarnelSVG, CBaseObject)

 private:
  Counted<IPlatformSVG> platformSVG;
};

}  // namespace VSTGUI
