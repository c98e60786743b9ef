// SPDX-License-Identifier: MIT
#include "host/Plugin.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/Error.h"

namespace modrift::host {
namespace {

// The interface allows texts of 8 to 64 characters, but many plug-ins write whole sentences.
constexpr std::size_t kTextBytes = 4096;

// Room behind a record for plug-ins that write a longer one.
constexpr std::size_t kGuardBytes = 1024;

}  // namespace

Plugin::Plugin(std::shared_ptr<const Module> module, HostListener* listener)
    : module_(std::move(module)), events_(std::span<const MidiEvent>{}) {
  facts_.listener = listener == nullptr ? &silentListener_ : listener;
  facts_.directory = path().parent_path().string();
  {
    const InTheMaking making(facts_);
    effect_ = module_->entry()(hostCallback);
  }
  if (effect_ == nullptr) throw Error(path().string() + ": a plug-in was expected, but it refused to start");
  if (effect_->magic != kEffectMagic || effect_->dispatcher == nullptr) {
    throw Error(path().string() + ": a VST 2 plug-in was expected, but its record is not one");
  }
  effect_->resvd1 = reinterpret_cast<VstIntPtr>(&facts_);
  dispatch(effOpen);
}

Plugin::~Plugin() {
  try {
    deactivate();
    dispatch(effClose);
  } catch (...) {
    // A plug-in that throws on its way out has nothing more to say to anybody.
    active_ = false;
  }
}

int Plugin::parameterCount() const noexcept { return std::max(0, effect_->numParams); }
int Plugin::inputCount() const noexcept { return std::max(0, effect_->numInputs); }
int Plugin::outputCount() const noexcept { return std::max(0, effect_->numOutputs); }
std::int64_t Plugin::latencyFrames() const noexcept { return std::max(0, effect_->initialDelay); }

void Plugin::setSampleRate(double sampleRateHz) {
  facts_.sampleRateHz = sampleRateHz;
  dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRateHz));
}

void Plugin::setBlockSize(VstInt32 frames) {
  facts_.blockFrames = frames;
  dispatch(effSetBlockSize, 0, frames);
}

void Plugin::activate() {
  if (active_) return;
  if (effect_->processReplacing == nullptr && effect_->process == nullptr) {
    throw Error(path().string() + ": an effect was expected, but the plug-in has no function to process audio");
  }
  dispatch(effMainsChanged, 0, 1);
  dispatch(effStartProcess);
  active_ = true;
}

void Plugin::deactivate() {
  if (!active_) return;
  active_ = false;
  dispatch(effStopProcess);
  dispatch(effMainsChanged, 0, 0);
}

void Plugin::setTime(const std::optional<VstTimeInfo>& time, std::int64_t streamFrame) noexcept {
  facts_.time = time;
  facts_.frame.store(streamFrame, std::memory_order_relaxed);
}

void Plugin::sendEvents(std::span<const MidiEvent> events) {
  if (events.empty()) return;
  events_ = EventBlock(events);
  dispatch(effProcessEvents, 0, 0, events_.list());
}

void Plugin::process(float** inputs, float** outputs, VstInt32 frames) {
  if (effect_->processReplacing != nullptr) {
    effect_->processReplacing(effect_, inputs, outputs, frames);
    return;
  }
  for (float* output : std::span(outputs, static_cast<std::size_t>(outputCount()))) {
    std::fill_n(output, frames, 0.0f);  // the older function adds to what is there
  }
  effect_->process(effect_, inputs, outputs, frames);
}

bool Plugin::hasParameter(VstInt32 index) const noexcept { return index >= 0 && index < parameterCount(); }

void Plugin::setParameter(VstInt32 index, float value) {
  if (hasParameter(index)) setUnlistedParameter(index, value);
}

float Plugin::parameter(VstInt32 index) const { return hasParameter(index) ? unlistedParameter(index) : 0.0f; }

