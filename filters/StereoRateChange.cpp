// SPDX-License-Identifier: MIT
#include "filters/StereoRateChange.h"

#include <cmath>

#include "filters/AllPass.h"
#include "filters/Downsampler2Flt.h"
#include "filters/SampleTypes.h"

namespace rspl {
namespace {

using dsp::allPass;
using dsp::highPair;
using dsp::lowPair;
using dsp::Pair;
using dsp::Quad;
using dsp::quadOf;

// The half-band's state in registers for the length of a block.
struct Running {
  explicit Running(const StereoHalfBand& h) noexcept
      : c0(h.coef[0]),
        c1(h.coef[1]),
        c2(h.coef[2]),
        c3(h.coef[3]),
        m0(h.mem[0]),
        m1(h.mem[1]),
        m2(h.mem[2]),
        m3(h.mem[3]),
        m4(h.mem[4]) {}

  void storeTo(StereoHalfBand& h) const noexcept {
    h.mem[0] = m0;
    h.mem[1] = m1;
    h.mem[2] = m2;
    h.mem[3] = m3;
    h.mem[4] = m4;
  }

  // One step of both branches: B's result in the low pair, A's in the high pair.
  Quad step(Quad in) noexcept {
    const Quad lastOfThird = m3;
    const Quad t3 = threeSections(in);
    m4 = allPass(t3, m4, c3, lastOfThird);
    return __builtin_shufflevector(t3, m4, 0, 1, 6, 7);
  }

  // The same where branch A is silent.
  Quad stepOfB(Quad in) noexcept { return m4 = threeSections(in); }

  // What both branches have.
  Quad threeSections(Quad in) noexcept {
    const Quad t1 = allPass(in, m1, c0, m0);
    const Quad t2 = allPass(t1, m2, c1, m1);
    const Quad t3 = allPass(t2, m3, c2, m2);
    m0 = in;
    m1 = t1;
    m2 = t2;
    m3 = t3;
    return t3;
  }

  Quad c0, c1, c2, c3;
  Quad m0, m1, m2, m3, m4;
};

Quad branches(double a, double b) noexcept {
  const auto fa = static_cast<float>(a);
  const auto fb = static_cast<float>(b);
  return Quad{fb, fb, fa, fa};
}

}  // namespace

StereoHalfBand::StereoHalfBand() noexcept {
  const double* const c = Mydwnspl_coef_arr;
  for (int section = 0; section < 3; ++section) coef[section] = branches(c[2 * section], c[2 * section + 1]);
  coef[3] = branches(c[6], 0.0);
}

void StereoHalfBand::clear_buffers() noexcept {
  for (Quad& m : mem) m = Quad{};
}

void StereoHalfBand::dropNonFinite() noexcept {
  const Quad zeroUnlessNonFinite = (mem[3] + mem[4]) * 0.0f;
  const Pair sum = lowPair(zeroUnlessNonFinite) + highPair(zeroUnlessNonFinite);
  if (!(sum[0] + sum[1] == 0.0f)) clear_buffers();
}

void StereoHalfBand::flushTraces() noexcept {
  for (Quad& m : mem) m = dsp::flushed(m);
}

// Branch A hears zeros only, so its memories stay zero and every other frame is zero; branch B has three sections.
void StereoUpsampler2::process(float* dest, const float* src, int n) noexcept {
  Running r(halfBand);
  for (int i = 0; i < n; ++i) {
    const Pair in = 0.5f * dsp::loadPair(src + 2 * i);
    dsp::storeQuad(dest + 4 * i, r.stepOfB(quadOf(in, Pair{})));
  }
  r.storeTo(halfBand);
}

void StereoDownsampler2::process(float* dest, const float* src, int n) noexcept {
  Running r(halfBand);
  for (int i = 0; i < n; ++i) {
    const Quad in = quadOf(dsp::loadPair(src + 4 * i), dsp::loadPair(src + 4 * i + 2));
    const Quad out = r.step(2.0f * in);
    dsp::storePair(dest + 2 * i, highPair(out) + lowPair(out));
  }
  r.storeTo(halfBand);
}

}  // namespace rspl
