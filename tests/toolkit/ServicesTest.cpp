// Text field and file selector.

#include <gtest/gtest.h>

#include "tests/toolkit/Window.h"
#include "toolkit/popups/CNewFileSelector.h"
#include "toolkit/views/PlatformTextEdit.h"

namespace {

using namespace VSTGUI;

// A view with a text field that closes on Return, Escape and a press elsewhere.
class Editable : public CView, public IPlatformTextEditCallback {
 public:
  using CView::CView;
  CColor platformGetBackColor() const override { return kBlackCColor; }
  CColor platformGetFontColor() const override { return kWhiteCColor; }
  CFontRef platformGetFont() const override { return kNormalFontSmall; }
  CHoriTxtAlign platformGetHoriTxtAlign() const override { return kLeftText; }
  const char* platformGetText() const override { return text.c_str(); }
  CRect platformGetSize() const override { return getViewSize(); }
  CRect platformGetVisibleSize() const override { return getViewSize(); }
  CPoint platformGetTextInset() const override { return {}; }
  void platformLooseFocus(bool) override { getFrame()->setFocusView(nullptr); }
  void platformTextDidChange() override { ++changes; }
  bool platformOnKeyDown(const VstKeyCode& key) override {
    VstKeyCode copy = key;
    return getFrame()->onKeyDown(copy) == kKeyHandled;
  }
  std::int32_t onKeyDown(VstKeyCode& key) override {
    if (key.virt != VKEY_RETURN) return kKeyNotHandled;
    looseFocus();
    return kKeyHandled;
  }
  void takeFocus() override { field = getFrame()->createPlatformTextEdit(this); }
  void looseFocus() override {
    if (!field) return;
    auto* const closing = std::exchange(field, nullptr);
    text = closing->getText();
    closing->forget();
  }

  IPlatformTextEdit* field = nullptr;
  std::string text = "old";
  int changes = 0;
};

struct TextWindow : Window {
  TextWindow() {
    frame->addView(view);
    view->takeFocus();
  }
  Editable* view = new Editable(CRect(10, 10, 150, 30));
};

TEST(TextFields, EditTheirText) {
  TextWindow window;
  auto& user = window.user();
  EXPECT_TRUE(user.wantsKeyboard());
  user.type("er x");
  user.key(0, VKEY_BACK);
  user.key(0, VKEY_HOME);
  user.key(0xe9);
  user.key(0, VKEY_DELETE);
  EXPECT_STREQ(window.view->field->getText(), "\xc3\xa9lder ");
  user.key(0, VKEY_BACK);
  user.key(0, VKEY_END);
  user.key(0, VKEY_LEFT, MODIFIER_SHIFT);
  user.key('!');
  user.key(0, VKEY_RETURN);
  EXPECT_EQ(window.view->text, "lder!");
  EXPECT_EQ(window.view->field, nullptr);
  EXPECT_FALSE(user.wantsKeyboard());
  EXPECT_GT(window.view->changes, 5);
}

TEST(TextFields, UseTheClipboard) {
  TextWindow window;
  auto& user = window.user();
  user.key('a', 0, MODIFIER_CONTROL);
  user.key('x', 0, MODIFIER_CONTROL);
  EXPECT_EQ(window.platform.clipboard, "old");
  EXPECT_STREQ(window.view->field->getText(), "");
  window.platform.clipboard = "two\nlines";
  user.key('v', 0, MODIFIER_CONTROL);
  EXPECT_STREQ(window.view->field->getText(), "twolines");
  char cut[4] = {};
  EXPECT_TRUE(window.view->field->getText(cut, sizeof cut));
  EXPECT_STREQ(cut, "two");
}

TEST(TextFields, FollowThePointerAndEndWithAPressElsewhere) {
  TextWindow window;
  auto& user = window.user();
  const auto white = [&] {
    int count = 0;
    for (int x = 10; x < 60; ++x)
      for (int y = 10; y < 30; ++y) count += user.pixel(x, y).red > 128;
    return count;
  };
  EXPECT_GT(white(), 10) << "the text shows";
  user.press({11, 20});
  user.moveTo({140, 20});
  user.release();
  user.key('n');
  EXPECT_STREQ(window.view->field->getText(), "n") << "the drag selected all";
  user.click({180, 80});
  EXPECT_EQ(window.view->field, nullptr);
  EXPECT_EQ(window.view->text, "n");
}

TEST(TextFields, EndWithTheirView) {
  TextWindow window;
  window.view->remember();
  window.frame->removeView(window.view);
  EXPECT_EQ(window.view->field, nullptr);
  window.view->forget();
  window.user().type("lost");
}

struct Delegate : CBaseObject {
  CMessageResult notify(CBaseObject* sender, IdStringPtr message) override {
    if (message != CNewFileSelector::kSelectEndMessage) return kMessageUnknown;
    ++ended;
    const auto* const selector = dynamic_cast<CNewFileSelector*>(sender);
    chosen = selector->getNumSelectedFiles() > 0 ? selector->getSelectedFile(0) : "none";
    EXPECT_EQ(selector->getSelectedFile(1), nullptr);
    return kMessageNotified;
  }
  int ended = 0;
  std::string chosen;
};

void runSelector(CFrame* frame, CBaseObject* delegate) {
  const auto selector =
      Counted<CNewFileSelector>::adopt(CNewFileSelector::create(frame, CNewFileSelector::kSelectSaveFile));
  selector->setTitle("Please choose a name");
  selector->setInitialDirectory("/presets");
  selector->setDefaultExtension(CFileExtension("Preset", "fxp", "fxp"));
  EXPECT_TRUE(selector->run(delegate));
}

TEST(FileSelectors, TellTheDelegateOnceTheUserIsDone) {
  Window window;
  Delegate delegate;
  runSelector(window.frame, &delegate);
  const auto* const request = window.user().fileSelector();
  ASSERT_NE(request, nullptr);
  EXPECT_EQ(request->kind, FileSelectorRequest::Kind::kSave);
  EXPECT_EQ(request->title, "Please choose a name");
  EXPECT_EQ(request->initialDirectory, "/presets");
  EXPECT_EQ(request->extensions.at(0).extension, "fxp");
  EXPECT_EQ(delegate.ended, 0);
  window.user().answerFileSelector({"/presets/mine.fxp"});
  EXPECT_EQ(delegate.chosen, "/presets/mine.fxp");
  runSelector(window.frame, &delegate);
  window.user().answerFileSelector({});
  EXPECT_EQ(delegate.chosen, "none");
  EXPECT_EQ(delegate.ended, 2);
}

TEST(FileSelectors, EndSilentlyWithTheFrame) {
  Window window;
  Delegate delegate;
  runSelector(window.frame, &delegate);
  window.frame->close();
  EXPECT_EQ(delegate.ended, 0);
  EXPECT_EQ(CNewFileSelector::create(nullptr), nullptr);
}

}  // namespace
