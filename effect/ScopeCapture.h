// SPDX-License-Identifier: MIT
// The traces of the scope behind the graph: what entered and what left the effect, by position in the graph.
#pragma once

#include <memory>

#include "model/CurveLaw.h"
#include "threads/Shared.h"

namespace effect {

// One trace, written by the audio thread and read by the editor without a lock.
struct ScopeTrace {
  std::unique_ptr<Shared<float>[]> samples = std::make_unique<Shared<float>[]>(model::kGraphTableSize);
  int mark = 0;  // the last written index

  Shared<float>& operator[](int index) noexcept { return samples[static_cast<std::size_t>(index)]; }

  // [audio] The input, once a tick: holds `x` from the mark to `index`. Where the position jumped back, the mark
  // follows without a fill.
  void captureInput(int index, float x) noexcept;
  // [audio] The output, once per sample of a tick: writes `x` at `index` and over what was skipped since
  // the last sample. Where the position jumped back, the trace starts anew.
  class Writer {
   public:
    explicit Writer(ScopeTrace& trace) noexcept : trace_(trace), samples_(trace.samples.get()), mark_(trace.mark) {}
    ~Writer() { trace_.mark = mark_; }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void captureOutput(int index, float x) noexcept {
      if (mark_ > index) mark_ = -1;
      for (int i = mark_ + 1; i < index; ++i) samples_[i] = x;
      samples_[index] = x;
      mark_ = index;
    }

   private:
    ScopeTrace& trace_;
    Shared<float>* samples_;
    int mark_;
  };
};

}  // namespace effect
