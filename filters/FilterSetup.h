// SPDX-License-Identifier: MIT
// From the performance controls to a type's coefficients, once a control tick: cutoff, resonance and "Var" as positions
// in the shared tables. Everything is computed in double precision and stored as float.
#pragma once

#include "filters/FilterCoefs.h"
#include "filters/VGlobalCoeffs.h"

namespace filters {

// The parameter block as the set-up reads it. NaN counts as the lower end wherever a value is limited.
struct FilterControls {
  double c = 0.0;  // cutoff: 0 is MIDI note 0, 1 note 128
  double r = 0.0;  // resonance
  double v = 0.0;  // "Var"
  double m = 1.0;  // mix: 1 is the filter alone, in combs, flangers and phasers 2
};

// The entry of the pitch tables for a cutoff, which may lie one range below or above 0 to 1.
[[nodiscard]] int pitchEntry(double x) noexcept;

class FilterSetup {
 public:
  // `sampleRateHz` is the rate at which the filter runs. `polarity` is the sign of the feedback.
  FilterSetup(FilterCoefs& coefs, const VGlobalCoeffs& tables, const FilterControls& controls, float sampleRateHz,
              double polarity) noexcept;

  FilterCoefs& k;
  const VGlobalCoeffs& tables;
  const double c, r, v, m;
  const double v1;        // "Var" limited to 0 to 1
  const double rate;      // hertz
  const double polarity;  // 1 or -1

  [[nodiscard]] const VGlobalCoeffs::Moog& moog(double x) const noexcept { return tables.moog[entry(x)]; }
  [[nodiscard]] const VGlobalCoeffs::Svf& svf(double x) const noexcept { return tables.svf[entry(x)]; }
  [[nodiscard]] const VGlobalCoeffs::Hold& hold(double x) const noexcept { return tables.hold[entry(x)]; }
  [[nodiscard]] const VGlobalCoeffs::Delay& delay(double x) const noexcept { return tables.delay[entry(x)]; }
  [[nodiscard]] std::size_t resonanceEntry() const noexcept { return resonance_; }

  // A 12 dB stage at x, damped by the resonance but never beyond the stability limit.
  [[nodiscard]] StageCoefs stageAt(double x) const noexcept;
  // A 12 dB stage at x with as little resonance as there is.
  [[nodiscard]] StageCoefs openStageAt(double x) const noexcept;
  // Both stages at x, the second one broad while the first one rings.
  void bothStages(double x) noexcept;
  // A 6 dB stage's f.
  [[nodiscard]] float poleAt(double x) const noexcept;
  // The f of a 6 dB high-pass at 1 Hz.
  [[nodiscard]] static float dcBlock() noexcept;
  // "Var" as a cutoff of its own: the cutoff at 0.5, and the whole range below or above it at the ends.
  [[nodiscard]] double aroundCutoff() const noexcept { return c + 2.0 * v - 1.0; }
  // "Fat": full input level against the level that the resonance takes away.
  void fat() noexcept;
  void phaserSections() noexcept;
  // The signed feedback of combs, flangers and phasers.
  [[nodiscard]] float signedFeedback() const noexcept;
  void mix(double wetScale = 1.0) noexcept;
  // Dry and wet at equal level, the dry part lowered as the feedback rises.
  void halfMix(double wetSign) noexcept;

 private:
  [[nodiscard]] static std::size_t entry(double x) noexcept { return static_cast<std::size_t>(pitchEntry(x)); }

  std::size_t resonance_;
};

// One for each way of setting up; `FilterTypes.cpp` tells which type uses which.
namespace setups {
void stateVariable(FilterSetup& s) noexcept;
void ladder(FilterSetup& s) noexcept;
void pole(FilterSetup& s) noexcept;
void single(FilterSetup& s) noexcept;
void poleThenStage(FilterSetup& s) noexcept;
void twoStages(FilterSetup& s) noexcept;
void notch(FilterSetup& s) noexcept;
void twoNotches(FilterSetup& s) noexcept;
void dualPole(FilterSetup& s) noexcept;
void dual(FilterSetup& s) noexcept;
void dualNotch(FilterSetup& s) noexcept;
void morph(FilterSetup& s) noexcept;
void morphTwoStages(FilterSetup& s) noexcept;
void comb(FilterSetup& s) noexcept;
void combLow(FilterSetup& s) noexcept;
void combHigh(FilterSetup& s) noexcept;
void combBand(FilterSetup& s) noexcept;
void flanger(FilterSetup& s) noexcept;
void flangerLow(FilterSetup& s) noexcept;
void flangerHigh(FilterSetup& s) noexcept;
void flangerBand(FilterSetup& s) noexcept;
void flangerPhaser(FilterSetup& s) noexcept;
void phaser(FilterSetup& s) noexcept;
void phaserLow(FilterSetup& s) noexcept;
void phaserHigh(FilterSetup& s) noexcept;
void phaserBand(FilterSetup& s) noexcept;
void equaliser(FilterSetup& s) noexcept;
void ring(FilterSetup& s) noexcept;
void sampleHold(FilterSetup& s) noexcept;
void combs(FilterSetup& s) noexcept;
void allPasses(FilterSetup& s) noexcept;
void reverb(FilterSetup& s) noexcept;
void french(FilterSetup& s) noexcept;
void german(FilterSetup& s) noexcept;
void addBass(FilterSetup& s) noexcept;
void formantSung(FilterSetup& s) noexcept;
void formantSpoken(FilterSetup& s) noexcept;
void formantModern(FilterSetup& s) noexcept;
void bandReject(FilterSetup& s) noexcept;
}  // namespace setups

}  // namespace filters
