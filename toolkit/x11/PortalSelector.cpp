// SPDX-License-Identifier: MIT
// The desktop portal's file chooser, over a connection of its own to the session bus.

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dbus/dbus.h>
#include <unistd.h>

#include "toolkit/x11/Dnd.h"
#include "toolkit/x11/FileSelectors.h"

namespace VSTGUI::X11 {

namespace {

using namespace std::chrono_literals;
using Kind = FileSelectorRequest::Kind;

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kChooser = "org.freedesktop.portal.FileChooser";
constexpr const char* kRequest = "org.freedesktop.portal.Request";
// Until the portal, which the bus may have to start, has taken the request. Another selector is shown after that.
constexpr int kPatienceMs = 8000;
constexpr std::uint32_t kChosen = 0;  // of a response's codes; 1 is "cancelled"
constexpr std::uint32_t kCancelled = 1;

struct MessageDeleter {
  void operator()(DBusMessage* message) const noexcept { dbus_message_unref(message); }
};
using Message = std::unique_ptr<DBusMessage, MessageDeleter>;

// libdbus would start a bus of its own where none is known; that is for the desktop to do.
bool hasSessionBus() {
  if (const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS")) return *address != 0;
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  return runtime && ::access((std::string(runtime) + "/bus").c_str(), R_OK) == 0;
}

// What libdbus takes as a text: it ends the process for bytes that are no UTF-8.
const char* asText(const std::string& text) { return dbus_validate_utf8(text.c_str(), nullptr) ? text.c_str() : "?"; }

// Has the signal handling of the process stay as it is, which libdbus changes when it connects.
class KeptPipeSignal {
 public:
  KeptPipeSignal() { ::sigaction(SIGPIPE, nullptr, &before_); }
  KeptPipeSignal(const KeptPipeSignal&) = delete;
  KeptPipeSignal& operator=(const KeptPipeSignal&) = delete;
  ~KeptPipeSignal() { ::sigaction(SIGPIPE, &before_, nullptr); }

 private:
  struct sigaction before_ {};
};

// One level of a message being written; closes with its scope.
class Container {
 public:
  Container(DBusMessageIter& outer, int type, const char* signature) : outer_(outer) {
    dbus_message_iter_open_container(&outer_, type, signature, &inner_);
  }
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  ~Container() { dbus_message_iter_close_container(&outer_, &inner_); }
  DBusMessageIter& inner() { return inner_; }
  void append(const std::string& text) {
    const char* const value = asText(text);
    dbus_message_iter_append_basic(&inner_, DBUS_TYPE_STRING, &value);
  }
  void append(std::uint32_t value) { dbus_message_iter_append_basic(&inner_, DBUS_TYPE_UINT32, &value); }
  void append(bool value) {
    const dbus_bool_t word = value;
    dbus_message_iter_append_basic(&inner_, DBUS_TYPE_BOOLEAN, &word);
  }

 private:
  DBusMessageIter& outer_;
  DBusMessageIter inner_{};
};

// An entry of the options: `write` puts the value into the variant.
template <class Write>
void addOption(Container& options, const char* name, const char* signature, const Write& write) {
  Container entry(options.inner(), DBUS_TYPE_DICT_ENTRY, nullptr);
  entry.append(std::string(name));
  Container variant(entry.inner(), DBUS_TYPE_VARIANT, signature);
  write(variant);
}

// A path as the portal has it: bytes with a zero behind them.
void addPathOption(Container& options, const char* name, const std::string& path) {
  addOption(options, name, "ay", [&](Container& variant) {
    Container bytes(variant.inner(), DBUS_TYPE_ARRAY, "y");
    const char* const data = path.c_str();
    dbus_message_iter_append_fixed_array(&bytes.inner(), DBUS_TYPE_BYTE, &data, static_cast<int>(path.size() + 1));
  });
}

void addFilters(Container& options, const std::vector<FileSelectorRequest::Extension>& extensions) {
  addOption(options, "filters", "a(sa(us))", [&](Container& variant) {
    Container filters(variant.inner(), DBUS_TYPE_ARRAY, "(sa(us))");
    for (const auto& extension : extensions) {
      Container filter(filters.inner(), DBUS_TYPE_STRUCT, nullptr);
      filter.append(extension.description);
      Container patterns(filter.inner(), DBUS_TYPE_ARRAY, "(us)");
      Container pattern(patterns.inner(), DBUS_TYPE_STRUCT, nullptr);
      constexpr std::uint32_t kGlob = 0;
      pattern.append(kGlob);
      pattern.append(patternOf(extension));
    }
  });
}

// The texts of the array of strings under "uris" in a response's results.
std::vector<std::string> urisOf(DBusMessageIter results) {
  std::vector<std::string> uris;
  if (dbus_message_iter_get_arg_type(&results) != DBUS_TYPE_ARRAY) return uris;
  DBusMessageIter entries;
  dbus_message_iter_recurse(&results, &entries);
  for (; dbus_message_iter_get_arg_type(&entries) == DBUS_TYPE_DICT_ENTRY; dbus_message_iter_next(&entries)) {
    DBusMessageIter entry;
    DBusMessageIter variant;
    DBusMessageIter texts;
    const char* name = nullptr;
    dbus_message_iter_recurse(&entries, &entry);
    dbus_message_iter_get_basic(&entry, &name);
    if (std::string_view(name) != "uris" || !dbus_message_iter_next(&entry)) continue;
    dbus_message_iter_recurse(&entry, &variant);
    if (dbus_message_iter_get_arg_type(&variant) != DBUS_TYPE_ARRAY) continue;
    dbus_message_iter_recurse(&variant, &texts);
    for (; dbus_message_iter_get_arg_type(&texts) == DBUS_TYPE_STRING; dbus_message_iter_next(&texts)) {
      const char* text = nullptr;
      dbus_message_iter_get_basic(&texts, &text);
      uris.emplace_back(text);
    }
  }
  return uris;
}

class PortalSelector : public FileSelector {
 public:
  PortalSelector(const FileSelectorRequest& request, xcb_window_t owner) {
    if (!hasSessionBus()) return;
    const KeptPipeSignal kept;
    bus_ = dbus_bus_get_private(DBUS_BUS_SESSION, nullptr);
    if (!bus_) return;
    dbus_connection_set_exit_on_disconnect(bus_, FALSE);
    subscribe();
    callPortal(request, owner);
    deadline_ = Clock::now() + std::chrono::milliseconds(kPatienceMs);
  }
  PortalSelector(const PortalSelector&) = delete;
  PortalSelector& operator=(const PortalSelector&) = delete;
  // The portal closes the dialog of a client that goes away.
  ~PortalSelector() override { disconnect(); }

  State poll() override {
    if (!bus_) return State::kUnavailable;
    dbus_connection_read_write(bus_, 0);
    while (const Message message{dbus_connection_pop_message(bus_)}) {
      const State state = take(*message);
      if (state != State::kRunning) {
        disconnect();
        return state;
      }
    }
    const bool late = !taken_ && Clock::now() > deadline_;
    if (!late && dbus_connection_get_is_connected(bus_)) return State::kRunning;
    disconnect();
    return State::kUnavailable;
  }

 private:
  // The path of the request is known beforehand, so that no response comes before we listen.
  void subscribe() {
    static std::atomic<unsigned> number = 0;
    token_ = "modrift" + std::to_string(::getpid()) + "_" + std::to_string(++number);
    std::string sender = dbus_bus_get_unique_name(bus_) + 1;  // without its colon
    for (char& c : sender)
      if (c == '.') c = '_';
    handle_ = std::string(kPath) + "/request/" + sender + "/" + token_;
    listen();
  }

  void listen() {
    const std::string rule = "type='signal',sender='" + std::string(kService) + "',interface='" + kRequest +
                             "',member='Response',path='" + handle_ + "'";
    dbus_bus_add_match(bus_, rule.c_str(), nullptr);
  }

  void callPortal(const FileSelectorRequest& request, xcb_window_t owner) {
    const char* const method = request.kind == Kind::kSave ? "SaveFile" : "OpenFile";
    const Message call(dbus_message_new_method_call(kService, kPath, kChooser, method));
    if (!call) return;
    std::array<char, 32> window{};
    if (owner != kNoWindow) std::snprintf(window.data(), window.size(), "x11:%x", owner);
    const char* const parent = window.data();
    const char* const title = asText(request.title);
    DBusMessageIter arguments;
    dbus_message_iter_init_append(call.get(), &arguments);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, &parent);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, &title);
    addOptions(arguments, request);
    dbus_connection_send(bus_, call.get(), &serial_);
    dbus_connection_flush(bus_);
  }

