// SPDX-License-Identifier: MIT
// A file selector drawn by the toolkit, for systems that have none of their own. [ui]
//
//   FileBrowser browser(request);
//   if (!browser.open(window, type)) ...    // a window of FileBrowser::size() units
//   if (browser.isDone()) use(browser.getPaths());   // asked now and then; its own timer keeps it going
//
// Folders come first, then the files that have one of the request's extensions; hidden ones are left out.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "toolkit/base/CVSTGUITimer.h"
#include "toolkit/popups/FolderListing.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

class ItemList;
class NameField;
class TextButton;
class TextLine;

class FileBrowser : private CBaseObject {
 public:
  explicit FileBrowser(FileSelectorRequest request);
  FileBrowser(const FileBrowser&) = delete;
  FileBrowser& operator=(const FileBrowser&) = delete;
  ~FileBrowser() override;

  [[nodiscard]] static CRect size() { return {0, 0, 560, 400}; }
  // False without a display, or when there is no window `parent`.
  bool open(void* parent, PlatformType platform);
  [[nodiscard]] bool isDone() const { return done_ || !frame_->isOpen(); }
  // Empty when the user cancelled.
  [[nodiscard]] const std::vector<std::string>& getPaths() const { return paths_; }

 private:
  CMessageResult notify(CBaseObject* sender, IdStringPtr message) override;
  void addViews();
  void enter(const std::filesystem::path& folder);
  void activate(std::size_t entry);
  void selectionChanged();
  void accept();
  void acceptName();
  void finish(std::vector<std::string> paths);
  // Keys while the list has the focus, and those that all parts share; true when they were of use.
  bool listKey(const VstKeyCode& key);
  bool dialogKey(const VstKeyCode& key);

  FileSelectorRequest request_;
  std::filesystem::path folder_;
  std::vector<FolderEntry> entries_;  // of the folder, as the list shows them
  std::filesystem::path confirmed_;   // the file that the user was told would be replaced
  std::vector<std::string> paths_;
  bool done_ = false;
  Counted<CFrame> frame_;
  ItemList* list_ = nullptr;  // these belong to the frame
  NameField* name_ = nullptr;
  TextButton* ok_ = nullptr;
  TextLine* place_ = nullptr;
  TextLine* hint_ = nullptr;
  Counted<CVSTGUITimer> timer_;
};

}  // namespace VSTGUI
