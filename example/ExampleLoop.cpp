// SPDX-License-Identifier: MIT
// Makes the example loop: drums over a held chord a bar, four bars of 4/4 at 120 beats per minute. Run by the build as
//   modrift_example_loop FILE.wav
// The chord is bright and steady, so that whatever moves filter, volume or pan can be heard plainly; the drums show the
// beat that it moves to. Everything that rings past the end goes on at the start, so the loop has no seam. Fixed seeds:
// every build writes the same bytes.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <sndfile.h>
#include <string_view>
#include <vector>

namespace {

constexpr int kSampleRateHz = 48000;
constexpr double kFrameSeconds = 1.0 / kSampleRateHz;
constexpr std::size_t kBars = 4;
constexpr std::size_t kStepsPerBar = 16;
constexpr std::size_t kFramesPerStep = 6000;  // a sixteenth at 120 beats per minute
constexpr std::size_t kFramesPerBar = kStepsPerBar * kFramesPerStep;
constexpr std::size_t kLoopFrames = kBars * kFramesPerBar;
constexpr double kSwing = 0.14;  // of a step, by which every second sixteenth comes late
constexpr double kPeakDb = -3.0;

struct Stereo {
  double left = 0.0;
  double right = 0.0;
};

Stereo operator*(Stereo a, double gain) { return {a.left * gain, a.right * gain}; }

// pan: -1 left to 1 right, equal power.
Stereo panned(double sample, double pan) {
  const double angle = (pan + 1.0) * std::numbers::pi / 4.0;
  return {sample * std::cos(angle), sample * std::sin(angle)};
}

class Loop {
 public:
  void add(std::size_t frame, Stereo sample) {
    Stereo& place = frames_[frame % kLoopFrames];
    place.left += sample.left;
    place.right += sample.right;
  }
  void add(const Loop& other, double gain) {
    for (std::size_t i = 0; i < kLoopFrames; ++i) add(i, other.frames_[i] * gain);
  }
  [[nodiscard]] std::vector<Stereo>& frames() { return frames_; }
  [[nodiscard]] const std::vector<Stereo>& frames() const { return frames_; }

 private:
  std::vector<Stereo> frames_{kLoopFrames};
};

// -1 to 1, from a 32-bit xorshift.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed) {}
  double next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<double>(state_) / 2147483648.0 - 1.0;
  }

 private:
  std::uint32_t state_;
};

class OnePole {
 public:
  explicit OnePole(double cutoffHz)
      : coefficient_(1.0 - std::exp(-2.0 * std::numbers::pi * cutoffHz * kFrameSeconds)) {}
  double low(double input) { return state_ += coefficient_ * (input - state_); }
  double high(double input) { return input - low(input); }

 private:
  double coefficient_;
  double state_ = 0.0;
};

// Falls by 1/e every `seconds` and reaches zero at `endSeconds`.
double decay(double time, double seconds, double endSeconds) {
  return time < endSeconds ? std::exp(-time / seconds) * (1.0 - time / endSeconds) : 0.0;
}

// Drums ---------------------------------------------------------------------------------------------------------------

constexpr double kLongestHitSeconds = 0.9;
constexpr auto kLongestHit = static_cast<std::size_t>(kLongestHitSeconds * kSampleRateHz);

void kick(Loop& loop, std::size_t start, double gain, std::uint32_t) {
  double phase = 0.0;
  for (std::size_t i = 0; i < kLongestHit; ++i) {
    const double time = static_cast<double>(i) * kFrameSeconds;
    const double hz = 47.0 + 150.0 * std::exp(-time / 0.030) + 1400.0 * std::exp(-time / 0.0025);
    phase += 2.0 * std::numbers::pi * hz * kFrameSeconds;
    const double body = std::tanh(1.6 * std::sin(phase)) * decay(time, 0.17, 0.8);
    loop.add(start + i, panned(gain * body, 0.0));
  }
}

