#include "toolkit/popups/FileBrowser.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <glib.h>

#include "toolkit/drawing/CDrawContext.h"
#include "toolkit/drawing/Theme.h"
#include "toolkit/views/PlatformTextEdit.h"

namespace VSTGUI {

namespace fs = std::filesystem;

namespace {

using namespace Theme;
using Kind = FileSelectorRequest::Kind;

// Sizes in units.
constexpr double kMargin = 12;
constexpr double kLineHeight = 22;
constexpr double kRowHeight = 19;
constexpr double kButtonWidth = 90;
constexpr double kBarWidth = 10;
constexpr double kMinThumb = 24;
constexpr double kRowsAWheelNotch = 3;
constexpr std::uint32_t kIdleMs = 30;
constexpr std::size_t kMaxEntries = 20000;  // of a folder; more help nobody
constexpr CColor kSunkenColor{28, 30, 33};
constexpr const char* kUp = "..";

struct Entry {
  std::string name;   // in the file system's bytes
  std::string title;  // as it can be drawn
  bool isFolder;
};

std::string drawable(const std::string& bytes) {
  char* const valid = g_utf8_make_valid(bytes.c_str(), static_cast<gssize>(bytes.size()));
  std::string text = valid;
  g_free(valid);
  return text;
}

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

bool fits(const fs::path& file, const FileSelectorRequest& request) {
  if (request.kind == Kind::kFolder) return false;
  const std::string ending = lowered(file.extension().string());
  const auto has = [&](const FileSelectorRequest::Extension& e) { return ending == "." + lowered(e.extension); };
  return request.extensions.empty() || std::any_of(request.extensions.begin(), request.extensions.end(), has);
}

// False when the folder can't be read.
bool readFolder(const fs::path& folder, const FileSelectorRequest& request, std::vector<Entry>& entries) {
  std::error_code error;
  fs::directory_iterator it(folder, error);
  if (error) return false;
  entries.clear();
  for (; it != fs::directory_iterator() && entries.size() < kMaxEntries; it.increment(error)) {
    const std::string name = it->path().filename().string();
    std::error_code unknown;
    const bool isFolder = it->is_directory(unknown);
    if (name.starts_with('.') || (!isFolder && !fits(it->path(), request))) continue;
    entries.push_back({name, drawable(name), isFolder});
  }
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
    return a.isFolder != b.isFolder ? a.isFolder : lowered(a.name) < lowered(b.name);
  });
  if (folder != folder.root_path()) entries.insert(entries.begin(), {kUp, "Parent folder", true});
  return true;
}

fs::path startFolder(const FileSelectorRequest& request) {
  std::error_code error;
  const char* const home = std::getenv("HOME");
  for (const fs::path& folder : {fs::path(request.initialDirectory), fs::path(home ? home : "")})
    if (folder.is_absolute() && fs::is_directory(folder, error)) return folder.lexically_normal();
  return "/";
}

void fillRect(CDrawContext& context, const CRect& rect, const CColor& back, const CColor& border) {
  context.setDrawMode(kAliasing);
  context.setLineWidth(1);
  context.setFillColor(back);
  context.setFrameColor(border);
  context.drawRect(rect, kDrawFilledAndStroked);
}

void drawText(CDrawContext& context, const std::string& text, CRect rect, const CColor& color, CHoriTxtAlign align) {
  context.saveGlobalState();
  context.setClipRect(rect);
  context.setFont(kNormalFont);
  context.setFontColor(color);
  context.drawString(text.c_str(), rect, align);
  context.restoreGlobalState();
}

}  // namespace

// One line of text.
class FileBrowser::Line : public CView {
 public:
  Line(const CRect& size, const CColor& color) : CView(size), color_(color) {}
  void setText(std::string text) {
    text_ = std::move(text);
    invalid();
  }
  void draw(CDrawContext* context) override { drawText(*context, text_, getViewSize(), color_, kLeftText); }

 private:
  CColor color_;
  std::string text_;
};

