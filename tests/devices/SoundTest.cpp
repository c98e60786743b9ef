// SPDX-License-Identifier: MIT
// What plays live, without a device: the loop, and the silence that takes the place of a device that has gone.
#include <atomic>
#include <gtest/gtest.h>
#include <vector>

#include "devices/LoopPlayer.h"
#include "devices/RunningSound.h"
#include "tests/host/HostFixtures.h"

namespace modrift::devices {
namespace {

TEST(LoopPlayer, BeginsAgainAtTheEndOfTheLoopOrPlaysTheInputsWithoutOne) {
  host::Plugin plugin(linked());
  host::LiveStream stream(plugin, {}, 48000.0, 64);
  const std::vector<float> input(8, 9.0f);
  std::vector<float> left(8), right(8);
  const auto play = [&](LoopPlayer& player) {
    player.play({input.data(), input.data()}, {left.data(), right.data()}, std::ssize(input));
  };
  LoopPlayer mono(stream, {{1.0f, 2.0f, 3.0f}});
  play(mono);
  EXPECT_EQ(left, (std::vector<float>{1, 2, 3, 1, 2, 3, 1, 2}));
  EXPECT_EQ(right, left);
  play(mono);
  EXPECT_EQ(left, (std::vector<float>{3, 1, 2, 3, 1, 2, 3, 1}));
  LoopPlayer none(stream, {});
  play(none);
  EXPECT_EQ(left, input);
}

// A device that plays nothing and goes when it is told.
class MortalDevice : public SoundDevice {
 public:
  MortalDevice(const bool& lost, int& stops) : lost_(lost), stops_(stops) {}
  [[nodiscard]] double sampleRateHz() const override { return 44100.0; }
  [[nodiscard]] int blockFrames() const override { return 64; }
  [[nodiscard]] std::string description() const override { return "mortal"; }
  void start(BlockPlayer&) override {}
  void stop() override { ++stops_; }
  [[nodiscard]] bool isLost() const override { return lost_; }

 private:
  const bool& lost_;
  int& stops_;
};

class WaitingPlayer : public BlockPlayer {
 public:
  void play(const host::LiveInputs&, const host::LiveOutputs&, std::int64_t) noexcept override {
    played = true;
    played.notify_all();
  }
  std::atomic<bool> played = false;
};

TEST(RunningSound, GoesOnSilentlyWhenTheDeviceHasGone) {
  bool lost = false;
  int stops = 0;
  WaitingPlayer player;
  RunningSound sound(std::make_unique<MortalDevice>(lost, stops), player);
  EXPECT_FALSE(sound.fallsSilent());
  lost = true;
  EXPECT_TRUE(sound.fallsSilent());
  EXPECT_EQ(stops, 1);
  ASSERT_FALSE(sound.fallsSilent());  // it is another device now,
  player.played.wait(false);          // and that one plays
}

}  // namespace
}  // namespace modrift::devices
