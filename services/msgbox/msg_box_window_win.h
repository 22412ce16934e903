// The window of a message box and its modal loop.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/us_button/us_button.h"
#include "controls/us_check_box/us_check_box.h"
#include "frame/accessible/accessible_object.h"
#include "frame/inner/inner_control.h"
#include "frame/kit/text_lines.h"
#include "frame/surface.h"
#include "imaging/dib_win.h"
#include "services/msgbox/msg_box_layout.h"
#include "services/msgbox/msg_box_rules.h"

namespace kestrelon {

/// What a box shows.
struct MsgBoxRequest {
  std::wstring text, title;
  msg_box::Rules rules;
  ENUM_THEME theme = Windows_8;
  std::vector<std::wstring> captions;  ///< in place of the usual ones where not empty
  std::wstring check_caption;
  bool checked = false;
  std::wstring details;
  ComPtr<IPictureDisp> picture;
  bool sound = true;
  long time_out = 0;               ///< seconds; 0 waits for ever
  std::function<void(long)> tick;  ///< seconds left; may do anything
};

/// One showing. Lives on the stack of the call that shows it, whatever its handlers do.
class MsgBoxWindow final : private AccessibleView, private AccessibleHost {
 public:
  explicit MsgBoxWindow(const MsgBoxRequest& request);
  ~MsgBoxWindow();
  MsgBoxWindow(const MsgBoxWindow&) = delete;
  MsgBoxWindow& operator=(const MsgBoxWindow&) = delete;

  /// Shows the box over `owner` (null for none) until it is answered.
  msg_box::Answer run(HWND owner);
  void close(msg_box::Answer answer);
  bool timed_out() const { return timed_out_; }
  bool checked() const { return checked_; }

 private:
  using ButtonControl = InnerControl<USButton>;

  // msg_box_window_win.cpp
  bool create();
  void make_parts();
  std::unique_ptr<ButtonControl> make_button(const std::wstring& caption,
                                             std::function<void()> click);
  void announce();
  void drop_parts();
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT handle(UINT message, WPARAM wparam, LPARAM lparam);
  void second_passed();
  void toggle_details();

  // msg_box_loop_win.cpp
  void loop();
  void take_owner(HWND owner);
  void release_owner();
  bool translate(const MSG& message);
  bool translate_key(WPARAM key, bool alt);
  bool translate_letter(wchar_t letter);
  std::vector<HWND> stops() const;
  void move_focus(int step, bool among_buttons);
  void copy() const;

  // msg_box_draw_win.cpp
  void measure();
  void lay_out();
  void place_parts();
  void draw();
  void draw_strip();
  void draw_text(const PixelRect& view);
  void draw_line(const TextLine& line, int top);
  void paint();
  void scroll_to(int top);
  void scroll_by_bar(int code);
  int link_at(POINT point) const;
  RECT link_rect(const msg_box::Link& link, const TextLine& line, int top) const;
  HFONT font() const;
  LRESULT hit_test(POINT screen) const;

  // msg_box_accessible_win.cpp
  long accessible_count() const override;
  bool accessible_item(long child, AccessibleItem& item) const override;
  ComPtr<IDispatch> accessible_object(long child) const override;
  AccessibleView* accessible_view() override { return this; }
  HWND accessible_window(RECT& place) const override;
  bool accessible_focused() const override { return GetActiveWindow() == window_; }
  bool accessible_enabled() const override { return IsWindowEnabled(window_) != FALSE; }
  void accessible_take_focus() override { SetFocus(window_); }
  IUnknown* accessible_life() override { return nullptr; }

  const MsgBoxRequest& request_;
  std::vector<std::wstring> captions_;
  msg_box::Answer escape_;
  HWND owner_ = nullptr;
  bool owner_was_enabled_ = false;
  HWND focus_before_ = nullptr;
  HWND window_ = nullptr;
  HWND bar_ = nullptr;
  HWND details_ = nullptr;
  HWND last_focus_ = nullptr;
  bool done_ = false;
  msg_box::Answer answer_ = msg_box::kNone;
  bool timed_out_ = false;
  bool checked_ = false;
  bool details_open_ = false;
  ULONGLONG deadline_ = 0;
  long seconds_left_ = 0;

  Ambient ambient_;
  std::vector<std::unique_ptr<ButtonControl>> buttons_;
  std::unique_ptr<ButtonControl> details_button_;
  std::unique_ptr<InnerControl<USCheckBox>> check_;
  ComPtr<AccessibleObject> accessible_;

  Scale scale_;
  msg_box::Places places_;
  std::vector<int> ends_;
  std::vector<TextLine> lines_;
  std::vector<msg_box::Link> links_;
  int line_height_ = 0;
  int scroll_ = 0;  // pixels of the text above its view
  WindowsImage picture_;
  Surface surface_;
};

/// The theme that the form skin of a window asks for; Windows 8 without one.
ENUM_THEME theme_of_owner(HWND owner);

/// A registered message that a form skin answers with its theme + 1.
inline constexpr wchar_t kFormThemeMessage[] = L"Kestrelon2012.FormTheme";

}  // namespace kestrelon
