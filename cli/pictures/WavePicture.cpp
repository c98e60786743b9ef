// SPDX-License-Identifier: MIT
#include "cli/pictures/WavePicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/core.h>
#include <utility>

#include "cli/pictures/Levels.h"
#include "cli/pictures/PictureCanvas.h"
#include "cli/terminal/Errors.h"

namespace modrift::cli {

// Even steps of lightness from the panel's black through violet and ember to pale yellow.
std::uint32_t heatColour(float db) noexcept {
  static constexpr auto kStops = std::to_array<std::uint32_t>(
      {0x0b0c11, 0x15153a, 0x2c1a66, 0x55207e, 0x86297f, 0xb83a6f, 0xe15b52, 0xf58e46, 0xfbc45f, 0xfdf6c3});
  const float steps = static_cast<float>(kStops.size() - 1);
  const float place = std::clamp((db - kQuietestDb) / -kQuietestDb, 0.0f, 1.0f) * steps;
  const auto stop = std::min(static_cast<std::size_t>(place), kStops.size() - 2);
  std::uint32_t colour = 0;
  for (const int shift : {16, 8, 0}) {
    const auto from = static_cast<float>((kStops[stop] >> shift) & 0xffu);
    const auto to = static_cast<float>((kStops[stop + 1] >> shift) & 0xffu);
    colour |= static_cast<std::uint32_t>(std::lround(std::lerp(from, to, place - static_cast<float>(stop)))) << shift;
  }
  return colour;
}

std::vector<GridLine> beatLines(const BeatGrid& beats, double seconds, std::size_t columns) {
  constexpr double kBeatsPerBar = 4.0;
  constexpr double kLeastLinePx = 7.0;
  constexpr double kLeastLabelPx = 40.0;
  const double beatPx = 60.0 / beats.tempoBpm / seconds * static_cast<double>(columns);
  double lineBeats = 1.0;
  while (lineBeats * beatPx < kLeastLinePx) lineBeats *= lineBeats < kBeatsPerBar ? kBeatsPerBar : 2.0;
  double labelBeats = std::max(lineBeats, kBeatsPerBar);
  while (labelBeats * beatPx < kLeastLabelPx) labelBeats *= 2.0;
  const double strongBeats = lineBeats < kBeatsPerBar ? kBeatsPerBar : labelBeats;

  std::vector<GridLine> lines;
  for (double beat = std::ceil(beats.startBeat / lineBeats) * lineBeats;; beat += lineBeats) {
    const double column = (beat - beats.startBeat) * beatPx;
    if (column >= static_cast<double>(columns)) return lines;
    const bool labelled = std::fmod(beat, labelBeats) == 0.0;
    const std::string bar = labelled ? fmt::format("{:.0f}", beat / kBeatsPerBar + 1.0) : "";
    lines.push_back({column, std::fmod(beat, strongBeats) == 0.0, bar});
  }
}

std::vector<GridLine> secondLines(double seconds, std::size_t columns) {
  constexpr double kLeastPx = 84.0;
  const double least = seconds * kLeastPx / static_cast<double>(columns);
  const double decade = std::floor(std::log10(least));
  double step = std::pow(10.0, decade + 1.0);
  for (const double factor : {5.0, 2.0, 1.0})
    if (factor * std::pow(10.0, decade) >= least) step = factor * std::pow(10.0, decade);
  const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));

  std::vector<GridLine> lines;
  for (double i = 0.0; i * step < seconds; i += 1.0) {
    const double column = i * step / seconds * static_cast<double>(columns);
    lines.push_back({column, false, fmt::format("{:.{}f} s", i * step, decimals)});
  }
  return lines;
}