void snare(Loop& loop, std::size_t start, double gain, std::uint32_t seed) {
  Noise noise(seed);
  OnePole bright(1400.0);
  OnePole brightSide(3000.0);
  for (std::size_t i = 0; i < kLongestHit; ++i) {
    const double time = static_cast<double>(i) * kFrameSeconds;
    const double turn = 2.0 * std::numbers::pi * time;
    const double shell = std::sin(turn * 187.0 + 1.2 * std::exp(-time / 0.01)) * decay(time, 0.055, 0.4) +
                         0.5 * std::sin(turn * 331.0) * decay(time, 0.030, 0.3);
    const double wires = decay(time, 0.085, 0.6);
    const double middle = 0.75 * shell + 0.8 * bright.high(noise.next()) * wires;
    const double side = 0.25 * brightSide.high(noise.next()) * wires;
    loop.add(start + i, Stereo{middle + side, middle - side} * gain);
  }
}

// Six squares that share no overtone, as in the drum machines of old, and noise.
void hat(Loop& loop, std::size_t start, double gain, std::uint32_t seed, double decaySeconds, double pan) {
  static constexpr std::array<double, 6> kMetalHz{2465.0, 3651.0, 4433.0, 6272.0, 6480.0, 9597.0};
  Noise noise(seed);
  OnePole first(5000.0);
  OnePole second(5000.0);
  for (std::size_t i = 0; i < kLongestHit; ++i) {
    const double time = static_cast<double>(i) * kFrameSeconds;
    double metal = 0.0;
    for (const double hz : kMetalHz) metal += std::sin(2.0 * std::numbers::pi * hz * time) > 0.0 ? 1.0 : -1.0;
    const double source = 0.12 * metal + 0.6 * noise.next();
    loop.add(start + i, panned(gain * second.high(first.high(source)) * decay(time, decaySeconds, 0.7), pan));
  }
}

void closedHat(Loop& loop, std::size_t start, double gain, std::uint32_t seed) {
  hat(loop, start, gain, seed, 0.026, 0.25);
}

void openHat(Loop& loop, std::size_t start, double gain, std::uint32_t seed) {
  hat(loop, start, gain, seed, 0.16, 0.25);
}

// One character a sixteenth: how hard from 1 to 9, or a rest.
struct DrumPart {
  void (*hit)(Loop&, std::size_t start, double gain, std::uint32_t seed);
  double gain;
  std::uint32_t seed;
  std::array<std::string_view, kBars> bars;
};

constexpr auto kDrumParts = std::to_array<DrumPart>({
    {kick, 0.95, 1, {"9.....7...8.....", "9.....7...8..5..", "9.....7...8.....", "9.....7.8.8....."}},
    {snare, 0.60, 100, {"....9.......9...", "....9..2.3..9...", "....9.......9..2", "....9..3....9467"}},
    {closedHat, 1.5, 200, {"8.5.8.537.5.8...", "8.5.8.537.5.8...", "8.5.8.537.5.8...", "8.5.8...7.5.7.5."}},
    {openHat, 1.0, 300, {"..............7.", "..............7.", "..............7.", "......7........."}},
});

void playDrums(Loop& loop, const DrumPart& part) {
  for (std::size_t step = 0; step < kBars * kStepsPerBar; ++step) {
    const char force = part.bars[step / kStepsPerBar][step % kStepsPerBar];
    if (force == '.') continue;
    const double late = step % 2 == 1 ? kSwing : 0.0;
    const auto start = static_cast<std::size_t>((static_cast<double>(step) + late) * kFramesPerStep);
    const double loudness = static_cast<double>(force - '0') / 9.0;
    part.hit(loop, start, part.gain * loudness * loudness, part.seed + static_cast<std::uint32_t>(step));
  }
}

// Chord ---------------------------------------------------------------------------------------------------------------

