// SPDX-License-Identifier: MIT
// The shared object on the audio thread: no allocation, no lock, no wait, no word, no system call.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include "tests/plugin/ForbiddenCalls.h"
#include "vst2/aeffect.h"

namespace {

constexpr int kLongest = 20000;  // beyond what one slice takes

VstTimeInfo timeNow;
bool givesTime = true;

VstIntPtr VSTCALLBACK hostCallback(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode == audioMasterGetTime && givesTime) return reinterpret_cast<VstIntPtr>(&timeNow);
  return 0;
}

// Notes and controllers of one block.
class Events {
 public:
  explicit Events(int most) : midi_(static_cast<std::size_t>(most)), list_(static_cast<std::size_t>(most) + 2) {}

  VstEvents* fill(std::mt19937& random, int count, int frames) {
    auto* const head = reinterpret_cast<VstEvents*>(list_.data());
    head->numEvents = count;
    for (int i = 0; i < count; ++i) {
      VstMidiEvent& e = midi_[static_cast<std::size_t>(i)];
      e.deltaFrames = static_cast<VstInt32>(random() % static_cast<unsigned>(frames + 10));
      e.midiData[0] = static_cast<char>(0x80 + random() % 0x70);
      e.midiData[1] = static_cast<char>(random() % 128);
      e.midiData[2] = static_cast<char>(random() % 128);
      list_[static_cast<std::size_t>(i) + 2] = &e;
    }
    return head;
  }

 private:
  std::vector<VstMidiEvent> midi_;
  std::vector<void*> list_;  // the list's head, then a pointer an event
};

// The plug-in as a host has it, with buffers for the longest block.
class RealTime : public testing::Test {
 protected:
  void SetUp() override {
    void* const module = dlopen(MODRIFT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    effect = reinterpret_cast<AEffect* (*)(audioMasterCallback)>(dlsym(module, "VSTPluginMain"))(hostCallback);
    call(effSetSampleRate, 0, nullptr, 48000.0f);
    call(effMainsChanged, 1);
    forbidden::reset();
  }
  void TearDown() override { call(effClose); }

  VstIntPtr call(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f) {
    return effect->dispatcher(effect, opcode, 0, value, ptr, opt);
  }
  void block(VstEvents* events, int frames) {
    call(effProcessEvents, 0, events);
    effect->processReplacing(effect, inputs, outputs, frames);
  }

  std::mt19937 random{20240917};
  AEffect* effect = nullptr;

 private:
  std::vector<float> inLeft = std::vector<float>(kLongest, 0.3f), inRight = std::vector<float>(kLongest, -0.2f);
  std::vector<float> outLeft = std::vector<float>(kLongest), outRight = std::vector<float>(kLongest);
  float* inputs[2] = {inLeft.data(), inRight.data()};
  float* outputs[2] = {outLeft.data(), outRight.data()};
};

TEST(Watch, SeesAnAllocationALockASleepAndAPrint) {
  std::mutex mutex;
  const std::function<void()> kActs[] = {
      [] {
        void* volatile memory = std::malloc(10);
        std::free(memory);
      },
      [&] { mutex.lock(), mutex.unlock(); },
      [] { std::this_thread::sleep_for(std::chrono::nanoseconds(1)); },
      [] { std::fprintf(stderr, "%d", 1); },
      [] { std::fputs("word", stderr); },
  };
  testing::internal::CaptureStderr();
  for (const auto& act : kActs) {
    forbidden::reset();
    {
      const forbidden::Watch watch;
      act();
    }
    EXPECT_GE(forbidden::count(), 1) << &act - kActs;
  }
  testing::internal::GetCapturedStderr();
}

TEST_F(RealTime, BlocksEventsAndAutomationNeitherAllocateNorWait) {
  Events events(40);
  for (int turn = 0; turn < 1500; ++turn) {
    givesTime = random() % 8 != 0;
    timeNow.flags = random() % 4 ? kVstTransportPlaying : 0;
    timeNow.ppqPos = static_cast<double>(random() % 4000) * 0.01 - 4.0;
    timeNow.tempo = static_cast<double>(60 + random() % 120);
    const std::array<int, 7> lengths = {0, 1, 12, 13, 64, 512, kLongest};
    const int frames = turn % 200 == 199 ? kLongest : lengths[random() % 6];
    VstEvents* const list = events.fill(random, static_cast<int>(random() % 40), frames);
    const auto parameter = static_cast<VstInt32>(random() % static_cast<unsigned>(effect->numParams));
    const float value = static_cast<float>(random() % 1001) * 0.001f;
    const forbidden::Watch watch;
    effect->setParameter(effect, parameter, value);
    block(list, frames);
  }
  EXPECT_EQ(forbidden::count(), 0) << "last seen: " << forbidden::last();
}

TEST_F(RealTime, AFloodOfEventsIsToldByTheHostsThreadAndNotByTheBlocks) {
  Events events(3000);
  testing::internal::CaptureStderr();
  {
    VstEvents* const list = events.fill(random, 3000, 512);
    const forbidden::Watch watch;
    for (int turn = 0; turn < 2; ++turn) block(list, 512);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(forbidden::count(), 0) << "last seen: " << forbidden::last();
  testing::internal::CaptureStderr();
  for (int turn = 0; turn < 2; ++turn) call(effEditIdle);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n timeslice events exceeded: 2048");
}

}  // namespace
