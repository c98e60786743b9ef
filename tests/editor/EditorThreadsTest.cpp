// SPDX-License-Identifier: MIT
// Sound, automation and projects on threads of the host while the user draws. What it proves is mostly the thread
// sanitizer's to say; without it, what is shown must be what sounds once all is quiet.
#include <atomic>
#include <thread>

#include "editor/shell/LFOGUI.h"
#include "tests/editor/GraphWindow.h"

using namespace model;

namespace {

using editor::at;
using VSTGUI::CPoint;

// As TestHost, but for calls of several threads: it keeps nothing.
VstIntPtr VSTCALLBACK answer(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  static thread_local VstTimeInfo time = [] {
    VstTimeInfo now{};
    now.tempo = 140.0;
    now.flags = kVstPpqPosValid | kVstTempoValid | kVstTransportPlaying;
    return now;
  }();
  if (opcode == audioMasterVersion) return kVstVersion;
  if (opcode != audioMasterGetTime) return 0;
  time.ppqPos += 0.005;
  return reinterpret_cast<VstIntPtr>(&time);
}

class EditorThreads : public testing::Test {
 protected:
  EditorThreads() {
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, &platform_);
    call(effSetSampleRate, 0, nullptr, 48000.0f);
    call(effMainsChanged, 1);
    gui_ = static_cast<LFOGUI*>(createEditor(effect_.get()));
    block();
  }
  ~EditorThreads() override {
    effect_.reset();
    VSTGUI::setPlatform(VSTGUI::PlatformType::kDefaultNative, nullptr);
  }

  AEffect* record() { return effect_->getAeffect(); }
  VstIntPtr call(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr, float opt = 0.0f) {
    return record()->dispatcher(record(), opcode, 0, value, ptr, opt);
  }
  void block() {
    std::vector<float> left(96, 0.5f), right(96, -0.5f);
    float* channels[] = {left.data(), right.data()};
    record()->processReplacing(record(), channels, channels, 96);
    for (const float sample : left) ASSERT_TRUE(std::isfinite(sample));
  }
  void note(int status, int key) {
    VstMidiEvent event;
    event.midiData[0] = static_cast<char>(status);
    event.midiData[1] = static_cast<char>(key);
    event.midiData[2] = 100;
    VstEvents list{};
    list.numEvents = 1;
    list.events[0] = reinterpret_cast<VstEvent*>(&event);
    call(effProcessEvents, 0, &list);
  }
  void storeAndRestore() {
    void* data = nullptr;
    const VstIntPtr bytes = call(effGetChunk, 0, &data);
    std::vector<char> stored(static_cast<char*>(data), static_cast<char*>(data) + bytes);
    call(effSetChunk, bytes, stored.data());
  }
  void turn() {
    platform_.advance(20);
    call(effEditIdle);
  }
  // A press, three moves and the release, here and there in the graph.
  void scribble(Random& random) {
    VSTGUI::HeadlessFrame& user = *platform_.frames().front();
    const LFODisplay& display = *gui_->display;
    const CPoint corner = gui_->graphContainer->getViewSize().getTopLeft();
    const auto somewhere = [&] {
      return corner + CPoint(display.graphWidth * static_cast<double>(random.unit()),
                             display.graphHeight * static_cast<double>(random.unit()));
    };
    platform_.advance(1000);
    user.press(random.below(3) == 0 ? somewhere() : corner + display.points[at(random.below(display.lastPoint + 1))]);
    for (int step = 0; step < 3; ++step) {
      turn();
      user.moveTo(somewhere());
    }
    turn();
    user.release();
    turn();
  }
  VSTGUI::HeadlessPlatform platform_;
  std::unique_ptr<KorvelInDSPEdit> effect_ = std::make_unique<KorvelInDSPEdit>(answer);
  LFOGUI* gui_ = nullptr;  // the effect's
};

TEST_F(EditorThreads, ShowWhatSoundsOnceAllIsQuiet) {
  std::atomic<bool> ended = false;
  const auto repeat = [&](int pauseMicroseconds, auto work) {
    return std::thread([&ended, pauseMicroseconds, work] {
      for (Random random(11); !ended; std::this_thread::sleep_for(std::chrono::microseconds(pauseMicroseconds)))
        work(random);
    });
  };
  std::thread sound = repeat(300, [this](Random& random) {
    if (random.below(4) == 0) note(random.pick({0x80, 0x90}), 36 + random.below(48));
    block();
  });
  std::thread automation = repeat(500, [this](Random& random) {
    const int index = random.below(4) == 0 ? random.below(kHostParameters) : kPoint1 + random.below(kPointParameters);
    record()->setParameter(record(), index, random.unit());
  });
  std::thread project = repeat(20000, [this](Random&) { storeAndRestore(); });
  Random random(5);
  for (int session = 0; session < 3; ++session) {
    EXPECT_EQ(call(effEditOpen), 1);
    for (int n = 0; n < 60 && !HasFatalFailure(); ++n) scribble(random);
    if (session < 2) call(effEditClose);
  }
  ended = true;
  for (std::thread* const thread : {&sound, &automation, &project}) thread->join();
  block();
  for (int n = 0; n < 3; ++n) turn();
  ASSERT_EQ(gui_->display->shownGraph(), effect_->currentGraph);
  expectSounds(*gui_->display, *effect_, effect_->currentGraph);
}

}  // namespace
