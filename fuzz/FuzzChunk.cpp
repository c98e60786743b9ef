// SPDX-License-Identifier: MIT
// Bytes from a host's project into the effect: load, play, save, and load what was saved.
#include <cstdint>
#include <numeric>
#include <vector>

#include "effect/KorvelInDSPEdit.h"
#include "fuzz/Require.h"

namespace {

VstTimeInfo songClock;

VstIntPtr VSTCALLBACK answer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode == audioMasterGetTime) return reinterpret_cast<VstIntPtr>(&songClock);
  return 0;
}

void play(LfoDSP& effect) {
  std::array<float, 30> left{}, right{};
  left.fill(0.5f);
  float* channels[] = {left.data(), right.data()};
  songClock.tempo = 120.0;
  songClock.ppqPos += 0.25;
  songClock.flags ^= kVstTransportPlaying;
  effect.processReplacing(channels, channels, static_cast<VstInt32>(left.size()));
}

std::vector<char> saved(LfoDSP& effect) {
  void* data = nullptr;
  const VstInt32 size = effect.getChunk(&data, false);
  require(size == static_cast<VstInt32>(model::kChunkBytes), "a chunk has its size");
  const auto* const bytes = static_cast<const char*>(data);
  return {bytes, bytes + size};
}

std::vector<char> reloaded(LfoDSP& effect, std::vector<char> chunk) {
  effect.setChunk(chunk.data(), static_cast<VstInt32>(chunk.size()), false);
  return saved(effect);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  songClock = {};
  KorvelInDSPEdit effect(answer);
  if (size % 2) play(effect);  // before the first block, points are taken in another way
  std::vector<std::uint8_t> chunk(data, data + size);
  effect.setChunk(chunk.data(), static_cast<VstInt32>(size), size % 3 == 0);
  play(effect);
  play(effect);
  // Loads render all graphs, so the rest is slow: for one input in eight.
  if (std::accumulate(data, data + size, 0u) % 8 != 0) return 0;
  // Old points may carry more digits than are stored, and a one-shot comes to rest; after one round all is settled.
  const std::vector<char> settled = reloaded(effect, saved(effect));
  require(reloaded(effect, settled) == settled, "what was saved comes back as it was");
  play(effect);
  return 0;
}
