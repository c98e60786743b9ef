// A second, deliberately plain filter bank: one channel, one sample at a time, nothing precomputed beyond the tables.
// Slow and literal, it is what the fast filter bank is held against, sample by sample.
//
// Life: construction on tables that outlive the filter; `setSampleRate`; `clear`; then blocks. All state is public, so
// that a difference can be followed into the fields.
#pragma once

#include <array>
#include <vector>

namespace reference {

// The shared tables, tuned to 440 Hz. `sampleRate` is the host's rate in hertz, not the doubled one.
struct Tables {
  explicit Tables(double sampleRate);

  struct Moog {
    float k, c1, c2, c3;
  };
  struct Svf {
    float f, damp, qMax, gainComp;
  };
  struct Hold {
    float levels, step;
  };
  struct Delay {
    float samples, base, inv, tan;
  };
  std::vector<Moog> moog;
  std::vector<Svf> svf;
  std::vector<Hold> hold;
  std::vector<Delay> delay;
  float svf1Hz = 0.0f;
};

// State-variable stage; the 6 dB form uses low, high and f alone.
struct Stage {
  float low = 0.0f, band = 0.0f, high = 0.0f, notch = 0.0f;
  float f = 0.0f, cubic = 0.0f, q = 0.0f;

  void poleStep(float u);
  void nlStep(float u);
  void linStep(float u);
};

// A ring whose size is a power of two.
struct Line {
  std::vector<float> data;
  long mask = -1;

  void resize(long least);  // to the power of two not below `least`; keeps its contents if that is its size already
  void zero();
  float& operator[](long position) { return data[static_cast<std::size_t>(position & mask)]; }
};

// Band-pass of second order, set in the analogue domain.
struct Resonator {
  float sampleFreq = 44100.0f, f0 = 1000.0f, gain = 1.0f, q = 1.0f;
  std::array<float, 3> zB{1.0f, 0.0f, 0.0f}, zA{1.0f, 0.0f, 0.0f};
  std::array<float, 2> memX{}, memY{};  // newest first

  void updateEq();
  float process(float x);
};

class Filter {
 public:
  explicit Filter(const Tables& sharedTables) : tables(sharedTables) {}

  // The rate at which this filter runs, twice the host's, and its inverse.
  void setSampleRate(float rate, float invRate);
  void clear();
  // `params` holds eight entries; `in` may be `out`.
  void processBuffer(const float* params, const float* in, float* out, long count);
  int mode() const { return type; }

  const Tables& tables;
  float sampleRate = 0.0f, invSampleRate = -1.0f;
  int type = -1;
  Stage stageA, stageB;
  std::array<float, 8> chain{}, chainPrev{};
  float germanPrev = 0.0f;
  std::array<float, 3> morph{}, morphTarget{};
  float morphRate = 0.0f, morphKeep = 0.0f;
  float wet = 0.0f, dry = 0.0f;
  float chainCoef = 0.0f, ladderPrev = 0.0f, ladderFb = 0.0f, feedback = 0.0f;
  float eqGain = 0.0f, held = 0.0f, holdLevels = 0.0f;
  double holdPhase = 0.0, holdStep = 0.0;
  struct {
    float denormalBias = 1e-18f, target = 0.0f, current = 0.0f, coef = 0.0f;
  } delaySmooth;
  Line mainLine;
  float delayFeedback = 0.0f;
  long writePos = 0;
  float inGain = 0.0f, driveGain = 1.0f, driveRaw = 0.0f;
  std::array<Line, 8> combLine;
  std::array<Line, 4> apLine;
  std::array<long, 8> combDelay{};
  std::array<long, 4> apDelay{};
  std::array<float, 8> damp{}, dcTrack{};
  float verbIn = 0.0f, combScale = 1.0f, apScale = 1.0f, verbFeedback = 0.0f, apCoef = 0.0f;
  std::array<Resonator, 5> resonator;

 private:
  void set(const float* params);
  void setClean();
  void setStages();
  void setDelayTypes();
  void setEffects();
  void setReverb();
  void setFormants();
  void setApDelays(std::size_t count);
  void setHalfMix(bool inverted);
  void setStage(Stage& stage, double x) const;
  float limitedF(double x) const;

  void processFilter(const float* in, float* out, long count);
  float sample(float in, float y);
  float tapOf(float y);
  float cleanSvf(float in);
  float ladder(float g);
  float multimode(float g);
  float delayLoop(float y);
  float hermite(float position);
  float loopFilter(float x);
  float allpassChain(float x, std::size_t stages);
  float sampleAndHold(float y);
  float combBank(float x);
  float dampedSection(std::size_t j, float u);
  float plainSection(std::size_t j, float u);
  float french(float y);
  float german(float y);
  float addBass(float y);
  void formants(const float* in, float* out, long count);

  // This block's controls, Var and mix also limited to 0..1, and the table row at the resonance.
  double cutoff = 0.0, resonance = 0.0, var = 0.0, unitVar = 0.0, mix = 0.0, unitMix = 0.0;
  std::size_t resonanceRow = 0;
  bool changed = false;
};

}  // namespace reference