// A sawtooth without the overtones above half the sample rate that would fold back (two-sample polynomial correction).
class Saw {
 public:
  Saw(double hz, double phase) : step_(hz * kFrameSeconds), phase_(phase) {}
  double next() {
    phase_ += step_;
    if (phase_ >= 1.0) phase_ -= 1.0;
    double sample = 2.0 * phase_ - 1.0;
    if (phase_ < step_) {
      const double past = phase_ / step_ - 1.0;
      sample += past * past;
    } else if (phase_ > 1.0 - step_) {
      const double ahead = (phase_ - 1.0) / step_ + 1.0;
      sample -= ahead * ahead;
    }
    return sample;
  }

 private:
  double step_;  // turns a frame
  double phase_;
};

struct SawVoice {
  double detuneCents;
  double pan;
};
constexpr auto kSawVoices = std::to_array<SawVoice>({{-13.0, -0.8}, {-6.0, 0.5}, {0.0, 0.0}, {5.0, -0.5}, {12.0, 0.8}});

struct Chord {
  int bass;                   // MIDI notes, 69 is A at 440 Hz
  std::array<int, 5> voices;  // each moves to the nearest note of the next chord, round the loop
};
constexpr std::array<Chord, kBars> kChords{{
    {45, {57, 60, 64, 67, 71}},  // A minor 9
    {41, {57, 60, 64, 67, 72}},  // F major 9
    {48, {55, 62, 64, 67, 71}},  // C major 9
    {43, {55, 59, 62, 69, 74}},  // G added 9
}};

double noteHz(double note) { return 440.0 * std::exp2((note - 69.0) / 12.0); }

// Held for a bar; the release runs under the next chord's attack.
double chordEnvelope(std::size_t frame) {
  constexpr double kAttackSeconds = 0.012;
  constexpr double kReleaseSeconds = 0.060;
  const double time = static_cast<double>(frame) * kFrameSeconds;
  const double barSeconds = static_cast<double>(kFramesPerBar) * kFrameSeconds;
  if (time < barSeconds) return 1.0 - std::exp(-time / kAttackSeconds);
  return std::exp(-(time - barSeconds) / kReleaseSeconds);
}

constexpr std::size_t kChordFrames = kFramesPerBar + kSampleRateHz / 2;

void playNote(Loop& loop, std::size_t start, int note, double gain, Noise& phases) {
  for (const SawVoice& voice : kSawVoices) {
    Saw saw(noteHz(note + voice.detuneCents / 100.0), 0.5 + 0.5 * phases.next());
    OnePole air(14000.0);
    for (std::size_t i = 0; i < kChordFrames; ++i)
      loop.add(start + i, panned(gain * air.low(saw.next()) * chordEnvelope(i), voice.pan));
  }
}

void playBass(Loop& loop, std::size_t start, int note, double gain) {
  Saw saw(noteHz(note), 0.5);
  OnePole first(500.0);
  OnePole second(500.0);
  const double radiansPerFrame = 2.0 * std::numbers::pi * noteHz(note) * kFrameSeconds;
  for (std::size_t i = 0; i < kChordFrames; ++i) {
    const double sub = std::sin(radiansPerFrame * static_cast<double>(i));
    const double sample = 0.5 * sub + second.low(first.low(saw.next()));
    loop.add(start + i, panned(gain * sample * chordEnvelope(i), 0.0));
  }
}

void playChords(Loop& loop) {
  constexpr double kVoiceGain = 0.058;
  constexpr double kBassGain = 0.15;
  Noise phases(4242);
  for (std::size_t bar = 0; bar < kBars; ++bar) {
    for (const int note : kChords[bar].voices) playNote(loop, bar * kFramesPerBar, note, kVoiceGain, phases);
    playBass(loop, bar * kFramesPerBar, kChords[bar].bass, kBassGain);
  }
}

// Room and master -----------------------------------------------------------------------------------------------------

