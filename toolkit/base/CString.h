// SPDX-License-Identifier: MIT
// Texts in UTF-8, as the platform's text drawing takes them. [ui]
#pragma once

#include <string>

#include "toolkit/base/CBaseObject.h"

namespace VSTGUI {

class IPlatformString : public CBaseObject {
 public:
  // Null counts as the empty text. The caller owns the result.
  [[nodiscard]] static IPlatformString* createWithUTF8String(const char* text);
  virtual void setUTF8String(const char* text) = 0;
  [[nodiscard]] virtual const char* getUTF8String() const = 0;
};

class CString {
 public:
  CString(const char* text = nullptr);  // NOLINT: implicit, as a literal is a text
  [[nodiscard]] const char* getUTF8String() const { return platformString_->getUTF8String(); }
  // Belongs to this object.
  [[nodiscard]] IPlatformString* getPlatformString() const { return platformString_; }

 private:
  Counted<IPlatformString> platformString_;
};

}  // namespace VSTGUI
