// A real edit box of the system inside a control, with the control's font and colours: selection,
// input methods, clipboard, undo, screen readers and right-to-left are as everywhere in Windows.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "frame/inner/inner_window.h"

namespace kestrelon {

class ChildEdit;

/// Who is told of an edit box's life, beside what the control hears of keys, mouse and focus.
class ChildEditOwner {
 public:
  /// The text has changed, by the user or by set_text().
  virtual void edit_changed(ChildEdit&) {}
  /// First look at a message (WM_PASTE, WM_CUT, WM_UNDO, WM_CONTEXTMENU, WM_IME_..., WM_DROPFILES
  /// ...); true when `result` is the answer. Keys come to the control before.
  virtual bool edit_message(ChildEdit&, UINT, WPARAM, LPARAM, LRESULT&) { return false; }

 protected:
  ~ChildEditOwner() = default;
};

/// A range of characters, `end` behind the last one; both ends equal: the caret.
struct TextRange {
  int start = 0;
  int end = 0;
  bool operator==(const TextRange&) const = default;
};

class ChildEdit final : public InnerWindow {
 public:
  ChildEdit(InnerWindowHost& host, ChildEditOwner& owner) : InnerWindow(host), owner_(owner) {}
  ~ChildEdit() override;

  /// Makes the box, in pixels of the control and hidden; `style` are ES_ and WS_ bits.
  bool create(DWORD style, const RECT& place);
  /// Not owned: it must live as long as the box shows it.
  void set_font(HFONT font);
  void set_colors(COLORREF text, COLORREF back);

  std::wstring text() const;
  /// Does nothing when the text is there already, so that caret and undo stay.
  void set_text(std::wstring_view text);
  TextRange selection() const;
  void select(TextRange range);
  void select_all() { select({0, -1}); }
  /// As if typed: undo takes it back.
  void replace_selection(std::wstring_view text);
  /// The system refuses longer typing; 0 is no limit.
  void set_limit(int characters);
  void set_read_only(bool read_only);
  /// Hint drawn while the box is empty, with the focus too; the system's own would need a newer
  /// library in the host.
  void set_cue(const std::wstring& text, COLORREF color);
  /// The height that one line of the font needs, in pixels.
  int line_height() const;

  void command(UINT code) override;
  HBRUSH colors(HDC dc) override;

 protected:
  bool message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;

 private:
  bool paint_cue();

  ChildEditOwner& owner_;
  std::wstring cue_;
  COLORREF cue_color_ = 0;
  bool showed_empty_ = true;
  HBRUSH brush_ = nullptr;
  COLORREF text_color_ = 0;
  COLORREF back_color_ = 0xFFFFFF;
};

}  // namespace kestrelon