// Four delays feeding each other through a Hadamard matrix, which keeps the energy; the losses set the decay of a
// second.
class Room {
 public:
  Stereo next(Stereo input) {
    std::array<double, 4> out{};
    for (std::size_t i = 0; i < 4; ++i) out[i] = lines_[i].damping.low(lines_[i].delay[lines_[i].place]);
    const double a = out[0] + out[1];
    const double b = out[0] - out[1];
    const double c = out[2] + out[3];
    const double d = out[2] - out[3];
    const std::array<double, 4> mixed{a + c, b + d, a - c, b - d};
    for (std::size_t i = 0; i < 4; ++i) {
      Line& line = lines_[i];
      line.delay[line.place] = (i % 2 == 0 ? input.left : input.right) + 0.5 * kKept * mixed[i];
      line.place = (line.place + 1) % line.delay.size();
    }
    return {out[0] + out[2], out[1] + out[3]};
  }

 private:
  static constexpr double kKept = 0.78;  // of the amplitude, each time round
  struct Line {
    std::vector<double> delay;
    OnePole damping{5500.0};
    std::size_t place = 0;
  };
  static Line lineOf(std::size_t frames) { return {std::vector<double>(frames, 0.0)}; }
  // Primes, so that no echoes coincide; 30 to 50 ms.
  std::array<Line, 4> lines_{lineOf(1453), lineOf(1753), lineOf(2069), lineOf(2381)};
};

// The second time round, the effect has the loop's own end behind it: what it gives is the loop without a seam.
template <class Process>
void processRoundTheLoop(Loop& loop, Process process) {
  Loop result;
  for (int round = 0; round < 2; ++round)
    for (std::size_t i = 0; i < kLoopFrames; ++i) result.frames()[i] = process(loop.frames()[i]);
  loop = result;
}

void master(Loop& loop) {
  OnePole dcLeft(15.0);
  OnePole dcRight(15.0);
  processRoundTheLoop(loop, [&](Stereo s) {  // rounds the drums' peaks off and leaves the chord as it is
    return Stereo{dcLeft.high(std::tanh(s.left)), dcRight.high(std::tanh(s.right))};
  });
  double peak = 0.0;
  for (const Stereo& s : loop.frames()) peak = std::max({peak, std::abs(s.left), std::abs(s.right)});
  const double gain = std::pow(10.0, kPeakDb / 20.0) / peak;
  for (Stereo& s : loop.frames()) s = s * gain;
}

Loop makeLoop() {
  Loop chords;
  Loop drums;
  Loop kicks;
  playChords(chords);
  for (const DrumPart& part : kDrumParts) playDrums(part.hit == kick ? kicks : drums, part);
  Loop room;
  room.add(chords, 0.5);
  room.add(drums, 0.35);
  Room effect;
  processRoundTheLoop(room, [&](Stereo s) { return effect.next(s); });
  Loop mix;
  mix.add(chords, 1.0);
  mix.add(drums, 1.0);
  mix.add(kicks, 1.0);
  mix.add(room, 0.22);
  master(mix);
  return mix;
}

// 24-bit, not float: libsndfile stamps float files with the time of day.
bool write(const Loop& loop, const char* path) {
  static_assert(sizeof(Stereo) == 2 * sizeof(double));
  SF_INFO format{};
  format.samplerate = kSampleRateHz;
  format.channels = 2;
  format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
  SNDFILE* file = sf_open(path, SFM_WRITE, &format);
  if (file == nullptr) return false;
  const auto frames = static_cast<sf_count_t>(kLoopFrames);
  const bool complete = sf_writef_double(file, &loop.frames().front().left, frames) == frames;
  return sf_close(file) == 0 && complete;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: modrift_example_loop FILE.wav\n", stderr);
    return 2;
  }
  if (!write(makeLoop(), argv[1])) {
    std::fprintf(stderr, "modrift_example_loop: %s could not be written: %s\n", argv[1], sf_strerror(nullptr));
    return 1;
  }
  return 0;
}
