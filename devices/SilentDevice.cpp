#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "devices/SoundDevice.h"

namespace modrift::devices {
namespace {

constexpr int kBlockFrames = 512;

// Plays in real time and drops the result, so that an editor has something to show on a machine without sound.
class SilentDevice : public SoundDevice {
 public:
  explicit SilentDevice(double sampleRateHz) : sampleRateHz_(sampleRateHz) {}
  ~SilentDevice() override { SilentDevice::stop(); }
  SilentDevice(const SilentDevice&) = delete;
  SilentDevice& operator=(const SilentDevice&) = delete;

  [[nodiscard]] double sampleRateHz() const override { return sampleRateHz_; }
  [[nodiscard]] int blockFrames() const override { return kBlockFrames; }
  [[nodiscard]] std::string description() const override { return "none on this machine, so the song runs silently"; }
  void start(BlockPlayer& player) override {
    thread_ = std::jthread([this, &player](const std::stop_token& stop) { run(player, stop); });
  }
  void stop() override {
    thread_.request_stop();
    if (thread_.joinable()) thread_.join();
  }
  [[nodiscard]] bool isLost() const override { return false; }

 private:
  void run(BlockPlayer& player, const std::stop_token& stop) {
    const std::vector<float> silence(kBlockFrames);
    std::vector<float> left(kBlockFrames), right(kBlockFrames);
    std::mutex mutex;
    std::condition_variable_any ended;
    std::unique_lock lock(mutex);
    using Clock = std::chrono::steady_clock;
    const auto length =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(kBlockFrames / sampleRateHz_));
    for (auto due = Clock::now(); !stop.stop_requested();) {
      player.play({silence.data(), silence.data()}, {left.data(), right.data()}, kBlockFrames);
      due = std::max(due + length, Clock::now() - length);  // what a stopped process missed is not made up for
      ended.wait_until(lock, stop, due, [] { return false; });
    }
  }

  double sampleRateHz_;
  std::jthread thread_;
};

}  // namespace

std::unique_ptr<SoundDevice> openSilence(double sampleRateHz) { return std::make_unique<SilentDevice>(sampleRateHz); }

}  // namespace modrift::devices
