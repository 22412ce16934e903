// The list that drops out of a text box with what the typed text may become.
#pragma once

#include <string>
#include <vector>

#include "frame/popup/popup.h"

namespace kestrelon {

class SuggestionOwner {
 public:
  /// The user has chosen; the list is closed.
  virtual void suggestion_taken(const std::wstring& text) = 0;

 protected:
  ~SuggestionOwner() = default;
};

class SuggestionList final : private PopupOwner {
 public:
  struct Style {
    HFONT font = nullptr;  // not owned; must live while the list is open
    COLORREF text = 0, back = 0xFFFFFF, border = 0;
  };

  explicit SuggestionList(SuggestionOwner& owner) : owner_(owner) {}

  /// Shows the items below a control's window, or closes when there are none.
  void show(HWND window, AutomationObject& control, std::vector<std::wstring> items,
            const Style& style);
  void close();
  bool is_open() const { return popup_.is_open(); }
  /// One of the items is marked, so Enter takes it.
  bool has_choice() const { return is_open() && chosen_ >= 0; }
  /// Up, Down, Enter and Escape while the list is open; true when the key was used.
  bool key(int key);

 private:
  void popup_draw(Surface& surface) override;
  bool popup_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void popup_closed(PopupEnd why) override;
  void choose(int index);
  void take(int index);

  SuggestionOwner& owner_;
  Popup popup_;
  std::vector<std::wstring> items_;
  Style style_;
  int chosen_ = -1;
  int row_height_ = 0;
};

}  // namespace kestrelon
