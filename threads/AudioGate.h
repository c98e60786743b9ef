// SPDX-License-Identifier: MIT
// Keeps the audio thread out while another thread rebuilds what a block reads; the audio thread itself never waits.
//
//   AudioGate::Block block(gate);   // [audio] announces "in a block"
//   if (block.held()) return;       // somebody holds the gate: leave everything alone
//
//   AudioGate::Hold hold(gate);     // [host, ui] waits for the block in flight to end; until it goes, blocks leave
//
// Both sides store their own flag and then read the other's. Only sequential consistency forbids that both read the
// old value and go on, so no weaker order will do at the entry; leaving is a plain release. One audio thread at a time;
// holders exclude each other.
#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

class AudioGate {
 public:
  class Block {
   public:
    explicit Block(AudioGate& gate) noexcept : gate_(gate) {
      gate_.inBlock_.store(std::this_thread::get_id());
      held_ = gate_.holds_.load() != 0;
    }
    ~Block() { gate_.inBlock_.store(std::thread::id{}, std::memory_order_release); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    [[nodiscard]] bool held() const noexcept { return held_; }

   private:
    AudioGate& gate_;
    bool held_;
  };

  class Hold {
   public:
    explicit Hold(AudioGate& gate) : gate_(gate), exclusive_(gate.holders_) {
      gate_.holds_.fetch_add(1);
      gate_.waitForBlock();
    }
    ~Hold() { gate_.holds_.fetch_sub(1); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    AudioGate& gate_;
    std::lock_guard<std::recursive_mutex> exclusive_;
  };

 private:
  // A host that calls back out of its own block, on the same thread, cannot race with that block: no wait for it.
  void waitForBlock() const {
    constexpr std::chrono::microseconds kNap{50};
    for (std::thread::id in = inBlock_.load(); in != std::thread::id{} && in != std::this_thread::get_id();
         in = inBlock_.load())
      std::this_thread::sleep_for(kNap);
  }

  std::atomic<std::thread::id> inBlock_{};  // the thread inside a block, or none
  std::atomic<int> holds_{0};
  std::recursive_mutex holders_;
  static_assert(std::atomic<std::thread::id>::is_always_lock_free);
};
