// SPDX-License-Identifier: MIT
// A dialog program as a child process, whose output is read when something has come.

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include "toolkit/x11/FileSelectors.h"

namespace VSTGUI::X11 {

namespace {

namespace fs = std::filesystem;
using Kind = FileSelectorRequest::Kind;

constexpr std::size_t kMaxOutput = 1u << 20;
constexpr char kSeparator = '\n';

// The program's file in one of the folders of PATH; empty if there is none.
std::string findProgram(std::string_view name) {
  const char* const value = std::getenv("PATH");
  std::string_view folders = value ? value : "/usr/local/bin:/usr/bin:/bin";
  while (!folders.empty()) {
    const std::size_t end = std::min(folders.find(':'), folders.size());
    const fs::path file = fs::path(folders.substr(0, end)) / name;
    if (end > 0 && ::access(file.c_str(), X_OK) == 0) return file.string();
    folders.remove_prefix(std::min(end + 1, folders.size()));
  }
  return {};
}

// Where the dialog begins: a folder ends with a slash, so that it isn't taken for a file.
std::string startOf(const FileSelectorRequest& request) {
  std::string start = request.initialDirectory;
  if (start.empty() && request.defaultSaveName.empty()) return {};
  if (!start.empty() && !start.ends_with('/')) start += '/';
  return start + (request.kind == Kind::kSave ? request.defaultSaveName : "");
}

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(kSeparator), text.size());
    if (end > 0) lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// Reads what a child prints. The host may have told the system to forget its children, so the end of the output counts,
// and not what can be learned about the process.
class ProgramSelector : public FileSelector {
 public:
  explicit ProgramSelector(std::vector<std::string> arguments) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    output_ = ends[0];
    ::fcntl(output_, F_SETFL, O_NONBLOCK);
    spawn(arguments, ends[1]);
    ::close(ends[1]);
  }
  ProgramSelector(const ProgramSelector&) = delete;
  ProgramSelector& operator=(const ProgramSelector&) = delete;
  ~ProgramSelector() override {
    if (output_ >= 0) ::close(output_);
    if (child_ <= 0) return;
    // While it can be waited for, the number is still its own.
    if (::waitpid(child_, nullptr, WNOHANG) != 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }

  State poll() override {
    if (child_ <= 0) return State::kUnavailable;
    std::array<char, 4096> piece{};
    for (;;) {
      const ssize_t count = ::read(output_, piece.data(), piece.size());
      if (count > 0 && text_.size() < kMaxOutput) text_.append(piece.data(), static_cast<std::size_t>(count));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return errno == EAGAIN ? State::kRunning : State::kUnavailable;
      if (count == 0) break;
    }
    return finish();
  }

 private:
  void spawn(std::vector<std::string>& arguments, int output) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);  // toolkits are chatty
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    if (::posix_spawn(&child_, argv[0], &actions, &attributes, argv.data(), environ) != 0) child_ = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
  }

  // 0 stands for a choice and 1 for none; anything else is a program that couldn't show its dialog.
  State finish() {
    int status = 0;
    const pid_t found = ::waitpid(child_, &status, WNOHANG);
    if (found == 0) return State::kRunning;  // it has closed its output and is about to end
    child_ = -1;
    const bool known = found > 0;
    if (known && (!WIFEXITED(status) || WEXITSTATUS(status) > 1)) return State::kUnavailable;
    if (!known || WEXITSTATUS(status) == 0) paths_ = linesOf(text_);
    std::erase_if(paths_, [](const std::string& path) { return !path.starts_with('/'); });
    return State::kDone;
  }

  pid_t child_ = -1;
  int output_ = -1;
  std::string text_;
};

}  // namespace

std::string patternOf(const FileSelectorRequest::Extension& extension) {
  return extension.extension.empty() ? "*" : "*." + extension.extension;
}

std::vector<std::string> zenityArguments(const FileSelectorRequest& request, xcb_window_t owner) {
  std::vector<std::string> arguments{"zenity", "--file-selection", "--separator=" + std::string(1, kSeparator)};
  if (owner != kNoWindow) arguments.push_back("--attach=" + std::to_string(owner));
  if (!request.title.empty()) arguments.push_back("--title=" + request.title);
  if (const std::string start = startOf(request); !start.empty()) arguments.push_back("--filename=" + start);
  if (request.kind == Kind::kFolder) arguments.emplace_back("--directory");
  if (request.kind == Kind::kSave) arguments.insert(arguments.end(), {"--save", "--confirm-overwrite"});
  if (request.allowsMultiple && request.kind == Kind::kOpen) arguments.emplace_back("--multiple");
  if (request.kind != Kind::kFolder)
    for (const auto& extension : request.extensions)
      arguments.push_back("--file-filter=" + extension.description + " | " + patternOf(extension));
  return arguments;
}

std::vector<std::string> kdialogArguments(const FileSelectorRequest& request, xcb_window_t owner) {
  std::vector<std::string> arguments{"kdialog"};
  if (owner != kNoWindow) arguments.push_back("--attach=" + std::to_string(owner));
  if (!request.title.empty()) arguments.insert(arguments.end(), {"--title", request.title});
  if (request.allowsMultiple && request.kind == Kind::kOpen)
    arguments.insert(arguments.end(), {"--multiple", "--separate-output"});
  arguments.emplace_back(request.kind == Kind::kFolder ? "--getexistingdirectory"
                         : request.kind == Kind::kSave ? "--getsavefilename"
                                                       : "--getopenfilename");
  const std::string start = startOf(request);
  arguments.push_back(start.empty() ? "." : start);
  std::string filter;
  if (request.kind != Kind::kFolder)
    for (const auto& extension : request.extensions)
      filter += (filter.empty() ? "" : "\n") + extension.description + " (" + patternOf(extension) + ")";
  if (!filter.empty()) arguments.push_back(filter);
  return arguments;
}

std::unique_ptr<FileSelector> programSelector(const FileSelectorRequest& request, xcb_window_t owner) {
  for (auto* const argumentsOf : {&zenityArguments, &kdialogArguments}) {
    std::vector<std::string> arguments = argumentsOf(request, owner);
    std::string program = findProgram(arguments.front());
    if (program.empty()) continue;
    arguments.front() = std::move(program);
    return std::make_unique<ProgramSelector>(std::move(arguments));
  }
  return nullptr;
}

}  // namespace VSTGUI::X11
