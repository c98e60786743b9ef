// SPDX-License-Identifier: MIT
// A frame in memory with what its views report; for the tests of the toolkit.
#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "toolkit/base/IControlListener.h"
#include "toolkit/base/VSTGUIEditorInterface.h"
#include "toolkit/controls/CControl.h"
#include "toolkit/headless/HeadlessPlatform.h"
#include "toolkit/popups/CNewFileSelector.h"
#include "toolkit/views/CFrame.h"

namespace VSTGUI {

// One open frame of 200 by 100 on a platform of its own.
class Window : public VSTGUIEditorInterface {
 public:
  Window() {
    setPlatform(PlatformType::kDefaultNative, &platform);
    frame = new CFrame({0, 0, 200, 100}, this);
    frame->open(nullptr);
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() override {
    frame->close();
    frame->forget();
    setPlatform(PlatformType::kDefaultNative, nullptr);
  }
  HeadlessFrame& user() { return *platform.frames().front(); }
  bool beforeSizeChange(const CRect&, const CRect&) override { return !refusesSize; }
  std::int32_t getKnobMode() const override { return kLinearMode; }

  // The user's doings, each a word and a place or a number: "press 10 10  move 50 10  release 0 0  wait 200 0".
  void play(const std::string& doings) {
    std::istringstream words(doings);
    std::string word;
    for (CPoint at; words >> word >> at.x >> at.y;) act(word, at);
  }

  HeadlessPlatform platform;
  CFrame* frame;
  bool refusesSize = false;
  Counted<CDropSource> dragged = Counted<CDropSource>::adopt(new CDropSource("/a.mid", 6, IDataPackage::kFilePath));

 private:
  void act(const std::string& word, const CPoint& at) {
    if (word == "press") user().press(at);
    if (word == "release") user().release();
    if (word == "click") user().click(at);
    if (word == "move") user().moveTo(at);
    if (word == "leave") user().leaveWindow();
    if (word == "hold") user().holdModifiers(static_cast<std::int32_t>(at.x));
    if (word == "wait") platform.advance(static_cast<std::uint32_t>(at.x));
    if (word == "dragin") user().dragEnter(dragged, at);
    if (word == "dragover") user().dragMove(at);
    if (word == "drop") user().drop(at);
  }
};

// Writes down what it hears, one word an event and the number for a value.
class Listener : public IControlListener {
 public:
  void valueChanged(CControl* control) override {
    std::ostringstream number;
    number << control->getValue() << ' ';
    told += number.str();
  }
  void controlBeginEdit(CControl*) override { told += "begin "; }
  void controlEndEdit(CControl*) override { told += "end "; }
  void MouseOver(CControl*) override { told += "over "; }
  void MouseExit(CControl*) override { told += "exit "; }

  std::string told;
};

// Hears of a file selector's end.
struct Chooser : CBaseObject {
  CMessageResult notify(CBaseObject* sender, IdStringPtr message) override {
    const auto* const selector = dynamic_cast<CNewFileSelector*>(sender);
    if (!selector || message != CNewFileSelector::kSelectEndMessage) return kMessageUnknown;
    ++ended;
    chosen.clear();
    for (std::int32_t i = 0; selector->getSelectedFile(i); ++i) chosen.emplace_back(selector->getSelectedFile(i));
    return kMessageNotified;
  }
  std::vector<std::string> chosen;
  int ended = 0;
};

// Writes down its events, each with `name` before it, in its own log or one that several share.
class Probe : public CView {
 public:
  Probe(const CRect& size, CMouseEventResult answer, std::string* shared = nullptr, std::string name = "")
      : CView(size), log(shared ? *shared : own_), answer_(answer), name_(std::move(name)) {}
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override {
    lastPress = where;
    pressWord = buttons;
    if (whenPressed) whenPressed();
    return write("down ", answer_);
  }
  CMouseEventResult onMouseUp(CPoint&, const CButtonState&) override { return write("up "); }
  CMouseEventResult onMouseMoved(CPoint&, const CButtonState& buttons) override {
    if (whenDragged && buttons.isLeftButton()) whenDragged();
    return write(buttons.getButtonState() ? "drag " : "move ");
  }
  CMouseEventResult onMouseEntered(CPoint&, const CButtonState&) override { return write("enter "); }
  CMouseEventResult onMouseExited(CPoint&, const CButtonState&) override { return write("exit "); }
  bool onDrop(IDataPackage*, const CPoint&) override { return write("drop ") == kMouseEventHandled; }
  void onDragEnter(IDataPackage*, const CPoint&) override { write("dragenter "); }
  void onDragMove(IDataPackage*, const CPoint&) override { write("dragmove "); }
  void onDragLeave(IDataPackage*, const CPoint&) override { write("dragleave "); }

 private:
  CMouseEventResult write(const char* word, CMouseEventResult answer = kMouseEventHandled) {
    log += name_ + word;
    return answer;
  }
  std::string own_;

 public:
  std::string& log;
  CPoint lastPress;
  std::int32_t pressWord = 0;
  std::function<void()> whenPressed;
  std::function<void()> whenDragged;

 private:
  CMouseEventResult answer_;
  std::string name_;
};

}  // namespace VSTGUI
