// SPDX-License-Identifier: MIT
#include <alsa/asoundlib.h>
#include <atomic>
#include <cstddef>
#include <fmt/core.h>
#include <vector>

#include "devices/ThreadedDevice.h"

namespace modrift::devices {
namespace {

constexpr unsigned kRateHz = 48000;
constexpr unsigned kLatencyMicroseconds = 40000;

// A device that isn't there is nothing that the library need tell.
extern "C" void saveAlsaBreath(const char*, int, const char*, int, const char*, ...) {}

class AlsaDevice : public ThreadedDevice {
 public:
  explicit AlsaDevice(snd_pcm_t* pcm) : pcm_(pcm) {}
  AlsaDevice(const AlsaDevice&) = delete;
  AlsaDevice& operator=(const AlsaDevice&) = delete;
  ~AlsaDevice() override {
    AlsaDevice::stop();
    snd_pcm_close(pcm_);
    snd_config_update_free_global();
  }

  [[nodiscard]] double sampleRateHz() const override { return kRateHz; }
  [[nodiscard]] std::string description() const override { return fmt::format("the ALSA device at {} Hz", kRateHz); }
  [[nodiscard]] bool isLost() const override { return lost_; }

 private:
  void run(BlockPlayer& player, const std::stop_token& stop) override {
    Block block;
    std::vector<float> interleaved(block.left().size() * host::kLiveChannels);
    while (!stop.stop_requested() && !lost_) {
      block.play(player);
      for (std::size_t i = 0; i < block.left().size(); ++i) {
        interleaved[2 * i] = block.left()[i];
        interleaved[2 * i + 1] = block.right()[i];
      }
      lost_ = !write(interleaved);
    }
  }

  // Waits until the device has taken the block. An underrun is mended; anything else is the end.
  bool write(const std::vector<float>& interleaved) {
    const snd_pcm_uframes_t frames = interleaved.size() / host::kLiveChannels;
    for (snd_pcm_uframes_t done = 0; done < frames;) {
      const snd_pcm_sframes_t taken =
          snd_pcm_writei(pcm_, interleaved.data() + done * host::kLiveChannels, frames - done);
      if (taken >= 0) {
        done += static_cast<snd_pcm_uframes_t>(taken);
      } else if (snd_pcm_recover(pcm_, static_cast<int>(taken), 1) < 0) {
        return false;
      }
    }
    return true;
  }

  snd_pcm_t* pcm_;
  std::atomic<bool> lost_ = false;
};

}  // namespace

std::unique_ptr<SoundDevice> openAlsa() {
  snd_lib_error_set_handler(saveAlsaBreath);
  snd_pcm_t* pcm = nullptr;
  if (snd_pcm_open(&pcm, "default", SND_PCM_STREAM_PLAYBACK, 0) < 0) {
    snd_config_update_free_global();
    return nullptr;
  }
  auto device = std::make_unique<AlsaDevice>(pcm);
  const int refused = snd_pcm_set_params(pcm, SND_PCM_FORMAT_FLOAT_LE, SND_PCM_ACCESS_RW_INTERLEAVED,
                                         host::kLiveChannels, kRateHz, 1, kLatencyMicroseconds);
  return refused < 0 ? nullptr : std::move(device);
}

}  // namespace modrift::devices
