// SPDX-License-Identifier: MIT
// What a key event means under the user's keyboard layout. [ui]
#pragma once

#include <memory>
#include <vector>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include "toolkit/base/Events.h"
#include "toolkit/x11/Connection.h"

namespace VSTGUI::X11 {

class Keyboard {
 public:
  explicit Keyboard(Connection& connection);
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  // True for an event of the keyboard extension, which is seen to: the layout is read anew when it changed.
  bool takes(const xcb_generic_event_t& event);
  // The keys to report: one as a rule, one a character for the text of a dead key, none while that is being composed.
  [[nodiscard]] std::vector<VstKeyCode> pressed(const xcb_key_press_event_t& event);
  [[nodiscard]] VstKeyCode released(const xcb_key_press_event_t& event);
  // Forgets a half composed character.
  void reset();

 private:
  template <auto unref>
  struct Unref {
    template <class T>
    void operator()(T* object) const noexcept {
      unref(object);
    }
  };

  void readLayout();
  void openCompose();
  [[nodiscard]] VstKeyCode translate(const xcb_key_press_event_t& event);
  // The character that shortcuts go by: of the first layout that has an ASCII letter on the key.
  [[nodiscard]] std::int32_t shortcutCharacter(xcb_keycode_t key) const;

  Connection& connection_;
  std::uint8_t firstEvent_ = 0;  // of the keyboard extension; 0 without it
  std::int32_t device_ = -1;
  std::unique_ptr<xkb_context, Unref<xkb_context_unref>> context_;
  std::unique_ptr<xkb_keymap, Unref<xkb_keymap_unref>> keymap_;
  std::unique_ptr<xkb_state, Unref<xkb_state_unref>> state_;
  std::unique_ptr<xkb_compose_table, Unref<xkb_compose_table_unref>> composeTable_;
  std::unique_ptr<xkb_compose_state, Unref<xkb_compose_state_unref>> compose_;
  bool composeTried_ = false;
};

}  // namespace VSTGUI::X11
