// SPDX-License-Identifier: MIT
// One instance of a VST 2 plug-in, ours or anybody's, loaded or linked with the program.
//
// Life, in the order of calls:
//   Plugin plugin(std::make_shared<Module>(path), listener);   // entry function, effOpen
//   plugin.setSampleRate(48000.0);  plugin.setBlockSize(512);  // only while inactive
//   plugin.activate();                                         // mains on, start of processing
//   plugin.setTime(...);  plugin.sendEvents(...);  plugin.process(inputs, outputs, frames);   // each block
//   plugin.deactivate();                                       // the destructor does it too, then effClose
//
// Several instances live side by side. [audio] marks what belongs to the thread that runs the blocks; the rest belongs
// to the user-interface thread. Exceptions are host::Error; what a plug-in itself throws passes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/EventBlock.h"
#include "host/HostCallback.h"
#include "host/HostListener.h"
#include "host/MidiEvent.h"
#include "host/Module.h"
#include "vst2/aeffect.h"

namespace modrift::host {

enum class ChunkKind : VstInt32 { bank = 0, program = 1 };

class Plugin {
 public:
  // `listener` may be null; else it must outlive the instance. Throws Error when the plug-in refuses or is none.
  explicit Plugin(std::shared_ptr<const Module> module, HostListener* listener = nullptr);
  ~Plugin();
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  [[nodiscard]] const AEffect& record() const noexcept { return *effect_; }
  [[nodiscard]] const std::filesystem::path& path() const noexcept { return module_->path(); }
  [[nodiscard]] const std::shared_ptr<const Module>& module() const noexcept { return module_; }
  // Counts of the record, never negative.
  [[nodiscard]] int parameterCount() const noexcept;
  [[nodiscard]] int inputCount() const noexcept;
  [[nodiscard]] int outputCount() const noexcept;
  [[nodiscard]] std::int64_t latencyFrames() const noexcept;

  void setSampleRate(double sampleRateHz);
  void setBlockSize(VstInt32 frames);  // the largest block to come
  void setProcessLevel(VstProcessLevels level) noexcept { facts_.processLevel = level; }
  void setAutomationState(VstAutomationStates state) noexcept { facts_.automationState = state; }
  void activate();  // throws Error if the plug-in has no function to process audio
  void deactivate();

  // [audio] What the plug-in hears when it asks for the time and where its events lie: the block to come.
  void setTime(const std::optional<VstTimeInfo>& time, std::int64_t streamFrame) noexcept;
  // [audio] Events of the block to come, `frame` counted from its start. Allocates, so not for live audio.
  void sendEvents(std::span<const MidiEvent> events);
  // [audio] One block. As many pointers as the record has inputs and outputs, `frames` samples each.
  void process(float** inputs, float** outputs, VstInt32 frames);

  // [any] An index outside the plug-in's parameters is ignored, or answered with 0 or an empty text.
  void setParameter(VstInt32 index, float value);
  [[nodiscard]] float parameter(VstInt32 index) const;
  // [any] The same without a look at the count, for a plug-in that is known to have numbers of its own behind it.
  void setUnlistedParameter(VstInt32 index, float value);
  [[nodiscard]] float unlistedParameter(VstInt32 index) const;
  [[nodiscard]] std::string unlistedDisplay(VstInt32 index) const;
  [[nodiscard]] std::string parameterName(VstInt32 index) const;
  [[nodiscard]] std::string parameterDisplay(VstInt32 index) const;
  [[nodiscard]] std::string parameterLabel(VstInt32 index) const;

  [[nodiscard]] VstInt32 program() const;
  void setProgram(VstInt32 index);
  [[nodiscard]] std::string programName() const;
  [[nodiscard]] std::string programName(VstInt32 index) const;  // without changing to it; empty if not offered
  void setProgramName(const std::string& name);
  [[nodiscard]] std::vector<std::byte> chunk(ChunkKind kind) const;  // empty: the plug-in gave none
  // False when the plug-in refuses, which is a negative answer; what else plug-ins answer means nothing.
  bool setChunk(ChunkKind kind, std::span<const std::byte> bytes);

  [[nodiscard]] std::string effectName() const;
  [[nodiscard]] std::string vendorName() const;
  [[nodiscard]] std::string productName() const;
  [[nodiscard]] std::optional<VstPinProperties> inputPin(VstInt32 index) const;
  [[nodiscard]] std::optional<VstPinProperties> outputPin(VstInt32 index) const;
  [[nodiscard]] VstIntPtr canDo(const char* text) const;  // 1 yes, -1 no, 0 unknown

  // Any opcode without a function of its own.
  VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                     float opt = 0.0f) const;

 private:
  [[nodiscard]] bool hasParameter(VstInt32 index) const noexcept;
  [[nodiscard]] std::string text(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0) const;
  [[nodiscard]] std::optional<VstPinProperties> pin(VstInt32 opcode, VstInt32 index) const;

  std::shared_ptr<const Module> module_;
  HostListener silentListener_;
  HostFacts facts_;
  AEffect* effect_ = nullptr;
  EventBlock events_;  // of the block to come: the plug-in may read it until its process call has returned
  bool active_ = false;
};

}  // namespace modrift::host
