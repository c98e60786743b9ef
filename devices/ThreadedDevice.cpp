// SPDX-License-Identifier: MIT
#include "devices/ThreadedDevice.h"

namespace modrift::devices {
namespace {

constexpr int kBlockFrames = 512;

}  // namespace

int ThreadedDevice::blockFrames() const { return kBlockFrames; }

void ThreadedDevice::start(BlockPlayer& player) {
  thread_ = std::jthread([this, &player](const std::stop_token& stopped) { run(player, stopped); });
}

void ThreadedDevice::stop() {
  thread_.request_stop();
  if (thread_.joinable()) thread_.join();
}

ThreadedDevice::Block::Block() : silence_(kBlockFrames), left_(kBlockFrames), right_(kBlockFrames) {}

void ThreadedDevice::Block::play(BlockPlayer& player) noexcept {
  player.play({silence_.data(), silence_.data()}, {left_.data(), right_.data()}, kBlockFrames);
}

}  // namespace modrift::devices
