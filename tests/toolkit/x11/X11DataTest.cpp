// SPDX-License-Identifier: MIT
// What passes between programs: clipboard, drags, chosen files.

#include <algorithm>
#include <array>
#include <csignal>
#include <dbus/dbus.h>
#include <filesystem>
#include <fstream>
#include <thread>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/TemporaryFolder.h"
#include "tests/toolkit/x11/FrameDesktop.h"
#include "toolkit/base/IDataPackage.h"
#include "toolkit/popups/CNewFileSelector.h"
#include "toolkit/x11/Dnd.h"
#include "toolkit/x11/FileSelectors.h"

namespace {

using namespace VSTGUI;
namespace fs = std::filesystem;

class X11Data : public FrameDesktop {
 protected:
  // Lets the host's connection give `bytes` under a selection, in pieces of three bytes.
  void offer(Name selection, Name type, std::string bytes) {
    offered = std::move(bytes);
    xcb_set_selection_owner(*user, host, user->atom(selection), XCB_CURRENT_TIME);
    (void)geometry(host);
    alsoIdle = [this, type] {
      while (const Event event = user->poll()) serve(*event, type);
    };
  }
  void serve(const xcb_generic_event_t& event, Name type) {
    const auto kind = eventType(event);
    if (kind == XCB_CLIENT_MESSAGE) messages.push_back(eventAs<xcb_client_message_event_t>(event));
    if (kind == XCB_PROPERTY_NOTIFY && eventAs<xcb_property_notify_event_t>(event).state == XCB_PROPERTY_DELETE &&
        pieces.property != 0 && eventAs<xcb_property_notify_event_t>(event).window == pieces.requestor) {
      const std::string_view piece = std::string_view(offered).substr(given, 3);
      user->setProperty(pieces.requestor, pieces.property, pieces.target, piece);
      given += piece.size();
      if (piece.empty()) pieces = {};
      user->flush();
    }
    if (kind != XCB_SELECTION_REQUEST) return;
    const auto& request = eventAs<xcb_selection_request_event_t>(event);
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (request.target == user->atom(type)) {
      notice.property = request.property;
      pieces = request;
      given = 0;
      constexpr std::uint32_t kMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
      xcb_change_window_attributes(*user, request.requestor, XCB_CW_EVENT_MASK, &kMask);
      user->setProperty(request.requestor, request.property, user->atom(Name::kIncr), std::vector<std::uint32_t>{1});
    }
    xcb_send_event(*user, 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
    user->flush();
  }
  // The last message of a kind that came to the host's connection; its type is 0 without one.
  xcb_client_message_event_t message(Name name) {
    for (auto it = messages.rbegin(); it != messages.rend(); ++it)
      if (it->type == user->atom(name)) return *it;
    return {};
  }
  void sendDrag(Name name, std::array<std::uint32_t, 4> words) {
    user->sendMessage(window, window, user->atom(name), {host, words[0], words[1], words[2], words[3]});
    user->flush();
  }
  [[nodiscard]] static std::uint32_t placeOf(int x, int y) {
    return static_cast<std::uint32_t>((kLeft + x) << 16 | (kTop + y));
  }

  std::string offered;
  xcb_selection_request_event_t pieces{};  // the request that is being answered
  std::size_t given = 0;                   // bytes so far
  std::vector<xcb_client_message_event_t> messages;
};

TEST_F(X11Data, PastesWhatAnotherProgramCopied) {
  open();
  auto& platformFrame = *frame->getPlatformFrame();
  EXPECT_EQ(platformFrame.getClipboardText(), "") << "nobody has anything";
  for (const auto& [bytes, text] : {std::pair{"caf\xc3\xa9", "caf\xc3\xa9"}, {"\xff\xfe", ""}}) {
    offer(Name::kClipboard, Name::kUtf8String, bytes);
    const std::jthread other([this](const std::stop_token& stop) {
      for (; !stop.stop_requested(); alsoIdle()) user->waitReadable(20);
    });
    EXPECT_EQ(platformFrame.getClipboardText(), text);
  }
}

TEST_F(X11Data, CopiesForOtherProgramsAndForOurselves) {
  open();
  frame->getPlatformFrame()->setClipboardText("from \xc2\xb5");
  EXPECT_EQ(frame->getPlatformFrame()->getClipboardText(), "from \xc2\xb5");
  X11::SelectionReader reader(*user, host, Name::kPasteProperty);
  const auto read = [&](Name type) {
    reader.ask(user->atom(Name::kClipboard), user->atom(type), XCB_CURRENT_TIME);
    until([&] {
      while (const Event event = user->poll()) reader.takes(*event);
      return reader.state() != X11::SelectionReader::State::kWaiting;
    });
    return reader.state() == X11::SelectionReader::State::kDone ? reader.bytes() : "refused";
  };
  EXPECT_EQ(read(Name::kUtf8String), "from \xc2\xb5");
  EXPECT_EQ(read(Name::kTargets).size() % sizeof(std::uint32_t), 0u);
  EXPECT_EQ(read(Name::kTextUriList), "refused");

  const auto second = Counted<CFrame>::adopt(new CFrame({0, 0, 20, 20}, nullptr));
  ASSERT_TRUE(second->open(asParent(host)));
  EXPECT_EQ(second->getPlatformFrame()->getClipboardText(), "from \xc2\xb5") << "another frame of this process";
  second->getPlatformFrame()->setClipboardText("newer");
  EXPECT_EQ(frame->getPlatformFrame()->getClipboardText(), "newer");
  second->close();
}

TEST_F(X11Data, TakesFilesThatAreDropped) {
  open();
  offer(Name::kXdndSelection, Name::kTextUriList,
        "# comment\r\nfile:///a%20b.fxp\r\nhttp://elsewhere/x\r\nfile://localhost/c.shp\r\n");
  EXPECT_EQ(user->property(window, user->atom(Name::kXdndAware)).words(), std::vector<std::uint32_t>{5});
  const auto bringOver = [&](Name type) {
    messages.clear();
    sendDrag(Name::kXdndEnter, {5u << 24, user->atom(type), 0, 0});
    sendDrag(Name::kXdndPosition, {0, placeOf(50, 20), 0, user->atom(Name::kXdndActionCopy)});
    EXPECT_TRUE(until([&] { return message(Name::kXdndStatus).type != 0; }));
    return (message(Name::kXdndStatus).data.data32[1] & 1) != 0;
  };
  const auto logEndsWith = [&](const char* word) { return until([&] { return view->log.ends_with(word); }); };
  EXPECT_TRUE(bringOver(Name::kTextUriList));
  ASSERT_TRUE(logEndsWith("dragenter ")) << view->log;
  sendDrag(Name::kXdndPosition, {0, placeOf(60, 20), 0, user->atom(Name::kXdndActionCopy)});
  ASSERT_TRUE(logEndsWith("dragmove "));
  sendDrag(Name::kXdndDrop, {0, 0, 0, 0});
  ASSERT_TRUE(until([&] { return message(Name::kXdndFinished).type != 0; }));
  EXPECT_EQ(message(Name::kXdndFinished).data.data32[1], 1u) << "taken";
  EXPECT_EQ(view->dropped, (std::vector<std::string>{"/a b.fxp", "/c.shp"}));

  EXPECT_FALSE(bringOver(Name::kIncr)) << "nothing of use in it";
  sendDrag(Name::kXdndLeave, {});
  bringOver(Name::kTextUriList);
  ASSERT_TRUE(logEndsWith("dragenter "));
  destroyHost();
  ASSERT_TRUE(until([&] { return !frame->isOpen(); }));
}

TEST_F(X11Data, DragsFilesOutToOthersThatTakeThem) {
  open();
  const auto picture = Counted<CBitmap>::adopt(new CBitmap(30, 20));
  auto* const source = view;
  bool began = false;
  source->whenDragged = [&] {
    const std::string path = "/some where/temp.mid";
    const auto drag = Counted<CDropSource>::adopt(
        new CDropSource(path.data(), static_cast<std::uint32_t>(path.size()), IDataPackage::kFilePath));
    began = frame->doDrag(drag, {}, picture);
  };
  const auto target = Counted<CFrame>::adopt(new CFrame({0, 0, 200, 100}, nullptr));
  auto* const taker = new Recorder({0, 0, 200, 100});
  target->addView(taker);
  ASSERT_TRUE(target->open(asParent(newHostWindow(kLeft + 300, kTop))));
  alsoIdle = [&] { target->idle(); };
  // Begins a drag and brings it over a view at `x`.
  const auto dragTo = [&](const Recorder* over, int x) {
    began = false;
    taker->log.clear();
    source->log.clear();
    point(20, 20);
    press();
    point(35, 20);
    if (!until([&] { return began; })) return false;
    EXPECT_NE(source->log.find("drag up "), std::string::npos) << "the drag takes the release: " << source->log;
    point(x, 50);
    return !over || until([&] { return over->log.find("dragenter ") != std::string::npos; });
  };
  ASSERT_TRUE(dragTo(taker, 350));
  release();
  ASSERT_TRUE(until([&] { return !taker->dropped.empty(); }));
  EXPECT_EQ(taker->dropped, std::vector<std::string>{"/some where/temp.mid"});

  ASSERT_TRUE(dragTo(taker, 350)) << "and again";
  type(XKB_KEY_Escape);
  ASSERT_TRUE(until([&] { return taker->log.ends_with("dragleave "); }));
  release();

  ASSERT_TRUE(dragTo(source, 160)) << "back on itself";
  release();
  ASSERT_TRUE(until([&] { return source->dropped.size() == 1; }));

  ASSERT_TRUE(dragTo(nullptr, 80));
  destroyHost();
  ASSERT_TRUE(until([&] { return !frame->isOpen(); })) << "gone in the middle of a drag";
  release();
  target->close();
}

TEST(X11Uris, CarryPathsBothWays) {
  const std::string path = "/a b/%41/\xc3\xa9+#.fxp";
  EXPECT_EQ(X11::uriOfPath(path), "file:///a%20b/%2541/%C3%A9%2B%23.fxp");
  EXPECT_EQ(X11::pathOfUri(X11::uriOfPath(path)), path);
  EXPECT_EQ(X11::pathOfUri("file:///100%"), "/100%");
  for (const char* const none : {"", "file:", "http://a/b", "file://elsewhere/b", "file:///a%00b"})
    EXPECT_FALSE(X11::pathOfUri(none)) << none;
}

class X11Files : public FrameDesktop {
 protected:
  X11Files() : folder(fs::temp_directory_path() / ("modrift-files-" + std::to_string(::getpid()))) {
    fs::create_directories(folder / "Sub");
    for (const char* const name : {"b.fxp", "a.fxp", "other.txt", ".hidden.fxp", "Sub/inner.fxp"})
      std::ofstream(folder / name) << name;
  }
  ~X11Files() override { fs::remove_all(folder); }

