// SPDX-License-Identifier: MIT
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "host/Error.h"
#include "host/EventBlock.h"
#include "host/Plugin.h"
#include "tests/host/HostFixtures.h"

namespace modrift::host {
namespace {

namespace fs = std::filesystem;

// What opening says, of a file or of an entry function.
template <class... From>
std::string errorOf(const From&... from) {
  try {
    const Plugin plugin(std::make_shared<Module>(from...));
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
}

class ThrowingListener : public HostListener {
 public:
  void automated(std::int64_t, VstInt32, float) override { throw Error("full"); }
};

TEST(Module, FindsTheSharedObjectOfABundleFolder) {
  const fs::path bundle = fs::path(testing::TempDir()) / "Some.vst", object = bundle / "Contents/x86_64-linux/Some.so";
  fs::remove_all(bundle);
  fs::create_directories(object.parent_path());
  EXPECT_NE(errorOf(bundle).find("Some.vst: a bundle with one shared object"), std::string::npos);
  fs::copy_file(FOREIGN_GAIN, object);
  fs::copy_file(FOREIGN_GAIN, object.parent_path() / "Another.so");
  EXPECT_EQ(Module(bundle.string() + "/").path(), object);
  fs::remove_all(bundle);
}

TEST(Module, SaysInOneSentenceWhatIsNoPlugin) {
  EXPECT_EQ(errorOf("/nowhere/x.so"), "/nowhere/x.so: a plug-in was expected, but there is no such file");
  EXPECT_NE(errorOf("/proc/self/status").find("a shared object for this machine was expected"), std::string::npos);
  EXPECT_NE(errorOf(FOREIGN_NO_ENTRY).find("exports neither VSTPluginMain nor main"), std::string::npos);
  EXPECT_NE(errorOf(FOREIGN_NO_RECORD).find("its record is not one"), std::string::npos);
  EXPECT_EQ(errorOf(FOREIGN_OLD_ENTRY), "no error");
  EXPECT_EQ(errorOf(EntryFunction{}, "Linked"), "Linked: an effect with an entry function was expected");
  const EntryFunction refusing = [](audioMasterCallback) -> AEffect* { return nullptr; };
  EXPECT_EQ(errorOf(refusing, "Linked"), "Linked: a plug-in was expected, but it refused to start");
}

TEST(Plugin, HearsItsLifeInOrderLoadedOrLinked) {
  for (const auto& module : {load(FOREIGN_GAIN), linked()}) {
    SCOPED_TRACE(module->path());
    Plugin plugin(module);
    plugin.setSampleRate(48000.0);
    plugin.setBlockSize(64);
    for (int n = 0; n < 2; ++n) plugin.activate();
    for (int n = 0; n < 2; ++n) plugin.deactivate();
    const std::vector<ForeignPlugin::Told> expected = {{effOpen},
                                                       {effSetSampleRate, 0, 48000.0f},
                                                       {effSetBlockSize, 64},
                                                       {effMainsChanged, 1},
                                                       {effStartProcess},
                                                       {effStopProcess},
                                                       {effMainsChanged, 0}};
    EXPECT_EQ(foreign(plugin).told, expected);
    const VstIntPtr folder = foreign(plugin).ask(audioMasterGetDirectory);
    EXPECT_EQ(reinterpret_cast<const char*>(folder), module->path().parent_path());  // NOLINT
  }
}

TEST(Plugin, KeepsInstancesOfOneModuleApart) {
  for (const auto& module : {load(FOREIGN_GAIN), linked()}) {
    Plugin first(module);
    Plugin second(module);
    EXPECT_EQ(foreign(first).versionWithoutEffect, 2400);  // asked while the entry function ran
    EXPECT_EQ(foreign(first).blockSizeInEntry, 512);
    first.setBlockSize(64);
    second.setBlockSize(128);
    EXPECT_EQ(foreign(first).ask(audioMasterGetBlockSize), 64);
    EXPECT_EQ(foreign(second).ask(audioMasterGetBlockSize), 128);
  }
}

TEST(Plugin, TakesTextsThatAreFarTooLongAndParametersThatDoNotExist) {
  Plugin plugin(linked());
  EXPECT_EQ(plugin.parameterName(1), "Offset");
  foreign(plugin).writesLongTexts = true;
  EXPECT_EQ(plugin.parameterName(1), std::string(300, 'x'));
  plugin.setParameter(-1, 0.5f);  // the test plug-in would throw
  plugin.setParameter(3, 0.5f);
  EXPECT_EQ(plugin.parameter(10000), 0.0f);
  EXPECT_EQ(plugin.parameterName(-1), "");
}

TEST(Plugin, CarriesChunksBothWays) {
  Plugin plugin(linked());
  const std::vector<std::byte> bytes = {std::byte{1}, std::byte{0}, std::byte{2}};
  EXPECT_TRUE(plugin.setChunk(ChunkKind::bank, bytes));
  EXPECT_EQ(plugin.chunk(ChunkKind::bank), bytes);
  EXPECT_FALSE(plugin.setChunk(ChunkKind::bank, {}));  // which the test plug-in refuses
}

TEST(Plugin, RunsOneThatCanOnlyAddAndRefusesOneThatCannotProcess) {
  Plugin plugin(linked());
  foreign(plugin).record.processReplacing = nullptr;
  plugin.activate();
  float in = 0.25f, out = 9.0f;
  float *inputs[] = {&in, &in}, *outputs[] = {&out, &out};
  plugin.process(inputs, outputs, 1);
  EXPECT_EQ(out, 0.25f + 0.25f);  // both channels were added into the same memory
  Plugin broken(linked());
  foreign(broken).record.processReplacing = foreign(broken).record.process = nullptr;
  EXPECT_THROW(broken.activate(), Error);
}

TEST(HostCallback, AnswersNeutrallyWithoutAnEffectAndToUnknownOpcodes) {
  const Plugin plugin(linked());
  for (VstInt32 opcode = audioMasterCurrentId; opcode <= audioMasterCloseFileSelector; ++opcode) {
    if (opcode == audioMasterGetVendorVersion || opcode == audioMasterGetLanguage) continue;
    EXPECT_EQ(foreign(plugin).host(nullptr, opcode, 0, 0, nullptr, 0.0f), 0) << opcode;
  }
  for (const VstInt32 opcode : {-1, 10000, VstInt32{audioMasterGetTime}})  // there is no transport yet
    EXPECT_EQ(foreign(plugin).ask(opcode), 0) << opcode;
}

TEST(HostCallback, RecordsAutomationWithTheBlockItCameInAndLetsNoExceptionIntoThePlugin) {
  RecordingListener listener;
  Plugin plugin(linked(), &listener);
  plugin.setTime({}, 4800);
  foreign(plugin).ask(audioMasterAutomate, 2, 0.75f);
  ASSERT_EQ(listener.automation().size(), 1U);
  const RecordingListener::Automation heard = listener.automation()[0];
  EXPECT_EQ(std::tuple(heard.frame, heard.parameter, heard.value), std::tuple(4800, 2, 0.75f));
  ThrowingListener throwing;
  EXPECT_EQ(foreign(Plugin(linked(), &throwing)).ask(audioMasterAutomate), 0);
}

TEST(EventBlock, BringsBackWhatWasPutIn) {
  const std::vector<MidiEvent> events = {
      {0, {0x90, 60, 100}}, {5, {0xC0, 3}}, {6, {}}, {7, {0xF0, 1, 2, 3, 4, 0xF7}}, {9, {0xF8}}};
  EventBlock block(events);
  const std::vector<MidiEvent> copies = {
      {1000, {0x90, 60, 100}}, {1005, {0xC0, 3}}, {1007, {0xF0, 1, 2, 3, 4, 0xF7}}, {1009, {0xF8}}};
  EXPECT_EQ(copyEvents(block.list(), 1000), copies);  // the one without bytes is gone
}

TEST(EventBlock, SurvivesBrokenLists) {
  EXPECT_TRUE(copyEvents(nullptr, 0).empty());
  VstEvents list;
  list.numEvents = -1;
  EXPECT_TRUE(copyEvents(&list, 0).empty());
  VstMidiSysexEvent empty;
  empty.dumpBytes = 10;
  list.numEvents = 2;
  list.events[1] = reinterpret_cast<VstEvent*>(&empty);
  EXPECT_TRUE(copyEvents(&list, 0).empty());
}

}  // namespace
}  // namespace modrift::host
