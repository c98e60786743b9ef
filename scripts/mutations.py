# SPDX-License-Identifier: MIT
"""The faults that scripts/mutate puts into the product, one at a time; the tests have to notice each of them.

A row: the fault in words, the file that it goes into, a text that occurs once in there, what stands in its place, and
the folders below tests/ whose programs are to notice it. A text is a bit of a formula rather than a line with many
names, so that it outlives the next renaming. A row earns its place by a fault that somebody could hear, see or lose a
file by; what changes nothing of that kind is no fault.
"""

from typing import NamedTuple


class Mutation(NamedTuple):
    name: str
    file: str  # without its folder, since files move
    text: str
    replacement: str
    tests: tuple


def _rows(*tests):
    return lambda *rows: [Mutation(*row, tests) for row in rows]


MUTATIONS = [
    *_rows("filters")(
        ("the soft clip bends a tenth more", "Kernel.h", "kCubic = 0.14814815f", "kCubic = 0.16296296f"),
        ("the middle of three taps weighs half", "Kernel.h", "0.5f * between", "0.25f * between"),
        ("a stage moves further in one step", "StateVariableKernels.h", "kSlew = 0.8333333f", "kSlew = 0.9333333f"),
        ("the delay's interpolation has a wrong sign", "DelayKernels.h", "(b - c) * 1.5f", "(c - b) * 1.5f"),
        ("an all-pass adds what it should subtract", "AllPass.h", "(in - lastOut) * coef", "(in + lastOut) * coef"),
        ("a vowel's bandwidth multiplies", "FilterSetup.cpp", "freq / bw * (s.r", "freq * bw * (s.r"),
        ("sample and hold truncates", "ToneKernels.h", "y * levels_ + 0.5f", "y * levels_"),
        ("the equaliser cuts where it boosts", "FilterSetup.cpp", "w > 0.0 ? 2.0 * w : w", "w > 0.0 ? w : 2.0 * w"),
        ("two digits of the ladder's tuning are swapped", "VGlobalCoeffs.cpp", "7.348410539666077",
         "7.384410539666077"),
        ("the way down subtracts its branches", "StereoRateChange.cpp", "highPair(out) + lowPair(out)",
         "highPair(out) - lowPair(out)"),
        ("two digits of a comb's length are swapped", "FilterSetup.cpp", "1.03193", "1.03913"),
        ("a channel that blew up is not silenced", "FilterCore.cpp", "out[i * dsp::kLanes<S> + lane] = 0.0f",
         "out[i * dsp::kLanes<S> + lane] *= 0.5f"),
    ),
    *_rows("effect")(
        ("the rate has one step too many", "LfoClock.h", "kRateSteps = 42.0f", "kRateSteps = 43.0f"),
        ("swing's second half runs at the speed of its first", "Playback.cpp", "floatReciprocal(1.0 - s.swing)",
         "floatReciprocal(s.swing)"),
        ("PWM bends to the wrong end", "LfoClock.h", "s.pwmLate = bend >= 0.0", "s.pwmLate = bend <= 0.0"),
        ("the free clock runs at half its speed", "Playback.cpp", "* kFastestFreeHz * perTable",
         "* 220.0 * perTable"),
        ("a one-shot plays twice as long", "NoteInput.cpp", "0.25 / (divider() * kDividerScale)",
         "0.5 / (divider() * kDividerScale)"),
        ("the cutoff's depth goes by its square", "ModulationLaws.h", "(2.0 * (m * m * m))", "(2.0 * (m * m))"),
        ("left and right are swapped in the pan", "ModulationLaws.h", "{1.0 - p, p}", "{p, 1.0 - p}"),
        ("negative volume depth makes it louder", "ModulationLaws.h", "1.0 - std::abs(k) * knobbed",
         "1.0 - k * knobbed"),
        ("the crossover's high band is not inverted", "Crossover.cpp", "-dsp::highPair(bands)", "dsp::highPair(bands)"),
        ("the band put aside comes back on the wrong side", "AudioPath.cpp", "+= asideRight_[at(i)]",
         "+= asideLeft_[at(i)]"),
        ("long blocks are cut within a tick", "AudioPath.cpp", "kLongestBlock - kLongestBlock % kTickFrames",
         "kLongestBlock"),
        ("notes of a block that could not run are lost", "NoteInput.cpp", "noteQueue.moveToStart();",
         "noteQueue.clear();"),
        ("thinning drops one frame more", "MidiOut.cpp", "std::abs(frame - lastMidiOffset) < thinning",
         "std::abs(frame - lastMidiOffset) <= thinning"),
        ("long times in the MIDI file lack their marks", "MidiBytes.cpp", "0x80 | (number >> shift & 0x7F)",
         "number >> shift & 0x7F"),
        ("controller numbers are a step low", "ParameterSetters.cpp", "* kSevenBitValues + 0.5",
         "* 127.0 + 0.5"),
        ("a loaded one-shot is a plain retrigger", "StateChunk.cpp", "loaded.bOneShot ? 1.0f : trigger", "trigger"),
    ),
    *_rows("effect")(
        ("curves bend by the square", "CurveLaw.cpp", "t * t * t / 2.0", "t * t / 2.0"),
        ("segment lengths are not rounded", "CurveLaw.cpp", "to - from + 0.5", "to - from"),
    ),
    *_rows("model")(
        ("sizes in presets are little-endian", "PresetFile.cpp", "8 * (3 - i)", "8 * i"),
        ("a preset's chunk may be longer than its file", "PresetFile.cpp", "size > file.size() - kPresetHeaderBytes",
         "size > file.size()"),
        ("a replaced file loses its permissions", "AtomicFile.cpp", "before.st_mode & 0777", "0600"),
        ("a loaded graph may run backwards", "StateChunk.cpp", "std::max(x[i], x[i - 1])", "x[i]"),
        ("old projects read the cutoff as resonance", "StateLayout.h", "{18756}, {20}", "{18756}, {16}"),
        ("the longest shape loses its points", "ShapeFile.cpp", "last <= kStoredSlots ? last : 1",
         "last < kStoredSlots ? last : 1"),
    ),
    *_rows("editor")(
        ("the graph's right end is stored a rounding away", "GraphScale.h", "end == End::meets && value >= from",
         "end == End::meets && value > from"),
        ("an edit leaves the way forward open", "GraphHistory.cpp", "steps.future.clear();", ""),
        ("all gestures are one step to undo", "GraphHistory.cpp", "run != 0 && run == run_", "run == run_"),
        ("an automated point is sent upside down", "GraphLink.cpp", "1.0 - graph.scale().toStored(",
         "graph.scale().toStored("),
        ("the scope shows the output twice", "GraphScope.cpp", "= effect.scopeIn[i]", "= effect.scopeOut[i]"),
        ("a dragged point passes its left neighbour", "EditedGraph.cpp", "std::max(place.x, points[at(i - 1)].x)",
         "std::max(place.x, 0.0)"),
        ("a step swallows the next cell's first point", "EditedGraphSteps.cpp",
         "points[at(i)].x < right - closeEnoughDistance * 0.5", "points[at(i)].x < right + closeEnoughDistance * 0.5"),
        ("stretching flips the wrong half", "EditedGraphSelection.cpp", "entry.origin.x > graphWidth * 0.5",
         "entry.origin.x < graphWidth * 0.5"),
        ("of several parameter notes one is heard", "ParameterNotes.h", "bits &= bits - 1", "bits = 0"),
        ("the corner forgets the window's shape", "LFOGUI.cpp", ": width * kReferenceAspect", ": width * 0.5"),
    ),
    *_rows("toolkit")(
        ("a control's share of its range ignores the minimum", "CControl.cpp", "(getValue() - getMin()) / range",
         "getValue() / range"),
        ("a knob turns down when dragged up", "CKnob.cpp", "(firstPoint_.y - where.y)", "(where.y - firstPoint_.y)"),
        ("a menu runs out of the window", "MenuPopup.cpp", "std::min(start, roomEnd - length)",
         "std::min(start, roomEnd + length)"),
    ),
    *_rows("toolkit", "toolkit/x11")(
        ("a second click with control does not take a file back", "ItemList.cpp", "!(add && before)",
         "(add || !before)"),
    ),
    *_rows("toolkit", "editor")(
        ("of views that overlap the lower gets the click", "CViewContainer.cpp",
         "views_.rbegin(); it != views_.rend()", "views_.begin(); it != views_.end()"),
    ),
    *_rows("host")(
        ("a block runs past the loop's end", "Transport.cpp", "std::ceil((settings_.cycle->endBeat - beat())",
         "1.0 + std::ceil((settings_.cycle->endBeat - beat())"),
        ("notes have the song's frames, not the block's", "OfflineRunner.cpp", "block.back().frame - frame",
         "block.back().frame"),
    ),
    *_rows("cli")(
        ("graphs written as text are upside down", "GraphText.cpp", "1.0 - point.y", "point.y"),
        ("film time codes are one frame rate off", "MidiFile.cpp", "256 - division[0]", "255 - division[0]"),
        ("automation ignores where the song starts", "Automation.cpp", "(beat - startBeat)", "(beat + startBeat)"),
        ("the mono mix favours the right", "Channels.cpp", "0.5f * (left + right)", "0.5f * left + right"),
        ("levels are half in decibels", "Levels.cpp", "200.0 * std::log10", "100.0 * std::log10"),
    ),
    *_rows("vst2")(
        ("a program behind the last one can be chosen", "audioeffect.cpp", "c.value < effect.getAeffect()->numPrograms",
         "c.value <= effect.getAeffect()->numPrograms"),
    ),
    *_rows("presets")(
        ("graphs in preset texts count from 0", "Words.cpp", "(*number - least) / (top - least)",
         "*number / (top - least)"),
    ),
]
