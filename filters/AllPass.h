// SPDX-License-Identifier: MIT
// A first-order all-pass section, y = a (x - y1) + x1: every frequency passes at its level, and its phase turns by up
// to half a turn, by a quarter at the frequency that the coefficient -1 to 1 stands for.
#pragma once

namespace dsp {

// `lastOut` and `lastIn` are the section's output and input of the sample before.
template <class Sample>
[[nodiscard]] inline Sample allPass(Sample in, Sample lastOut, Sample coef, Sample lastIn) noexcept {
  return (in - lastOut) * coef + lastIn;
}

}  // namespace dsp
