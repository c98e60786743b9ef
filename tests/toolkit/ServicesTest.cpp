// SPDX-License-Identifier: MIT
// Text field, file selector and the parts of a dialog.

#include <gtest/gtest.h>

#include "tests/toolkit/Window.h"
#include "toolkit/controls/ItemList.h"
#include "toolkit/controls/NameField.h"

namespace {

using namespace VSTGUI;

// A window with a field that holds "old" and has the keyboard.
struct FieldWindow : Window {
  FieldWindow() {
    frame->addView(field);
    frame->setFocusView(field);
  }
  void press(std::initializer_list<std::uint8_t> virts, std::uint8_t modifier = 0) {
    for (const std::uint8_t virt : virts) user().key(0, virt, modifier);
  }
  NameField* field = new NameField({10, 10, 150, 30}, "old", [this](const VstKeyCode& key) {
    if (key.virt != VKEY_RETURN) return false;
    frame->setFocusView(nullptr);
    return true;
  });
};

TEST(TextFields, EditTheirText) {
  FieldWindow window;
  auto& user = window.user();
  EXPECT_TRUE(user.wantsKeyboard());
  user.type("er x");
  window.press({VKEY_BACK, VKEY_HOME});
  user.key(0xe9);
  window.press({VKEY_DELETE});
  EXPECT_EQ(window.field->getText(), "\xc3\xa9lder ");
  window.press({VKEY_BACK, VKEY_END});
  window.press({VKEY_LEFT}, MODIFIER_SHIFT);
  user.key('!');
  window.press({VKEY_RETURN});
  EXPECT_FALSE(user.wantsKeyboard());
  EXPECT_EQ(window.field->getText(), "lder!");
  EXPECT_FALSE(user.key('x')) << "nobody takes it any more";
}

TEST(TextFields, UseTheClipboardAndGiveWholeCharacters) {
  struct Callback : NameField {
    using NameField::NameField;
    void takeFocus() override { edit = getFrame()->createPlatformTextEdit(this); }
    void platformTextDidChange() override { ++changes; }
    // As an editor's fields do: keys first go to the view and its parents.
    bool platformOnKeyDown(const VstKeyCode& key) override {
      VstKeyCode copy = key;
      return getFrame()->onKeyDown(copy) == kKeyHandled;
    }
    std::int32_t onKeyDown(VstKeyCode& key) override { return key.virt == VKEY_RETURN ? kKeyHandled : kKeyNotHandled; }
    IPlatformTextEdit* edit = nullptr;
    int changes = 0;
  };
  Window window;
  auto& user = window.user();
  auto* const field = new Callback({10, 10, 150, 30}, "old", nullptr);
  window.frame->addView(field);
  field->takeFocus();
  EXPECT_EQ(window.frame->createPlatformTextEdit(field), nullptr) << "one at a time";
  for (const char key : {'a', 'x'}) user.key(key, 0, MODIFIER_CONTROL);
  EXPECT_EQ(window.platform.clipboard, "old");
  EXPECT_STREQ(field->edit->getText(), "");
  window.platform.clipboard = "two\nlin\xc3\xa9s";
  user.key('v', 0, MODIFIER_CONTROL);
  EXPECT_STREQ(field->edit->getText(), "twolin\xc3\xa9s");
  EXPECT_EQ(field->changes, 2);
  for (const auto& [capacity, text] : {std::pair{4u, "two"}, {8u, "twolin"}, {9u, "twolin\xc3\xa9"}}) {
    char cut[16] = {};
    EXPECT_TRUE(field->edit->getText(cut, capacity));
    EXPECT_STREQ(cut, text);
  }
  EXPECT_TRUE(user.key('\r', VKEY_RETURN));
  EXPECT_FALSE(user.key(0, VKEY_F1));
  field->edit->forget();
}

TEST(TextFields, FollowThePointerAndEndWithAPressElsewhereOrTheirView) {
  FieldWindow window;
  auto& user = window.user();
  int white = 0;
  for (int x = 10; x < 60; ++x)
    for (int y = 10; y < 30; ++y) white += user.pixel(x, y).red > 128;
  EXPECT_GT(white, 10) << "the text shows";
  window.play("press 12 20 move 140 20 release 0 0");
  user.key('n');
  EXPECT_EQ(window.field->getText(), "n") << "the drag selected all";
  window.play("click 180 80");
  EXPECT_FALSE(user.wantsKeyboard());
  EXPECT_EQ(window.field->getText(), "n");
  window.frame->setFocusView(window.field);
  window.frame->removeView(window.field);
  EXPECT_FALSE(user.wantsKeyboard());
  user.type("lost");
}

TEST(Lists, SelectByMouseAndKeysAndTellTheirOwner) {
  Window window;
  std::string told;
  auto* const list = new ItemList({0, 0, 100, 59},  // three rows of 19
                                  {.selectionChanged = [&] { told += "changed "; },
                                   .activated = [&](std::size_t item) { told += std::to_string(item) + " "; },
                                   .keyDown = [](const VstKeyCode& key) { return key.virt == VKEY_RETURN; }});
  window.frame->addView(list);
  list->setItems({{"Up", "..", true}, {"a", "a"}, {"b", "b"}, {"c", "c"}, {"bb", "bb"}});
  const auto row = [](int index) { return CPoint(20, 1 + 19 * index + 9); };
  using Rows = std::vector<std::size_t>;
  auto& user = window.user();
  user.holdModifiers(kControl);
  for (const int index : {1, 2}) user.click(row(index));
  EXPECT_EQ(list->selection(), Rows{2}) << "one at a time";
  list->setAllowsMultiple(true);
  user.click(row(1));
  EXPECT_EQ(list->selection(), (Rows{1, 2}));
  user.click(row(2));
  EXPECT_EQ(list->selection(), Rows{1}) << "and off again";
  user.holdModifiers(0);
  window.platform.advance(1000);
  told.clear();
  user.doubleClick(row(0));
  EXPECT_EQ(told, "changed changed 0 ");
  window.frame->setFocusView(list);
  EXPECT_TRUE(user.wantsKeyboard());
  const auto after = [&](std::int32_t character, std::uint8_t virt) {
    EXPECT_TRUE(user.key(character, virt));
    return list->selection();
  };
  EXPECT_EQ(after('B', 0), Rows{2});
  EXPECT_EQ(after('b', 0), Rows{4}) << "the next of that letter";
  EXPECT_EQ(after(0, VKEY_RETURN), Rows{4});
  EXPECT_EQ(after(0, VKEY_UP), Rows{3});
  EXPECT_EQ(after('.', 0), Rows{0}) << "by its name, which isn't its title";
  EXPECT_EQ(after(0, VKEY_PAGEDOWN), Rows{2});
  EXPECT_EQ(after(0, VKEY_END), Rows{4});
  user.click(row(0));
  EXPECT_EQ(list->selection(), Rows{2}) << "scrolled so far that the last is in sight";
  EXPECT_FALSE(user.key('z'));
  window.play("press 95 50 move 95 0 release 0 0");
  user.click(row(0));
  EXPECT_EQ(list->selection(), Rows{0}) << "by the thumb to the top";
}

TEST(FileSelectors, TellTheDelegateOnceTheUserIsDoneAndEndSilentlyWithTheFrame) {
  Window window;
  Chooser chooser;
  const auto run = [&] {
    const auto selector =
        Counted<CNewFileSelector>::adopt(CNewFileSelector::create(window.frame, CNewFileSelector::kSelectSaveFile));
    selector->setTitle("Please choose a name");
    selector->setInitialDirectory("/presets");
    selector->setDefaultExtension(CFileExtension("Preset", "fxp", "fxp"));
    EXPECT_TRUE(selector->run(&chooser));
  };
  run();
  const auto* const request = window.user().fileSelector();
  ASSERT_NE(request, nullptr);
  EXPECT_EQ(request->kind, FileSelectorRequest::Kind::kSave);
  EXPECT_EQ(request->title + request->initialDirectory, "Please choose a name/presets");
  EXPECT_EQ(request->extensions.at(0).extension, "fxp");
  EXPECT_EQ(chooser.ended, 0);
  window.user().answerFileSelector({"/presets/mine.fxp"});
  EXPECT_EQ(chooser.chosen, std::vector<std::string>{"/presets/mine.fxp"});
  run();
  window.user().answerFileSelector({});
  EXPECT_TRUE(chooser.chosen.empty());
  EXPECT_EQ(chooser.ended, 2);
  run();
  window.frame->close();
  EXPECT_EQ(chooser.ended, 2);
  EXPECT_EQ(CNewFileSelector::create(nullptr), nullptr);
}

}  // namespace
