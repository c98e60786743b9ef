// SPDX-License-Identifier: MIT
#include "model/StateChunk.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "model/Bytes.h"
#include "model/StateFields.h"

namespace model {
namespace {

constexpr std::size_t kSmallestCurrent = 18816;  // without the window's size
constexpr std::size_t kSmallestChunk = 10;
constexpr std::size_t kSmallestOld = 18813;
constexpr double kLowestOldVersion = 0.01;

// --- Numbers in and out of the bytes

double numberAt(std::span<const std::byte> bytes, FieldType type, std::size_t offset) noexcept {
  switch (type) {
    case FieldType::i8:
      return load<std::int8_t>(bytes, offset);
    case FieldType::i16:
      return load<std::int16_t>(bytes, offset);
    case FieldType::i32:
      return load<std::int32_t>(bytes, offset);
    case FieldType::f32:
      return static_cast<double>(load<float>(bytes, offset));
    case FieldType::f64:
      return throughFloat(load<double>(bytes, offset));  // points keep the precision of float
    case FieldType::flag:
    case FieldType::u8:
      break;
  }
  return load<std::uint8_t>(bytes, offset);
}

void putNumber(std::span<std::byte> bytes, FieldType type, std::size_t offset, double value) noexcept {
  switch (type) {
    case FieldType::i8:
      return put(bytes, offset, static_cast<std::int8_t>(value));
    case FieldType::i16:
      return put(bytes, offset, static_cast<std::int16_t>(value));
    case FieldType::i32:
      return put(bytes, offset, static_cast<std::int32_t>(value));
    case FieldType::f32:
      return put(bytes, offset, static_cast<float>(value));
    case FieldType::f64:
      return put(bytes, offset, value);
    case FieldType::flag:
    case FieldType::u8:
      break;
  }
  put(bytes, offset, static_cast<std::uint8_t>(value));
}

// --- What older versions meant by the same bytes

constexpr float kAnyVersion = std::numeric_limits<float>::infinity();

constexpr float justAbove(float x) { return std::bit_cast<float>(std::bit_cast<std::uint32_t>(x) + 1u); }

// The switch chose one of three filters, which were the first of the later list.
void splitFilterSwitch(State& state) {
  const int position = integerPart(static_cast<double>(state.filterOn) * 3.0 + 0.5);
  state.filterType = position >= 1 ? static_cast<float>(static_cast<double>(position - 1) / kLastFilterType) : 0.0f;
  if (position >= 1) {
    state.filterMix = 1.0f;
    state.filterVar = 0.5f;
  }
  state.filterOn = static_cast<float>(std::min(position, 1));
}

void pointsFromPixels(State& state) {
  for (Slots& slots : state.envX)
    for (double& x : slots) x *= static_cast<double>(kXPerPixel);
  for (Slots& slots : state.envY)
    for (double& y : slots) y *= static_cast<double>(kYPerPixel);
}

void resetWildGrid(State& state) {
  if (!(state.gridSize >= 0.0f && state.gridSize <= 1.0f)) state.gridSize = State().gridSize;
}

void snapGrid(State& state) {
  state.gridSize = static_cast<float>(gridStep(state.gridSize)) / static_cast<float>(kGridSteps);
}

struct Upgrade {
  float from, below;  // versions: the first one, and the one behind the last
  bool oldLayoutToo;
  void (*apply)(State& state);
};

// In the order in which they happen; what a version does not hold at all stands in the table of fields.
constexpr auto kUpgrades = std::to_array<Upgrade>({
    {-kAnyVersion, kAnyVersion, true, resetWildGrid},
    {-kAnyVersion, 1.22f, true, snapGrid},
    {-kAnyVersion, 0.98f, false, splitFilterSwitch},
    {-kAnyVersion, 1.2f, false, pointsFromPixels},
    // The list of filter types grew by four, by one, and once more in its middle.
    {0.98f, 1.16f, false, [](State& s) { s.filterType = s.filterType * 88.0f / 92.0f; }},
    {0.98f, 1.23f, false, [](State& s) { s.filterType = s.filterType * 91.0f / 92.0f; }},
    {justAbove(1.23f), 1.24f, false,
     [](State& s) { s.filterType = std::min((s.filterType * 89.0f + 3.0f) / 92.0f, 1.0f); }},
});

// --- Reading

class Reader {
 public:
  Reader(Layout layout, std::span<const std::byte> chunk, const State& present, Locks locks) noexcept
      : layout_(layout), chunk_(chunk), present_(present), locks_(locks), version_(chunkVersion()) {}

  [[nodiscard]] float version() const noexcept { return version_; }

