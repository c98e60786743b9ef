// SPDX-License-Identifier: MIT
// The numbers of everything the host and the editor can change: 0 to 69 are the host's automatable parameters, 70 to
// 109 commands of the editor and notices to it. Hosts and presets store the numbers; they never move.
#pragma once

namespace model {

enum ParameterIndex : int {
  kRate = 0,
  kSwing,
  kPhase,
  kPwm,
  kDepthCut,
  kDepthRes,
  kDepthVol,
  kDepthPan,
  kDepthVar,
  kBpmSync,
  kDotted,
  kTriplet,
  kFilterCutoff,
  kFilterReso,
  kFilterOn,
  kFilterDrive,
  kSmooth,
  kRetrigger,
  kGateMode,
  kVelToPwm,
  kNoteToRate,
  kRouteCut,
  kRouteRes,
  kRouteVol,
  kRoutePan,
  kRouteVar,
  kWarp1,  // to 37: one a graph
  kDepthKnob = 38,
  kFilterVar,
  kFilterMix,
  kTiming,
  kPoint1,  // to 65: Y, X and curve of the first graph's first eight points
  kFilterType = 66,
  kXoverOn,
  kXoverInvert,
  kXoverFrequency,
  kFilterNameScratch = 71,
  kNoticeFilterType,             // the filter type was loaded, value 1
  kVarName = kNoticeFilterType,  // its text: what "Var" is called in the filter type
  kNoteToCutoff,
  kAnchor,
  kCopyGraph,
  kPasteGraph,
  kLoadShape,  // the file at `loadPath`; values from 0.5 on act
  kCurrentGraph = 78,
  kGridSize,
  kCcNumber,
  kLoadPreset = 83,   // as kLoadShape
  kNoticeClock = 84,  // a clock or depth parameter changed, value 11
  kNoticeGraph,       // the current graph's points changed, value 0
  kNoticePoint,       // a point of graph 1 was automated, value 1
  kCurrentWarp = 92,
  kStepRouteCut,  // to 97: a signed step of a route
  kCcLock = 100,
  kNoticeScope = 102,  // the scope was switched by a load
  kNoticeEditorSize,   // the window's size was loaded, value 100
  kExportMidi = 105,
  kTypeOfScratch,            // has a text only, the name of the filter type in the scratch
  kNoticePresetTitle = 109,  // a state was loaded, value 1
  kParameterRows = 110,
};

inline constexpr int kHostParameters = 70;  // what hosts list; the rest is between editor and effect

// The automated points of the first graph: as many, with the curves before them, and Y, X and curve of each.
inline constexpr int kAutomatedPointCount = 8;
inline constexpr int kNumbersOfPoint = 3;
inline constexpr int kPointParameters = kAutomatedPointCount * kNumbersOfPoint;

inline constexpr float kNoticeClockValue = 11.0f;
inline constexpr float kNoticeEditorSizeValue = 100.0f;
inline constexpr float kPasteIntoAll = 999.0f;  // values above it paste into all graphs

}  // namespace model
