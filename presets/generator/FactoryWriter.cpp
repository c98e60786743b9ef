#include "presets/generator/FactoryWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "presets/generator/Application.h"

namespace modrift::factory {
namespace {

static_assert(std::endian::native == std::endian::little);  // stored numbers are

// A zeroed file image that numbers are put into.
class Image {
 public:
  explicit Image(std::size_t size) : bytes_(size) {}

  template <class T>
  void put(std::size_t offset, T value) {
    const auto raw = std::bit_cast<std::array<char, sizeof(T)>>(value);
    std::copy(raw.begin(), raw.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  }
  void putText(std::size_t offset, std::string_view text) {
    std::copy(text.begin(), text.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  }
  void putBigEndian(std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) put(offset + i, static_cast<std::uint8_t>(value >> (24 - 8 * i)));
  }
  // Fields of 4 bytes or of one, in a row.
  template <class T, class Fields>
  void putRow(std::size_t offset, const Fields& fields) {
    for (const auto& field : fields) {
      put(offset, static_cast<T>(field));
      offset += sizeof(T);
    }
  }

  void write(const std::filesystem::path& path) const {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    file.close();
    if (!file) throw std::runtime_error(path.string() + ": cannot be written");
  }

 private:
  std::vector<char> bytes_;
};

// --- Shape file

constexpr std::size_t kShapeBytes = 2056;
constexpr std::size_t kGraphBytes = kStoredSlots * sizeof(double);  // of one value of all points
constexpr std::int8_t kShapeFormat = 8;

// --- Preset file: a header of 60 bytes, then the state chunk

constexpr std::size_t kHeaderBytes = 60;
constexpr std::size_t kChunkBytes = 18824;
constexpr std::size_t kRecordOffset = 18432;         // of the settings record in the chunk
constexpr std::uint32_t kChunkVersion = 0x3F9EBB99;  // 1.2401 as a float's bits
constexpr std::int16_t kEditorWidth = 708;           // pixels, the editor's own size
constexpr std::int16_t kEditorHeight = 343;

void putHeader(Image& image) {
  image.putText(0, "CcnK");
  image.putBigEndian(4, kChunkBytes + 52);
  image.putText(8, "FPCh");
  image.putBigEndian(12, 1);
  image.putText(16, "AMBa");
  image.putBigEndian(20, 1);
  image.putBigEndian(24, 1);
  image.putText(28, "(Custom)            ");
  image.putBigEndian(56, kChunkBytes);
}

void putGraphs(Image& image, std::size_t chunk, const LfoDSP& effect) {
  constexpr std::size_t kAllGraphs = kGraphs * kGraphBytes;  // of one value
  for (std::size_t g = 0; g < kGraphs; ++g) {
    for (std::size_t i = 0; i < kStoredSlots; ++i) {
      const std::size_t place = chunk + g * kGraphBytes + i * sizeof(double);
      image.put<double>(place, effect.envCurve[g][i]);
      image.put<double>(place + kAllGraphs, effect.envX[g][i]);
      image.put<double>(place + 2 * kAllGraphs, effect.envY[g][i]);
    }
  }
}

void putRecord(Image& image, std::size_t record, const PadLFO& lfo) {
  image.put<std::uint8_t>(record, lfo.bLfoOpen);
  image.putRow<float>(record + 4, lfo.graphOut);
  image.putRow<float>(record + 52, lfo.graphWarp);
  image.putRow<float>(record + 104, std::array<float, 7>{lfo.rate, lfo.pwm, lfo.swing, lfo.depthPan, lfo.depthCut,
                                                         lfo.depthVol, lfo.depthRes});
  image.put<std::int32_t>(record + 132, lfo.reserved132);
  image.putRow<float>(record + 140, std::array<float, 2>{lfo.depthKnob, lfo.depthVar});
  image.putRow<float>(record + 152, std::array<float, 2>{lfo.cyclePos, lfo.phase});
  image.putRow<std::uint8_t>(record + 160, std::array<std::uint8_t, 2>{lfo.bTriplet, lfo.bDotted});
  image.put<std::int32_t>(record + 164, lfo.reserved164);
  image.put<std::uint8_t>(record + 168, lfo.bFreeRun);
}

void putMembers(Image& image, std::size_t chunk, const LfoDSP& e) {
  image.putRow<float>(chunk + 18736,
                      std::array<float, 9>{e.filterType, e.filterVar, e.filterMix, e.xoverFrequency, e.filterCutoff,
                                           e.filterReso, e.filterOn, e.lfoSmooth, e.filterDrive});
  image.put(chunk + 18772, kChunkVersion);
  image.putRow<float>(chunk + 18776, std::array<float, 2>{e.gridSize, e.timing});
  image.putRow<std::int8_t>(chunk + 18784, e.envNumPoints);
  image.putRow<std::int8_t>(chunk + 18796, std::array<std::int8_t, 7>{e.ccNumber, e.currentGraph, e.routeCut,
                                                                      e.routeRes, e.routeVol, e.routePan, e.routeVar});
  image.putRow<std::uint8_t>(chunk + 18803, std::array<bool, 2>{e.bXoverOn, e.bXoverInvert});
  constexpr bool kScopeOn = true;  // the waveform behind the graph shows what the preset does
  image.putRow<std::uint8_t>(chunk + 18808, std::array<bool, 8>{e.bAnchor, e.bRetrig, e.bGateMode, e.bVelToPwm,
                                                                e.bNoteToRate, kScopeOn, e.bNoteToCutoff, e.bOneShot});
  image.putRow<std::int16_t>(chunk + 18816, std::array<std::int16_t, 2>{kEditorWidth, kEditorHeight});
}

}  // namespace

void writePreset(const std::filesystem::path& path, const Preset& preset) {
  const std::unique_ptr<LfoDSP> effect = freshEffect();
  apply(preset, *effect);
  Image image(kHeaderBytes + kChunkBytes);
  putHeader(image);
  putGraphs(image, kHeaderBytes, *effect);
  putRecord(image, kHeaderBytes + kRecordOffset, effect->padLFO);
  putMembers(image, kHeaderBytes, *effect);
  image.write(path);
}

void writeShape(const std::filesystem::path& path, const Shape& shape) {
  Image image(kShapeBytes);
  for (std::size_t i = 0; i < kStoredSlots; ++i) {
    image.put(i * sizeof(double), shape.points.curve[i]);
    image.put(kGraphBytes + i * sizeof(double), shape.points.x[i]);
    image.put(2 * kGraphBytes + i * sizeof(double), shape.points.y[i]);
  }
  image.put(2048, static_cast<std::int8_t>(shape.points.lastPoint));
  image.put(2049, kShapeFormat);
  image.write(path);
}

}  // namespace modrift::factory
