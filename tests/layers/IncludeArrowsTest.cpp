// Which folder may include which: the arrows of docs/architecture.md, compared with every #include of the sources.
// The compiler cannot see this, since all folders share one include path.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kEverything = "*";

// What each folder may include besides its own files; kEverything for no limit.
const std::map<std::string, std::set<std::string>> kArrows = {
    {"vst2", {}},
    {"filters", {}},
    {"model", {}},
    {"effect", {"vst2", "filters", "model"}},
    {"toolkit", {}},
    {"editor", {"toolkit", "effect", "model", "vst2"}},
    {"platform", {}},
    {"auadapter", {"vst2", "platform"}},
    {"plugin", {"vst2", "filters", "model", "effect", "toolkit", "editor", "platform", "auadapter"}},
    {"host", {"vst2"}},
    {"cli", {"host", "vst2", "model", "filters"}},
    {"presets", {"effect", "filters", "model", "vst2"}},
    {"tests", {kEverything}},
    {"bench", {kEverything}},
    {"fuzz", {kEverything}},
};

std::string firstPart(const std::string& path) { return path.substr(0, path.find('/')); }

// What is wrong with a file's includes, one sentence each; `file` is relative to the repository root.
std::vector<std::string> wrongArrows(const std::string& file, std::istream& text) {
  const auto from = kArrows.find(firstPart(file));
  if (from == kArrows.end()) return {file + ": its folder has no row in the table of arrows"};
  std::vector<std::string> faults;
  std::string line;
  for (int number = 1; std::getline(text, line); ++number) {
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
    if (!line.starts_with("#include\"") && !line.starts_with("#include<")) continue;
    constexpr std::size_t kQuote = std::string_view("#include").size();
    const std::string path = line.substr(kQuote + 1, line.find_first_of("\">", kQuote + 1) - kQuote - 1);
    const std::string target = firstPart(path);
    const bool ours = kArrows.contains(target);
    if (line[kQuote] == '<' && !ours) continue;  // ours would slip by in angle brackets
    const std::string where = file + ":" + std::to_string(number) + ": \"" + path + "\" ";
    if (!ours || path.find("..") != std::string::npos) {
      faults.push_back(where + "is not written from the repository root");
    } else if (target != from->first && !from->second.contains(target) && !from->second.contains(kEverything)) {
      faults.push_back(where + "is no allowed arrow from " + from->first + "/");
    }
  }
  return faults;
}

// All sources of the checkout, relative to its root; build folders and hidden ones are left out.
std::vector<std::string> allSources(const fs::path& root) {
  static const std::set<fs::path> endings = {".h", ".hpp", ".inc", ".c", ".cc", ".cpp", ".mm"};
  std::vector<std::string> files;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator(); ++entry) {
    const std::string name = entry->path().filename().string();
    if (entry->is_directory() && (name.starts_with('.') || name.starts_with("build"))) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file() && endings.contains(entry->path().extension())) {
      files.push_back(entry->path().lexically_relative(root).generic_string());
    }
  }
  return files;
}

TEST(IncludeArrows, AreAllAllowed) {
  const fs::path root = MODRIFT_SOURCE_ROOT;
  std::set<std::string> seen;
  for (const auto& file : allSources(root)) {
    std::ifstream text(root / file);
    ASSERT_TRUE(text.is_open()) << file;
    for (const auto& fault : wrongArrows(file, text)) ADD_FAILURE() << fault;
    seen.insert(firstPart(file));
  }
  for (const char* const folder : {"vst2", "effect", "tests"}) EXPECT_TRUE(seen.contains(folder)) << folder;
}

TEST(IncludeArrows, WrongOnesAreCaught) {
  struct Culprit {
    std::string file, line, blamed;
  };
  for (const auto& [file, line, blamed] : {
           Culprit{"filters/VFilter.cpp", "#include \"effect/LfoDSP.h\"", "no allowed arrow"},
           {"effect/LfoDSP.cpp", "  #  include \"editor/LFOGUI.h\"  // only for a moment", "no allowed arrow"},
           {"effect/LfoDSP.cpp", "#include <plugin/entry.h>", "no allowed arrow"},
           {"cli/EditCommand.cpp", "#include \"editor/LFOGUI.h\"", "no allowed arrow"},
           {"host/Module.cpp", "#include \"vst2/../effect/LfoDSP.h\"", "repository root"},
           {"host/Module.cpp", "#include \"Module.h\"", "repository root"},
           {"tools/gadget.cpp", "int gadget;", "no row"},
       }) {
    std::istringstream text("// first line\n" + line + "\nint x;\n");
    const auto faults = wrongArrows(file, text);
    ASSERT_EQ(faults.size(), 1u) << file << ": " << line;
    EXPECT_NE(faults.front().find(blamed), std::string::npos) << faults.front();
  }
}

}  // namespace
