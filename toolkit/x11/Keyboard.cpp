// SPDX-License-Identifier: MIT
#include "toolkit/x11/Keyboard.h"

#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "toolkit/base/Utf8.h"
#include "toolkit/x11/ButtonWord.h"

// The header has a field of the name `explicit`.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace VSTGUI::X11 {

namespace {

constexpr std::uint16_t kStateMask = 0xff;  // of the modifiers in an event's state; the layout's number is above
constexpr int kGroupShift = 13;
constexpr std::uint16_t kGroupMask = 3;

struct KeyName {
  xkb_keysym_t symbol;
  std::uint8_t virt;
};
constexpr auto kKeyNames = std::to_array<KeyName>({
    {XKB_KEY_BackSpace, VKEY_BACK},
    {XKB_KEY_Tab, VKEY_TAB},
    {XKB_KEY_ISO_Left_Tab, VKEY_TAB},
    {XKB_KEY_Return, VKEY_RETURN},
    {XKB_KEY_Escape, VKEY_ESCAPE},
    {XKB_KEY_space, VKEY_SPACE},
    {XKB_KEY_End, VKEY_END},
    {XKB_KEY_Home, VKEY_HOME},
    {XKB_KEY_Left, VKEY_LEFT},
    {XKB_KEY_Up, VKEY_UP},
    {XKB_KEY_Right, VKEY_RIGHT},
    {XKB_KEY_Down, VKEY_DOWN},
    {XKB_KEY_Page_Up, VKEY_PAGEUP},
    {XKB_KEY_Page_Down, VKEY_PAGEDOWN},
    {XKB_KEY_KP_Enter, VKEY_ENTER},
    {XKB_KEY_Insert, VKEY_INSERT},
    {XKB_KEY_Delete, VKEY_DELETE},
    {XKB_KEY_KP_End, VKEY_END},
    {XKB_KEY_KP_Home, VKEY_HOME},
    {XKB_KEY_KP_Left, VKEY_LEFT},
    {XKB_KEY_KP_Up, VKEY_UP},
    {XKB_KEY_KP_Right, VKEY_RIGHT},
    {XKB_KEY_KP_Down, VKEY_DOWN},
    {XKB_KEY_KP_Page_Up, VKEY_PAGEUP},
    {XKB_KEY_KP_Page_Down, VKEY_PAGEDOWN},
    {XKB_KEY_KP_Insert, VKEY_INSERT},
    {XKB_KEY_KP_Delete, VKEY_DELETE},
    {XKB_KEY_Shift_L, VKEY_SHIFT},
    {XKB_KEY_Shift_R, VKEY_SHIFT},
    {XKB_KEY_Control_L, VKEY_CONTROL},
    {XKB_KEY_Control_R, VKEY_CONTROL},
    {XKB_KEY_Alt_L, VKEY_ALT},
    {XKB_KEY_Alt_R, VKEY_ALT},
});

std::uint8_t virtualKey(xkb_keysym_t symbol) {
  if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F12) return static_cast<std::uint8_t>(VKEY_F1 + (symbol - XKB_KEY_F1));
  const auto row =
      std::find_if(kKeyNames.begin(), kKeyNames.end(), [&](const KeyName& name) { return name.symbol == symbol; });
  return row == kKeyNames.end() ? std::uint8_t{0} : row->virt;
}

std::uint8_t keyModifiers(std::uint16_t state) {
  const std::int32_t held = modifiersOf(state);
  return static_cast<std::uint8_t>((held & kShift ? MODIFIER_SHIFT : 0) | (held & kControl ? MODIFIER_CONTROL : 0) |
                                   (held & kAlt ? MODIFIER_ALTERNATE : 0) | (held & kApple ? MODIFIER_COMMAND : 0));
}

const char* localeName() {
  for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"})
    if (const char* const value = std::getenv(variable); value && *value) return value;
  return "C";
}

}  // namespace

