// SPDX-License-Identifier: MIT
#include "effect/ParameterTable.h"

#include "effect/ParameterFamilies.h"
#include "model/StateLayout.h"

namespace effect {

using namespace model;
namespace {

// One of the three numbers of the first graph's first points.
consteval Row points(int first, std::string_view name, decltype(Row::text) present, decltype(Row::textOf) ofValue) {
  return named(first, name)
      .sets(setPoint)
      .gets(getPoint)
      .says(present, ofValue, readByForm<kNearestPercent>)
      .labelled("%")
      .times(kAutomatedPointCount, kNumbersOfPoint);
}

// In the order of the numbers; what has no row has no use.
constexpr auto kDeclared = std::to_array<Row>({
    value<&PadLFO::rate>(kRate, "Rate").sets(setRate).says(rateText, rateTextOf, readRate),
    clockValue<&PadLFO::swing, kRoundTheMiddle>(kSwing, "Swing"),
    clockValue<&PadLFO::phase, kDegrees>(kPhase, "Phase"),
    clockValue<&PadLFO::pwm, kPulseWidth>(kPwm, "PWM"),
    clockValue<&PadLFO::depthCut, kRoundTheMiddle>(kDepthCut, ">cut"),
    clockValue<&PadLFO::depthRes, kRoundTheMiddle>(kDepthRes, ">res"),
    clockValue<&PadLFO::depthVol, kRoundTheMiddle>(kDepthVol, ">vol"),
    clockValue<&PadLFO::depthPan, kRoundTheMiddle>(kDepthPan, ">pan"),
    clockValue<&PadLFO::depthVar, kRoundTheMiddle>(kDepthVar, ">var"),
    onOff<&PadLFO::bFreeRun, kFreeOrBeat>(kBpmSync, "BPMSync").sets(setBpmSync).gets(getBpmSync),
    clockSwitch<&PadLFO::bDotted>(kDotted, "Dotted"),
    clockSwitch<&PadLFO::bTriplet>(kTriplet, "Triplet"),
    value<&LfoDSP::filterCutoff>(kFilterCutoff, "F.Cutoff").says(cutoffText, cutoffTextOf, readCutoff),
    value<&LfoDSP::filterReso, kResonance>(kFilterReso, "F.Reso"),
    value<&LfoDSP::filterOn>(kFilterOn, "F.On Off").sets(setFilterOn).shows<&LfoDSP::filterOnFlag, kFilterOnOff>(),
    value<&LfoDSP::filterDrive, kPercent>(kFilterDrive, "F.Drive"),
    value<&LfoDSP::lfoSmooth, kPercent>(kSmooth, "Smooth"),
    onOff<&LfoDSP::bRetrig>(kRetrigger, "In>Rerig")
        .sets(setRetrigger)
        .gets(getRetrigger)
        .says(retriggerText, retriggerTextOf, readRetrigger),
    onOff<&LfoDSP::bGateMode>(kGateMode, "In>Gate").sets(setGateMode),
    onOff<&LfoDSP::bVelToPwm>(kVelToPwm, "InVel>PW"),
    onOff<&LfoDSP::bNoteToRate>(kNoteToRate, "In>Rate"),
    route<&LfoDSP::routeCut>(kRouteCut, "LFOn>Fil"),
    route<&LfoDSP::routeRes>(kRouteRes, "LFOn>Res"),
    route<&LfoDSP::routeVol>(kRouteVol, "LFOn>Vol"),
    route<&LfoDSP::routePan>(kRoutePan, "LFOn>Pan"),
    route<&LfoDSP::routeVar>(kRouteVar, "LFOn>Var"),
    named(kWarp1, "Warp 01")
        .sets(setWarpOf)
        .gets(getWarpOf)
        .says(warpText, textOfValue<kWarpName>, readByForm<kWarpName>)
        .keeps(loadWarp, storeWarp)
        .times(kGraphs),
    value<&PadLFO::depthKnob, kNearestPercent>(kDepthKnob, "LFO Depth"),
    value<&LfoDSP::filterVar, kPercent>(kFilterVar, "VF Var"),
    value<&LfoDSP::filterMix, kPercent>(kFilterMix, "VF Mix"),
    value<&LfoDSP::timing>(kTiming, "Timing").sets(setTiming).shows<&LfoDSP::timingOffset, kOffsetSamples>(),
    points(kPoint1, "Point Y0", pointYText, pointYTextOf),
    points(kPoint1 + 1, "Point X0", pointXText, textOfValue<kNearestPercent>),
    points(kPoint1 + 2, "Curve  1", pointCurveText, textOfValue<kNearestPercent>),
    value<&LfoDSP::filterType>(kFilterType, "FilType").says(filterTypeText, filterTypeTextOf, readFilterType),
    onOff<&LfoDSP::bXoverOn>(kXoverOn, "Xov On"),
    onOff<&LfoDSP::bXoverInvert, kHighOrLow>(kXoverInvert, "Xov Inv"),
    value<&LfoDSP::xoverFrequency, kCrossoverHz>(kXoverFrequency, "Xov Freq"),
    command(kFilterNameScratch, setValue<&LfoDSP::filterNameScratch>).says(filterTypeText, filterTypeTextOf, nullptr),
    named(kVarName).says(varNameText, varNameTextOf, nullptr),
    onOff<&LfoDSP::bNoteToCutoff>(kNoteToCutoff, "In>Cutoff"),
    onOff<&LfoDSP::bAnchor>(kAnchor).sets(setAnchor).saysNothing(),
    command(kCopyGraph, copyGraph),
    command(kPasteGraph, pasteGraph),
    command(kLoadShape, loadShape),
    route<&LfoDSP::currentGraph, kCurrentGraphNumber>(kCurrentGraph, "Which Env").sets(setCurrentGraph),
    value<&LfoDSP::gridSize, kGridCells>(kGridSize),
    named(kCcNumber, "CC Out")
        .sets(setCcNumber)
        .gets(getCcNumber)
        .says(controllerText, controllerTextOf, readController)
        .keeps<&LfoDSP::ccNumber>(),
    command(kLoadPreset, loadPreset),
    command(kCurrentWarp, setCurrentWarp).gets(getCurrentWarp).says(currentWarpText, nullptr, readByForm<kWarpName>),
    routeStep<&LfoDSP::routeCut>(kStepRouteCut),
    routeStep<&LfoDSP::routeRes>(kStepRouteCut + 1),
    routeStep<&LfoDSP::routeVol>(kStepRouteCut + 2),
    routeStep<&LfoDSP::routePan>(kStepRouteCut + 3),
    routeStep<&LfoDSP::routeVar>(kStepRouteCut + 4),
    onOff<&LfoDSP::bCCLock>(kCcLock).saysNothing(),
    named(kNoticeScope).keeps<&LfoDSP::bScopeOn>(),
    command(kExportMidi, exportMidi),
    named(kTypeOfScratch).says(scratchTypeText, scratchTypeTextOf, nullptr),
});

// "Warp 09" becomes "Warp 10".
consteval void countUp(std::array<char, 12>& name) {
  std::size_t last = 0;
  while (name[last + 1]) ++last;
  for (; name[last] == '9'; --last) name[last] = '0';
  ++name[last];
}

consteval std::array<ParameterRow, kParameterRows> spread() {
  std::array<ParameterRow, kParameterRows> rows{};
  std::array<bool, kParameterRows> taken{};
  for (int i = 0; i < kParameterRows; ++i) rows[static_cast<std::size_t>(i)].index = i;
  for (const Row& declared : kDeclared) {
    ParameterRow row = declared;
    for (int n = 0; n < declared.count; ++n, row.index += declared.apart) {
      const auto place = static_cast<std::size_t>(row.index);
      if (taken.at(place)) throw "a number with two rows";  // which then does not compile
      taken[place] = true;
      if (n > 0) countUp(row.name);
      row.stored = model::fieldShownBy(row.index);
      rows[place] = row;
    }
  }
  return rows;
}

constexpr std::array<ParameterRow, kParameterRows> kParameters = spread();

static_assert(std::ranges::adjacent_find(kDeclared, std::ranges::greater_equal{}, &Row::index) == kDeclared.end());

consteval bool isKept(int number) {
  for (const Row& row : kDeclared)
    for (int n = 0; n < row.count; ++n)
      if (row.index + n * row.apart == number) return row.keepsField;
  return false;
}

// A field that the layout calls a parameter's is kept by the row of that parameter.
consteval bool rowsKeepAllFieldsOfTheirs() {
  for (const model::Field& field : model::kStateFields)
    for (int i = 0; field.parameter >= 0 && i < field.count; ++i)
      if (!isKept(field.parameter + i)) return false;
  return true;
}
static_assert(rowsKeepAllFieldsOfTheirs());

}  // namespace

std::span<const ParameterRow, kParameterRows> parameterRows() noexcept { return kParameters; }

const ParameterRow* parameterRow(int index) noexcept {
  return index >= 0 && index < kParameterRows ? &kParameters[static_cast<std::size_t>(index)] : nullptr;
}

}  // namespace effect
