// SPDX-License-Identifier: MIT
#include "presets/generator/Application.h"

#include "vst2/aeffect.h"

using namespace model;

namespace modrift::factory {
namespace {

// Says no more than that it is there.
VstIntPtr VSTCALLBACK silentHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  return opcode == audioMasterVersion ? kVstVersion : 0;
}

void setGraph(LfoDSP& effect, int g, const GraphPoints& points) {
  effect.envNumPoints[static_cast<std::size_t>(g)] = static_cast<std::int8_t>(points.lastPoint);
  for (int i = 0; i < kStoredSlots; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    effect.envX[g][i] = points.x[slot];
    effect.envY[g][i] = points.y[slot];
    effect.envCurve[g][i] = points.curve[slot];
  }
}

}  // namespace

std::unique_ptr<LfoDSP> freshEffect() { return std::make_unique<LfoDSP>(silentHost); }

void apply(const Preset& preset, LfoDSP& effect) {
  for (const auto& [g, points] : preset.graphs) setGraph(effect, g, points);
  effect.RenderEnvsInCaseGUIClosed(false);
  for (const Setting& setting : preset.settings) effect.setParameter(setting.index, setting.value);
}

std::vector<std::byte> chunkOf(const Preset& preset) {
  const std::unique_ptr<LfoDSP> effect = freshEffect();
  apply(preset, *effect);
  void* chunk = nullptr;
  const VstInt32 size = effect->getChunk(&chunk, false);
  const auto* const bytes = static_cast<const std::byte*>(chunk);
  return {bytes, bytes + size};
}

}  // namespace modrift::factory
