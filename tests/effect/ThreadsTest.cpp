// A block thread, an automating thread and a thread that resumes and suspends, all at once. What it proves is mostly
// the thread sanitizer's to say; without it, sound must stay finite and every block must end.
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

#include "tests/effect/TestHost.h"

namespace {

TEST(Threads, BlocksAutomationAndResumeRunTogether) {
  EffectRig rig;
  std::atomic<bool> bStop{false};
  std::thread automation([&] {
    Random random(7);
    while (!bStop) {
      const int index = random.below(kParameterRows);
      rig.set(index, static_cast<double>(random.unit()));
      ASSERT_TRUE(std::isfinite(rig.get(index)));
    }
  });
  std::thread lifeCycle([&] {
    while (!bStop) {
      for (const VstIntPtr on : {0, 1}) rig.call(effMainsChanged, 0, on);
      std::this_thread::yield();
    }
  });
  rig.at(0.0, 140.0);
  for (int block = 0; block < 4000; ++block) {
    for (const float sample : rig.play(Stereo(96, 0.5f)).left) EXPECT_TRUE(std::isfinite(sample)) << "block " << block;
  }
  bStop = true;
  automation.join();
  lifeCycle.join();
}

}  // namespace
