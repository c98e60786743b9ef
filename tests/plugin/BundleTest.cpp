// The bundle as hosts find it: its files, what the shared object exports and needs, and the entry's manners.
#include <array>
#include <cstdio>
#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

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
  std::ifstream stream(MODRIFT_BUNDLE "/Contents/Info.plist");
  const std::string facts(std::istreambuf_iterator<char>(stream), {});
  EXPECT_NE(facts.find("<string>" MODRIFT_VERSION "</string>"), std::string::npos);
  EXPECT_EQ(facts.find('@'), std::string::npos) << "a place-holder was left";
}

VstIntPtr VSTCALLBACK ancientHost(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) { return 0; }
VstIntPtr VSTCALLBACK presentHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  return opcode == audioMasterVersion ? kVstVersion : 0;
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
