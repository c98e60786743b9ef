// SPDX-License-Identifier: MIT
// Where live sound goes to and comes from: a JACK server, the system's ALSA device, or nowhere in real time.
//
//   auto device = openOutput();
//   device->start(player);      // the player's `play` runs on a thread of the device from now on
//   device->isLost();           // once in a while: the server or the device has gone
//   device->stop();             // `play` has ended; the destructor does it too
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/LiveStream.h"

namespace modrift::devices {

class BlockPlayer {
 public:
  virtual ~BlockPlayer() = default;
  // [audio] `inputs` are silent where the device has none; outputs may be inputs.
  virtual void play(const host::LiveInputs& inputs, const host::LiveOutputs& outputs, std::int64_t frames) noexcept = 0;
};

class SoundDevice {
 public:
  virtual ~SoundDevice() = default;
  [[nodiscard]] virtual double sampleRateHz() const = 0;
  [[nodiscard]] virtual int blockFrames() const = 0;          // of an ordinary block
  [[nodiscard]] virtual std::string description() const = 0;  // for the user, without a full stop
  virtual void start(BlockPlayer& player) = 0;                // lost at once where that cannot be
  virtual void stop() = 0;
  [[nodiscard]] virtual bool isLost() const = 0;
};

enum class JackPorts { outputs, inputsAndOutputs };

// The best that this machine has for output: a JACK server, else the default ALSA device, else silence.
[[nodiscard]] std::unique_ptr<SoundDevice> openOutput();

// Null where no JACK server runs; none is started.
[[nodiscard]] std::unique_ptr<SoundDevice> openJack(JackPorts ports);
// The default device; null where there is none.
[[nodiscard]] std::unique_ptr<SoundDevice> openAlsa();
[[nodiscard]] std::unique_ptr<SoundDevice> openSilence(double sampleRateHz);

}  // namespace modrift::devices
