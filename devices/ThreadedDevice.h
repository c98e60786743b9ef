// SPDX-License-Identifier: MIT
// What devices have in common that ask for blocks on a thread of their own, instead of being called by a server.
#pragma once

#include <stop_token>
#include <thread>
#include <vector>

#include "devices/SoundDevice.h"

namespace modrift::devices {

class ThreadedDevice : public SoundDevice {
 public:
  [[nodiscard]] int blockFrames() const override;
  void start(BlockPlayer& player) override;
  void stop() override;

 protected:
  // One block of the player's, both channels.
  class Block {
   public:
    Block();
    void play(BlockPlayer& player) noexcept;
    [[nodiscard]] const std::vector<float>& left() const noexcept { return left_; }
    [[nodiscard]] const std::vector<float>& right() const noexcept { return right_; }

   private:
    std::vector<float> silence_, left_, right_;
  };

  // On the thread: plays blocks until it is asked to stop. Every device's own destructor calls stop(), since this uses
  // what the device is made of.
  virtual void run(BlockPlayer& player, const std::stop_token& stop) = 0;

 private:
  std::jthread thread_;
};

}  // namespace modrift::devices