class FileBrowser::Button : public CView {
 public:
  Button(const CRect& size, std::string title, std::function<void()> pressed)
      : CView(size), title_(std::move(title)), pressed_(std::move(pressed)) {}
  void setTitle(std::string title) {
    title_ = std::move(title);
    invalid();
  }
  void draw(CDrawContext* context) override {
    CRect inside = getViewSize();
    fillRect(*context, inside, down_ && over_ ? kHoverColor : kBackColor, over_ ? kHoverColor : kBorderColor);
    drawText(*context, title_, inside, kTextColor, kCenterText);
  }
  CMouseEventResult onMouseDown(CPoint&, const CButtonState& buttons) override {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    setLook(true, true);
    return kMouseEventHandled;
  }
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState&) override {
    setLook(down_, where.isInside(getViewSize()));
    return kMouseEventHandled;
  }
  CMouseEventResult onMouseUp(CPoint& where, const CButtonState&) override {
    const bool meant = down_ && where.isInside(getViewSize());
    setLook(false, meant);
    if (meant) pressed_();
    return kMouseEventHandled;
  }
  CMouseEventResult onMouseExited(CPoint&, const CButtonState&) override {
    setLook(down_, false);
    return kMouseEventHandled;
  }

 private:
  void setLook(bool down, bool over) {
    down_ = down;
    over_ = over;
    invalid();
  }

  std::string title_;
  std::function<void()> pressed_;
  bool down_ = false;
  bool over_ = false;
};

class FileBrowser::NameField : public CView, public IPlatformTextEditCallback {
 public:
  NameField(FileBrowser& browser, const CRect& size, std::string text)
      : CView(size), browser_(browser), text_(std::move(text)) {
    setWantsFocus(true);
  }
  [[nodiscard]] std::string getText() const { return field_ ? field_->getText() : text_; }
  void setText(const std::string& text) {
    text_ = text;
    if (field_) field_->setText(text.c_str());
    invalid();
  }
  void draw(CDrawContext* context) override {
    CRect inside = getViewSize();
    fillRect(*context, inside, kSunkenColor, kBorderColor);
    inside.inset(platformGetTextInset().x + 1, 1);
    drawText(*context, text_, inside, kTextColor, kLeftText);
  }
  CMouseEventResult onMouseDown(CPoint&, const CButtonState&) override {
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  }
  void takeFocus() override { field_ = getFrame()->createPlatformTextEdit(this); }
  void looseFocus() override {
    if (!field_) return;
    text_ = field_->getText();
    std::exchange(field_, nullptr)->forget();
    invalid();
  }

  CColor platformGetBackColor() const override { return kSunkenColor; }
  CColor platformGetFontColor() const override { return kTextColor; }
  CFontRef platformGetFont() const override { return kNormalFont; }
  CHoriTxtAlign platformGetHoriTxtAlign() const override { return kLeftText; }
  const char* platformGetText() const override { return text_.c_str(); }
  CRect platformGetSize() const override {
    CRect inside = getViewSize();
    return inside.inset(1, 1);
  }
  CRect platformGetVisibleSize() const override { return platformGetSize(); }
  CPoint platformGetTextInset() const override { return {5, 0}; }
  void platformLooseFocus(bool) override {
    if (getFrame()) getFrame()->setFocusView(nullptr);
  }
  void platformTextDidChange() override {}
  bool platformOnKeyDown(const VstKeyCode& key) override { return browser_.dialogKey(key); }

 private:
  FileBrowser& browser_;
  std::string text_;
  IPlatformTextEdit* field_ = nullptr;
};

class FileBrowser::List : public CView {
 public:
  List(FileBrowser& browser, const CRect& size) : CView(size), browser_(browser) { setWantsFocus(true); }

