// SPDX-License-Identifier: MIT
// Numbers as the short texts of value displays.
#pragma once

namespace strings {

// Each writes at most 11 characters and the closing zero.

// Eight characters, sign and point included, the fraction cut and not rounded; "Huge!" beyond -9999999 or 99999999.
void float2string(float value, char* text) noexcept;
// Decibels of a gain; "-oo" for 0 and below.
void dB2string(float value, char* text) noexcept;
// The frequency, in hertz, of a period in samples at 44100 Hz; 0 for 0.
void Hz2string(float samples, char* text) noexcept;
// Samples at 44100 Hz in milliseconds.
void ms2string(float samples, char* text) noexcept;
// "%7ld", cut at 8 characters; "Huge!" from 100000000 on.
void long2string(long value, char* text) noexcept;

}  // namespace strings
