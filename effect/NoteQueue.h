// SPDX-License-Identifier: MIT
// The notes of one block, each waiting for its frame.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

struct WaitingNote {
  std::int64_t frame = 0;     // in the block; all bits set once handled
  std::uint8_t note = 0;      // 0 to 127
  std::uint8_t velocity = 0;  // 0 to 127, 0 for a note-off
  std::uint8_t channel = 0;
};

namespace effect {

// [audio] Filled before the block, walked in it, emptied at its end.
class NoteQueue {
 public:
  static constexpr int kMostNotes = 128;
  static constexpr std::int64_t kHandled = -1;

  // False when the block already brought all the notes that fit; the note is dropped and counted.
  bool add(const WaitingNote& note) noexcept {
    if (count_ == kMostNotes) {
      ++dropped_;
      return false;
    }
    waitingNotes_[static_cast<std::size_t>(count_++)] = note;
    nextFrame_ = std::min(nextFrame_, note.frame < 0 ? kNever : note.frame);
    return true;
  }

  // Hands every note of the frames [from, from + frames) to `handle`, frame by frame in queue order. True if there
  // were.
  template <class Handle>
  bool play(std::int64_t from, int frames, Handle handle) noexcept {
    if (nextFrame_ >= from + frames) return false;
    for (std::int64_t frame = from; frame < from + frames; ++frame) {
      for (int i = 0; i < count_; ++i) {
        WaitingNote& waiting = waitingNotes_[static_cast<std::size_t>(i)];
        if (waiting.frame != frame) continue;
        handle(waiting);
        waiting.frame = kHandled;
      }
    }
    nextFrame_ = kNever;
    for (int i = 0; i < count_; ++i) {
      const std::int64_t frame = waitingNotes_[static_cast<std::size_t>(i)].frame;
      if (frame != kHandled && frame >= from) nextFrame_ = std::min(nextFrame_, frame);
    }
    return true;
  }

  // Lets all that wait act at the first frame of the next block, in queue order.
  void moveToStart() noexcept {
    for (int i = 0; i < count_; ++i) waitingNotes_[static_cast<std::size_t>(i)].frame = 0;
    if (count_ > 0) nextFrame_ = 0;
  }

  void clear() noexcept {
    count_ = 0;
    nextFrame_ = kNever;
  }

  [[nodiscard]] int count() const noexcept { return count_; }
  [[nodiscard]] long dropped() const noexcept { return dropped_; }  // since construction

 private:
  static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

  std::array<WaitingNote, kMostNotes> waitingNotes_{};
  int count_ = 0;
  std::int64_t nextFrame_ = kNever;  // no note waits before it
  long dropped_ = 0;
};

}  // namespace effect
