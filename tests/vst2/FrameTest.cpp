// SPDX-License-Identifier: MIT
// The frame by itself, with a small effect and editor of the test's own that write down what reaches them.
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "vst2/audioeffectx.h"

namespace {

using Journal = std::vector<std::string>;
Journal journal;

VstIntPtr VSTCALLBACK host(AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr, void*, float opt) {
  journal.push_back("host " + std::to_string(opcode) + " " + std::to_string(index) + " " + std::to_string(opt));
  return 0;
}

class SmallEffect : public AudioEffectX {
 public:
  explicit SmallEffect(audioMasterCallback callback) : AudioEffectX(callback, 3, 7) {}
  ~SmallEffect() override { journal.emplace_back("gone"); }
  void open() override { journal.emplace_back("open"); }
  void close() override { journal.emplace_back("close"); }
  void suspend() override { journal.emplace_back("suspend"); }
  void resume() override { journal.emplace_back("resume"); }
  void setParameter(VstInt32 i, float v) override { journal.push_back("set " + std::to_string(i) + std::to_string(v)); }
  float getParameter(VstInt32) override { return 0.0f; }
  void processReplacing(float**, float**, VstInt32) override {}
  VstInt32 canDo(char*) override { throw std::runtime_error("from inside"); }
};

struct SmallEditor : AEffEditor {
  ~SmallEditor() override { journal.emplace_back("editor gone"); }
  bool open(void*) override { return journal.emplace_back("editor open"), true; }
  void close() override { journal.emplace_back("editor close"); }
  void idle() override { journal.emplace_back("editor idle"); }
};

VstIntPtr call(AEffect& record, VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr) {
  return record.dispatcher(&record, opcode, index, value, ptr, 0.0f);
}

TEST(Frame, EndsTheEffectAndItsEditorWithClose) {
  journal.clear();
  auto& effect = *new SmallEffect(host);
  AEffect& record = *effect.getAeffect();
  EXPECT_EQ(call(record, effEditOpen), 0);  // no editor yet
  EXPECT_FALSE(record.flags & effFlagsHasEditor);
  effect.setEditor(new SmallEditor);
  EXPECT_TRUE(record.flags & effFlagsHasEditor);
  EXPECT_EQ(call(record, effEditOpen), 1);
  for (const VstInt32 opcode : {effOpen, effEditIdle, effEditClose}) call(record, opcode);
  for (const VstIntPtr on : {1, 0}) call(record, effMainsChanged, 0, on);
  effect.setParameterAutomated(4, 0.5f);
  call(record, effClose);
  EXPECT_EQ(journal, (Journal{"editor open", "open", "editor idle", "editor close", "resume", "suspend",
                              "set 40.500000", "host 0 4 0.500000", "close", "gone", "editor gone"}));
}

TEST(Frame, AnswersUnknownOpcodesAndMissingPointersWithZeroAndLetsNoExceptionOut) {
  SmallEffect effect(host);
  AEffect& record = *effect.getAeffect();
  for (VstInt32 opcode = -1; opcode < 200; ++opcode) {
    if (opcode == effClose) continue;
    const bool known = opcode == effIdentify || opcode == effCanBeAutomated || opcode == effGetNumProgramCategories ||
                       opcode == effGetVstVersion;
    for (const VstInt32 index : {-1, 0, 10000})
      EXPECT_EQ(call(record, opcode, index) != 0, known) << "opcode " << opcode;
  }
  char text[] = "anything";
  EXPECT_EQ(call(record, effCanDo, 0, 0, text), 0);
  for (const VstIntPtr program : {2, 3, -1, 10000}) call(record, effSetProgram, 0, program);
  EXPECT_EQ(call(record, effGetProgram), 2);
}

TEST(Frame, DoesWithoutAHostAndWithoutAnEffect) {
  SmallEffect effect(nullptr);
  effect.setParameterAutomated(1, 0.0f);
  effect.wantEvents();
  EXPECT_EQ(effect.getTimeInfo(0), nullptr);
  EXPECT_FALSE(effect.ioChanged());
  AEffect empty;
  for (AEffect* const record : {static_cast<AEffect*>(nullptr), &empty}) {
    EXPECT_EQ(AudioEffect::dispatchEffectClass(record, effOpen, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(AudioEffect::getParameterClass(record, 0), 0.0f);
    AudioEffect::setParameterClass(record, 0, 0.0f);
    AudioEffect::processClassReplacing(record, nullptr, nullptr, 0);
  }
}

}  // namespace
