// Everything that loads, saves and automates in two threads while blocks run. What it proves is mostly the sanitizers'
// to say; without them sound must stay finite, and every state that is taken out must be whole enough to load again.
// Ten seconds; MODRIFT_SOAK_SECONDS asks for another time.
#include <chrono>
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

namespace {

namespace fs = std::filesystem;

VstTimeInfo songClock;  // the block thread's

VstIntPtr VSTCALLBACK hostCallback(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode == audioMasterGetTime) return reinterpret_cast<VstIntPtr>(&songClock);
  return 0;
}

std::chrono::seconds soakTime() {
  const char* const wanted = std::getenv("MODRIFT_SOAK_SECONDS");
  return std::chrono::seconds(wanted ? std::atoi(wanted) : 10);
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
                                           [this] { exportNowAndThen(); }};
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
  // Plays up to eight bars, so that it would crowd out the rest.
  void exportNowAndThen() {
    if (random_() % 8 == 0) command(kExportMidi, midi_);
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
  std::jthread loading([&](const std::stop_token& stop) {
    Loader loader(effect, folder);
    while (!stop.stop_requested()) loader.act();
  });
  std::jthread saving([&](const std::stop_token& stop) {  // a host that keeps a copy now and then
    while (!stop.stop_requested()) {
      void* data = nullptr;
      const auto size = static_cast<std::size_t>(effect.getChunk(&data, false));
      const std::vector<std::byte> copy(static_cast<std::byte*>(data), static_cast<std::byte*>(data) + size);
      ASSERT_EQ(model::readChunk(copy).index(), 0u);
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  });
  const auto end = std::chrono::steady_clock::now() + soakTime();
  for (int turn = 0; std::chrono::steady_clock::now() < end; ++turn) playBlock(effect, turn);
  for (std::jthread* const thread : {&loading, &saving}) {
    thread->request_stop();
    thread->join();
  }
  fs::remove_all(folder);
}

}  // namespace
