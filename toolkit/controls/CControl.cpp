// SPDX-License-Identifier: MIT
#include "toolkit/controls/CControl.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/CGraphicsPath.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

const std::int32_t kDefaultValueModifier = kControl;
const std::int32_t kZoomModifier = kShift;
const IdStringPtr kMsgValueChanged = "kMsgValueChanged";

std::int32_t IControlListener::controlModifierClicked(CControl* /*control*/, CButtonState /*buttons*/) { return 0; }

void IDependency::addDependent(CBaseObject* dependent) { dependents_.push_back(dependent); }

void IDependency::removeDependent(CBaseObject* dependent) { std::erase(dependents_, dependent); }

void IDependency::notifyDependents(CBaseObject* sender, IdStringPtr message) {
  const auto dependents = dependents_;
  for (CBaseObject* const dependent : dependents) dependent->notify(sender, message);
}

CControl::CControl(const CRect& size, IControlListener* toTell, std::int32_t initialTag, CBitmap* background)
    : CView(size), tag(initialTag), listener(toTell) {
  setBackground(background);
}

CControl::CControl(const CControl& other)
    : CView(other),
      IFocusDrawing(other),
      IDependency(other),
      tag(std::int32_t{other.tag}),
      oldValue(float{other.oldValue}),
      defaultValue(float{other.defaultValue}),
      value(float{other.value}),
      vmin(float{other.vmin}),
      vmax(float{other.vmax}),
      listener(other.listener),
      backOffset(other.backOffset),
      wheelInc(other.wheelInc) {}

void CControl::setValueNormalized(float normalized) {
  setValue(getMin() + std::clamp(normalized, 0.0f, 1.0f) * (getMax() - getMin()));
}

float CControl::getValueNormalized() const {
  const float range = getMax() - getMin();
  return range > 0 ? std::clamp((getValue() - getMin()) / range, 0.0f, 1.0f) : 0.0f;
}

void CControl::setMin(float minimum) {
  vmin = minimum;
  bounceValue();
}

void CControl::setMax(float maximum) {
  vmax = maximum;
  bounceValue();
}

void CControl::bounceValue() { value = std::min(std::max<float>(value, vmin), static_cast<float>(vmax)); }

bool CControl::checkDefaultValue(CButtonState buttons) {
  if ((buttons & (kAnyButton | kAnyModifier)) != (kLButton | kDefaultValueModifier)) return false;
  if (getValue() != getDefaultValue()) {
    beginEdit();
    setValue(getDefaultValue());
    valueChanged();
    endEdit();
    if (isDirty()) invalid();
  }
  return true;
}

void CControl::valueChanged() {
  if (listener) listener->valueChanged(this);
  notifyDependents(this, kMsgValueChanged);
}

void CControl::setTag(std::int32_t newTag) {
  if (listener) listener->controlTagWillChange(this);
  tag = newTag;
  if (listener) listener->controlTagDidChange(this);
}

void CControl::beginEdit() {
  if (listener) listener->controlBeginEdit(this);
  if (auto* const frame = getFrame(); frame && frame->getEditor()) frame->getEditor()->beginEdit(getTag());
}

void CControl::endEdit() {
  if (auto* const frame = getFrame(); frame && frame->getEditor()) frame->getEditor()->endEdit(getTag());
  if (listener) listener->controlEndEdit(this);
}

void CControl::setBackOffset(const CPoint& offset) {
  backOffset = offset;
  setDirty();
}

void CControl::copyBackOffset(CDrawContext* context) {
  if (auto* const background = getDrawBackground()) background->draw(context, getViewSize(), backOffset);
}

void CControl::doIdleStuff() {
  if (auto* const frame = getFrame(); frame && frame->getEditor()) frame->getEditor()->doIdleStuff();
}

bool CControl::getFocusPath(CGraphicsPath& path) {
  CRect around = getViewSize();
  path.addRect(around.inset(-1, -1));
  return wantsFocus();
}

void CControl::draw(CDrawContext* context) {
  copyBackOffset(context);
  setDirty(false);
}

CMouseEventResult CControl::onMouseEntered(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  if (listener) listener->MouseOver(this);
  return kMouseEventHandled;
}

CMouseEventResult CControl::onMouseExited(CPoint& /*where*/, const CButtonState& /*buttons*/) {
  if (listener) listener->MouseExit(this);
  return kMouseEventHandled;
}

void CControl::setDirty(bool dirty) {
  CView::setDirty(dirty);
  if (!dirty) oldValue = float(value);
}

bool CControl::isDirty() const {
  const float now = value;
  const float drawn = oldValue;
  return CView::isDirty() || std::bit_cast<std::uint32_t>(now) != std::bit_cast<std::uint32_t>(drawn);
}

std::uint32_t CControl::shownState() const {
  constexpr std::uint32_t kSpread = 0x9E3779B1u;  // keeps a mark and a value from cancelling each other
  return CView::shownState() * kSpread ^ std::bit_cast<std::uint32_t>(float(value));
}

bool CControl::modifierClicked(CButtonState buttons) {
  return listener && buttons.getModifierState() != 0 && listener->controlModifierClicked(this, buttons) != 0;
}

std::int32_t IMultiBitmapControl::imageCount(const CBitmap* bitmap) const {
  if (!bitmap || !(heightOfOneImage > 0)) return 1;
  // Half a unit of slack: images that were scaled to whole pixels.
  return std::max(1, static_cast<std::int32_t>((bitmap->getHeight() + 0.5) / heightOfOneImage));
}

}  // namespace VSTGUI
