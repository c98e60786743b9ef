// SPDX-License-Identifier: MIT
#include "toolkit/base/CBaseObject.h"

namespace VSTGUI {

const IdStringPtr kMsgTimer = "kMsgTimer";
const IdStringPtr kMsgLooseFocus = "kMsgLooseFocus";

void CBaseObject::forget() {
  if (--nbReference_ > 0) return;
  nbReference_ = 1;  // so that remember and forget inside of beforeDelete don't delete a second time
  beforeDelete();
  delete this;
}

CMessageResult CBaseObject::notify(CBaseObject* /*sender*/, IdStringPtr /*message*/) { return kMessageUnknown; }

}  // namespace VSTGUI