  void run(CNewFileSelector::Style style, std::vector<X11Platform::Selector> selectors) {
    platform.selectors = std::move(selectors);
    if (!frame) open();
    chooser = {};
    selector = Counted<CNewFileSelector>::adopt(CNewFileSelector::create(frame, style));
    selector->setTitle("Save preset");
    selector->setInitialDirectory(folder.c_str());
    selector->setDefaultExtension(CFileExtension("Preset", "fxp"));
    ASSERT_TRUE(selector->run(&chooser));
  }

  fs::path folder;
  Counted<CNewFileSelector> selector;
  Chooser chooser;
};

TEST_F(X11Files, ComeFromADialogProgram) {
  std::ofstream(folder / "zenity") << "#!/bin/sh\necho /chosen/one.fxp\nprintf '%s\\n' \"$@\" > " << folder / "args"
                                   << "\n";
  fs::permissions(folder / "zenity", fs::perms::owner_all);
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (folder.string() + ":" + path).c_str(), 1);
  run(CNewFileSelector::kSelectSaveFile, {X11Platform::Selector::kPortal, X11Platform::Selector::kProgram});
  ASSERT_TRUE(until([&] { return chooser.ended == 1; })) << "there is no portal, so the program is asked";
  EXPECT_EQ(chooser.chosen, std::vector<std::string>{"/chosen/one.fxp"});
  const std::string arguments = readText(folder / "args");
  for (const std::string& wanted : {std::string("--save"), std::string("--title=Save preset"),
                                    "--filename=" + folder.string() + "/", std::string("Preset | *.fxp")})
    EXPECT_NE(arguments.find(wanted), std::string::npos) << wanted << " in " << arguments;

