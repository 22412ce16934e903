// A window that drops out of a control: the list of a combo, a calendar, a drawn tip.
//
// It is a top-level window owned by the control's, and never active: the focus and the keys stay
// with the control. It goes by itself on a press outside (which still reaches its target), when the
// program is left, and when the control moves, hides, is disabled or dies. One is open per thread.
// None of this needs a word from the container, which may pump messages as it likes.
#pragma once

#include <windows.h>

#include "base/automation_win.h"
#include "frame/kit/scale.h"
#include "frame/popup/popup_watch.h"
#include "frame/surface.h"

namespace kestrelon {

/// Who fills a popup and hears of its end. A handler may destroy the control meanwhile.
class PopupOwner {
 public:
  /// Draws everything on a surface of the popup's size.
  virtual void popup_draw(Surface& surface) = 0;
  /// First look at a message of the popup's window: the mouse in its client pixels, WM_GETOBJECT
  /// ...; true when `result` is the answer.
  virtual bool popup_message(UINT, WPARAM, LPARAM, LRESULT& /*result*/) { return false; }
  /// It is closed already; not called when the owner itself calls close().
  virtual void popup_closed(PopupEnd why) = 0;

 protected:
  ~PopupOwner() = default;
};

/// Where a popup goes: below the anchor, above it where there is more room, inside the work area.
struct PopupPlace {
  RECT anchor{};  ///< screen
  SIZE size{};    ///< pixels, frame included
  bool align_right = false;
};

/// The rectangle on the screen that a place means within a work area.
RECT popup_rect(const PopupPlace& place, const RECT& work_area);

class Popup final : private PopupWatcher {
 public:
  Popup() = default;
  ~Popup() { close(); }
  Popup(const Popup&) = delete;
  Popup& operator=(const Popup&) = delete;

  /// Opens at a place for a control's window. `control` is kept alive while messages are handled.
  /// Closes what was open on this thread (its owner hears kReplaced). False without a window.
  bool open(HWND window, AutomationObject& control, PopupOwner& owner, const PopupPlace& place);
  /// Closes without telling the owner.
  void close();
  bool is_open() const { return window_ != nullptr; }
  HWND hwnd() const { return window_; }
  Surface& surface() { return surface_; }
  /// Draws again and shows it.
  void redraw();
  /// Shows a part that the owner has drawn on the surface.
  void invalidate(const RECT& part);
  void move(const PopupPlace& place);

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  void paint();
  HWND popup_window() const override { return window_; }
  void end(PopupEnd why) override;

  AutomationObject* control_ = nullptr;
  PopupOwner* owner_ = nullptr;
  HWND window_ = nullptr;
  Surface surface_;
  PopupWatch watch_{*this};
};

}  // namespace kestrelon