namespace {

constexpr Colour kZeroLine{0xffffff, 0.16};
constexpr Colour kFullScale{0xff6b5e, 0.45};
constexpr Colour kGap{0xff6b5e, 0.5};

// Pixels. Everything starts on a whole one, so that hairlines stay sharp.
constexpr int kPictureWidth = 1400;
constexpr int kPlotLeft = 84;
constexpr int kPlotWidth = 1236;
constexpr int kPlotRight = kPlotLeft + kPlotWidth;
constexpr int kMargin = 18;
constexpr int kTitleHeight = 30;
constexpr int kRulerHeight = 18;
constexpr int kLaneHeight = 93;  // odd, so that silence is one sharp row
constexpr int kLaneGap = 5;
constexpr int kSpectrumHeight = 270;
constexpr int kTrackGap = 18;
constexpr int kTimeAxisHeight = 26;
constexpr int kTickLength = 5;
constexpr int kLabelGap = 9;  // from the plot's edge

std::string facts(const WaveTrack& track, const Levels& levels) {
  const std::size_t channels = track.channels.size();
  const std::string layout = channels == 1 ? "mono" : channels == 2 ? "stereo" : fmt::format("{} channels", channels);
  const std::string holes = levels.notFinite > 0 ? fmt::format("   {} samples not finite", levels.notFinite) : "";
  return fmt::format("{:g} kHz   {}   {:.4g} s   peak {}   RMS {}{}", track.sampleRateHz / 1000.0, layout,
                     durationSeconds(track), decibelText(levels.peak), decibelText(levels.rms), holes);
}

std::string channelName(std::size_t channel, std::size_t channels) {
  if (channels == 1) return "M";
  if (channels == 2) return channel == 0 ? "L" : "R";
  return std::to_string(channel + 1);
}

// What all tracks of one picture share.
struct Scales {
  double seconds = 0.0;
  double amplitude = 1.0;
  std::vector<GridLine> lines;
  bool ruler = false;  // the lines' labels stand above each track
};

int trackHeight(const WaveTrack& track, const Scales& scales) {
  const int lanes = static_cast<int>(track.channels.size()) * (kLaneHeight + kLaneGap);
  return kTitleHeight + (scales.ruler ? kRulerHeight : 0) + lanes + kSpectrumHeight;
}

void drawGridLines(PictureCanvas& canvas, const std::vector<GridLine>& lines, int top, int height) {
  for (const GridLine& line : lines)
    canvas.fill(kPlotLeft + std::floor(line.column), top, 1, height, line.strong ? kStrongLine : kWeakLine);
}

void drawTitle(PictureCanvas& canvas, const WaveTrack& track, const Levels& levels, int top) {
  const TextStyle factStyle{12.0, levels.notFinite > 0 ? Colour{kGap.rgb} : kLabel, Align::right};
  const TextStyle titleStyle{15.0, kTitle, Align::left, true};
  const std::string factLine = facts(track, levels);
  const double middle = top + kTitleHeight / 2.0 - 3.0;
  canvas.text(kPlotRight, middle, factLine, factStyle);
  const double room = kPlotWidth - canvas.textWidth(factLine, factStyle) - 2.0 * kMargin;
  canvas.text(kPlotLeft, middle, canvas.fitted(track.title, room, titleStyle), titleStyle);
}

void drawRuler(PictureCanvas& canvas, const std::vector<GridLine>& lines, int top) {
  for (const GridLine& line : lines) {
    if (line.label.empty()) continue;
    const double x = kPlotLeft + std::floor(line.column);
    canvas.fill(x, top + kRulerHeight - kTickLength, 1, kTickLength, kLabel);
    canvas.text(x, top + kRulerHeight / 2.0 - 3.0, line.label, {11.0, kLabel, Align::centre});
  }
}

void drawAmplitudeLabels(PictureCanvas& canvas, const std::string& channel, double amplitude, int top) {
  const TextStyle style{10.0, kLabel, Align::right};
  const double x = kPlotLeft - kLabelGap;
  constexpr double kInset = 6.0;  // keeps the end labels of neighbouring lanes apart
  canvas.text(x, top + kInset, fmt::format("{:.3g}", amplitude), style);
  canvas.text(x, top + kLaneHeight / 2.0, "0", style);
  canvas.text(x, top + kLaneHeight - kInset, fmt::format("{:.3g}", -amplitude), style);
  canvas.text(kMargin, top + kLaneHeight / 2.0, channel, {13.0, kTitle, Align::left, true});
}

void drawLane(PictureCanvas& canvas, std::span<const float> samples, double samplesPerColumn, const Scales& scales,
              int top) {
  const double middle = top + kLaneHeight / 2.0;
  const double unitPx = (kLaneHeight / 2.0 - 1.0) / scales.amplitude;
  canvas.fill(kPlotLeft, top, kPlotWidth, kLaneHeight, kPanel);
  const std::vector<WaveColumn> columns = waveColumns(samples, samplesPerColumn, kPlotWidth);
  const auto addBar = [&](std::size_t column, float low, float high) {
    constexpr double kLeastPx = 1.0;
    const double highPx = static_cast<double>(high) * unitPx;
    const double lowPx = static_cast<double>(low) * unitPx;
    const double height = std::max(highPx - lowPx, kLeastPx);
    const double centre = middle - (highPx + lowPx) / 2.0;
    canvas.addToShape(kPlotLeft + static_cast<double>(column), centre - height / 2.0, 1, height);
  };
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (!columns[i].gap) addBar(i, columns[i].low, columns[i].high);
  canvas.fillShape(kPeakBody);
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (const WaveColumn& c = columns[i]; !c.gap) addBar(i, std::max(-c.rms, c.low), std::min(c.rms, c.high));
  canvas.fillShape(kRmsBody);
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].gap) canvas.addToShape(kPlotLeft + static_cast<double>(i), top, 1, kLaneHeight);
  canvas.fillShape(kGap);
  canvas.fill(kPlotLeft, std::floor(middle), kPlotWidth, 1, kZeroLine);
  if (scales.amplitude > 1.0)
    for (const double sign : {-1.0, 1.0})
      canvas.fill(kPlotLeft, std::floor(middle - sign * unitPx), kPlotWidth, 1, kFullScale);
}

