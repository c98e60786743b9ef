// Sound, automation and projects on threads of the host while the user draws in the real window. What it proves is
// mostly the thread sanitizer's to say; without it, what is shown must be what sounds once all is quiet.
#include <atomic>
#include <cmath>
#include <memory>
#include <thread>

#include "effect/ParameterTable.h"
#include "tests/editor/x11/EditorDesktop.h"

namespace {

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

class EditorThreads : public EditorDesktop {
 protected:
  void SetUp() override {
    EditorDesktop::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    effect_ = std::make_unique<KorvelInDSPEdit>(answer);
    call(effSetSampleRate, 0, 0, nullptr, 48000.0f);
    call(effMainsChanged, 0, 1);
    gui = static_cast<LFOGUI*>(createEditor(effect_.get()));
    block();
  }
  AEffect* record() override { return effect_->getAeffect(); }

  void block() {
    std::vector<float> left(96, 0.5f), right(96, -0.5f);
    float* channels[] = {left.data(), right.data()};
    record()->processReplacing(record(), channels, channels, 96);
    for (const float sample : left) ASSERT_TRUE(std::isfinite(sample));
  }
  void note(int status, int key) {
    VstMidiEvent event{};
    event.type = kVstMidiType;
    event.byteSize = sizeof event;
    event.midiData[0] = static_cast<char>(status);
    event.midiData[1] = static_cast<char>(key);
    event.midiData[2] = 100;
    VstEvents list{};
    list.numEvents = 1;
    list.events[0] = reinterpret_cast<VstEvent*>(&event);
    call(effProcessEvents, 0, 0, &list);
  }
  void storeAndRestore() {
    void* data = nullptr;
    const VstIntPtr bytes = call(effGetChunk, 0, 0, &data);
    std::vector<char> stored(static_cast<char*>(data), static_cast<char*>(data) + bytes);
    call(effSetChunk, 0, bytes, stored.data());
  }

  void turn() {
    idle();
    user->waitReadable(1);
  }
  // A press, three moves and the release, here and there in the graph.
  void scribble(Random& random) {
    const auto somewhere = [&] { return inGraph(388.0 * random.unit(), 240.0 * random.unit()); };
    pointAt(random.below(3) == 0 ? somewhere() : placeOf(random.below(gui->display->lastPoint + 1)));
    press();
    for (int step = 0; step < 3; ++step) {
      turn();
      pointAt(somewhere());
    }
    turn();
    release();
    turn();
  }
  void expectAgreement() {
    const LFODisplay& display = *gui->display;
    const auto graph = static_cast<std::size_t>(display.shownGraph());
    ASSERT_EQ(display.shownGraph(), effect_->currentGraph);
    ASSERT_EQ(display.lastPoint, effect_->envNumPoints[graph]);
    for (int i = 0; i <= display.lastPoint; ++i) {
      const CPoint& p = display.points[static_cast<std::size_t>(i)];
      EXPECT_NEAR(effect_->envX[graph][i], p.x / display.graphWidth * 65536, 0.05) << i;
      EXPECT_NEAR(effect_->envY[graph][i], p.y / display.graphHeight, 1e-6) << i;
    }
    int apart = 0;  // entries beside a jump may differ
    for (std::size_t i = 0; i < 65536; ++i)
      apart += std::abs(static_cast<float>(effect_->graphTable[graph][i]) - display.shapeTable[i]) > 1e-4f;
    EXPECT_LE(apart, 2 * display.lastPoint);
  }

  std::unique_ptr<KorvelInDSPEdit> effect_;
};

TEST_F(EditorThreads, ShowWhatSoundsOnceAllIsQuiet) {
  std::atomic<bool> ended = false;
  const auto repeat = [&](auto work) {
    return std::thread([&ended, work] {
      for (Random random(11); !ended;) work(random);
    });
  };
  std::thread sound = repeat([this](Random& random) {
    if (random.below(4) == 0) note(random.pick({0x80, 0x90}), 36 + random.below(48));
    block();
    std::this_thread::sleep_for(std::chrono::microseconds(300));
  });
  std::thread automation = repeat([this](Random& random) {
    const int index = random.below(4) == 0 ? random.below(kHostParameters) : kPoint1 + random.below(kAutomatedPoints);
    record()->setParameter(record(), index, random.unit());
    std::this_thread::sleep_for(std::chrono::microseconds(500));
  });
  std::thread project = repeat([this](Random&) {
    storeAndRestore();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  });
  Random random(5);
  for (int session = 0; session < 3; ++session) {
    open();
    for (int n = 0; n < 25 && !HasFatalFailure(); ++n) scribble(random);
    if (session < 2) close();
  }
  ended = true;
  for (std::thread* const thread : {&sound, &automation, &project}) thread->join();
  block();
  for (int n = 0; n < 3; ++n) turn();
  expectAgreement();
  release();
  idle();
}

}  // namespace
