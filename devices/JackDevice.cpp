// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <atomic>
#include <fmt/core.h>
#include <jack/jack.h>

#include "devices/SoundDevice.h"
#include "host/Error.h"

namespace modrift::devices {
namespace {

constexpr const char* kClientName = "Modrift";
using Ports = std::array<jack_port_t*, host::kLiveChannels>;

void saveBreath(const char* /*message*/) {}  // a server that isn't there is nothing that the library need tell

struct FreePorts {
  void operator()(const char** names) const { jack_free(names); }
};

class JackDevice : public SoundDevice {
 public:
  JackDevice(jack_client_t* client, JackPorts ports) : client_(client) {
    jack_on_shutdown(
        client_, [](void* self) { static_cast<JackDevice*>(self)->lost_ = true; }, this);
    jack_set_process_callback(client_, processFrames, this);
    for (std::size_t i = 0; i < outputs_.size(); ++i) outputs_[i] = newPort("out", i, JackPortIsOutput);
    if (ports == JackPorts::outputs) return;
    for (std::size_t i = 0; i < inputs_.size(); ++i) inputs_[i] = newPort("in", i, JackPortIsInput);
  }
  JackDevice(const JackDevice&) = delete;
  JackDevice& operator=(const JackDevice&) = delete;
  ~JackDevice() override { jack_client_close(client_); }

  [[nodiscard]] double sampleRateHz() const override { return jack_get_sample_rate(client_); }
  [[nodiscard]] int blockFrames() const override { return static_cast<int>(jack_get_buffer_size(client_)); }
  [[nodiscard]] std::string description() const override {
    return fmt::format("JACK, client \"{}\" at {:.0f} Hz", jack_get_client_name(client_), sampleRateHz());
  }
  void start(BlockPlayer& player) override {
    player_ = &player;
    lost_ = lost_ || jack_activate(client_) != 0;
    if (!lost_) connectOutputs();
  }
  void stop() override { jack_deactivate(client_); }
  [[nodiscard]] bool isLost() const override { return lost_; }

 private:
  jack_port_t* newPort(const char* name, std::size_t channel, unsigned long direction) {
    const std::string title = fmt::format("{}_{}", name, channel + 1);
    jack_port_t* const port = jack_port_register(client_, title.c_str(), JACK_DEFAULT_AUDIO_TYPE, direction, 0);
    if (port == nullptr) throw host::Error("JACK: a server with free ports was expected");
    return port;
  }

  void connectOutputs() {
    const std::unique_ptr<const char*, FreePorts> speakers(
        jack_get_ports(client_, nullptr, JACK_DEFAULT_AUDIO_TYPE, JackPortIsPhysical | JackPortIsInput));
    for (std::size_t i = 0; i < outputs_.size() && speakers && speakers.get()[i] != nullptr; ++i)
      jack_connect(client_, jack_port_name(outputs_[i]), speakers.get()[i]);
  }

  // Without ports of its own the input is the silence that the outputs hold first.
  static int processFrames(jack_nframes_t frames, void* self) {
    auto& device = *static_cast<JackDevice*>(self);
    host::LiveInputs inputs{};
    host::LiveOutputs outputs{};
    for (std::size_t i = 0; i < outputs.size(); ++i) {
      outputs[i] = static_cast<float*>(jack_port_get_buffer(device.outputs_[i], frames));
      std::fill_n(outputs[i], frames, 0.0f);
      inputs[i] =
          device.inputs_[i] ? static_cast<const float*>(jack_port_get_buffer(device.inputs_[i], frames)) : outputs[i];
    }
    device.player_->play(inputs, outputs, frames);
    return 0;
  }

  jack_client_t* client_;
  Ports outputs_{}, inputs_{};
  BlockPlayer* player_ = nullptr;
  std::atomic<bool> lost_ = false;
};

}  // namespace

std::unique_ptr<SoundDevice> openJack(JackPorts ports) {
  jack_set_error_function(saveBreath);
  jack_set_info_function(saveBreath);
  jack_client_t* const client = jack_client_open(kClientName, JackNoStartServer, nullptr);
  return client != nullptr ? std::make_unique<JackDevice>(client, ports) : nullptr;
}

}  // namespace modrift::devices
