// SPDX-License-Identifier: MIT
#include "cli/files/AudioFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fmt/core.h>
#include <memory>
#include <sndfile.h>
#include <string_view>
#include <vector>

#include "cli/files/PendingFile.h"
#include "cli/terminal/Errors.h"
#include "cli/terminal/Interrupt.h"

namespace modrift::cli {
namespace {

struct WritableFormat {
  std::string_view extension;
  int format;  // of libsndfile
};

constexpr auto kWritableFormats = std::to_array<WritableFormat>({
    {".wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT},
    {".flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
    {".ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
    {".aiff", SF_FORMAT_AIFF | SF_FORMAT_FLOAT},
    {".aif", SF_FORMAT_AIFF | SF_FORMAT_FLOAT},
});

// Small, because the Vorbis encoder keeps a whole call on the stack.
constexpr std::size_t kSliceFrames = 4096;

// Where the 32-bit sizes of a WAV file end, less room for its headers.
constexpr std::uint64_t kLargestWavBytes = 0xFFFF0000;

struct CloseSoundFile {
  void operator()(SNDFILE* file) const noexcept { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, CloseSoundFile>;

std::string lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

const WritableFormat* formatOf(const std::string& extension) {
  const auto* row = std::find_if(kWritableFormats.begin(), kWritableFormats.end(),
                                 [&](const WritableFormat& known) { return known.extension == lowered(extension); });
  return row == kWritableFormats.end() ? nullptr : row;
}

SF_INFO describe(const std::filesystem::path& target, const Audio& audio) {
  const WritableFormat* known = formatOf(target.extension().string());
  if (known == nullptr) {
    throw UsageError(fmt::format("{}: a name ending in {} was expected", target.string(), writableExtensions()));
  }
  SF_INFO info{};
  info.channels = static_cast<int>(audio.channels.size());
  info.samplerate = static_cast<int>(std::lround(audio.sampleRateHz));
  info.format = known->format;
  const std::uint64_t bytes = std::uint64_t{audio.frames()} * audio.channels.size() * sizeof(float);
  if ((info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV && bytes > kLargestWavBytes) {
    info.format = SF_FORMAT_RF64 | SF_FORMAT_FLOAT;  // the same with 64-bit sizes, which readers of WAV know
  }
  if (sf_format_check(&info) == 0) {
    throw RunError(fmt::format("{}: a sample rate that {} can hold was expected, not {} Hz", target.string(),
                               known->extension, info.samplerate));
  }
  return info;
}

void writeSamples(SNDFILE* file, const Audio& audio, const std::filesystem::path& target) {
  const std::size_t width = audio.channels.size();
  std::vector<float> slice(kSliceFrames * width);
  for (std::size_t start = 0; start < audio.frames(); start += kSliceFrames) {
    throwIfInterrupted();
    const std::size_t count = std::min(kSliceFrames, audio.frames() - start);
    for (std::size_t i = 0; i < count * width; ++i) slice[i] = audio.channels[i % width][start + i / width];
    const auto frames = static_cast<sf_count_t>(count);
    if (sf_writef_float(file, slice.data(), frames) != frames) {
      throw RunError(fmt::format("{}: room to write to was expected ({})", target.string(), sf_strerror(file)));
    }
  }
}

}  // namespace

Audio readAudio(const std::filesystem::path& path) {
  SF_INFO info{};
  const SoundFile file(sf_open(path.c_str(), SFM_READ, &info));
  if (file == nullptr) {
    throw RunError(fmt::format("{}: an audio file was expected ({})", path.string(), sf_strerror(nullptr)));
  }
  if (info.channels < 1 || info.channels > 2) {
    throw RunError(fmt::format("{}: one or two channels were expected, not {}", path.string(), info.channels));
  }
  Audio audio{static_cast<double>(info.samplerate), host::Planar(static_cast<std::size_t>(info.channels))};
  const std::size_t width = audio.channels.size();
  std::vector<float> slice(kSliceFrames * width);
  // Read to the end and not to the length that the header claims, which may be wrong or enormous.
  while (const sf_count_t count = sf_readf_float(file.get(), slice.data(), static_cast<sf_count_t>(kSliceFrames))) {
    throwIfInterrupted();
    for (std::size_t i = 0; i < static_cast<std::size_t>(count) * width; ++i) {
      audio.channels[i % width].push_back(slice[i]);
    }
  }
  return audio;
}

bool isWritableExtension(const std::string& extension) { return formatOf(extension) != nullptr; }

bool holdsAnyLevel(const std::string& extension) {
  const WritableFormat* known = formatOf(extension);
  return known != nullptr && (known->format & SF_FORMAT_SUBMASK) != SF_FORMAT_PCM_24;
}

std::string writableExtensions() {
  std::string text;
  for (const WritableFormat& known : kWritableFormats) {
    if (!text.empty()) text += &known == &kWritableFormats.back() ? " or " : ", ";
    text += known.extension;
  }
  return text;
}

void writeAudio(const std::filesystem::path& target, const Audio& audio) {
  SF_INFO info = describe(target, audio);
  PendingFile pending(target);
  SoundFile file(sf_open(pending.path().c_str(), SFM_WRITE, &info));
  if (file == nullptr) {
    throw RunError(fmt::format("{}: a writable file was expected ({})", target.string(), sf_strerror(nullptr)));
  }
  sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);         // too loud clips; the default wraps round
  sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);  // it would carry the time of writing
  writeSamples(file.get(), audio, target);
  if (sf_close(file.release()) != 0) throw RunError(target.string() + ": room to write to was expected");
  pending.commit();
}

}  // namespace modrift::cli
