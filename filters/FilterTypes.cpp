// SPDX-License-Identifier: MIT
#include "filters/FilterTypes.h"

#include <iterator>

#include "filters/DelayKernels.h"
#include "filters/FormantKernels.h"
#include "filters/LadderKernels.h"
#include "filters/PhaserKernels.h"
#include "filters/ReverbKernels.h"
#include "filters/StateVariableKernels.h"
#include "filters/ToneKernels.h"

namespace filters {

namespace {

using enum Trait;
using namespace kernels;
using namespace setups;

constexpr LinesUsed noLines{};
constexpr LinesUsed mainLine{true};
constexpr LinesUsed combLines{false, kCombs};
constexpr LinesUsed allPassLines{false, 0, kAllPasses};
constexpr LinesUsed allLines{false, kCombs, kAllPasses};
constexpr LinesUsed frenchLines{false, 0, kFrenchDelays};

constexpr FilterType kTypes[] = {
    {"SVF LP", "clean state-variable", "-", 1, noLines, stateVariable, kClean<Low>, hertzCutoff},
    {"SVF BP", "clean state-variable", "-", 1, noLines, stateVariable, kClean<Band>, hertzCutoff},
    {"SVF HP", "clean state-variable", "-", 1, noLines, stateVariable, kClean<High>, hertzCutoff},
    {"MG Low 6", "ladder", "Fat", 1, noLines, ladder, kKernels<Mixed<Ladder<0>>>},
    {"MG Low 12", "ladder", "Fat", 1, noLines, ladder, kKernels<Mixed<Ladder<1>>>},
    {"MG Low 18", "ladder", "Fat", 1, noLines, ladder, kKernels<Mixed<Ladder<2>>>},
    {"MG Low 24", "ladder", "Fat", 1, noLines, ladder, kKernels<Mixed<Ladder<3>>>},
    {"Low 6", "multimode low-pass", "-", 1, noLines, pole, kKernels<Mixed<Single<Pole, Low>>>},
    {"Low 12", "multimode low-pass", "Fat", 1, noLines, single, kKernels<Mixed<Single<NonLinear, Low>>>},
    {"Low 18", "multimode low-pass", "Fat", 1, noLines, poleThenStage,
     kKernels<Mixed<Series<Pole, Low, NonLinear, Low>>>},
    {"Low 24", "multimode low-pass", "Fat", 1, noLines, twoStages,
     kKernels<Mixed<Series<NonLinear, Low, Linear, Low>>>},
    {"High 6", "multimode high-pass", "-", 1, noLines, pole, kKernels<Mixed<Single<Pole, High>>>},
    {"High 12", "multimode high-pass", "Fat", 1, noLines, single, kKernels<Mixed<Single<NonLinear, High>>>},
    {"High 18", "multimode high-pass", "Fat", 1, noLines, poleThenStage,
     kKernels<Mixed<Series<Pole, High, NonLinear, High>>>},
    {"High 24", "multimode high-pass", "Fat", 1, noLines, twoStages,
     kKernels<Mixed<Series<NonLinear, High, Linear, High>>>},
    {"Band 12", "multimode band-pass", "Fat", 1, noLines, single, kKernels<Mixed<Single<NonLinear, Band>>>},
    {"Band 24", "multimode band-pass", "Fat", 1, noLines, twoStages,
     kKernels<Mixed<Series<NonLinear, Band, Linear, Band>>>},
    {"Peak 12", "multimode peak", "Fat", 1, noLines, single, kKernels<Mixed<Single<NonLinear, Peak>>>},
    {"Peak 24", "multimode peak", "Fat", 1, noLines, twoStages, kKernels<Mixed<Series<NonLinear, Peak, Linear, Peak>>>},
    {"Notch 12", "multimode notch", "Fat", 1, noLines, notch, kKernels<Mixed<Single<NonLinear, Notch>>>},
    {"Notch 24", "multimode notch", "Fat", 1, noLines, twoNotches,
     kKernels<Mixed<Series<NonLinear, Notch, Linear, Notch>>>},
    {"LH 6", "dual serial, 6 dB stages", "Freq", 1, noLines, dualPole, kKernels<Mixed<Series<Pole, Low, Pole, High>>>},
    {"LH 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Low, NonLinear, High>>>},
    {"LB 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Low, NonLinear, Band>>>},
    {"LP 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Low, NonLinear, Peak>>>},
    {"LN 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dualNotch,
     kKernels<Mixed<Series<NonLinear, Low, NonLinear, Notch>>>},
    {"HB 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, High, NonLinear, Band>>>},
    {"HP 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, High, NonLinear, Peak>>>},
    {"HN 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dualNotch,
     kKernels<Mixed<Series<NonLinear, High, NonLinear, Notch>>>},
    {"BP 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Band, NonLinear, Peak>>>},
    {"BN 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dualNotch,
     kKernels<Mixed<Series<NonLinear, Band, NonLinear, Notch>>>},
    {"PP 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Peak, NonLinear, Peak>>>},
    {"PN 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dualNotch,
     kKernels<Mixed<Series<NonLinear, Peak, NonLinear, Notch>>>},
    {"NN 12", "dual serial, 12 dB stages", "Freq", 1, noLines, dual,
     kKernels<Mixed<Series<NonLinear, Notch, NonLinear, Notch>>>},
    {"L/B/H 12", "morphing", "Morph", 1, noLines, morph, kMorph<Morph12, Low, Band, High>, shapedByVar},
    {"L/B/H 24", "morphing", "Morph", 1, noLines, morphTwoStages, kMorph<Morph24, Low, Band, High>, shapedByVar},
    {"L/P/H 12", "morphing", "Morph", 1, noLines, morph, kMorph<Morph12, Low, Peak, High>, shapedByVar},
    {"L/P/H 24", "morphing", "Morph", 1, noLines, morphTwoStages, kMorph<Morph24, Low, Peak, High>, shapedByVar},
    {"L/N/H 12", "morphing", "Morph", 1, noLines, morph, kMorph<Morph12, Low, Notch, High>, shapedByVar},
    {"L/N/H 24", "morphing", "Morph", 1, noLines, morphTwoStages, kMorph<Morph24, Low, Notch, High>, shapedByVar},
    {"B/P/N 12", "morphing", "Morph", 1, noLines, morph, kMorph<Morph12, Band, Peak, Notch>, shapedByVar},
    {"B/P/N 24", "morphing", "Morph", 1, noLines, morphTwoStages, kMorph<Morph24, Band, Peak, Notch>, shapedByVar},
    {"Cmb +", "comb", "-", 1, mainLine, comb, kKernels<Comb<Loop::comb, DcBlock>>},
    {"Cmb -", "comb", "-", -1, mainLine, comb, kKernels<Comb<Loop::comb, DcBlock>>},
    {"Cmb L6+", "comb, low-passed", "LP Frq", 1, mainLine, combLow, kKernels<Comb<Loop::comb, DcBlockLowPass>>},
    {"Cmb L6-", "comb, low-passed", "LP Frq", -1, mainLine, combLow, kKernels<Comb<Loop::comb, DcBlockLowPass>>},
    {"Cmb H6+", "comb, high-passed", "HP Frq", 1, mainLine, combHigh, kKernels<Comb<Loop::comb, HighPass>>},
    {"Cmb H6-", "comb, high-passed", "HP Frq", -1, mainLine, combHigh, kKernels<Comb<Loop::comb, HighPass>>},
    {"Cmb HL6+", "comb, band-limited", "HL Wid", 1, mainLine, combBand, kKernels<Comb<Loop::comb, HighPassLowPass>>},
    {"Cmb HL6-", "comb, band-limited", "HL Wid", -1, mainLine, combBand, kKernels<Comb<Loop::comb, HighPassLowPass>>},
    {"Flg +", "flanger", "-", 1, mainLine, flanger, kKernels<Comb<Loop::flanger, DcBlock>>},
    {"Flg -", "flanger", "-", -1, mainLine, flanger, kKernels<Comb<Loop::flanger, DcBlock>>},
    {"Flg L6+", "flanger, low-passed", "HP Frq", 1, mainLine, flangerLow,
     kKernels<Comb<Loop::flanger, DcBlockLowPass>>},
    {"Flg L6-", "flanger, low-passed", "HP Frq", -1, mainLine, flangerLow,
     kKernels<Comb<Loop::flanger, DcBlockLowPass>>},
    {"Flg H6+", "flanger, high-passed", "HP Frq", 1, mainLine, flangerHigh, kKernels<Comb<Loop::flanger, HighPass>>},
    {"Flg H6-", "flanger, high-passed", "HP Frq", -1, mainLine, flangerHigh, kKernels<Comb<Loop::flanger, HighPass>>},
    {"Flg HL6+", "flanger, band-limited", "HL Wid", 1, mainLine, flangerBand,
     kKernels<Comb<Loop::flanger, HighPassLowPass>>},
    {"Flg HL6-", "flanger, band-limited", "HL Wid", -1, mainLine, flangerBand,
     kKernels<Comb<Loop::flanger, HighPassLowPass>>},
    {"Phs 12+", "phaser", "-", 1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 2>>>},
    {"Phs 12-", "phaser", "-", -1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 2>>>},
    {"Phs 24+", "phaser", "-", 1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 4>>>},
    {"Phs 24-", "phaser", "-", -1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 4>>>},
    {"Phs 36+", "phaser", "-", 1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 6>>>},
    {"Phs 36-", "phaser", "-", -1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 6>>>},
    {"Phs 48+", "phaser", "-", 1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 8>>>},
    {"Phs 48-", "phaser", "-", -1, noLines, phaser, kKernels<Mixed<Phaser<DcBlock, 8>>>},
    {"Phs 48L6+", "phaser, low-passed", "HP Frq", 1, noLines, phaserLow, kKernels<Mixed<Phaser<DcBlockLowPass, 8>>>},
    {"Phs 48L6-", "phaser, low-passed", "HP Frq", -1, noLines, phaserLow, kKernels<Mixed<Phaser<DcBlockLowPass, 8>>>},
    {"Phs 48H6+", "phaser, high-passed", "HP Frq", 1, noLines, phaserHigh, kKernels<Mixed<Phaser<HighPass, 8>>>},
    {"Phs 48H6-", "phaser, high-passed", "HP Frq", -1, noLines, phaserHigh, kKernels<Mixed<Phaser<HighPass, 8>>>},
    {"Phs 48HL6+", "phaser, band-limited", "HL Wid", 1, noLines, phaserBand,
     kKernels<Mixed<Phaser<HighPassLowPass, 8>>>},
    {"Phs 48HL6-", "phaser, band-limited", "HL Wid", -1, noLines, phaserBand,
     kKernels<Mixed<Phaser<HighPassLowPass, 8>>>},
    {"FPhs 12HL6+", "flanger into phaser", "HL Wid", 1, mainLine, flangerPhaser, kKernels<FlangerPhaser>},
    {"FPhs 12HL6-", "flanger into phaser", "HL Wid", -1, mainLine, flangerPhaser, kKernels<FlangerPhaser>},
    {"Low EQ 6", "shelving and bell EQ", "dB +/-", 1, noLines, equaliser, kKernels<Mixed<Equaliser<Pole, Low>>>,
     shapedByVar},
    {"Low EQ 12", "shelving and bell EQ", "dB +/-", 1, noLines, equaliser, kKernels<Mixed<Equaliser<NonLinear, Low>>>,
     shapedByVar},
    {"Band EQ 12", "shelving and bell EQ", "dB +/-", 1, noLines, equaliser, kKernels<Mixed<Equaliser<NonLinear, Band>>>,
     shapedByVar},
    {"High EQ 6", "shelving and bell EQ", "dB +/-", 1, noLines, equaliser, kKernels<Mixed<Equaliser<Pole, High>>>,
     shapedByVar},
    {"High EQ 12", "shelving and bell EQ", "dB +/-", 1, noLines, equaliser, kKernels<Mixed<Equaliser<NonLinear, High>>>,
     shapedByVar},
    {"Ring Mod", "ring modulator", "-", 1, noLines, ring, kKernels<Mixed<Ring>>, newTones},
    {"Ring Modx2", "ring modulator", "Spread", 1, noLines, ring, kKernels<Mixed<RingTwice>>, newTones},
    {"SampHold", "sample and hold with bit reduction", "-", 1, noLines, sampleHold, kKernels<Mixed<SampleHold<false>>>,
     newTones},
    {"SampHold-", "sample and hold with bit reduction", "-", 1, noLines, sampleHold, kKernels<Mixed<SampleHold<true>>>,
     newTones},
    {"Combs", "reverberator", "-", 1, combLines, combs, kKernels<Mixed<Combs>>},
    {"Allpasses", "reverberator", "-", 1, allPassLines, allPasses, kKernels<Mixed<AllPasses>>},
    {"Reverb", "reverberator", "-", 1, allLines, reverb, kKernels<Mixed<Reverb>>},
    {"French LP", "low-pass with delay feedback", "Boeuf", 1, frenchLines, french, kKernels<French>},
    {"German LP", "zero-delay non-linear ladder", "-", 1, noLines, german, kKernels<German>, silentStart},
    {"Add Bass", "sub-harmonic enhancer", "Thru", 1, noLines, addBass, kKernels<AddBass>, newTones},
    {"Formant-I", "five-formant vowel filter", "Formnt", 1, noLines, formantSung, kKernels<Formant<5>>},
    {"Formant-II", "three-formant vowel filter", "Formnt", 1, noLines, formantSpoken, kKernels<Formant<3>>},
    {"Formant-III", "four-formant vowel filter", "Formnt", 1, noLines, formantModern, kKernels<Formant<4>>},
    {"Bandreject", "parallel low-pass and high-pass", "width", 1, noLines, bandReject, kKernels<Mixed<BandReject>>},
};
static_assert(std::size(kTypes) == kFilterTypes);

}  // namespace

std::span<const FilterType, kFilterTypes> types() noexcept { return kTypes; }

const FilterType& typeAt(int index) noexcept { return kTypes[index]; }

const kernels::Kernels& bypassKernels() noexcept { return kernels::kKernels<kernels::Bypass>; }

int typeIndexOf(float normalised) noexcept {
  const double value = static_cast<double>(normalised);
  const double limited = value > 0.0 ? (value < 1.0 ? value : 1.0) : 0.0;
  return static_cast<int>(limited * (kFilterTypes - 1) + 0.5);
}

}  // namespace filters
