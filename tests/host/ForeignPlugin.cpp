// SPDX-License-Identifier: MIT
#include "tests/host/ForeignPlugin.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

constexpr std::array<const char*, 3> kNames = {"Gain", "Offset", "Offbeat"};

ForeignPlugin& pluginOf(AEffect* effect) { return *static_cast<ForeignPlugin*>(effect->object); }
float& valueOf(AEffect* effect, VstInt32 index) { return pluginOf(effect).values.at(static_cast<std::size_t>(index)); }

void noteBlock(ForeignPlugin& plugin, VstInt32 frames) {
  ForeignPlugin::Block& block = plugin.blocks.emplace_back();
  block.frames = frames;
  const VstIntPtr answer = plugin.ask(audioMasterGetTime);
  const auto* time = reinterpret_cast<const VstTimeInfo*>(answer);  // NOLINT(performance-no-int-to-ptr)
  if (time != nullptr) block.time = *time;
  block.processLevel = plugin.ask(audioMasterGetCurrentProcessLevel);
  block.gain = plugin.values[0];
  block.notes = std::exchange(plugin.notes, {});
  if (const float signal = std::exchange(plugin.values[2], 0.0f); signal > 0.0f) std::raise(static_cast<int>(signal));
  if (VstEvents* const events = std::exchange(plugin.toSend, nullptr))
    plugin.host(&plugin.record, audioMasterProcessEvents, 0, 0, events, 0.0f);
}

void VSTCALLBACK add(AEffect* effect, float** inputs, float** outputs, VstInt32 frames) {
  ForeignPlugin& plugin = pluginOf(effect);
  noteBlock(plugin, frames);
  for (std::size_t channel = 0; channel < 2; ++channel) {
    std::vector<float>& delayed = plugin.delayed[channel];
    delayed.insert(delayed.end(), inputs[channel], inputs[channel] + frames);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i)
      outputs[channel][i] += delayed[i] * plugin.values[0] + plugin.values[1];
    delayed.erase(delayed.begin(), delayed.begin() + frames);
  }
}

void VSTCALLBACK replace(AEffect* effect, float** inputs, float** outputs, VstInt32 frames) {
  for (std::size_t channel = 0; channel < 2; ++channel) std::fill_n(outputs[channel], frames, 0.0f);
  add(effect, inputs, outputs, frames);
}

VstIntPtr writeText(const ForeignPlugin& plugin, void* target, std::string_view text) {
  const std::string written = plugin.writesLongTexts ? std::string(300, 'x') : std::string(text);
  std::memcpy(target, written.c_str(), written.size() + 1);
  return 1;
}

VstIntPtr takeEvents(ForeignPlugin& plugin, const VstEvents& events) {
  VstEvent* const* list = events.events;
  for (VstInt32 i = 0; i < events.numEvents; ++i)
    if (list[i]->type == kVstMidiType) plugin.notes.push_back(*reinterpret_cast<const VstMidiEvent*>(list[i]));
  return 1;
}

VstIntPtr VSTCALLBACK dispatch(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) {
  ForeignPlugin& plugin = pluginOf(effect);
  plugin.told.push_back({opcode, value, opt});
  switch (opcode) {
    case effClose:
      delete &plugin;
      return 1;
    case effGetParamName:
      return writeText(plugin, ptr, kNames.at(static_cast<std::size_t>(index)));
    case effGetParamDisplay:
    case effGetParamLabel:
      return writeText(plugin, ptr, "x");
    case effGetEffectName:
      return writeText(plugin, ptr, "Foreign Gain");
    case effProcessEvents:
      return takeEvents(plugin, *static_cast<const VstEvents*>(ptr));
    case effGetChunk:
      *static_cast<void**>(ptr) = plugin.chunk.data();
      return static_cast<VstIntPtr>(plugin.chunk.size());
    case effSetChunk:
      plugin.chunk.assign(static_cast<const char*>(ptr), static_cast<std::size_t>(value));
      return value > 0 ? 0 : -1;
    default:
      return 0;
  }
}

}  // namespace

// The label gives the function any name, "main" included, which no C++ function may have.
extern "C" VST_EXPORT AEffect* foreignEntry(audioMasterCallback host) __asm__(FOREIGN_ENTRY);

extern "C" AEffect* foreignEntry(audioMasterCallback host) {
  if (FOREIGN_MAGIC != kEffectMagic) {
    static AEffect broken;
    broken.magic = FOREIGN_MAGIC;
    return &broken;
  }
  auto* plugin = new ForeignPlugin;
  AEffect& record = plugin->record;
  plugin->host = host;
  plugin->delayed.fill(std::vector<float>(FOREIGN_DELAY));
  record.dispatcher = dispatch;
  record.process = add;
  record.processReplacing = replace;
  record.setParameter = [](AEffect* effect, VstInt32 index, float value) { valueOf(effect, index) = value; };
  record.getParameter = [](AEffect* effect, VstInt32 index) { return valueOf(effect, index); };
  record.numParams = static_cast<VstInt32>(kNames.size());
  record.numInputs = record.numOutputs = 2;
  record.initialDelay = FOREIGN_DELAY;
  record.object = plugin;
  record.uniqueID = CCONST('F', 'r', 'g', 'n');
  record.resvd1 = 0x5EED;  // what an untidy plug-in leaves in the host's field
  plugin->versionWithoutEffect = host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f);
  plugin->blockSizeInEntry = plugin->ask(audioMasterGetBlockSize);
  return &record;
}
