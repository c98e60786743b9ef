// SPDX-License-Identifier: MIT
// A state chunk as bytes to write into by hand: what a project of any version may hold.
#pragma once

#include <cstddef>
#include <cstring>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "model/StateChunk.h"
#include "model/StateFields.h"

class ChunkBuilder {
 public:
  // Today's layout with a state's values, at any version and any of the layout's sizes.
  static ChunkBuilder current(const model::State& state, float version = model::kStateVersion,
                              std::size_t size = model::kChunkBytes) {
    ChunkBuilder chunk(size);
    chunk.fill(state, [](const model::Field& f) { return f.now.offset; });
    return chunk.put(18772, version);
  }
  static ChunkBuilder old(const model::State& state, float version = model::kStateVersion, std::size_t size = 18813) {
    ChunkBuilder chunk(size);
    chunk.fill(state, [](const model::Field& f) { return f.old.offset; });
    return chunk.put(18804, version);
  }

  template <class T>
  ChunkBuilder& put(std::size_t offset, T value) {
    if (offset + sizeof value <= bytes_.size()) std::memcpy(&bytes_[offset], &value, sizeof value);
    return *this;
  }
  template <class T>
  [[nodiscard]] T at(std::size_t offset) const {
    T value;
    std::memcpy(&value, &bytes_.at(offset), sizeof value);
    return value;
  }

  // Element `i` of a field that begins at `start`.
  void putTyped(model::FieldType type, int start, int i, double v) {
    using enum model::FieldType;
    const std::size_t offset = static_cast<std::size_t>(start) + model::widthOf(type) * static_cast<std::size_t>(i);
    if (type == f64) put(offset, v);
    if (type == f32) put(offset, static_cast<float>(v));
    if (type == i32) put(offset, static_cast<std::int32_t>(v));
    if (type == i16) put(offset, static_cast<std::int16_t>(v));
    if (type == i8) put(offset, static_cast<std::int8_t>(v));
    if (type == u8 || type == flag) put(offset, static_cast<std::uint8_t>(v));
  }
  std::vector<std::byte>& bytes() { return bytes_; }
  [[nodiscard]] model::ChunkReading read(const model::State& present = {}, model::Locks locks = {}) const {
    return model::readChunk(bytes_, present, locks);
  }
  [[nodiscard]] model::State state(const model::State& present = {}, model::Locks locks = {}) const {
    return std::get<model::LoadedState>(read(present, locks)).state;
  }

 private:
  explicit ChunkBuilder(std::size_t size) : bytes_(size) {}

  template <class OffsetOf>
  void fill(const model::State& state, OffsetOf offsetOf) {
    for (const model::Field& f : model::stateFields()) {
      for (int i = 0; offsetOf(f) >= 0 && i < f.count; ++i) putTyped(f.type, offsetOf(f), i, f.get(state, i));
    }
  }

  std::vector<std::byte> bytes_;
};

// Random values in every field, as an effect may have them: inside all limits, points with the precision of float.
inline model::State randomState(std::uint32_t seed) {
  std::mt19937 random(seed);
  const auto unit = [&] { return static_cast<double>(random() >> 8) * 0x1p-24; };
  model::State state;
  for (const model::Field& f : model::stateFields()) {
    const bool isFraction = f.type == model::FieldType::f32 || f.type == model::FieldType::f64;
    for (int i = 0; i < f.count; ++i) {
      const double whole = f.high < 128.0 ? f.low + unit() * (f.high - f.low + 0.99) : unit() * 2.0;
      model::store(state, f, i, isFraction ? unit() : whole);
    }
  }
  for (int g = 0; g < model::kGraphs; ++g) {
    model::GraphPoints points = model::pointsOf(state, g);
    const auto last = static_cast<std::size_t>(points.lastPoint);
    for (std::size_t i = 0; i < points.x.size(); ++i)
      points.x[i] = i < last ? static_cast<double>(i) * 1000.0 : model::kGraphWidth;
    model::setPoints(state, g, points);
  }
  state.version = model::kStateVersion;
  state.bRetrig = state.bRetrig || state.bOneShot;
  state.bLfoOpen = !state.bGateMode;
  return state;
}

// The name of the first field in which two states differ, empty for none.
inline std::string firstDifference(const model::State& a, const model::State& b) {
  for (const model::Field& f : model::stateFields()) {
    for (int i = 0; i < f.count; ++i) {
      if (f.get(a, i) != f.get(b, i))
        return std::string(f.name) + "[" + std::to_string(i) + "]: " + std::to_string(f.get(a, i)) + " and " +
               std::to_string(f.get(b, i));
    }
  }
  return {};
}