void Plugin::setUnlistedParameter(VstInt32 index, float value) {
  if (effect_->setParameter != nullptr) effect_->setParameter(effect_, index, value);
}

float Plugin::unlistedParameter(VstInt32 index) const {
  return effect_->getParameter != nullptr ? effect_->getParameter(effect_, index) : 0.0f;
}

std::string Plugin::unlistedDisplay(VstInt32 index) const { return text(effGetParamDisplay, index); }

std::string Plugin::parameterName(VstInt32 index) const {
  return hasParameter(index) ? text(effGetParamName, index) : std::string();
}

std::string Plugin::parameterDisplay(VstInt32 index) const {
  return hasParameter(index) ? unlistedDisplay(index) : std::string();
}

std::string Plugin::parameterLabel(VstInt32 index) const {
  return hasParameter(index) ? text(effGetParamLabel, index) : std::string();
}

VstInt32 Plugin::program() const { return static_cast<VstInt32>(dispatch(effGetProgram)); }

void Plugin::setProgram(VstInt32 index) {
  dispatch(effBeginSetProgram);
  dispatch(effSetProgram, 0, index);
  dispatch(effEndSetProgram);
}

std::string Plugin::programName() const { return text(effGetProgramName); }

std::string Plugin::programName(VstInt32 index) const { return text(effGetProgramNameIndexed, index, -1); }

void Plugin::setProgramName(const std::string& name) {
  // A copy, as the interface hands over writable memory; cut, as plug-ins copy it into fields of this length.
  std::string text = name.substr(0, kVstMaxProgNameLen - 1);
  dispatch(effSetProgramName, 0, 0, text.data());
}

std::vector<std::byte> Plugin::chunk(ChunkKind kind) const {
  void* data = nullptr;
  const VstIntPtr size = dispatch(effGetChunk, static_cast<VstInt32>(kind), 0, &data);
  if (data == nullptr || size <= 0) return {};
  const auto* bytes = static_cast<const std::byte*>(data);  // the plug-in's own until the next call
  return {bytes, bytes + size};
}

bool Plugin::setChunk(ChunkKind kind, std::span<const std::byte> bytes) {
  std::vector<std::byte> copy(bytes.begin(), bytes.end());
  return dispatch(effSetChunk, static_cast<VstInt32>(kind), static_cast<VstIntPtr>(copy.size()), copy.data()) >= 0;
}

std::string Plugin::effectName() const { return text(effGetEffectName); }
std::string Plugin::vendorName() const { return text(effGetVendorString); }
std::string Plugin::productName() const { return text(effGetProductString); }

std::optional<VstPinProperties> Plugin::inputPin(VstInt32 index) const { return pin(effGetInputProperties, index); }
std::optional<VstPinProperties> Plugin::outputPin(VstInt32 index) const { return pin(effGetOutputProperties, index); }

VstIntPtr Plugin::canDo(const char* text) const {
  std::string copy = text;
  return dispatch(effCanDo, 0, 0, copy.data());
}

VstIntPtr Plugin::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) const {
  return effect_->dispatcher(effect_, opcode, index, value, ptr, opt);
}

std::string Plugin::text(VstInt32 opcode, VstInt32 index, VstIntPtr value) const {
  std::array<char, kTextBytes> buffer{};
  dispatch(opcode, index, value, buffer.data());
  buffer.back() = '\0';
  return buffer.data();
}

std::optional<VstPinProperties> Plugin::pin(VstInt32 opcode, VstInt32 index) const {
  struct {
    VstPinProperties properties;
    std::array<std::byte, kGuardBytes> guard{};
  } answer;
  if (dispatch(opcode, index, 0, &answer) == 0) return std::nullopt;
  answer.properties.label[kVstMaxLabelLen - 1] = '\0';
  answer.properties.shortLabel[kVstMaxShortLabelLen - 1] = '\0';
  return answer.properties;
}

}  // namespace modrift::host