Keyboard::Keyboard(Connection& connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES)) {
  if (!context_) return;
  if (xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                  XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr)) {
    device_ = xkb_x11_get_core_keyboard_device_id(connection);
    constexpr std::uint16_t kEvents = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                     XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, kEvents, kParts, kParts, nullptr);
  }
  readLayout();
}

void Keyboard::readLayout() {
  keymap_.reset(
      device_ < 0 ? nullptr
                  : xkb_x11_keymap_new_from_device(context_.get(), connection_, device_, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap_) keymap_.reset(xkb_keymap_new_from_names(context_.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
  state_.reset(keymap_ ? xkb_state_new(keymap_.get()) : nullptr);
}

bool Keyboard::takes(const xcb_generic_event_t& event) {
  if (firstEvent_ == 0 || eventType(event) != firstEvent_) return false;
  const auto kind = event.pad0;  // where all events of the extension have their kind
  if (kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY) readLayout();
  return true;
}

void Keyboard::openCompose() {
  if (composeTried_) return;
  composeTried_ = true;
  composeTable_.reset(xkb_compose_table_new_from_locale(context_.get(), localeName(), XKB_COMPOSE_COMPILE_NO_FLAGS));
  if (composeTable_) compose_.reset(xkb_compose_state_new(composeTable_.get(), XKB_COMPOSE_STATE_NO_FLAGS));
}

void Keyboard::reset() {
  if (compose_) xkb_compose_state_reset(compose_.get());
}

std::int32_t Keyboard::shortcutCharacter(xcb_keycode_t key) const {
  const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
  for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, 0, &symbols) != 1) continue;
    const std::uint32_t character = xkb_keysym_to_utf32(symbols[0]);
    if (character > 0x20 && character < 0x7f) return static_cast<std::int32_t>(character);
  }
  return 0;
}

VstKeyCode Keyboard::translate(const xcb_key_press_event_t& event) {
  VstKeyCode code;
  code.modifier = keyModifiers(event.state);
  if (!state_) return code;
  xkb_state_update_mask(state_.get(), event.state & kStateMask, 0, 0, 0, 0,
                        static_cast<xkb_layout_index_t>(event.state >> kGroupShift & kGroupMask));
  const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_.get(), event.detail);
  code.virt = virtualKey(symbol);
  if ((code.modifier & (MODIFIER_CONTROL | MODIFIER_COMMAND)) != 0) {
    code.character = shortcutCharacter(event.detail);
  } else if (code.virt == 0 || code.virt == VKEY_SPACE) {
    code.character = static_cast<std::int32_t>(xkb_keysym_to_utf32(symbol));
  }
  return code;
}

std::vector<VstKeyCode> Keyboard::pressed(const xcb_key_press_event_t& event) {
  VstKeyCode code = translate(event);
  if (code.virt == VKEY_SHIFT || code.virt == VKEY_CONTROL || code.virt == VKEY_ALT) return {code};
  openCompose();
  if (!state_ || !compose_) return {code};
  xkb_compose_state_feed(compose_.get(), xkb_state_key_get_one_sym(state_.get(), event.detail));
  switch (xkb_compose_state_get_status(compose_.get())) {
    case XKB_COMPOSE_NOTHING:
      return {code};
    case XKB_COMPOSE_COMPOSED:
      break;
    case XKB_COMPOSE_CANCELLED:
    case XKB_COMPOSE_COMPOSING:
      return {};
  }
  char text[64] = {};
  xkb_compose_state_get_utf8(compose_.get(), text, sizeof text);
  xkb_compose_state_reset(compose_.get());
  std::vector<VstKeyCode> codes;
  for (const std::int32_t character : charactersOf(text)) codes.push_back({character, 0, code.modifier});
  return codes;
}

VstKeyCode Keyboard::released(const xcb_key_press_event_t& event) { return translate(event); }

}  // namespace VSTGUI::X11
