// SPDX-License-Identifier: MIT
#include "toolkit/popups/FileBrowser.h"

#include "toolkit/base/Utf8.h"
#include "toolkit/controls/ItemList.h"
#include "toolkit/controls/NameField.h"
#include "toolkit/controls/TextButton.h"
#include "toolkit/controls/TextLine.h"
#include "toolkit/drawing/Theme.h"

namespace VSTGUI {

namespace fs = std::filesystem;

namespace {

using namespace Theme;
using Kind = FileSelectorRequest::Kind;

// Sizes in units.
constexpr double kMargin = 12;
constexpr double kLineHeight = 22;
constexpr double kButtonWidth = 90;
constexpr std::uint32_t kIdleMs = 30;

FolderFilter filterOf(const FileSelectorRequest& request) {
  FolderFilter filter;
  filter.foldersOnly = request.kind == Kind::kFolder;
  for (const auto& [description, extension] : request.extensions) filter.extensions.push_back(extension);
  return filter;
}

fs::path startFolder(const FileSelectorRequest& request) {
  std::error_code error;
  const char* const home = std::getenv("HOME");
  for (const fs::path& folder : {fs::path(request.initialDirectory), fs::path(home ? home : "")})
    if (folder.is_absolute() && fs::is_directory(folder, error)) return folder.lexically_normal();
  return "/";
}

}  // namespace

FileBrowser::FileBrowser(FileSelectorRequest request)
    : request_(std::move(request)),
      frame_(Counted<CFrame>::adopt(new CFrame(size(), nullptr))),
      timer_(Counted<CVSTGUITimer>::adopt(new CVSTGUITimer(this, kIdleMs))) {
  frame_->setBackgroundColor(kBackColor);
  addViews();
  enter(startFolder(request_));
}

FileBrowser::~FileBrowser() {
  timer_->stop();
  frame_->close();
}

bool FileBrowser::open(void* parent, PlatformType platform) {
  if (!frame_->open(parent, platform)) return false;
  timer_->start();
  frame_->setFocusView(name_ ? static_cast<CView*>(name_) : list_);
  return true;
}

CMessageResult FileBrowser::notify(CBaseObject* /*sender*/, IdStringPtr /*message*/) {
  frame_->idle();
  return kMessageNotified;
}

void FileBrowser::addViews() {
  const double right = size().right - kMargin;
  const double buttonsTop = size().bottom - kMargin - kLineHeight;
  const double hintTop = buttonsTop - kLineHeight - 4;
  const bool saves = request_.kind == Kind::kSave;
  const double nameTop = hintTop - (saves ? kLineHeight : 0);
  const auto add = [&](auto* view) {
    frame_->addView(view);
    return view;
  };
  place_ = add(new TextLine({kMargin, 8, right, 8 + kLineHeight}, kTextColor));
  list_ = add(new ItemList({kMargin, 8 + kLineHeight + 4, right, nameTop - 8},
                           {.selectionChanged = [this] { selectionChanged(); },
                            .activated = [this](std::size_t entry) { activate(entry); },
                            .keyDown = [this](const VstKeyCode& key) { return listKey(key); }}));
  list_->setAllowsMultiple(request_.allowsMultiple);
  if (saves)
    name_ = add(new NameField({kMargin, nameTop, right, nameTop + kLineHeight}, request_.defaultSaveName,
                              [this](const VstKeyCode& key) { return dialogKey(key); }));
  hint_ = add(new TextLine({kMargin, hintTop + 2, right, hintTop + 2 + kLineHeight}, kWeakColor));
  const double okLeft = right - kButtonWidth;
  const char* const verb = saves ? "Save" : request_.kind == Kind::kFolder ? "Choose" : "Open";
  ok_ = add(new TextButton({okLeft, buttonsTop, right, buttonsTop + kLineHeight}, verb, [this] { accept(); }));
  add(new TextButton({okLeft - 8 - kButtonWidth, buttonsTop, okLeft - 8, buttonsTop + kLineHeight}, "Cancel",
                     [this] { finish({}); }));
}

void FileBrowser::enter(const fs::path& folder) {
  auto found = listFolder(folder, filterOf(request_));
  if (!found) {
    hint_->setText("This folder can't be read: " + madeValidUtf8(folder.string()));
    return;
  }
  entries_ = std::move(*found);
  folder_ = folder;
  hint_->setText("");
  place_->setText((request_.title.empty() ? "" : request_.title + "   ") + madeValidUtf8(folder_.string()));
  std::vector<ItemList::Item> items;
  for (const auto& [name, title, isFolder] : entries_) items.push_back({title, name, isFolder});
  list_->setItems(std::move(items));
}

// A double-click, or Return on a folder.
void FileBrowser::activate(std::size_t index) {
  const FolderEntry chosen = entries_.at(index);
  if (chosen.isFolder) {
    enter(chosen.name == kParentFolder ? folder_.parent_path() : folder_ / chosen.name);
  } else {
    accept();
  }
}

void FileBrowser::selectionChanged() {
  const auto chosen = list_->selection();
  if (name_ && chosen.size() == 1 && !entries_.at(chosen[0]).isFolder) name_->setText(entries_.at(chosen[0]).title);
}

void FileBrowser::accept() {
  if (name_) return acceptName();
  const auto chosen = list_->selection();
  const auto pathOf = [&](std::size_t i) { return (folder_ / entries_.at(i).name).lexically_normal().string(); };
  if (request_.kind == Kind::kFolder) return finish({chosen.empty() ? folder_.string() : pathOf(chosen[0])});
  std::vector<std::string> files;
  for (const std::size_t i : chosen)
    if (!entries_.at(i).isFolder) files.push_back(pathOf(i));
  if (!files.empty()) {
    finish(std::move(files));
  } else if (!chosen.empty()) {
    activate(chosen[0]);
  }
}

void FileBrowser::acceptName() {
  const std::string name = name_->getText();
  if (name.empty()) {
    hint_->setText("Please type a name.");
    return;
  }
  fs::path file = folder_ / name;
  std::error_code error;
  if (fs::is_directory(file, error)) return enter(file);
  const std::string ending = request_.extensions.empty() ? "" : request_.extensions.front().extension;
  if (!ending.empty() && !hasExtension(file, ending)) file += "." + ending;
  if (fs::exists(file, error) && confirmed_ != file) {
    confirmed_ = file;
    hint_->setText(madeValidUtf8(file.filename().string()) + " is there already.");
    ok_->setTitle("Replace");
    return;
  }
  finish({file.string()});
}

void FileBrowser::finish(std::vector<std::string> paths) {
  if (done_) return;
  paths_ = std::move(paths);
  done_ = true;
}

bool FileBrowser::listKey(const VstKeyCode& key) {
  if (key.virt != VKEY_BACK) return dialogKey(key);
  enter(folder_.parent_path());
  return true;
}

bool FileBrowser::dialogKey(const VstKeyCode& key) {
  if (key.virt == VKEY_RETURN || key.virt == VKEY_ENTER) {
    accept();
  } else if (key.virt == VKEY_ESCAPE) {
    finish({});
  } else {
    return false;
  }
  return true;
}

}  // namespace VSTGUI
