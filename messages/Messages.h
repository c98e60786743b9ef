// SPDX-License-Identifier: MIT
// All that the plug-in says on standard error. The lines are for whoever develops it or wonders what a host asks of it;
// users never see them, and nothing hangs on them. Each begins with a line break, so that it stands alone whatever the
// host prints.
//
// [host, ui] Never on the audio thread, which counts and leaves the telling to others. MODRIFT_QUIET in the
// environment, with any value but an empty one, silences them all; it is read once.
#pragma once

namespace messages {

// --- The host and the effect

// The effect was made without a way to call its host; it works, but nobody hears of it.
void noHost() noexcept;
// Hosts differ in the pairs that they try, and in when: every question is told, and the answer if it was yes.
void speakersAsked() noexcept;
void stereoTaken() noexcept;
void monoTaken() noexcept;
void monoToStereoTaken() noexcept;
// Sound that comes on one side only begins here.
void channelsSet(int inputs, int outputs) noexcept;
// A block brought more MIDI than leaves the effect: some was dropped. `events` counts those of the block.
void eventsExceeded(long events) noexcept;
// A preset file was read and its state handed on; a file that is none says nothing.
void presetTaken(const char* path) noexcept;

// --- The MIDI export

// Its clock, in frames: whether the song's tempo was understood.
void exportClock(double quarterFrames, int tickFrames) noexcept;
// One event as it goes into the file, and what was mended of it. `last` is the tick of the event before.
void exportEvent(int number, int value, int delta, int frame, int last) noexcept;
void exportFrameBelowZero(int number, int frame, int last) noexcept;
void exportOutOfOrder(int delta, int number, int frame, int last) noexcept;

// --- The editor

// The two steps of a rebuild at a new size, between which the host is called: where a host's answer goes wrong.
void controlsOpen() noexcept;
void controlsFollow() noexcept;
// The picture that the panel could not find; a drawn stand-in takes its place.
void imageMissing(const char* file) noexcept;

}  // namespace messages
