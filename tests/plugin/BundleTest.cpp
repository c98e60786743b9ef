// SPDX-License-Identifier: MIT
// The bundle as hosts find it: its files, what the shared object exports and needs, and the entry's manners.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "model/PrivateCalls.h"
#include "tests/TemporaryFolder.h"
#include "vst2/aeffect.h"

namespace {

std::string outputOf(const char* command) {
  FILE* const pipe = popen(command, "r");
  std::string text;
  std::array<char, 256> part{};
  while (pipe && std::fgets(part.data(), part.size(), pipe)) text += part.data();
  EXPECT_TRUE(pipe && pclose(pipe) == 0) << command;
  return text;
}

TEST(Bundle, ExportsItsEntryAndNothingElse) {
  EXPECT_EQ(outputOf(MODRIFT_NM " --dynamic --defined-only --format=just-symbols '" MODRIFT_PLUGIN "'"),
            "VSTPluginMain\n");
}

TEST(Bundle, BringsNoToolkitIntoTheHostsProcess) {
  const std::string libraries = outputOf(MODRIFT_READELF " --dynamic '" MODRIFT_PLUGIN "' | grep NEEDED");
  EXPECT_NE(libraries.find("libc.so"), std::string::npos);
  for (const char* const unwanted : {"gtk", "Qt", "boost", "gdk"})
    EXPECT_EQ(libraries.find(unwanted), std::string::npos) << libraries;
}

TEST(Bundle, SaysItsVersionInItsFacts) {
  const std::string facts = readText(MODRIFT_BUNDLE "/Contents/Info.plist");
  EXPECT_NE(facts.find("<string>" MODRIFT_VERSION "</string>"), std::string::npos);
  EXPECT_EQ(facts.find('@'), std::string::npos) << "a place-holder was left";
}

VstIntPtr VSTCALLBACK ancientHost(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) { return 0; }
VstIntPtr VSTCALLBACK presentHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  return opcode == audioMasterVersion ? kVstVersion : 0;
}

// A PNG file tells its size in big-endian numbers behind its head.
std::pair<int, int> pngSize(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::array<unsigned char, 24> head{};
  stream.read(reinterpret_cast<char*>(head.data()), head.size());
  EXPECT_EQ(std::memcmp(head.data() + 1, "PNG", 3), 0) << path;
  return {head[18] << 8 | head[19], head[22] << 8 | head[23]};
}

TEST(Editor, IsToldToHostsAndDrawnWithoutADisplayAlsoByAModuleThatWasLoadedBefore) {
  unsetenv("DISPLAY");  // NOLINT(concurrency-mt-unsafe): one thread
  std::string path = testing::TempDir() + "modrift-editor.png";
  for (int loads = 0; loads < 3; ++loads) {
    void* const module = dlopen(MODRIFT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    AEffect* const effect =
        reinterpret_cast<AEffect* (*)(audioMasterCallback)>(dlsym(module, "VSTPluginMain"))(presentHost);
    ASSERT_NE(effect, nullptr);
    const auto call = [&](VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr) {
      return effect->dispatcher(effect, opcode, index, value, ptr, 0.0f);
    };
    EXPECT_TRUE(effect->flags & effFlagsHasEditor);
    EXPECT_EQ(call(effVendorSpecific, model::kCallDrawEditor, 900 << 16 | 500, path.data()), 1);
    EXPECT_EQ(pngSize(path), std::pair(900, 500));
    EXPECT_EQ(call(effVendorSpecific, model::kCallDrawEditor, 0, path.data()), 1);
    EXPECT_EQ(pngSize(path), std::pair(708, 343)) << "the state's own size is as before";
    EXPECT_EQ(call(effVendorSpecific, model::kCallDrawEditor, 0, nullptr), 0);
    std::string nowhere = path + "/none.png";
    EXPECT_EQ(call(effVendorSpecific, model::kCallDrawEditor, 0, nowhere.data()), 0);
    ERect* rect = nullptr;
    EXPECT_EQ(call(effEditGetRect, 0, 0, &rect), 1);
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(std::pair(rect->right - rect->left, rect->bottom - rect->top), std::pair(708, 343));
    EXPECT_EQ(call(effEditOpen, 0, 0, nullptr), 0) << "there is no display";
    call(effEditIdle, 0, 0, nullptr);
    call(effEditClose, 0, 0, nullptr);
    call(effClose, 0, 0, nullptr);
    dlclose(module);
  }
  std::filesystem::remove(path);
}

TEST(Entry, RefusesAHostWithoutAVersionAndElseMakesAnEffectThatPlaysBeforeItIsResumed) {
  void* const module = dlopen(MODRIFT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  const auto entry = reinterpret_cast<AEffect* (*)(audioMasterCallback)>(dlsym(module, "VSTPluginMain"));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry(ancientHost), nullptr);
  EXPECT_EQ(entry(nullptr), nullptr);
  AEffect* const effect = entry(presentHost);
  ASSERT_NE(effect, nullptr);
  EXPECT_EQ(effect->magic, kEffectMagic);
  float left[4] = {1, 1, 1, 1}, right[4] = {1, 1, 1, 1};
  float* channels[] = {left, right};
  effect->processReplacing(effect, channels, channels, 4);
  EXPECT_FLOAT_EQ(left[3], 1.0003273f);
  effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
  dlclose(module);
}

}  // namespace