  std::ofstream(folder / "zenity") << "#!/bin/sh\necho $$ > " << folder / "pid"
                                   << "\nexec sleep 100\n";
  run(CNewFileSelector::kSelectFile, {X11Platform::Selector::kProgram});
  pid_t child = 0;
  ASSERT_TRUE(until([&] { return static_cast<bool>(std::ifstream(folder / "pid") >> child); }));
  frame->close();
  EXPECT_NE(::kill(child, 0), 0) << "the program has ended";
  EXPECT_EQ(chooser.ended, 0);
  ::setenv("PATH", path.c_str(), 1);
}

// A portal that keeps what it is asked, as it is on the bus, and answers with `code` and `uri`.
class Portal {
 public:
  Portal() {
    ::setenv("DBUS_SESSION_BUS_ADDRESS", daemon.address().c_str(), 1);
    bus_ = dbus_bus_get_private(DBUS_BUS_SESSION, nullptr);
    if (bus_) dbus_bus_request_name(bus_, "org.freedesktop.portal.Desktop", 0, nullptr);
  }
  Portal(const Portal&) = delete;
  Portal& operator=(const Portal&) = delete;
  ~Portal() {
    dbus_connection_close(bus_);
    dbus_connection_unref(bus_);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
  }

  void turn() {
    dbus_connection_read_write(bus_, 0);
    while (DBusMessage* const call = dbus_connection_pop_message(bus_)) {
      if (dbus_message_get_type(call) == DBUS_MESSAGE_TYPE_METHOD_CALL) answer(call);
      dbus_message_unref(call);
    }
    dbus_connection_flush(bus_);
  }

