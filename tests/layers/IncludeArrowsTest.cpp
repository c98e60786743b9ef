// Which folder may include which: the arrows of docs/architecture.md, compared with every #include of the sources.
// The compiler cannot see this, since all folders share one include path.

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEverything = "*";

struct Folder {
  std::string_view name;
  std::vector<std::string_view> mayInclude;  // besides its own files; kEverything for no limit
};

// In the order in which audio and edits flow; an arrow points at rows above it only.
const std::vector<Folder>& folders() {
  static const std::vector<Folder> table = {
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
      {"cli", {"host", "vst2", "model"}},
      {"presets", {"effect", "model", "vst2"}},
      {"tests", {kEverything}},
      {"bench", {kEverything}},
      {"fuzz", {kEverything}},
  };
  return table;
}

const Folder* findFolder(std::string_view name) {
  const auto row = std::ranges::find(folders(), name, &Folder::name);
  return row == folders().end() ? nullptr : &*row;
}

std::string firstPart(const std::string& path) { return path.substr(0, path.find('/')); }

std::string_view withoutBlanksBefore(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

// The path in an #include line, if the line is one and the path may be ours: quoted ones, and those in angle brackets
// that begin with a folder of ours (written so, they would slip by).
std::optional<std::string> ourInclude(std::string_view line) {
  line = withoutBlanksBefore(line);
  if (!line.starts_with('#')) return std::nullopt;
  line = withoutBlanksBefore(line.substr(1));
  constexpr std::string_view kInclude = "include";
  if (!line.starts_with(kInclude)) return std::nullopt;
  line = withoutBlanksBefore(line.substr(kInclude.size()));
  const bool quoted = line.starts_with('"');
  if (!quoted && !line.starts_with('<')) return std::nullopt;
  line.remove_prefix(1);
  const std::string path(line.substr(0, line.find(quoted ? '"' : '>')));
  if (!quoted && findFolder(firstPart(path)) == nullptr) return std::nullopt;
  return path;
}

// What is wrong with a file's includes, one sentence each; `file` is relative to the repository root.
std::vector<std::string> wrongArrows(const std::string& file, std::istream& text) {
  std::vector<std::string> faults;
  const Folder* from = findFolder(firstPart(file));
  if (from == nullptr) return {file + ": its folder has no row in the table of arrows"};
  std::string line;
  for (int number = 1; std::getline(text, line); ++number) {
    const auto path = ourInclude(line);
    if (!path) continue;
    const std::string target = firstPart(*path);
    const std::string where = file + ":" + std::to_string(number) + ": \"" + *path + "\" ";
    if (findFolder(target) == nullptr || path->find("..") != std::string::npos) {
      faults.push_back(where + "is not written from the repository root");
    } else if (target != from->name && std::ranges::find(from->mayInclude, target) == from->mayInclude.end() &&
               std::ranges::find(from->mayInclude, kEverything) == from->mayInclude.end()) {
      faults.push_back(where + "is no allowed arrow from " + std::string(from->name) + "/");
    }
  }
  return faults;
}

std::vector<std::string> wrongArrowsIn(const std::string& file, const std::string& text) {
  std::istringstream stream(text);
  return wrongArrows(file, stream);
}

bool isSource(const fs::path& path) {
  static const std::set<fs::path> endings = {".h", ".hpp", ".inc", ".c", ".cc", ".cpp", ".mm"};
  return endings.contains(path.extension());
}

// All sources of the checkout, relative to its root; build folders and hidden ones are left out.
std::vector<std::string> allSources(const fs::path& root) {
  std::vector<std::string> files;
  for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator(); ++entry) {
    const std::string name = entry->path().filename().string();
    if (entry->is_directory() && (name.starts_with('.') || name.starts_with("build"))) {
      entry.disable_recursion_pending();
    } else if (entry->is_regular_file() && isSource(entry->path())) {
      files.push_back(entry->path().lexically_relative(root).generic_string());
    }
  }
  return files;
}

TEST(IncludeArrows, AreAllAllowed) {
  const fs::path root = MODRIFT_SOURCE_ROOT;
  const auto files = allSources(root);
  for (const std::string_view expected : {"vst2", "effect", "tests"}) {
    EXPECT_TRUE(std::ranges::any_of(files, [&](const std::string& file) { return firstPart(file) == expected; }))
        << "no source found in " << expected << "/ below " << root;
  }
  for (const auto& file : files) {
    std::ifstream text(root / file);
    ASSERT_TRUE(text.is_open()) << file;
    for (const auto& fault : wrongArrows(file, text)) ADD_FAILURE() << fault;
  }
}

TEST(IncludeArrows, PointUpTheTableOnly) {
  std::set<std::string_view> above;
  for (const auto& folder : folders()) {
    for (const auto target : folder.mayInclude) {
      EXPECT_TRUE(target == kEverything || above.contains(target)) << folder.name << " -> " << target;
    }
    above.insert(folder.name);
  }
}

TEST(IncludeArrows, WrongOnesAreCaught) {
  struct Culprit {
    std::string file, line, blamed;
  };
  const auto culprits = std::to_array<Culprit>({
      {"filters/VFilter.cpp", "#include \"effect/LfoDSP.h\"", "no allowed arrow"},
      {"effect/LfoDSP.cpp", "  #  include \"editor/LFOGUI.h\"  // only for a moment", "no allowed arrow"},
      {"effect/LfoDSP.cpp", "#include <plugin/entry.h>", "no allowed arrow"},
      {"cli/main.cpp", "#include \"effect/LfoDSP.h\"", "no allowed arrow"},
      {"host/Module.cpp", "#include \"../vst2/aeffect.h\"", "repository root"},
      {"host/Module.cpp", "#include \"vst2/../effect/LfoDSP.h\"", "repository root"},
      {"host/Module.cpp", "#include \"Module.h\"", "repository root"},
      {"tools/gadget.cpp", "int gadget;", "no row"},
  });
  for (const auto& culprit : culprits) {
    const auto faults = wrongArrowsIn(culprit.file, "// first line\n" + culprit.line + "\nint x;\n");
    ASSERT_EQ(faults.size(), 1u) << culprit.file << ": " << culprit.line;
    EXPECT_NE(faults.front().find(culprit.blamed), std::string::npos) << faults.front();
  }
}

TEST(IncludeArrows, AllowedOnesPass) {
  const std::string text =
      "#include <vector>\n#include \"effect/LfoDSP.h\"\n#include \"vst2/aeffect.h\"\n#include \"filters/VFilter.h\"\n";
  EXPECT_EQ(wrongArrowsIn("effect/LfoDSP.cpp", text), std::vector<std::string>{});
  EXPECT_EQ(wrongArrowsIn("tests/effect/ClockTest.cpp", text), std::vector<std::string>{});
}

}  // namespace
