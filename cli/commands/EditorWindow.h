// SPDX-License-Identifier: MIT
// The window that `modrift edit` puts round a plug-in's editor: an X11 window of a fixed size, as music programs make.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace modrift::cli {

class EditorWindow {
 public:
  // Throws RunError without a display.
  EditorWindow(int widthPx, int heightPx, const std::string& title);
  ~EditorWindow();
  EditorWindow(const EditorWindow&) = delete;
  EditorWindow& operator=(const EditorWindow&) = delete;

  // As effEditOpen takes it.
  [[nodiscard]] void* parent() const noexcept;
  void show();
  void resize(int widthPx, int heightPx);
  // Takes the events that came within the time. False once the user has closed the window or the display is gone.
  [[nodiscard]] bool processEvents(int milliseconds);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace modrift::cli
