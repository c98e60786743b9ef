// SPDX-License-Identifier: MIT
// A tiny VST host for tests, and a rig that owns one effect with its host and plays blocks through it.
// The host answers from fields that a test sets and writes down what the effect reports. Effects find their host
// through the `user` field of their record, which the rig fills; while a constructor runs nobody knows the record yet,
// so those calls go to the thread's `constructing` host.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "effect/KorvelInDSPEdit.h"
#include "model/ParameterIndex.h"
#include "model/PrivateCalls.h"
#include "vst2/aeffect.h"

struct Stereo {
  std::vector<float> left, right;
  explicit Stereo(std::size_t frames = 0, float value = 0.0f) : left(frames, value), right(frames, value) {}
  std::size_t size() const { return left.size(); }
};

// Random numbers that are the same on every machine.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}
  float unit() { return static_cast<float>(engine_() >> 8) * 0x1p-24f; }  // 0 to below 1, all steps exact
  int below(int n) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(n)); }
  template <class T>
  T pick(std::initializer_list<T> choices) {
    return choices.begin()[below(static_cast<int>(choices.size()))];
  }

 private:
  std::mt19937 engine_;
};

inline Stereo noise(std::size_t frames, std::uint32_t seed) {
  Random random(seed);
  Stereo audio(frames);
  for (std::size_t i = 0; i < frames; ++i) {
    audio.left[i] = 2.0f * random.unit() - 1.0f;
    audio.right[i] = 2.0f * random.unit() - 1.0f;
  }
  return audio;
}

struct TestHost {
  struct Automation {
    VstInt32 index;
    float value;
  };

  bool givesTime = true;
  VstTimeInfo time;
  std::vector<Automation> automated;
  std::string edits;  // gestures and values in their order: "begin 45 set 45 end 45 "
  int ioChangedCalls = 0;
  int wantMidiCalls = 0;
  int eventLists = 0;
  std::vector<VstMidiEvent> sent;                // by the effect, since the test last emptied it
  VstIntPtr timeFilter = 0;                      // the last one asked for
  std::function<void()> onIdle;                  // what the host does when the effect gives it a turn
  std::function<void()> onAutomate;              // and when it reports a parameter
  VstIntPtr canSizeWindow = 1;                   // or -1
  std::vector<std::pair<int, int>> windowSizes;  // that the editor asked for

  static inline thread_local TestHost* constructing = nullptr;

  const VstTimeInfo* timeNow() const { return givesTime ? &time : nullptr; }

  static VstIntPtr VSTCALLBACK callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                        float opt) {
    auto* const host = effect && effect->user ? static_cast<TestHost*>(effect->user) : constructing;
    return host ? host->answer(opcode, index, value, ptr, opt) : 0;
  }

 private:
  VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
    switch (opcode) {
      case audioMasterAutomate:
        automated.push_back({index, opt});
        if (onAutomate) onAutomate();
        edits += "set " + std::to_string(index) + ' ';
        return 0;
      case audioMasterBeginEdit:
      case audioMasterEndEdit:
        edits += (opcode == audioMasterBeginEdit ? "begin " : "end ") + std::to_string(index) + ' ';
        return 1;
      case audioMasterVersion:
        return kVstVersion;
      case audioMasterWantMidi:
        ++wantMidiCalls;
        return 1;
      case audioMasterGetTime:
        timeFilter = value;
        return givesTime ? reinterpret_cast<VstIntPtr>(&time) : 0;
      case audioMasterProcessEvents:
        ++eventLists;
        keep(*static_cast<const VstEvents*>(ptr));
        return 1;
      case audioMasterIOChanged:
        ++ioChangedCalls;
        return 1;
      case audioMasterIdle:
        if (onIdle) onIdle();
        return 1;
      case audioMasterCanDo:
        return std::strcmp(static_cast<const char*>(ptr), "sizeWindow") == 0 ? canSizeWindow : 0;
      case audioMasterSizeWindow:
        windowSizes.emplace_back(index, static_cast<int>(value));
        return 1;
      default:
        return 0;
    }
  }

  void keep(const VstEvents& list) {
    auto* const* const events =
        reinterpret_cast<VstEvent* const*>(reinterpret_cast<const char*>(&list) + offsetof(VstEvents, events));
    for (VstInt32 i = 0; i < list.numEvents; ++i) sent.push_back(*reinterpret_cast<const VstMidiEvent*>(events[i]));
  }
};