  [[nodiscard]] State read() const noexcept {
    State state;
    for (const Field& field : stateFields()) take(field, state);
    for (const Upgrade& upgrade : kUpgrades) {
      const bool meant = version_ >= upgrade.from && version_ < upgrade.below;
      if (meant && (layout_ == Layout::current || upgrade.oldLayoutToo)) upgrade.apply(state);
    }
    if (locks_.controller) state.ccNumber = present_.ccNumber;
    if (locks_.timing) state.timing = present_.timing;
    return state;
  }

 private:
  [[nodiscard]] const Place& placeOf(const Field& field) const noexcept {
    return layout_ == Layout::current ? field.now : field.old;
  }

  // A NaN counts as written today.
  [[nodiscard]] float chunkVersion() const noexcept {
    const Field& field = *findField("version");
    const double stored = numberAt(chunk_, field.type, static_cast<std::size_t>(placeOf(field).offset));
    return std::isfinite(stored) ? static_cast<float>(stored) : kStateVersion;
  }

  [[nodiscard]] bool holds(const Field& field) const noexcept {
    const Place& place = placeOf(field);
    if (place.offset == Place::kNowhere || version_ < place.since) return false;
    const std::size_t end =
        static_cast<std::size_t>(place.offset) + widthOf(field.type) * static_cast<std::size_t>(field.count);
    return end <= chunk_.size();
  }

  // Raw but finite; limits come after the upgrades, which may give the number another scale.
  void take(const Field& field, State& state) const noexcept {
    const Place& place = placeOf(field);
    if (!holds(field)) {
      const bool stays = field.staysIfAbsent || place.offset == Place::kNowhere;
      for (int i = 0; stays && i < field.count; ++i) field.put(state, i, field.get(present_, i));
      return;
    }
    for (int i = 0; i < field.count; ++i) {
      const std::size_t offset =
          static_cast<std::size_t>(place.offset) + widthOf(field.type) * static_cast<std::size_t>(i);
      const double value = numberAt(chunk_, field.type, offset);
      field.put(state, i, std::isfinite(value) ? value : defaultOf(field, i));
    }
  }

  Layout layout_;
  std::span<const std::byte> chunk_;
  const State& present_;
  Locks locks_;
  float version_;
};

// X from 0 to the full width, never falling; slots behind the last point may hold anything in range.
void settleGraph(State& state, std::size_t g) noexcept {
  Slots& x = state.envX[g];
  const auto last = static_cast<std::size_t>(int{state.envNumPoints[g]});
  x[0] = 0.0;
  for (std::size_t i = 1; i < std::min(last, x.size()); ++i) x[i] = std::max(x[i], x[i - 1]);
  if (last < x.size()) x[last] = kGraphWidth;
}

void settle(State& state) noexcept {
  for (const Field& field : stateFields())
    for (int i = 0; i < field.count; ++i) store(state, field, i, field.get(state, i));
  for (std::size_t g = 0; g < kGraphs; ++g) settleGraph(state, g);
  state.bRetrig = state.bRetrig || state.bOneShot;  // a one-shot is a kind of retrigger
  state.bLfoOpen = state.bGateMode ? 0 : 1;         // a gate waits for its note
  state.version = kStateVersion;
}

}  // namespace

std::array<std::byte, kChunkBytes> writeChunk(const State& state) noexcept {
  std::array<std::byte, kChunkBytes> chunk{};
  for (const Field& field : stateFields()) {
    for (int i = 0; i < field.count; ++i) {
      const std::size_t offset =
          static_cast<std::size_t>(field.now.offset) + widthOf(field.type) * static_cast<std::size_t>(i);
      putNumber(chunk, field.type, offset, field.get(state, i));
    }
  }
  return chunk;
}

bool hasCurrentSize(std::size_t bytes) noexcept { return bytes >= kSmallestCurrent && bytes <= kChunkBytes; }

ChunkReading readChunk(Layout layout, std::span<const std::byte> chunk, const State& present, Locks locks) noexcept {
  if (chunk.size() < kSmallestChunk) return Refusal::empty;
  if (chunk.size() < (layout == Layout::current ? kSmallestCurrent : kSmallestOld)) return Refusal::cutShort;
  const Reader reader(layout, chunk, present, locks);
  if (layout == Layout::old && static_cast<double>(reader.version()) < kLowestOldVersion) return Refusal::noVersion;
  LoadedState loaded{reader.read(), reader.version(), layout};
  settle(loaded.state);
  return loaded;
}

ChunkReading readChunk(std::span<const std::byte> chunk, const State& present, Locks locks) noexcept {
  return readChunk(hasCurrentSize(chunk.size()) ? Layout::current : Layout::old, chunk, present, locks);
}

}  // namespace model
