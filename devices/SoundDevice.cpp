// SPDX-License-Identifier: MIT
#include "devices/SoundDevice.h"

namespace modrift::devices {

std::unique_ptr<SoundDevice> openOutput() {
  if (auto jack = openJack(JackPorts::outputs)) return jack;
  if (auto alsa = openAlsa()) return alsa;
  constexpr double kSilentRateHz = 48000.0;
  return openSilence(kSilentRateHz);
}

}  // namespace modrift::devices