  void setEntries(std::vector<Entry> entries) {
    entries_ = std::move(entries);
    selected_.assign(entries_.size(), false);
    current_ = 0;
    scrollTo(0);
  }
  [[nodiscard]] const Entry& entry(std::size_t index) const { return entries_.at(index); }
  [[nodiscard]] std::vector<std::size_t> selection() const {
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < selected_.size(); ++i)
      if (selected_[i]) chosen.push_back(i);
    return chosen;
  }

  void draw(CDrawContext* context) override {
    fillRect(*context, getViewSize(), kSunkenColor, kBorderColor);
    context->limitClipRect(rows());
    const auto first = static_cast<std::size_t>(top_ / kRowHeight);
    for (std::size_t i = first; i < entries_.size(); ++i) {
      CRect row = rowAt(i);
      if (row.top >= rows().bottom) break;
      drawRow(*context, i, row);
    }
    if (maxTop() <= 0) return;
    context->setFillColor(kBorderColor);
    context->drawRect(thumb(), kDrawFilled);
  }

  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (maxTop() > 0 && where.x >= rows().right - kBarWidth) {
      gripY_ = where.y - thumb().top;
      if (gripY_ < 0 || gripY_ > thumb().getHeight()) gripY_ = thumb().getHeight() / 2;
      dragThumb(where.y);
      return kMouseEventHandled;
    }
    const auto index = static_cast<std::size_t>(std::max(0.0, (where.y - rows().top + top_) / kRowHeight));
    if (index >= entries_.size()) return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    select(index, browser_.request_.allowsMultiple && (buttons & kControl) != 0);
    if (buttons.isDoubleClick()) browser_.activate(index);
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
  }
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override {
    if (buttons.isLeftButton()) dragThumb(where.y);
    return kMouseEventHandled;
  }
  bool onWheel(const CPoint&, const float& distance, const CButtonState&) override {
    scrollTo(top_ - static_cast<double>(distance) * kRowsAWheelNotch * kRowHeight);
    return true;
  }
  std::int32_t onKeyDown(VstKeyCode& key) override {
    const auto page = static_cast<std::ptrdiff_t>(rows().getHeight() / kRowHeight) - 1;
    const auto count = static_cast<std::ptrdiff_t>(entries_.size());
    const auto at = static_cast<std::ptrdiff_t>(current_);
    switch (key.virt) {
      case VKEY_UP:
        return moveTo(at - 1);
      case VKEY_DOWN:
        return moveTo(selection().empty() ? at : at + 1);
      case VKEY_PAGEUP:
        return moveTo(at - page);
      case VKEY_PAGEDOWN:
        return moveTo(at + page);
      case VKEY_HOME:
        return moveTo(0);
      case VKEY_END:
        return moveTo(count - 1);
      case VKEY_BACK:
        browser_.enter(browser_.folder_.parent_path());
        return kKeyHandled;
      default:
        return browser_.dialogKey(key) || jumpTo(key.character) ? kKeyHandled : kKeyNotHandled;
    }
  }

 private:
  [[nodiscard]] CRect rows() const {
    CRect inside = getViewSize();
    return inside.inset(1, 1);
  }
  [[nodiscard]] CRect rowAt(std::size_t index) const {
    const CRect area = rows();
    const double y = area.top + static_cast<double>(index) * kRowHeight - top_;
    return {area.left, y, area.right - (maxTop() > 0 ? kBarWidth : 0), y + kRowHeight};
  }
  [[nodiscard]] double maxTop() const {
    return std::max(0.0, static_cast<double>(entries_.size()) * kRowHeight - rows().getHeight());
  }
  [[nodiscard]] CRect thumb() const {
    const CRect area = rows();
    const double height = area.getHeight();
    const double length = std::max(kMinThumb, height * height / (height + maxTop()));
    const double y = area.top + (height - length) * top_ / maxTop();
    return {area.right - kBarWidth + 2, y, area.right - 2, y + length};
  }
  void dragThumb(double y) {
    const double room = rows().getHeight() - thumb().getHeight();
    if (maxTop() > 0 && room > 0) scrollTo((y - gripY_ - rows().top) / room * maxTop());
  }
  void scrollTo(double top) {
    top_ = std::clamp(top, 0.0, maxTop());
    invalid();
  }
  void select(std::size_t index, bool add) {
    const bool before = selected_[index];
    if (!add) selected_.assign(entries_.size(), false);
    selected_[index] = !(add && before);
    current_ = index;
    invalid();
    browser_.selectionChanged();
  }
  std::int32_t moveTo(std::ptrdiff_t index) {
    if (entries_.empty()) return kKeyHandled;
    select(static_cast<std::size_t>(
               std::clamp<std::ptrdiff_t>(index, 0, static_cast<std::ptrdiff_t>(entries_.size()) - 1)),
           false);
    const double y = static_cast<double>(current_) * kRowHeight;
    scrollTo(std::clamp(top_, y + kRowHeight - rows().getHeight(), y));
    return kKeyHandled;
  }
  bool jumpTo(std::int32_t character) {
    if (character <= ' ' || character > 0x7e) return false;
    for (std::size_t step = 1; step <= entries_.size(); ++step) {
      const std::size_t index = (current_ + step) % entries_.size();
      if (std::tolower(static_cast<unsigned char>(entries_[index].name[0])) != std::tolower(character)) continue;
      moveTo(static_cast<std::ptrdiff_t>(index));
      return true;
    }
    return false;
  }
  void drawRow(CDrawContext& context, std::size_t index, CRect row) const {
    if (selected_[index]) {
      context.setDrawMode(kAliasing);
      context.setFillColor(kHoverColor);
      context.drawRect(row, kDrawFilled);
    }
    if (entries_[index].isFolder) drawFolder(context, {row.left + 8, row.getCenter().y});
    row.left += 28;
    drawText(context, entries_[index].title, row, kTextColor, kLeftText);
  }
  static void drawFolder(CDrawContext& context, const CPoint& at) {
    context.setDrawMode(kAntiAliasing | kNonIntegralMode);
    const auto shape = Counted<CGraphicsPath>::adopt(context.createGraphicsPath());
    shape->addRect({at.x, at.y - 3, at.x + 13, at.y + 5});
    shape->addRect({at.x, at.y - 5, at.x + 6, at.y - 3});
    context.setFillColor(kWeakColor);
    context.drawGraphicsPath(shape, CDrawContext::kPathFilled);
  }

  FileBrowser& browser_;
  std::vector<Entry> entries_;
  std::vector<bool> selected_;
  std::size_t current_ = 0;
  double top_ = 0;    // how far the rows are scrolled
  double gripY_ = 0;  // where the thumb is held
};

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
  if (name_)
    frame_->setFocusView(name_);
  else
    frame_->setFocusView(list_);
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
  place_ = add(new Line({kMargin, 8, right, 8 + kLineHeight}, kTextColor));
  list_ = add(new List(*this, {kMargin, 8 + kLineHeight + 4, right, nameTop - 8}));
  if (saves)
    name_ = add(new NameField(*this, {kMargin, nameTop, right, nameTop + kLineHeight}, request_.defaultSaveName));
  hint_ = add(new Line({kMargin, hintTop + 2, right, hintTop + 2 + kLineHeight}, kWeakColor));
  const double okLeft = right - kButtonWidth;
  const char* const verb = saves ? "Save" : request_.kind == Kind::kFolder ? "Choose" : "Open";
  ok_ = add(new Button({okLeft, buttonsTop, right, buttonsTop + kLineHeight}, verb, [this] { accept(); }));
  add(new Button({okLeft - 8 - kButtonWidth, buttonsTop, okLeft - 8, buttonsTop + kLineHeight}, "Cancel",
                 [this] { finish({}); }));
}

