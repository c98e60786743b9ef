// SPDX-License-Identifier: MIT
#include "messages/Messages.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace messages {
namespace {

bool isQuiet() noexcept {
  static const bool quiet = [] {
    const char* const wish = std::getenv("MODRIFT_QUIET");  // NOLINT(concurrency-mt-unsafe): read once
    return wish && *wish;
  }();
  return quiet;
}

[[gnu::format(printf, 1, 2)]] void say(const char* format, ...) noexcept {
  if (isQuiet()) return;
  std::va_list values;
  va_start(values, format);
  std::vfprintf(stderr, format, values);  // NOLINT(clang-analyzer-valist.Uninitialized): begun above
  va_end(values);
}

}  // namespace

void noHost() noexcept { say("\n  no audioMaster\n  no audioMaster\n  no audioMaster"); }

void speakersAsked() noexcept { say("\n SSA CALLED!!!!"); }
void stereoTaken() noexcept { say("\n SSA CALLED! STEREO!"); }
void monoTaken() noexcept { say("\n SSA CALLED! MONO!"); }
void monoToStereoTaken() noexcept { say("\n SSA CALLED! MONO TO  STEREO!"); }

void channelsSet(int inputs, int outputs) noexcept { say("\n VST recieved I/O setting of %i, %i", inputs, outputs); }

void eventsExceeded(long events) noexcept { say("\n timeslice events exceeded: %li", events); }

void presetTaken(const char* path) noexcept { say("\n called Setchunk on path %s", path); }

void exportClock(double quarterFrames, int tickFrames) noexcept {
  say("\n dQuarterInSamples %f, PPQInSamps %i", quarterFrames, tickFrames);
}

void exportEvent(int number, int value, int delta, int frame, int last) noexcept {
  say("\n  ev# %i, CCVal %i delta reads %i frames# %i, lastdelta is %i", number, value, delta, frame, last);
}

void exportFrameBelowZero(int number, int frame, int last) noexcept {
  say("\n warning - MIDI Export, delta is negative for ev# %i, frames# %i, lastdelta is %i", number, frame, last);
}

void exportOutOfOrder(int delta, int number, int frame, int last) noexcept {
  say("\n warning - MIDI export, delta reads %i - assigning to 0---   ev# %i, frames# %i, lastdelta is %i", delta,
      number, frame, last);
}

void controlsOpen() noexcept { say("\n about to open controls"); }
void controlsFollow() noexcept { say("\n about to getallfromprocess for resize"); }

void imageMissing(const char* file) noexcept { say("\n image %s is missing or empty", file); }

}  // namespace messages
