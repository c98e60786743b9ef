// A second, plain implementation of graphs, clock (without PWM), routing and audio path with the filter off: one sample
// at a time, nothing skipped, nothing shared with the effect. Tests play the same settings through both and compare.
//
// Numbers: fields have the types below, expressions are evaluated in double and rounded when stored; the crossover
// alone computes in float throughout.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "vst2/aeffect.h"

struct ReferenceGraph {
  int lastPoint = 2;
  std::array<double, 66> x{}, y{}, curve{};  // one slot more than points, so that the walk may look past the end
  std::vector<float> table = std::vector<float>(65536);

  ReferenceGraph();
  void render();  // entries that the walk jumps over keep what they held
};

class ReferenceCrossover {
 public:
  void tune(float value, float rateHz);  // value 0 to 1 is 20 to 20000 Hz
  void split(float in, float& low, float& high);

 private:
  struct Band {
    float b0 = 0, b1 = 0, b2 = 0, state1 = 0, state2 = 0;
  };
  float run(Band& band, float in) const;
  Band low_, high_;
  float a1_ = 0, a2_ = 0;
};

class ReferencePath {
 public:
  enum Destination { cut, res, vol, pan, var };  // also the order of depths and routes

  explicit ReferencePath(float hostRateHz);
  void set(int index, float value);  // parameters that are audible with the filter off, and the graph on show
  void renderAll();
  void resume();  // the crossover starts anew, the free clock is set from the tempo; all else goes on
  // One block; `right` is null for one input, `time` for a host without a clock.
  void play(const float* left, const float* right, float* outLeft, float* outRight, int frames,
            const VstTimeInfo* time);

  std::array<ReferenceGraph, 12> graphs;
  std::array<float, 12> graphOut{}, graphWarp;
  std::array<double, 12> warpMult;
  float rate = 0.5f, swing = 0.5f, phase = 0.0f, depthKnob = 1.0f, cyclePos = 0.0f;
  std::array<float, 5> depth;
  std::array<int, 5> route{};
  bool freeRun = false, dotted = true, triplet = true, anchor = true, lfoOpen = true;
  bool retrig = false, oneShot = false, oneShotDone = false;
  float filterCutoff = 0.5f, filterReso = 0.01f, filterVar = 0.5f, lfoSmooth = 0.0f, timingOffset = 0.0f;
  float cutMod = 0.5f, varMod = 0.5f, resoMod = 0.01f, cutSmoothed = 0.5f, panSmoothed = 0.5f, volSmoothed = 1.0f;
  float gainL = 1.0003273f, gainR = 1.0003273f;
  double tempo = 1.0, beatsPerSample = 22050.0, beatPos = 0.0, trigPos = 0.0, trigOffset = 0.0;
  double freeIncrement = 0.0001, freePhase = 0.0, lfoPhase = 0.0;
  int currentGraph = 0, displayIndex = 0;
  bool crossoverOn = false, crossoverInverted = false, scopeOn = false;
  std::vector<float> scopeIn = std::vector<float>(65536), scopeOut = std::vector<float>(65536);

 private:
  double divider() const;
  void setFreeTime();
  void setPoint(int p, int kind, float value);
  void setWarp(int graph, float value);
  void setRetrigger(float value);
  void startBlock(const VstTimeInfo* time);
  void stopClock();
  double offset(Destination d) const;  // graph value from its rest, times two depths, -1 to 1
  void controlTick(float in);
  void moveClock();
  bool clockPosition(double& p);
  void smooth(float& value, float target, double step) const;
  void playSample(float& left, float& right, double step);
  void capture(float out);

  double rateHz_;
  bool warmedUp_ = false, graphDirty_ = false;
  std::array<bool, 5> active_{};
  float crossoverValue_ = 0.5f;
  std::array<ReferenceCrossover, 2> crossovers_;
  int scopeInMark_ = 0, scopeOutMark_ = 0;
};
