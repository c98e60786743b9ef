// SPDX-License-Identifier: MIT
// The vowels of the formant types, and the order in which a control walks through them.
#pragma once

#include <cstddef>

namespace filters {

template <std::size_t kFormants>
struct Vowel {
  float freq[kFormants];  // hertz
  float bw[kFormants];    // bandwidths in hertz
};

template <std::size_t kVowels, std::size_t kFormants>
struct Voice {
  char name[20];
  Vowel<kFormants> vowels[kVowels];
};

inline constexpr int kVoices = 5;
inline constexpr int kSpeakers = 4;

// The walks wrap round at these lengths.
inline constexpr int kTransitions = 10;
inline constexpr int kSpokenTransitions = 11;
inline constexpr int kModernTransitions = 6;

}  // namespace filters

extern const filters::Voice<5, 5> VOICE_LIST[filters::kVoices];
extern const filters::Voice<10, 3> FRMNT_VOICE_LIST[filters::kSpeakers];
extern const filters::Voice<6, 4> FRMNT3_VOICE_LIST[1];

extern const int TRANSITION_LIST[filters::kTransitions];
extern const int FRMNT_TRANSITION_LIST[filters::kSpokenTransitions];
extern const int FRMNT3_TRANSITION_LIST[filters::kModernTransitions];
