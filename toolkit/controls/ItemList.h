// SPDX-License-Identifier: MIT
// A list of items, one a row, that scrolls and in which one or several are selected, by mouse and by keys. [ui]
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/views/CView.h"

namespace VSTGUI {

class ItemList : public CView {
 public:
  struct Item {
    std::string title;
    std::string name;       // by whose first letter a key finds the item
    bool isFolder = false;  // has a folder's sign
  };
  // Who uses the list; what isn't set isn't told.
  struct Listener {
    std::function<void()> selectionChanged;              // by the user
    std::function<void(std::size_t item)> activated;     // by a double-click
    std::function<bool(const VstKeyCode& key)> keyDown;  // a key that moves nothing here; true when it was of use
  };
  ItemList(const CRect& size, Listener listener);

  // Selects none and scrolls to the top.
  void setItems(std::vector<Item> items);
  // Whether Control adds to the selection.
  void setAllowsMultiple(bool allows) { allowsMultiple_ = allows; }
  // In the order of the list.
  [[nodiscard]] std::vector<std::size_t> selection() const;

  void draw(CDrawContext* context) override;
  CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
  CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
  bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) override;
  std::int32_t onKeyDown(VstKeyCode& key) override;

 private:
  [[nodiscard]] CRect rows() const;
  [[nodiscard]] CRect rowAt(std::size_t index) const;
  [[nodiscard]] double maxTop() const;
  [[nodiscard]] CRect thumb() const;
  void dragThumb(double y);
  void scrollTo(double top);
  void select(std::size_t index, bool add);
  // To the nearest item that there is.
  void moveTo(std::ptrdiff_t index);
  bool moveKey(const VstKeyCode& key);
  bool jumpTo(std::int32_t character);
  void drawRow(CDrawContext& context, std::size_t index) const;

  Listener listener_;
  bool allowsMultiple_ = false;
  std::vector<Item> items_;
  std::vector<bool> selected_;
  std::size_t current_ = 0;
  double top_ = 0;    // how far the rows are scrolled, in units
  double gripY_ = 0;  // where the thumb is held
};

}  // namespace VSTGUI
