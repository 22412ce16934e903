// A control of the host's form that edits the cells of a column in place of the grid's own box: any
// object with some of the usual members, with a window or without one.
#pragma once

#include "services/late_object_win.h"

namespace kestrelon {

/// What a grid hears of a control that edits one of its cells. The grid holds itself meanwhile.
class BoundEditorOwner {
 public:
  /// Tab, Enter or Escape was pressed in the control and is kept from it. Posted to the grid's
  /// window, so that a handler runs outside of the system's hook.
  virtual UINT bound_key_message() const = 0;
  /// The focus has gone from the control to a window outside of it.
  virtual void bound_left(HWND to) = 0;
  /// The control's window dies under the edit.
  virtual void bound_gone() = 0;

 protected:
  ~BoundEditorOwner() = default;
};

/// Colors as OLE_COLOR, font bits as the cell has them.
struct BoundLook {
  uint32_t fore_color = 0, back_color = 0;
  bool bold = false, italic = false, underline = false, strikethrough = false;
  std::wstring font_name;
  double font_size = 8;  ///< points
};

class BoundEditor {
 public:
  explicit BoundEditor(BoundEditorOwner& owner) : owner_(owner) {}
  ~BoundEditor() { drop(); }
  BoundEditor(const BoundEditor&) = delete;
  BoundEditor& operator=(const BoundEditor&) = delete;

  /// Gives the control the text of a cell; what it makes of that counts as unchanged.
  void take(IDispatch* control, const std::wstring& text);
  IDispatch* control() const { return control_.get(); }
  /// Moves the control into the grid's window and dresses it; the grid places it and then shows it.
  void open(HWND grid, const BoundLook& look);
  /// `bits` of GRID_MOVE_CONTROL, `cell` in pixels of the grid.
  void place(const RECT& cell, long bits);
  void show();
  /// Hides the control and gives it back. The focus goes to the grid if the control had it.
  void close(bool keep_focus);
  /// Lets go of a control that was taken and not opened, or that is dying.
  void drop();

  bool active() const { return active_; }
  HWND window() const { return window_; }
  bool has_focus() const;
  std::wstring text();
  void set_text(const std::wstring& text);
  /// Whether `text` is what take() left in the control.
  bool unchanged(const std::wstring& text) const { return text == taken_; }

 private:
  HWND find_window();
  bool put(const wchar_t* name, const Variant& value);
  void move_side(const wchar_t* name, int pixels, double unit);
  double unit_pixels();

  BoundEditorOwner& owner_;
  LateObject control_;
  HWND window_ = nullptr;  // null for a control without one
  HWND grid_ = nullptr;
  HWND saved_parent_ = nullptr;
  std::wstring taken_;
  bool active_ = false;
};

}  // namespace kestrelon
