// SPDX-License-Identifier: MIT
// Which folder may include which: the arrows of docs/architecture.md, compared with every #include of the sources.
// The compiler cannot see this, since all folders share one include path.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kEverything = "*";

struct Row {
  std::string room;                     // a folder, or a room inside of one
  std::vector<std::string> mayInclude;  // a folder stands for all of its rooms; kEverything for no limit
};

// The house from the ground up: a row names only rooms that stand above it in the table, so there is no way in a
// circle.
const std::vector<Row> kRooms = {
    {"vst2", {}},
    {"filters", {}},
    {"threads", {}},
    {"model", {}},
    {"messages", {}},
    {"effect", {"vst2", "filters", "threads", "messages", "model"}},
    {"toolkit/base", {}},
    {"toolkit/drawing", {"toolkit/base"}},
    {"toolkit/views", {"threads", "toolkit/base", "toolkit/drawing"}},
    {"toolkit/controls", {"threads", "toolkit/base", "toolkit/drawing", "toolkit/views"}},
    {"toolkit/popups", {"toolkit/base", "toolkit/drawing", "toolkit/views", "toolkit/controls"}},
    {"toolkit/headless", {"toolkit/base", "toolkit/drawing"}},
    {"toolkit/x11", {"toolkit/base", "toolkit/drawing", "toolkit/popups"}},
    {"editor/graph", {"toolkit", "effect", "threads", "model"}},
    {"editor/controls", {"toolkit"}},
    {"editor/panel", {"toolkit", "model", "messages", "editor/controls"}},
    {"editor/dialogs", {"toolkit", "model", "editor/controls", "editor/panel"}},
    {"editor/browser", {"toolkit", "model", "editor/dialogs"}},
    {"editor/shell",
     {"vst2", "toolkit", "effect", "threads", "model", "messages", "editor/graph", "editor/controls", "editor/panel",
      "editor/dialogs", "editor/browser"}},
    {"platform", {}},
    {"auadapter", {"vst2", "threads", "platform"}},
    {"plugin", {"vst2", "filters", "threads", "model", "effect", "toolkit", "editor", "platform", "auadapter"}},
    {"host", {"vst2", "platform"}},
    {"devices", {"host"}},
    {"formats", {"vst2", "host", "devices"}},
    {"cli/terminal", {}},
    {"cli/values", {"host", "model", "vst2", "cli/terminal"}},
    {"cli/files", {"host", "model", "vst2", "cli/terminal", "cli/values"}},
    {"cli/pictures", {"host", "model", "filters", "cli/terminal", "cli/values"}},
    {"cli/commands",
     {"host", "devices", "model", "vst2", "filters", "cli/terminal", "cli/values", "cli/files", "cli/pictures"}},
    {"cli", {"cli/terminal", "cli/commands"}},
    {"presets", {"effect", "filters", "threads", "model", "vst2"}},
    {"example", {}},
    {"tests", {kEverything}},
    {"bench", {kEverything}},
    {"fuzz", {kEverything}},
};

bool liesIn(const std::string& path, const std::string& room) { return path.starts_with(room + "/"); }

// The row of the innermost room that holds the file; null for none.
const Row* roomOf(const std::string& path) {
  const Row* innermost = nullptr;
  for (const Row& row : kRooms)
    if (liesIn(path, row.room) && (!innermost || row.room.size() > innermost->room.size())) innermost = &row;
  return innermost;
}

bool mayInclude(const Row& from, const Row& target) {
  const auto allows = [&](const std::string& room) {
    return room == kEverything || room == target.room || liesIn(target.room, room);
  };
  return target.room == from.room || std::any_of(from.mayInclude.begin(), from.mayInclude.end(), allows);
}

// What is wrong with a file's includes, one sentence each; `file` is relative to the repository root.
std::vector<std::string> wrongArrows(const std::string& file, std::istream& text) {
  const Row* const from = roomOf(file);
  if (!from) return {file + ": its folder has no row in the table of rooms"};
  std::vector<std::string> faults;
  std::string line;
  for (int number = 1; std::getline(text, line); ++number) {
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
    if (!line.starts_with("#include\"") && !line.starts_with("#include<")) continue;
    constexpr std::size_t kQuote = std::string_view("#include").size();
    const std::string path = line.substr(kQuote + 1, line.find_first_of("\">", kQuote + 1) - kQuote - 1);
    const Row* const target = roomOf(path);
    if (line[kQuote] == '<' && !target) continue;  // ours would slip by in angle brackets
    const std::string where = file + ":" + std::to_string(number) + ": \"" + path + "\" ";
    if (!target || path.find("..") != std::string::npos) {
      faults.push_back(where + "is not written from the repository root");
    } else if (!mayInclude(*from, *target)) {
      faults.push_back(where + "is no allowed arrow from " + from->room + "/");
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
    if (const Row* const room = roomOf(file)) seen.insert(room->room);
  }
  for (const char* const room : {"vst2", "toolkit/views", "cli", "tests"}) EXPECT_TRUE(seen.contains(room)) << room;
}

TEST(IncludeArrows, RunDownwardOnly) {
  std::set<std::string> above;
  for (const auto& [room, mayInclude] : kRooms) {
    for (const std::string& target : mayInclude) {
      const auto isTarget = [&](const std::string& r) { return r == target || liesIn(r, target); };
      EXPECT_TRUE(target == kEverything || std::any_of(above.begin(), above.end(), isTarget))
          << room << " names " << target << ", which does not stand above it";
    }
    above.insert(room);
  }
}

TEST(IncludeArrows, WrongOnesAreCaught) {
  struct Culprit {
    std::string file, line, blamed;
  };
  for (const auto& [file, line, blamed] : {
           Culprit{"filters/VFilter.cpp", "#include \"effect/LfoDSP.h\"", "no allowed arrow"},
           {"effect/LfoDSP.cpp", "  #  include \"editor/shell/LFOGUI.h\"  // only for a moment", "no allowed arrow"},
           {"effect/LfoDSP.cpp", "#include <plugin/entry.h>", "no allowed arrow"},
           {"cli/commands/EditCommand.cpp", "#include \"editor/shell/LFOGUI.h\"", "no allowed arrow"},
           {"toolkit/views/CView.cpp", "#include \"toolkit/popups/COptionMenu.h\"", "no allowed arrow"},
           {"cli/values/Numbers.cpp", "#include \"cli/commands/Settings.h\"", "no allowed arrow"},
           {"toolkit/Gadget.cpp", "int gadget;", "no row"},
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
