// SPDX-License-Identifier: MIT
// The entry that hosts look for, and what puts effect and editor together.
#include <memory>

#include "editor/shell/LFOGUI.h"
#include "effect/KorvelInDSPEdit.h"
#include "model/PrivateCalls.h"
#include "plugin/EditorPicture.h"
#include "toolkit/x11/X11Platform.h"
#include "vst2/aeffect.h"

namespace {

VstIntPtr drawEditor(AEffect* record, VstIntPtr size, const void* path) {
  auto* const effect = static_cast<AudioEffect*>(record->object);
  auto* const editor = dynamic_cast<LFOGUI*>(effect->getEditor());
  if (!editor || !path) return 0;
  return plugin::drawEditorPicture(*editor, static_cast<int>(size >> 16 & 0x7fff), static_cast<int>(size & 0x7fff),
                                   static_cast<const char*>(path));
}

// The frame's dispatcher with the one call that the effect cannot serve, as it knows no editor of its own.
VstIntPtr VSTCALLBACK dispatch(AEffect* record, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) noexcept try {
  if (record && opcode == effVendorSpecific && index == model::kCallDrawEditor) return drawEditor(record, value, ptr);
  return AudioEffect::dispatchEffectClass(record, opcode, index, value, ptr, opt);
} catch (...) {
  return 0;
}

// One for the process, which stays: hosts may end without a word to their plug-ins.
void useWindowSystem() {
  static auto* const platform = new VSTGUI::X11Platform;
  if (!VSTGUI::getPlatform()) VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, platform);
}

// The effect in the state in which a host may send blocks at once; null when there is no memory for it.
AudioEffect* createEffectInstance(audioMasterCallback audioMaster) noexcept try {
  useWindowSystem();
  auto effect = std::make_unique<KorvelInDSPEdit>(audioMaster);
  effect->setUniqueID(model::kUniqueId);
  effect->setEditor(createEditor(effect.get()));
  effect->getAeffect()->dispatcher = dispatch;
  effect->resume();
  return effect.release();
} catch (...) {
  return nullptr;
}

}  // namespace

extern "C" VST_EXPORT AEffect* VSTPluginMain(audioMasterCallback audioMaster) {
  if (!audioMaster || !audioMaster(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f)) return nullptr;
  AudioEffect* const effect = createEffectInstance(audioMaster);
  return effect ? effect->getAeffect() : nullptr;
}