  Daemon daemon{"dbus-daemon --session --nofork --nopidfile --print-address=1"};
  std::string asked;
  dbus_uint32_t code = 0;
  const char* uri = "file:///from/the%20portal.fxp";

 private:
  void answer(DBusMessage* call) {
    char* bytes = nullptr;
    int size = 0;
    dbus_message_marshal(call, &bytes, &size);
    asked.assign(bytes, static_cast<std::size_t>(size));
    dbus_free(bytes);
    const std::string token = &asked[asked.find("modrift", asked.find("handle_token"))];
    std::string sender = dbus_message_get_sender(call) + 1;
    std::replace(sender.begin(), sender.end(), '.', '_');
    const std::string request = "/org/freedesktop/portal/desktop/request/" + sender + "/" + token;
    const char* const path = request.c_str();
    DBusMessage* const reply = dbus_message_new_method_return(call);
    dbus_message_append_args(reply, DBUS_TYPE_OBJECT_PATH, &path, DBUS_TYPE_INVALID);
    DBusMessage* const response = dbus_message_new_signal(path, "org.freedesktop.portal.Request", "Response");
    const char* const name = "uris";
    DBusMessageIter top, levels[4];  // array, entry, variant, array: {"uris": <[uri]>}
    dbus_message_iter_init_append(response, &top);
    dbus_message_iter_append_basic(&top, DBUS_TYPE_UINT32, &code);
    dbus_message_iter_open_container(&top, DBUS_TYPE_ARRAY, "{sv}", &levels[0]);
    dbus_message_iter_open_container(&levels[0], DBUS_TYPE_DICT_ENTRY, nullptr, &levels[1]);
    dbus_message_iter_append_basic(&levels[1], DBUS_TYPE_STRING, &name);
    dbus_message_iter_open_container(&levels[1], DBUS_TYPE_VARIANT, "as", &levels[2]);
    dbus_message_iter_open_container(&levels[2], DBUS_TYPE_ARRAY, "s", &levels[3]);
    dbus_message_iter_append_basic(&levels[3], DBUS_TYPE_STRING, &uri);
    for (int i = 3; i >= 0; --i) dbus_message_iter_close_container(i > 0 ? &levels[i - 1] : &top, &levels[i]);
    for (DBusMessage* const message : {reply, response}) {
      dbus_connection_send(bus_, message, nullptr);
      dbus_message_unref(message);
    }
  }

