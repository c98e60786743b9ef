// SPDX-License-Identifier: MIT
// The crossover on a signal, and on digital silence, where its states decay towards denormal numbers.
#include "bench/Measure.h"
#include "bench/Subjects.h"
#include "effect/Crossover.h"

using namespace effect;

namespace bench {
namespace {

constexpr std::size_t kBlock = 128;
constexpr float kFrequencyHz = 700.0f;
constexpr std::size_t kDecayFrames = 96000;  // 2 s: long enough for all states to come to rest

enum class Input { signal, silence };

class Subject {
 public:
  Subject() {
    for (CrossoverState* const state : {&left_, &right_}) {
      state->sampleRate = static_cast<float>(kRateHz);
      state->setFrequency(kFrequencyHz);
    }
  }

  void split(float* left, float* right) noexcept {
    splitStereo(left_, right_, {left, kBlock}, {right, kBlock}, false, bands());
  }
  void splitOne(float* in) noexcept { splitMono(left_, {in, kBlock}, false, bands()); }

 private:
  Bands bands() noexcept { return {out_[0], out_[1], out_[2], out_[3]}; }

  CrossoverState left_, right_;
  std::array<std::array<float, kBlock>, 4> out_{};
};

// One block of signal first, so that there is something to decay.
void decay(Subject& subject, float* silence) {
  subject.split(stimulus().left(0, kBlock), stimulus().right(0, kBlock));
  for (std::size_t i = 0; i < kDecayFrames; i += kBlock) subject.split(silence, silence);
}

void stereo(benchmark::State& state, Input input) {
  Subject subject;
  std::array<float, kBlock> silence{};
  const bool isSilent = input == Input::silence;
  if (isSilent) decay(subject, silence.data());
  measure(state, kBlock, [&](std::size_t frame) {
    subject.split(isSilent ? silence.data() : stimulus().left(frame, kBlock),
                  isSilent ? silence.data() : stimulus().right(frame, kBlock));
    benchmark::ClobberMemory();
  });
}

void mono(benchmark::State& state) {
  Subject subject;
  measure(state, kBlock, [&](std::size_t frame) {
    subject.splitOne(stimulus().left(frame, kBlock));
    benchmark::ClobberMemory();
  });
}

}  // namespace

void addCrossoverRows() {
  addRow("crossover/stereo", [](benchmark::State& s) { stereo(s, Input::signal); });
  addRow("crossover/stereo, silence", [](benchmark::State& s) { stereo(s, Input::silence); });
  addRow("crossover/mono", mono);
}

}  // namespace bench
