// The entry that hosts look for.
#include <new>

#include "effect/KorvelInDSPEdit.h"
#include "vst2/aeffect.h"

namespace {

// The effect in the state in which a host may send blocks at once; null when there is no memory for it.
AudioEffect* createEffectInstance(audioMasterCallback audioMaster) noexcept try {
  auto* const effect = new KorvelInDSPEdit(audioMaster);
  effect->setUniqueID(kUniqueId);
  effect->resume();
  return effect;
} catch (...) {
  return nullptr;
}

}  // namespace

extern "C" VST_EXPORT AEffect* VSTPluginMain(audioMasterCallback audioMaster) {
  if (!audioMaster || !audioMaster(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f)) return nullptr;
  AudioEffect* const effect = createEffectInstance(audioMaster);
  return effect ? effect->getAeffect() : nullptr;
}
