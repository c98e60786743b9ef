// SPDX-License-Identifier: MIT
#include "toolkit/base/CString.h"

namespace VSTGUI {

namespace {

class Utf8String : public IPlatformString {
 public:
  void setUTF8String(const char* text) override { text_ = text ? text : ""; }
  [[nodiscard]] const char* getUTF8String() const override { return text_.c_str(); }

 private:
  std::string text_;
};

}  // namespace

IPlatformString* IPlatformString::createWithUTF8String(const char* text) {
  auto* const made = new Utf8String;
  made->setUTF8String(text);
  return made;
}

CString::CString(const char* text)
    : platformString_(Counted<IPlatformString>::adopt(IPlatformString::createWithUTF8String(text))) {}

}  // namespace VSTGUI
