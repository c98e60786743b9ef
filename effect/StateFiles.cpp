// SPDX-License-Identifier: MIT
// Preset and shape files. Failures are silent: nothing changes, in the effect or on the disk.
#include <cstring>

#include "effect/LfoDSP.h"
#include "messages/Messages.h"
#include "model/AtomicFile.h"
#include "model/PresetFile.h"
#include "model/ShapeFile.h"

using namespace model;

bool LfoDSP::setLoadPath(const char* path) noexcept {
  const std::size_t length = path ? std::strlen(path) : 0;
  const bool fits = length < loadPath.size();
  loadPath.fill(0);
  if (fits && path) std::memcpy(loadPath.data(), path, length);
  return fits;
}

// Null when the buffer holds no path, or one without an end.
const char* LfoDSP::readableLoadPath() const noexcept {
  const std::size_t length = strnlen(loadPath.data(), loadPath.size());
  return length > 0 && length < loadPath.size() ? loadPath.data() : nullptr;
}

// A host may still be copying the chunk that it asked for last; that one outlives this.
void LfoDSP::SavePreset(const char* path) {
  if (!path) return;
  std::vector<std::byte> file;
  {
    const std::lock_guard lock(chunkLock_);
    std::unique_ptr<ChunkBuffer> hosts = std::move(chunk_);
    void* data = nullptr;
    const VstInt32 size = getChunk(&data, false);
    if (size > 0) file = model::writePreset({static_cast<const std::byte*>(data), static_cast<std::size_t>(size)});
    chunk_ = std::move(hosts);
  }
  if (!file.empty()) static_cast<void>(model::replaceFile(path, file));
}

void LfoDSP::LoadPreset() {
  const char* const path = readableLoadPath();
  if (!path) return;
  const auto file = model::readFile(path, model::kLargestPresetFile);
  const auto chunk = file ? model::chunkOfPreset(*file) : std::nullopt;
  if (!chunk) return;
  std::vector<std::byte> copy(chunk->begin(), chunk->end());
  setChunk(copy.data(), static_cast<VstInt32>(copy.size()), true);
  messages::presetTaken(path);
}

void LfoDSP::SaveShape(const char* path) {
  if (path) static_cast<void>(model::replaceFile(path, model::writeShape(pointsOf(currentGraph))));
}

void LfoDSP::LoadShape() {
  const char* const path = readableLoadPath();
  if (!path) return;
  const auto file = model::readFile(path, model::kLargestShapeFile);
  const auto points = file ? model::readShape(*file) : std::nullopt;
  if (!points) return;
  const AudioGate::Hold hold(gate);
  setPoints(currentGraph, *points, kGraphSlots);
}