void drawFrequencyLabels(PictureCanvas& canvas, const FrequencyAxis& axis, int top) {
  struct Label {
    double hz;
    const char* text;
  };
  static constexpr auto kLabels = std::to_array<Label>({{50.0, "50"},
                                                        {100.0, "100 Hz"},
                                                        {200.0, "200"},
                                                        {500.0, "500"},
                                                        {1000.0, "1 kHz"},
                                                        {2000.0, "2 k"},
                                                        {5000.0, "5 k"},
                                                        {10000.0, "10 kHz"},
                                                        {20000.0, "20 k"},
                                                        {50000.0, "50 k"},
                                                        {100000.0, "100 kHz"},
                                                        {200000.0, "200 k"}});
  constexpr double kInset = 3.0;  // no labels beyond the edges
  for (const auto& [hz, text] : kLabels) {
    const double row = axis.rowAt(hz);
    if (row < kInset || row > static_cast<double>(axis.rows) - kInset) continue;
    const double y = top + std::floor(row);
    canvas.fill(kPlotLeft - kTickLength, y, kTickLength, 1, kLabel);
    canvas.text(kPlotLeft - kLabelGap, y + 0.5, text, {10.0, kLabel, Align::right});
  }
}

void drawColourScale(PictureCanvas& canvas, int top) {
  constexpr int kScaleLeft = kPlotRight + 12;
  constexpr int kScaleWidth = 10;
  constexpr double kInset = 5.0;
  std::vector<std::uint32_t> pixels;
  for (int row = 0; row < kSpectrumHeight; ++row)
    pixels.insert(pixels.end(), kScaleWidth, heatColour(kQuietestDb * static_cast<float>(row) / (kSpectrumHeight - 1)));
  canvas.image(kScaleLeft, top, kScaleWidth, std::move(pixels));
  for (const int db : {0, -15, -30, -45, -60, -75, -90}) {
    const double row = db / static_cast<double>(kQuietestDb) * (kSpectrumHeight - 1);
    const double y = std::clamp(row, kInset, kSpectrumHeight - kInset);
    canvas.text(kScaleLeft + kScaleWidth + 6, top + y, fmt::format("{}{}", db, db == 0 ? " dB" : ""), {10.0, kLabel});
  }
}

void drawSpectrogram(PictureCanvas& canvas, const WaveTrack& track, const FrequencyAxis& axis, double samplesPerColumn,
                     int top) {
  canvas.fill(kPlotLeft, top, kPlotWidth, kSpectrumHeight, kPanel);
  if (frameCount(track) == 0) {
    canvas.text(kPlotLeft + kPlotWidth / 2.0, top + kSpectrumHeight / 2.0, "no audio", {13.0, kLabel, Align::centre});
    return;
  }
  const LevelMap levels = spectrogram(track, axis, samplesPerColumn, kPlotWidth);
  std::vector<std::uint32_t> pixels(levels.db.size());
  std::transform(levels.db.begin(), levels.db.end(), pixels.begin(), heatColour);
  canvas.image(kPlotLeft, top, static_cast<int>(levels.columns), std::move(pixels));
}

