// SPDX-License-Identifier: MIT
// Everything that loads, saves, exports, automates, suspends and resumes in threads of its own while blocks run. What
// it proves is mostly the sanitizers' to say; without them sound must stay finite, and every state that is taken out
// must be whole enough to load again. MODRIFT_SOAK_ROUNDS asks for more than one round.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <unistd.h>

#include "effect/KorvelInDSPEdit.h"
#include "model/ParameterIndex.h"
#include "tests/model/ChunkBuilder.h"

using namespace model;

namespace {

namespace fs = std::filesystem;

VstTimeInfo songClock;  // the block thread's

VstIntPtr VSTCALLBACK hostCallback(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode == audioMasterGetTime) return reinterpret_cast<VstIntPtr>(&songClock);
  return 0;
}

int rounds() {
  const char* const wanted = std::getenv("MODRIFT_SOAK_ROUNDS");
  return wanted ? std::atoi(wanted) : 1;
}

// The editor's thread: presets, shapes, exports and parameters of all kinds.
class Loader {
 public:
  Loader(KorvelInDSPEdit& effect, const fs::path& folder)
      : effect_(effect),
        preset_((folder / "soak.fxp").string()),
        shape_((folder / "soak.shp").string()),
        midi_((folder / "soak.mid").string()) {
    effect_.SavePreset(preset_.c_str());
    effect_.SaveShape(shape_.c_str());
  }

  void act() {
    const std::function<void()> kActs[] = {[this] { setChunk(); },
                                           [this] { effect_.SavePreset(preset_.c_str()); },
                                           [this] { command(kLoadPreset, preset_); },
                                           [this] { effect_.SaveShape(shape_.c_str()); },
                                           [this] { command(kLoadShape, shape_); },
                                           [this] { blast(); },
                                           [this] {
                                             // Plays up to eight bars, so that it would crowd out the rest.
                                             if (random_() % 8 == 0) command(kExportMidi, midi_);
                                           }};
    kActs[random_() % std::size(kActs)]();
  }

 private:
  // Sane settings; graphs of any bytes.
  void setChunk() {
    const model::State state = randomState(static_cast<std::uint32_t>(random_()));
    auto chunk = random_() % 3 ? ChunkBuilder::current(state) : ChunkBuilder::old(state);
    for (int n = 0; n < 200; ++n) chunk.bytes()[40 + random_() % 18000] = static_cast<std::byte>(random_());
    effect_.setChunk(chunk.bytes().data(), static_cast<VstInt32>(chunk.bytes().size()), random_() % 2);
  }
  void command(int index, const std::string& path) {
    effect_.setLoadPath(path.c_str());
    effect_.setParameter(index, 1.0f);
  }
  void blast() {
    for (int n = 0; n < 100; ++n) {
      const int index = static_cast<int>(random_() % kParameterRows);
      const bool isFile = index == kLoadShape || index == kLoadPreset || index == kExportMidi;
      if (!isFile) effect_.setParameter(index, static_cast<float>(random_() % 1001) * 0.001f);
    }
  }

  KorvelInDSPEdit& effect_;
  std::string preset_, shape_, midi_;
  std::mt19937 random_{77};
};

void playBlock(KorvelInDSPEdit& effect, int turn) {
  constexpr int kFrames = 96;
  std::vector<float> left(kFrames, 0.5f), right(kFrames, -0.5f);
  float* channels[] = {left.data(), right.data()};
  songClock.tempo = 140.0;
  songClock.flags = kVstTransportPlaying;
  songClock.ppqPos = turn * 0.005;
  effect.processReplacing(channels, channels, kFrames);
  for (int i = 0; i < kFrames; ++i) {
    ASSERT_TRUE(std::isfinite(left[static_cast<std::size_t>(i)]) && std::isfinite(right[static_cast<std::size_t>(i)]));
  }
}

TEST(Soak, BlocksLoadsSavesAndAutomationRunTogether) {
  const fs::path folder = fs::temp_directory_path() / ("modrift-soak-" + std::to_string(getpid()));
  fs::create_directories(folder);
  KorvelInDSPEdit effect(hostCallback);
  {
    Loader loader(effect, folder);
    std::atomic<int> loads = 0, lives = 0, saves = 0;
    const auto overAndOver = [](std::atomic<int>& turns, std::function<void()> act) {
      return std::jthread([&turns, act = std::move(act)](const std::stop_token& stop) {
        for (; !stop.stop_requested(); ++turns) act();
      });
    };
    const auto loading = overAndOver(loads, [&] { loader.act(); });
    const auto living = overAndOver(lives, [&] { effect.suspend(), effect.resume(); });
    const auto saving = overAndOver(saves, [&] {  // a host that keeps copies
      void* data = nullptr;
      const auto size = static_cast<std::size_t>(effect.getChunk(&data, false));
      const std::vector<std::byte> copy(static_cast<std::byte*>(data), static_cast<std::byte*>(data) + size);
      ASSERT_EQ(model::readChunk(copy).index(), 0u);
    });
    const auto worked = [&] { return std::min({loads / 3, +lives, +saves}) >= 50 * rounds(); };
    for (int turn = 0; turn < 4000 * rounds() || !worked(); ++turn) playBlock(effect, turn);
  }
  fs::remove_all(folder);
}

}  // namespace
