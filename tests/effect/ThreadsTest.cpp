// A block thread, an automating thread and a thread that resumes and suspends, all at once. What it proves is mostly
// the thread sanitizer's to say; without it, sound must stay finite and every block must end.
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <vector>

#include "effect/KorvelInDSPEdit.h"

namespace {

// Answers from its own copy of the clock, which the block thread alone moves on.
VstTimeInfo songClock;

VstIntPtr VSTCALLBACK hostCallback(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode == audioMasterGetTime) return reinterpret_cast<VstIntPtr>(&songClock);
  return 0;
}

void playBlocks(KorvelInDSPEdit& effect, int blocks) {
  constexpr int kFrames = 96;
  std::vector<float> left(kFrames), right(kFrames);
  float* channels[] = {left.data(), right.data()};
  songClock.tempo = 140.0;
  songClock.flags = kVstTransportPlaying;
  for (int b = 0; b < blocks; ++b) {
    songClock.ppqPos = b * 0.005;
    std::fill(left.begin(), left.end(), 0.5f);
    std::fill(right.begin(), right.end(), -0.5f);
    effect.processReplacing(channels, channels, kFrames);
    for (const float s : left) ASSERT_TRUE(std::isfinite(s)) << "block " << b;
  }
}

TEST(Threads, BlocksAutomationAndResumeRunTogether) {
  KorvelInDSPEdit effect(hostCallback);
  std::atomic<bool> bStop{false};
  std::thread automation([&] {
    std::mt19937 random(7);
    while (!bStop) {
      const int index = static_cast<int>(random() % 110);
      effect.setParameter(index, static_cast<float>(random() % 1001) * 0.001f);
      ASSERT_TRUE(std::isfinite(effect.getParameter(index)));
    }
  });
  std::thread lifeCycle([&] {
    while (!bStop) {
      effect.suspend();
      effect.resume();
      std::this_thread::yield();
    }
  });
  playBlocks(effect, 4000);
  bStop = true;
  automation.join();
  lifeCycle.join();
}

}  // namespace
