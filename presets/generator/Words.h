// SPDX-License-Identifier: MIT
// The words of the definition files and what they stand for: parameters, rate steps, warps, filter types, lengths.
//
// Names are those that hosts show. Everything here is a pure function of text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace modrift::factory {

// A length of time, in beats of the song or in seconds; the other one is 0.
struct Length {
  double beats = 0.0;
  double seconds = 0.0;
  [[nodiscard]] double secondsAt(double beatsPerMinute) const { return seconds + beats * 60.0 / beatsPerMinute; }
};

// A parameter as definitions set it.
struct ParameterWord {
  int index;                  // as setParameter takes it
  std::string_view expected;  // what a value looks like, for the message about a wrong one
  std::optional<float> (*read)(std::string_view text);
};

[[nodiscard]] std::string_view trimmed(std::string_view text);
// A decimal number, or a fraction such as 1/3.
[[nodiscard]] std::optional<double> readNumber(std::string_view text);
// A number with its unit behind it, a blank between them or not: "20 dB", "50%".
[[nodiscard]] std::optional<double> readQuantity(std::string_view text, std::string_view unit);
// A rate step ("1/8.", "2 bar"), or a number of beats or seconds ("3 beats", "0.5 s").
[[nodiscard]] std::optional<Length> readLength(std::string_view text);
// Null when no parameter is called so.
[[nodiscard]] const ParameterWord* findParameter(std::string_view name);

}  // namespace modrift::factory