void FileBrowser::enter(const fs::path& folder) {
  std::vector<Entry> entries;
  if (!readFolder(folder, request_, entries)) {
    hint_->setText("This folder can't be read: " + drawable(folder.string()));
    return;
  }
  folder_ = folder;
  hint_->setText("");
  place_->setText((request_.title.empty() ? "" : request_.title + "   ") + drawable(folder_.string()));
  list_->setEntries(std::move(entries));
}

// A double-click, or Return on a folder.
void FileBrowser::activate(std::size_t index) {
  const Entry chosen = list_->entry(index);
  if (chosen.isFolder) {
    enter(chosen.name == kUp ? folder_.parent_path() : folder_ / chosen.name);
  } else {
    accept();
  }
}

void FileBrowser::selectionChanged() {
  const auto chosen = list_->selection();
  if (name_ && chosen.size() == 1 && !list_->entry(chosen[0]).isFolder) name_->setText(list_->entry(chosen[0]).title);
}

void FileBrowser::accept() {
  if (name_) return acceptName();
  const auto chosen = list_->selection();
  const auto pathOf = [&](std::size_t i) { return (folder_ / list_->entry(i).name).lexically_normal().string(); };
  if (request_.kind == Kind::kFolder) return finish({chosen.empty() ? folder_.string() : pathOf(chosen[0])});
  std::vector<std::string> files;
  for (const std::size_t i : chosen)
    if (!list_->entry(i).isFolder) files.push_back(pathOf(i));
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
  if (!ending.empty() && lowered(file.extension().string()) != "." + lowered(ending)) file += "." + ending;
  if (fs::exists(file, error) && confirmed_ != file) {
    confirmed_ = file;
    hint_->setText(drawable(file.filename().string()) + " is there already.");
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