  void addOptions(DBusMessageIter& arguments, const FileSelectorRequest& request) {
    Container options(arguments, DBUS_TYPE_ARRAY, "{sv}");
    addOption(options, "handle_token", "s", [&](Container& v) { v.append(token_); });
    if (request.kind == Kind::kFolder) addOption(options, "directory", "b", [](Container& v) { v.append(true); });
    if (request.kind == Kind::kOpen && request.allowsMultiple)
      addOption(options, "multiple", "b", [](Container& v) { v.append(true); });
    if (request.kind == Kind::kSave && !request.defaultSaveName.empty())
      addOption(options, "current_name", "s", [&](Container& v) { v.append(request.defaultSaveName); });
    if (!request.initialDirectory.empty()) addPathOption(options, "current_folder", request.initialDirectory);
    if (request.kind != Kind::kFolder && !request.extensions.empty()) addFilters(options, request.extensions);
  }

  State take(DBusMessage& message) {
    const int type = dbus_message_get_type(&message);
    if (type == DBUS_MESSAGE_TYPE_ERROR && dbus_message_get_reply_serial(&message) == serial_)
      return State::kUnavailable;
    if (type == DBUS_MESSAGE_TYPE_METHOD_RETURN && dbus_message_get_reply_serial(&message) == serial_) {
      accepted(message);
      return State::kRunning;
    }
    if (!dbus_message_is_signal(&message, kRequest, "Response") || !dbus_message_has_path(&message, handle_.c_str()))
      return State::kRunning;
    return responded(message);
  }

