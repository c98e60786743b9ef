// SPDX-License-Identifier: MIT
// A device that plays for as long as this lives, and silence in its place from the moment that it has gone.
#pragma once

#include <memory>

#include "devices/SoundDevice.h"

namespace modrift::devices {

class RunningSound {
 public:
  // The player must outlive this.
  RunningSound(std::unique_ptr<SoundDevice> device, BlockPlayer& player);
  ~RunningSound();
  RunningSound(const RunningSound&) = delete;
  RunningSound& operator=(const RunningSound&) = delete;

  // To be called now and then by the thread that made this. True when the device has gone since the last call; the song
  // then goes on silently at the same rate.
  [[nodiscard]] bool fallsSilent();

 private:
  BlockPlayer& player_;
  std::unique_ptr<SoundDevice> device_;
};

}  // namespace modrift::devices
