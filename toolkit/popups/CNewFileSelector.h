// SPDX-License-Identifier: MIT
// Lets the user choose a file. [ui]
#pragma once

#include <string>
#include <vector>

#include "toolkit/base/CBaseObject.h"
#include "toolkit/base/PlatformFrame.h"
#include "toolkit/views/FramePopup.h"

namespace VSTGUI {

class CFrame;

class CFileExtension {
 public:
  // "Preset", "fxp" (without a dot); the other three name the same type in other systems.
  CFileExtension(const char* description, const char* extension, const char* mimeType = "", std::int32_t macType = 0,
                 const char* uti = "");
  [[nodiscard]] const char* getDescription() const { return description_.c_str(); }
  [[nodiscard]] const char* getExtension() const { return extension_.c_str(); }
  [[nodiscard]] const char* getMimeType() const { return mimeType_.c_str(); }
  [[nodiscard]] std::int32_t getMacType() const { return macType_; }
  [[nodiscard]] const char* getUTI() const { return uti_.c_str(); }

 private:
  std::string description_;
  std::string extension_;
  std::string mimeType_;
  std::int32_t macType_;
  std::string uti_;
};

// `run` returns at once and keeps the selector alive; when the user is done it calls
// `delegate->notify(selector, kSelectEndMessage)`, with no selected file if they cancelled. A frame that closes first
// ends the selection silently, so a delegate that closes its frame before it goes is safe.
class CNewFileSelector : public CBaseObject, private IFileSelectorCallback, private FrameGuest {
 public:
  enum Style : std::int32_t { kSelectFile = 0, kSelectSaveFile = 1, kSelectDirectory = 2 };
  static const IdStringPtr kSelectEndMessage;

  // Null without a frame. The caller owns the result.
  [[nodiscard]] static CNewFileSelector* create(CFrame* frame, Style style = kSelectFile);
  ~CNewFileSelector() override;
  CNewFileSelector(const CNewFileSelector&) = delete;
  CNewFileSelector& operator=(const CNewFileSelector&) = delete;

  void setTitle(const char* title);
  void setInitialDirectory(const char* path);
  void setDefaultSaveName(const char* name);
  void setDefaultExtension(const CFileExtension& extension);
  void addFileExtension(const CFileExtension& extension);
  void setAllowMultiFileSelection(bool allow) { request_.allowsMultiple = allow; }

  // False without a window or a selector on this machine.
  bool run(CBaseObject* delegate);
  [[nodiscard]] std::int32_t getNumSelectedFiles() const { return static_cast<std::int32_t>(selected_.size()); }
  // UTF-8, as the file system has it; null outside of the selection.
  [[nodiscard]] const char* getSelectedFile(std::int32_t index) const;
  // Ends a running selection without telling anybody.
  void cancel();

  VSTGUI_CLASS(CNewFileSelector, CBaseObject)

 private:
  CNewFileSelector(CFrame* frame, Style style);
  void fileSelectorDone(const std::vector<std::string>& paths) override;
  void frameCloses() override { cancel(); }
  void frameGoes() override { frame_ = nullptr; }

  CFrame* frame_;
  CBaseObject* delegate_ = nullptr;
  FileSelectorRequest request_;
  std::vector<std::string> selected_;
  bool running_ = false;
};

}  // namespace VSTGUI
