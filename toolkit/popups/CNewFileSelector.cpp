// SPDX-License-Identifier: MIT
#include "toolkit/popups/CNewFileSelector.h"

#include "toolkit/views/CFrame.h"

namespace VSTGUI {

const IdStringPtr CNewFileSelector::kSelectEndMessage = "CNewFileSelector Select End Message";

CFileExtension::CFileExtension(const char* description, const char* extension, const char* mimeType,
                               std::int32_t macType, const char* uti)
    : description_(description), extension_(extension), mimeType_(mimeType), macType_(macType), uti_(uti) {}

CNewFileSelector* CNewFileSelector::create(CFrame* frame, Style style) {
  return frame ? new CNewFileSelector(frame, style) : nullptr;
}

CNewFileSelector::CNewFileSelector(CFrame* frame, Style style) : frame_(frame) {
  using Kind = FileSelectorRequest::Kind;
  request_.kind = style == kSelectFile ? Kind::kOpen : style == kSelectSaveFile ? Kind::kSave : Kind::kFolder;
  frame_->addGuest(this);
}

CNewFileSelector::~CNewFileSelector() {
  if (frame_) frame_->removeGuest(this);
}

void CNewFileSelector::setTitle(const char* title) { request_.title = title ? title : ""; }
void CNewFileSelector::setInitialDirectory(const char* path) { request_.initialDirectory = path ? path : ""; }
void CNewFileSelector::setDefaultSaveName(const char* name) { request_.defaultSaveName = name ? name : ""; }

void CNewFileSelector::setDefaultExtension(const CFileExtension& extension) {
  request_.extensions.insert(request_.extensions.begin(), {extension.getDescription(), extension.getExtension()});
}

void CNewFileSelector::addFileExtension(const CFileExtension& extension) {
  request_.extensions.push_back({extension.getDescription(), extension.getExtension()});
}

bool CNewFileSelector::run(CBaseObject* delegate) {
  auto* const window = frame_ ? frame_->getPlatformFrame() : nullptr;
  if (!window || running_) return false;
  selected_.clear();
  delegate_ = delegate;
  running_ = true;
  remember();
  if (window->runFileSelector(request_, this)) return true;
  running_ = false;
  forget();
  return false;
}

const char* CNewFileSelector::getSelectedFile(std::int32_t index) const {
  return index >= 0 && index < getNumSelectedFiles() ? selected_[static_cast<std::size_t>(index)].c_str() : nullptr;
}

void CNewFileSelector::fileSelectorDone(const std::vector<std::string>& paths) {
  if (!running_) return;
  running_ = false;
  selected_ = paths;
  if (delegate_) delegate_->notify(this, kSelectEndMessage);
  forget();
}

void CNewFileSelector::cancel() {
  if (!running_) return;
  running_ = false;
  if (auto* const window = frame_ ? frame_->getPlatformFrame() : nullptr) window->cancelFileSelector(this);
  forget();
}

}  // namespace VSTGUI
