// The shared object on the audio thread: no allocation, no lock, no wait, no system call.
#include <array>
#include <dlfcn.h>
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
struct Events {
  static constexpr int kCount = 40;
  std::array<VstMidiEvent, kCount> midi{};
  alignas(VstEvents) std::array<char, sizeof(VstEvents) + kCount * sizeof(VstEvent*)> list{};

  VstEvents* fill(std::mt19937& random, int frames) {
    auto* const events = reinterpret_cast<VstEvents*>(list.data());
    events->numEvents = static_cast<VstInt32>(random() % kCount);
    for (int i = 0; i < events->numEvents; ++i) {
      VstMidiEvent& e = midi[static_cast<std::size_t>(i)];
      e.deltaFrames = static_cast<VstInt32>(random() % static_cast<unsigned>(frames + 10));
      e.midiData[0] = static_cast<char>(0x80 + random() % 0x70);
      e.midiData[1] = static_cast<char>(random() % 128);
      e.midiData[2] = static_cast<char>(random() % 128);
      events->events[i] = reinterpret_cast<VstEvent*>(&e);
    }
    return events;
  }
};

TEST(RealTime, TheWatchSeesAnAllocationALockAndASleep) {
  std::mutex mutex;
  forbidden::reset();
  {
    const forbidden::Watch watch;
    void* volatile memory = std::malloc(10);
    std::free(memory);
    mutex.lock();
    mutex.unlock();
    std::this_thread::sleep_for(std::chrono::nanoseconds(1));
  }
  EXPECT_GE(forbidden::count(), 3) << "last seen: " << forbidden::last();
}

TEST(RealTime, BlocksEventsAndAutomationNeitherAllocateNorWait) {
  std::mt19937 random(20240917);
  void* const module = dlopen(MODRIFT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  AEffect* const effect =
      reinterpret_cast<AEffect* (*)(audioMasterCallback)>(dlsym(module, "VSTPluginMain"))(hostCallback);
  effect->dispatcher(effect, effSetSampleRate, 0, 0, nullptr, 48000.0f);
  effect->dispatcher(effect, effMainsChanged, 0, 1, nullptr, 0.0f);
  std::vector<float> inLeft(kLongest, 0.3f), inRight(kLongest, -0.2f), outLeft(kLongest), outRight(kLongest);
  float* inputs[] = {inLeft.data(), inRight.data()};
  float* outputs[] = {outLeft.data(), outRight.data()};
  Events events;
  forbidden::reset();
  for (int block = 0; block < 1500; ++block) {
    givesTime = random() % 8 != 0;
    timeNow.flags = random() % 4 ? kVstTransportPlaying : 0;
    timeNow.ppqPos = static_cast<double>(random() % 4000) * 0.01 - 4.0;
    timeNow.tempo = static_cast<double>(60 + random() % 120);
    const std::array<int, 7> lengths = {0, 1, 12, 13, 64, 512, kLongest};
    const int frames = block % 200 == 199 ? kLongest : lengths[random() % 6];
    VstEvents* const list = events.fill(random, frames);
    const auto parameter = static_cast<VstInt32>(random() % static_cast<unsigned>(effect->numParams));
    const float value = static_cast<float>(random() % 1001) * 0.001f;
    const forbidden::Watch watch;
    effect->setParameter(effect, parameter, value);
    effect->dispatcher(effect, effProcessEvents, 0, 0, list, 0.0f);
    effect->processReplacing(effect, inputs, outputs, frames);
  }
  EXPECT_EQ(forbidden::count(), 0) << "last seen: " << forbidden::last();
  effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

}  // namespace
