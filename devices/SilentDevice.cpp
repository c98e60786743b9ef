// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "devices/ThreadedDevice.h"

namespace modrift::devices {
namespace {

// Plays in real time and drops the result, so that an editor has something to show on a machine without sound.
class SilentDevice : public ThreadedDevice {
 public:
  explicit SilentDevice(double sampleRateHz) : sampleRateHz_(sampleRateHz) {}
  ~SilentDevice() override { SilentDevice::stop(); }
  SilentDevice(const SilentDevice&) = delete;
  SilentDevice& operator=(const SilentDevice&) = delete;

  [[nodiscard]] double sampleRateHz() const override { return sampleRateHz_; }
  [[nodiscard]] std::string description() const override { return "none on this machine, so the song runs silently"; }
  [[nodiscard]] bool isLost() const override { return false; }

 private:
  void run(BlockPlayer& player, const std::stop_token& stop) override {
    Block block;
    std::mutex mutex;
    std::condition_variable_any ended;
    std::unique_lock lock(mutex);
    using Clock = std::chrono::steady_clock;
    const auto length =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(blockFrames() / sampleRateHz_));
    for (auto due = Clock::now(); !stop.stop_requested();) {
      block.play(player);
      due = std::max(due + length, Clock::now() - length);  // what a stopped process missed is not made up for
      ended.wait_until(lock, stop, due, [] { return false; });
    }
  }

  double sampleRateHz_;
};

}  // namespace

std::unique_ptr<SoundDevice> openSilence(double sampleRateHz) { return std::make_unique<SilentDevice>(sampleRateHz); }

}  // namespace modrift::devices
