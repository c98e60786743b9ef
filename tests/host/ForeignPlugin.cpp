// A plug-in written straight against the binary interface: out = in x "Gain" + "Offset", a third parameter "Offbeat"
// without effect, and on request the bad manners of plug-ins in the field.

#include "tests/host/ForeignPlugin.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::array<const char*, 3> kNames = {"Gain", "Offset", "Offbeat"};

struct Plugin {
  AEffect record;
  audioMasterCallback host = nullptr;
  std::array<float, 3> values = {1.0f, 0.0f, 0.0f};
  std::array<std::vector<float>, 2> delayed = {std::vector<float>(FOREIGN_DELAY), std::vector<float>(FOREIGN_DELAY)};
  std::string chunk = "state";
  bool hasLongTexts = false;
  VstEvents* toSend = nullptr;
  std::vector<VstMidiEvent> notes;
  foreign::Report report;

  float& valueAt(VstInt32 index) { return values.at(static_cast<std::size_t>(index)); }
  VstIntPtr ask(VstInt32 opcode) { return host(&record, opcode, 0, 0, nullptr, 0.0f); }
  void addBlock(VstInt32 frames);
  VstIntPtr serve(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt);
  VstIntPtr serveRequest(VstInt32 request, void* ptr);
  VstIntPtr writeText(void* target, std::string_view text) const;
  void takeEvents(const VstEvents& events);
};

Plugin& pluginOf(AEffect* effect) { return *static_cast<Plugin*>(effect->object); }

void VSTCALLBACK add(AEffect* effect, float** inputs, float** outputs, VstInt32 frames) {
  Plugin& plugin = pluginOf(effect);
  plugin.addBlock(frames);
  for (std::size_t channel = 0; channel < 2; ++channel) {
    std::vector<float>& delayed = plugin.delayed[channel];
    delayed.insert(delayed.end(), inputs[channel], inputs[channel] + frames);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
      outputs[channel][i] += delayed[i] * plugin.values[0] + plugin.values[1];
    }
    delayed.erase(delayed.begin(), delayed.begin() + frames);
  }
}

void VSTCALLBACK replace(AEffect* effect, float** inputs, float** outputs, VstInt32 frames) {
  for (std::size_t channel = 0; channel < 2; ++channel) std::fill_n(outputs[channel], frames, 0.0f);
  add(effect, inputs, outputs, frames);
}

VstIntPtr VSTCALLBACK dispatch(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) {
  Plugin& plugin = pluginOf(effect);
  if (opcode != effClose) return plugin.serve(opcode, index, value, ptr, opt);
  delete &plugin;
  return 1;
}

void Plugin::addBlock(VstInt32 frames) {
  foreign::Block& block = report.blocks.emplace_back();
  block.frames = frames;
  const VstIntPtr answer = ask(audioMasterGetTime);
  const auto* time = reinterpret_cast<const VstTimeInfo*>(answer);  // NOLINT(performance-no-int-to-ptr)
  if (time != nullptr) block.time = *time;
  block.processLevel = ask(audioMasterGetCurrentProcessLevel);
  block.gain = values[0];
  block.notes = std::exchange(notes, {});
  if (toSend != nullptr) host(&record, audioMasterProcessEvents, 0, 0, std::exchange(toSend, nullptr), 0.0f);
}

VstIntPtr Plugin::writeText(void* target, std::string_view text) const {
  const std::string written = hasLongTexts ? std::string(300, 'x') : std::string(text);
  std::memcpy(target, written.c_str(), written.size() + 1);
  return 1;
}

void Plugin::takeEvents(const VstEvents& events) {
  VstEvent* const* list = events.events;
  for (VstInt32 i = 0; i < events.numEvents; ++i) {
    if (list[i]->type == kVstMidiType) notes.push_back(*reinterpret_cast<const VstMidiEvent*>(list[i]));
  }
}

VstIntPtr Plugin::serve(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
  if (opcode == effVendorSpecific) return serveRequest(index, ptr);
  report.told.push_back({opcode, value, opt});
  switch (opcode) {
    case effGetParamName:
      return writeText(ptr, kNames.at(static_cast<std::size_t>(index)));
    case effGetParamDisplay:
    case effGetParamLabel:
      return writeText(ptr, "x");
    case effGetEffectName:
      return writeText(ptr, "Foreign Gain");
    case effProcessEvents:
      takeEvents(*static_cast<const VstEvents*>(ptr));
      return 1;
    case effGetChunk:
      *static_cast<void**>(ptr) = chunk.data();
      return static_cast<VstIntPtr>(chunk.size());
    case effSetChunk:
      chunk.assign(static_cast<const char*>(ptr), static_cast<std::size_t>(value));
      return 1;
    default:
      return 0;
  }
}

VstIntPtr Plugin::serveRequest(VstInt32 request, void* ptr) {
  switch (request) {
    case foreign::askReport:
      return reinterpret_cast<VstIntPtr>(&report);
    case foreign::writeLongTexts:
      hasLongTexts = true;
      return 1;
    case foreign::dropProcessing:
      record.process = nullptr;
      [[fallthrough]];
    case foreign::dropReplacing:
      record.processReplacing = nullptr;
      return 1;
    case foreign::sendNextBlock:
      toSend = static_cast<VstEvents*>(ptr);
      return 1;
    case foreign::askHost: {
      auto& question = *static_cast<foreign::HostQuestion*>(ptr);
      question.answer = host(question.withoutEffect ? nullptr : &record, question.opcode, question.index,
                             question.value, question.ptr, question.opt);
      return 1;
    }
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
  auto* plugin = new Plugin;
  plugin->host = host;
  plugin->record.dispatcher = dispatch;
  plugin->record.process = add;
  plugin->record.processReplacing = replace;
  plugin->record.setParameter = [](AEffect* e, VstInt32 i, float value) { pluginOf(e).valueAt(i) = value; };
  plugin->record.getParameter = [](AEffect* e, VstInt32 i) { return pluginOf(e).valueAt(i); };
  plugin->record.numParams = static_cast<VstInt32>(kNames.size());
  plugin->record.numInputs = 2;
  plugin->record.numOutputs = 2;
  plugin->record.initialDelay = FOREIGN_DELAY;
  plugin->record.object = plugin;
  plugin->record.uniqueID = CCONST('F', 'r', 'g', 'n');
  plugin->record.resvd1 = 0x5EED;  // what an untidy plug-in leaves in the host's field
  plugin->report.versionWithoutEffect = host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f);
  plugin->report.blockSizeInEntry = plugin->ask(audioMasterGetBlockSize);
  return &plugin->record;
}