// A message for the next block.
struct Midi {
  int frame, status, data1, data2 = 0;
};

class EffectRig {
 public:
  explicit EffectRig(float hertz = 44100.0f) : rate_(hertz) {
    TestHost::constructing = &host;
    effect_ = std::make_unique<KorvelInDSPEdit>(TestHost::callback);
    TestHost::constructing = nullptr;
    record()->user = &host;
    call(effSetSampleRate, 0, 0, nullptr, hertz);
    call(effSetBlockSize, 0, 512);
    call(effMainsChanged, 0, 1);
    at(0.0, 120.0);
  }

  KorvelInDSPEdit& fx() { return *effect_; }
  AEffect* record() { return effect_->getAeffect(); }
  VstIntPtr call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f) {
    return record()->dispatcher(record(), opcode, index, value, ptr, opt);
  }
  void set(int index, double value) { record()->setParameter(record(), index, static_cast<float>(value)); }
  float get(int index) { return record()->getParameter(record(), index); }

  struct Point {
    double x, y;  // y is upside down: 0 is the top, the table's 1
    double curve = 0.4999999701976776;
  };
  // Gives graph `g` these points, from X 0 to X 65536, and renders all tables.
  void draw(int g, const std::vector<Point>& points) {
    const auto graph = static_cast<std::size_t>(g);
    for (std::size_t i = 0; i < points.size(); ++i) {
      effect_->envX[graph][i] = points[i].x;
      effect_->envY[graph][i] = points[i].y;
      effect_->envCurve[graph][i] = points[i].curve;
    }
    effect_->envNumPoints[graph] = static_cast<std::int8_t>(points.size() - 1);
    effect_->RenderEnvsInCaseGUIClosed(false);
  }
  void drawFlat(int g, double height) { draw(g, {{0.0, 1.0 - height}, {65536.0, 1.0 - height}}); }

  // What the host hands over before a block.
  void send(const std::vector<Midi>& messages) {
    std::vector<VstMidiEvent> events(messages.size());
    // As many pointers as there are events behind the head, whatever the record declares.
    std::vector<void*> list(2 + messages.size());
    auto* const head = reinterpret_cast<VstEvents*>(list.data());
    head->numEvents = static_cast<VstInt32>(messages.size());
    for (std::size_t i = 0; i < messages.size(); ++i) {
      events[i].deltaFrames = messages[i].frame;
      events[i].midiData[0] = static_cast<char>(messages[i].status);
      events[i].midiData[1] = static_cast<char>(messages[i].data1);
      events[i].midiData[2] = static_cast<char>(messages[i].data2);
      list[2 + i] = &events[i];
    }
    EXPECT_EQ(call(effProcessEvents, 0, 0, head), 1);
  }

  // Where the song stands, how fast it goes, and whether it moves.
  void at(double beat, double bpm, bool playing = true) {
    host.time.ppqPos = beat;
    host.time.tempo = bpm;
    host.time.flags = kVstPpqPosValid | kVstTempoValid | (playing ? kVstTransportPlaying : 0);
  }
  void advance(std::size_t frames) {
    if (host.time.flags & kVstTransportPlaying) {
      host.time.ppqPos += static_cast<double>(frames) * (host.time.tempo / (60.0 * static_cast<double>(rate_)));
    }
  }

  // One block without moving the song on; `right` may be null when the effect has one input.
  void block(const float* left, const float* right, float* outLeft, float* outRight, std::size_t frames) {
    float* inputs[] = {const_cast<float*>(left), const_cast<float*>(right)};
    float* outputs[] = {outLeft, outRight};
    record()->processReplacing(record(), inputs, outputs, static_cast<VstInt32>(frames));
  }
  // Plays `in` in blocks of the given sizes, over and over, the song moving on when it plays.
  Stereo play(const Stereo& in, const std::vector<std::size_t>& cuts) {
    Stereo out(in.size());
    for (std::size_t start = 0, turn = 0; start < in.size(); ++turn) {
      const std::size_t frames = std::min(cuts[turn % cuts.size()], in.size() - start);
      block(&in.left[start], &in.right[start], &out.left[start], &out.right[start], frames);
      advance(frames);
      start += frames;
    }
    return out;
  }
  Stereo play(const Stereo& in) { return play(in, {in.size()}); }
  Stereo playOnes(std::size_t frames) { return play(Stereo(frames, 1.0f)); }

  TestHost host;

 private:
  float rate_;
  std::unique_ptr<KorvelInDSPEdit> effect_;
};
