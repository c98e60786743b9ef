// The bundle as hosts find it: its files, what the shared object exports and needs, and the entry's manners.
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <link.h>
#include <set>
#include <string>
#include <vector>

#include "vst2/aeffect.h"

namespace {

// The dynamic section of a 64-bit ELF file, read from the file itself.
class SharedObject {
 public:
  explicit SharedObject(const char* file) {
    std::ifstream stream(file, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(stream), {});
    const auto header = read<Elf64_Ehdr>(0);
    for (int i = 0; i < header.e_shnum; ++i) {
      const auto section = read<Elf64_Shdr>(header.e_shoff + static_cast<std::size_t>(i) * sizeof(Elf64_Shdr));
      if (section.sh_type == SHT_DYNSYM) symbols_ = section;
      if (section.sh_type == SHT_DYNAMIC) dynamic_ = section;
    }
    const auto strings = read<Elf64_Shdr>(header.e_shoff + symbols_.sh_link * sizeof(Elf64_Shdr));
    strings_ = strings.sh_offset;
  }

  std::set<std::string> exported() const {
    std::set<std::string> names;
    for (std::size_t at = 0; at < symbols_.sh_size; at += sizeof(Elf64_Sym)) {
      const auto symbol = read<Elf64_Sym>(symbols_.sh_offset + at);
      if (symbol.st_shndx != SHN_UNDEF && symbol.st_shndx != SHN_ABS) names.insert(text(symbol.st_name));
    }
    return names;
  }

  std::set<std::string> needed() const {
    std::set<std::string> names;
    for (std::size_t at = 0; at < dynamic_.sh_size; at += sizeof(Elf64_Dyn)) {
      const auto entry = read<Elf64_Dyn>(dynamic_.sh_offset + at);
      if (entry.d_tag == DT_NEEDED) names.insert(text(entry.d_un.d_val));
    }
    return names;
  }

 private:
  template <class Record>
  Record read(std::size_t at) const {
    Record record;
    std::memcpy(&record, &bytes_.at(at + sizeof record - 1) - (sizeof record - 1), sizeof record);
    return record;
  }
  std::string text(std::size_t at) const { return &bytes_.at(strings_ + at); }

  std::vector<char> bytes_;
  Elf64_Shdr symbols_{}, dynamic_{};
  std::size_t strings_ = 0;
};

TEST(Bundle, ExportsItsEntryAndNothingElse) {
  EXPECT_EQ(SharedObject(MODRIFT_PLUGIN).exported(), std::set<std::string>{"VSTPluginMain"});
}

TEST(Bundle, BringsNoToolkitIntoTheHostsProcess) {
  for (const std::string& library : SharedObject(MODRIFT_PLUGIN).needed())
    for (const char* const unwanted : {"gtk", "Qt", "boost", "gdk"})
      EXPECT_EQ(library.find(unwanted), std::string::npos) << library;
}

TEST(Bundle, SaysItsVersionInItsFacts) {
  std::ifstream stream(MODRIFT_BUNDLE "/Contents/Info.plist");
  const std::string facts(std::istreambuf_iterator<char>(stream), {});
  EXPECT_NE(facts.find("<string>" MODRIFT_VERSION "</string>"), std::string::npos);
  EXPECT_EQ(facts.find('@'), std::string::npos) << "a place-holder was left";
}

class Entry : public testing::Test {
 protected:
  using Function = AEffect* (*)(audioMasterCallback);
  void SetUp() override {
    module_ = dlopen(MODRIFT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module_, nullptr) << dlerror();
    entry = reinterpret_cast<Function>(dlsym(module_, "VSTPluginMain"));
    ASSERT_NE(entry, nullptr);
  }
  void TearDown() override { dlclose(module_); }
  Function entry = nullptr;

 private:
  void* module_ = nullptr;
};

VstIntPtr VSTCALLBACK ancientHost(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) { return 0; }
VstIntPtr VSTCALLBACK presentHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
  return opcode == audioMasterVersion ? kVstVersion : 0;
}

TEST_F(Entry, RefusesAHostThatSaysNoVersion) {
  EXPECT_EQ(entry(ancientHost), nullptr);
  EXPECT_EQ(entry(nullptr), nullptr);
}

TEST_F(Entry, MakesAnEffectThatPlaysBeforeItIsEverResumed) {
  AEffect* const effect = entry(presentHost);
  ASSERT_NE(effect, nullptr);
  EXPECT_EQ(effect->magic, kEffectMagic);
  float left[4] = {1, 1, 1, 1}, right[4] = {1, 1, 1, 1};
  float* channels[] = {left, right};
  effect->processReplacing(effect, channels, channels, 4);
  EXPECT_FLOAT_EQ(left[3], 1.0003273f);
  effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

}  // namespace