  DBusConnection* bus_ = nullptr;
};

TEST_F(X11Files, ComeFromTheDesktopsPortal) {
  Portal portal;
  if (portal.daemon.address().empty()) GTEST_SKIP() << "dbus-daemon is not installed";
  alsoIdle = [&] { portal.turn(); };
  run(CNewFileSelector::kSelectSaveFile, {X11Platform::Selector::kPortal});
  ASSERT_TRUE(until([&] { return chooser.ended == 1; }));
  EXPECT_EQ(chooser.chosen, std::vector<std::string>{"/from/the portal.fxp"});
  for (const std::string& wanted : {std::string("SaveFile"), std::string("x11:"), std::string("Save preset"),
                                    std::string("current_folder"), folder.string(), std::string("*.fxp")})
    EXPECT_NE(portal.asked.find(wanted), std::string::npos) << wanted;
  EXPECT_EQ(portal.asked.find("directory"), std::string::npos);
  portal.code = 1;
  run(CNewFileSelector::kSelectDirectory, {X11Platform::Selector::kPortal});
  ASSERT_TRUE(until([&] { return chooser.ended == 1; }));
  EXPECT_TRUE(chooser.chosen.empty()) << "cancelled";
  for (const char* const wanted : {"OpenFile", "x11:", "directory"})
    EXPECT_NE(portal.asked.find(wanted), std::string::npos) << wanted;
  struct sigaction pipe {};
  ::sigaction(SIGPIPE, nullptr, &pipe);
  EXPECT_EQ(pipe.sa_handler, SIG_DFL) << "the host's signals are its own";
}

TEST_F(X11Files, ComeFromOurOwnBrowserWhereThereIsNothingElse) {
  using S = X11Platform::Selector;
  xcb_window_t browser = XCB_WINDOW_NONE;
  const auto browse = [&](CNewFileSelector::Style style, const std::vector<std::uint32_t>& keys) {
    run(style,
        style == CNewFileSelector::kSelectFile ? std::vector{S::kPortal, S::kBrowser} : std::vector{S::kBrowser});
    ASSERT_TRUE(until([&] {
      for (const xcb_window_t w : childrenOf(user->root()))
        if (user->property(w, XCB_ATOM_WM_NAME).bytes == "Save preset" && !childrenOf(w).empty())
          browser = childrenOf(w)[0];
      return browser != XCB_WINDOW_NONE;
    }));
    xcb_set_input_focus(*user, XCB_INPUT_FOCUS_PARENT, browser, XCB_CURRENT_TIME);
    for (const std::uint32_t key : keys) type(key);
    if (keys.empty()) xcb_destroy_window(*user, browser);
    ASSERT_TRUE(until([&] { return chooser.ended == 1; }));
    browser = XCB_WINDOW_NONE;
  };
  // Into "Sub", out of it again, and "b.fxp".
  browse(CNewFileSelector::kSelectFile, {XKB_KEY_s, XKB_KEY_Return, XKB_KEY_BackSpace, XKB_KEY_b, XKB_KEY_Return});
  EXPECT_EQ(chooser.chosen, std::vector<std::string>{(folder / "b.fxp").string()});
  // "a.fxp" is there, which the user hears, and so becomes "n".
  browse(CNewFileSelector::kSelectSaveFile, {XKB_KEY_a, XKB_KEY_Return, XKB_KEY_BackSpace, XKB_KEY_n, XKB_KEY_Return});
  EXPECT_EQ(chooser.chosen, std::vector<std::string>{(folder / "n.fxp").string()});
  browse(CNewFileSelector::kSelectFile, {});
  EXPECT_TRUE(chooser.chosen.empty());
}

}  // namespace