  // Old portals choose the request's path themselves.
  void accepted(DBusMessage& reply) {
    taken_ = true;
    const char* handle = nullptr;
    if (!dbus_message_get_args(&reply, nullptr, DBUS_TYPE_OBJECT_PATH, &handle, DBUS_TYPE_INVALID) || handle_ == handle)
      return;
    handle_ = handle;
    listen();
  }

  State responded(DBusMessage& response) {
    DBusMessageIter arguments;
    std::uint32_t code = kCancelled + 1;
    if (!dbus_message_iter_init(&response, &arguments)) return State::kUnavailable;
    if (dbus_message_iter_get_arg_type(&arguments) == DBUS_TYPE_UINT32) dbus_message_iter_get_basic(&arguments, &code);
    if (code > kCancelled) return State::kUnavailable;
    if (code == kChosen && dbus_message_iter_next(&arguments))
      for (const std::string& uri : urisOf(arguments))
        if (const auto path = pathOfUri(uri)) paths_.push_back(*path);
    return State::kDone;
  }

  void disconnect() {
    if (!bus_) return;
    dbus_connection_close(bus_);
    dbus_connection_unref(bus_);
    bus_ = nullptr;
  }

  DBusConnection* bus_ = nullptr;
  std::string token_;
  std::string handle_;  // the request's path
  dbus_uint32_t serial_ = 0;
  bool taken_ = false;  // the portal has answered the call
  Clock::time_point deadline_;
};

}  // namespace

std::unique_ptr<FileSelector> portalSelector(const FileSelectorRequest& request, xcb_window_t owner) {
  return std::make_unique<PortalSelector>(request, owner);
}

}  // namespace VSTGUI::X11
