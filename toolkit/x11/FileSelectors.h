// SPDX-License-Identifier: MIT
// How the user chooses files: the desktop's own dialog where there is one, else one of ours. [ui]
//
// Asked in this order: the desktop portal over D-Bus; `zenity` or `kdialog` as a child process; a browser drawn by the
// toolkit. libdbus is the one library that this takes: small, without a main loop or threads of its own, and installed
// wherever a portal could be. A child process for the portal's answer would have to stay on the bus until the answer,
// which the usual command-line tools don't do in one call.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/base/PlatformFrame.h"
#include "toolkit/x11/Connection.h"

namespace VSTGUI::X11 {

// One running selection; the destructor closes its window. `poll` never waits for the user.
class FileSelector {
 public:
  enum class State { kRunning, kDone, kUnavailable };
  FileSelector() = default;
  FileSelector(const FileSelector&) = delete;
  FileSelector& operator=(const FileSelector&) = delete;
  virtual ~FileSelector() = default;
  virtual State poll() = 0;
  // Once done; empty when the user cancelled.
  [[nodiscard]] const std::vector<std::string>& paths() const { return paths_; }

 protected:
  std::vector<std::string> paths_;
};

// `owner` is the window that the dialog should stand before.
[[nodiscard]] std::unique_ptr<FileSelector> portalSelector(const FileSelectorRequest& request, xcb_window_t owner);
[[nodiscard]] std::unique_ptr<FileSelector> programSelector(const FileSelectorRequest& request, xcb_window_t owner);
// Null without a display.
[[nodiscard]] std::unique_ptr<FileSelector> browserSelector(const FileSelectorRequest& request, xcb_window_t owner,
                                                            PlatformType platform);

// The names of an extension's files as dialogs take it: "*.fxp", or "*" for all.
[[nodiscard]] std::string patternOf(const FileSelectorRequest::Extension& extension);
// The arguments, the program first, that make a dialog program ask for `request`.
[[nodiscard]] std::vector<std::string> zenityArguments(const FileSelectorRequest& request, xcb_window_t owner);
[[nodiscard]] std::vector<std::string> kdialogArguments(const FileSelectorRequest& request, xcb_window_t owner);

}  // namespace VSTGUI::X11