void drawTrack(PictureCanvas& canvas, const WaveTrack& track, const Levels& levels, const Scales& scales, int top) {
  const double samplesPerColumn = scales.seconds * track.sampleRateHz / kPlotWidth;
  drawTitle(canvas, track, levels, top);
  top += kTitleHeight;
  if (scales.ruler) {
    drawRuler(canvas, scales.lines, top);
    top += kRulerHeight;
  }
  for (std::size_t i = 0; i < track.channels.size(); ++i) {
    drawLane(canvas, track.channels[i], samplesPerColumn, scales, top);
    drawAmplitudeLabels(canvas, channelName(i, track.channels.size()), scales.amplitude, top);
    drawGridLines(canvas, scales.lines, top, kLaneHeight + kLaneGap);
    top += kLaneHeight + kLaneGap;
  }
  const FrequencyAxis axis{track.sampleRateHz / 2.0, kSpectrumHeight};
  drawSpectrogram(canvas, track, axis, samplesPerColumn, top);
  drawGridLines(canvas, scales.lines, top, kSpectrumHeight);
  drawFrequencyLabels(canvas, axis, top);
  drawColourScale(canvas, top);
}

void drawTimeAxis(PictureCanvas& canvas, double seconds, int top) {
  for (const GridLine& line : secondLines(seconds, kPlotWidth)) {
    const double x = kPlotLeft + std::floor(line.column);
    canvas.fill(x, top, 1, kTickLength, kLabel);
    canvas.text(x, top + kTickLength + 9.0, line.label, {11.0, kLabel, Align::centre});
  }
}

void check(std::span<const WaveTrack> tracks, const std::optional<BeatGrid>& beats) {
  if (tracks.empty()) throw RunError("a picture needs at least one track of audio");
  for (const WaveTrack& track : tracks) {
    if (!(track.sampleRateHz >= 1000.0 && track.sampleRateHz <= 768000.0))
      throw RunError(track.title + ": the sample rate must lie between 1 kHz and 768 kHz");
    for (const auto& channel : track.channels)
      if (channel.size() != frameCount(track)) throw RunError(track.title + ": all channels must have the same length");
  }
  if (beats && !(beats->tempoBpm >= 1.0 && beats->tempoBpm <= 10000.0))
    throw RunError("the tempo of the beat lines must lie between 1 and 10000 beats per minute");
  if (beats && !(std::abs(beats->startBeat) <= 1e9))
    throw RunError("the start of the beat lines must lie within a billion beats");
}

Scales commonScales(std::span<const WaveTrack> tracks, std::span<const Levels> levels,
                    const std::optional<BeatGrid>& beats) {
  Scales scales;
  for (const WaveTrack& track : tracks) scales.seconds = std::max(scales.seconds, durationSeconds(track));
  for (const Levels& track : levels) scales.amplitude = std::max(scales.amplitude, track.peak);
  if (scales.seconds == 0.0) scales.seconds = 1.0;  // an empty picture still has an axis
  scales.lines = beats ? beatLines(*beats, scales.seconds, kPlotWidth) : secondLines(scales.seconds, kPlotWidth);
  scales.ruler = beats.has_value();
  return scales;
}

}  // namespace

void writeWavePicture(const std::filesystem::path& png, std::span<const WaveTrack> tracks,
                      std::optional<BeatGrid> beats) {
  check(tracks, beats);
  std::vector<Levels> levels;
  for (const WaveTrack& track : tracks) levels.push_back(measureLevels(track.channels));
  const Scales scales = commonScales(tracks, levels, beats);
  int height = 2 * kMargin + kTimeAxisHeight - kTrackGap;
  for (const WaveTrack& track : tracks) height += trackHeight(track, scales) + kTrackGap;

  PictureCanvas canvas(kPictureWidth, height, kBackground);
  int top = kMargin;
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    drawTrack(canvas, tracks[i], levels[i], scales, top);
    top += trackHeight(tracks[i], scales) + kTrackGap;
  }
  drawTimeAxis(canvas, scales.seconds, top - kTrackGap);
  canvas.save(png);
}

}  // namespace modrift::cli
