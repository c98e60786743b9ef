// SPDX-License-Identifier: MIT
#include "devices/RunningSound.h"

#include <utility>

namespace modrift::devices {

RunningSound::RunningSound(std::unique_ptr<SoundDevice> device, BlockPlayer& player)
    : player_(player), device_(std::move(device)) {
  device_->start(player_);
}

RunningSound::~RunningSound() { device_->stop(); }

bool RunningSound::fallsSilent() {
  if (!device_->isLost()) return false;
  const double rateHz = device_->sampleRateHz();
  device_->stop();
  device_ = openSilence(rateHz);
  device_->start(player_);
  return true;
}

}  // namespace modrift::devices
