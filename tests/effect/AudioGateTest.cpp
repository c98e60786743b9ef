// SPDX-License-Identifier: MIT
// The gate between blocks and whoever rebuilds what they read.
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "threads/AudioGate.h"

namespace {

TEST(AudioGate, NeverLetsABlockAndAHoldInTogether) {
  AudioGate gate;
  std::atomic<bool> stop{false};
  long guarded = 0;  // plain on purpose: both sides write it, so any overlap is a data race and a lost count
  long blocks = 0, holds = 0;
  std::atomic<bool> running{false};
  std::thread audio([&] {
    while (!stop) {
      const AudioGate::Block block(gate);
      if (block.held()) continue;
      running = true;
      const long before = guarded;
      for (int i = 0; i < 20; ++i) std::atomic_signal_fence(std::memory_order_seq_cst);
      guarded = before + 1;
      ++blocks;
    }
  });
  while (!running) std::this_thread::yield();
  for (holds = 0; holds < 3000; ++holds) {
    const AudioGate::Hold hold(gate);
    const long before = guarded;
    for (int i = 0; i < 20; ++i) std::atomic_signal_fence(std::memory_order_seq_cst);
    guarded = before + 1;
  }
  stop = true;
  audio.join();
  EXPECT_EQ(guarded, blocks + holds);
}

TEST(AudioGate, WaitsForTheBlockInFlightAndTurnsTheNextOneAway) {
  AudioGate gate;
  std::atomic<int> step{0};
  std::atomic<bool> blockEnded{false};
  std::thread audio([&] {
    {
      const AudioGate::Block block(gate);
      EXPECT_FALSE(block.held());
      step = 1;
      while (step < 2) std::this_thread::yield();  // the holder is about to ask
      for (int turn = 0; turn < 1000; ++turn) std::this_thread::yield();
      blockEnded = true;
    }
    while (step < 3) std::this_thread::yield();
    const AudioGate::Block late(gate);
    EXPECT_TRUE(late.held());
    step = 4;
  });
  while (step < 1) std::this_thread::yield();
  step = 2;
  {
    const AudioGate::Hold hold(gate);
    EXPECT_TRUE(blockEnded);
    step = 3;
    while (step < 4) std::this_thread::yield();
  }
  audio.join();
  const AudioGate::Block after(gate);
  EXPECT_FALSE(after.held());
}

// A host may call `resume` out of its own callback, in the middle of a block, on the same thread.
TEST(AudioGate, DoesNotWaitForItsOwnThread) {
  AudioGate gate;
  const AudioGate::Block block(gate);
  const AudioGate::Hold outer(gate);
  const AudioGate::Hold inner(gate);
  SUCCEED();
}

}  // namespace
