// KN_MSGBOX: the message box with all it can do.
#pragma once

#include "kn_msgbox_glue.h"
#include "services/msgbox/msg_box_window_win.h"

namespace kestrelon {

class KN_MSGBOX final : public KN_MSGBOXGlue<KN_MSGBOX, AutomationObject> {
 public:
  ENUM_THEME theme() const { return theme_; }
  void set_theme(ENUM_THEME theme) { theme_ = theme; }
  std::wstring button_caption(short index) const;
  void set_button_caption(short index, std::wstring caption);
  std::wstring check_box_caption() const { return values_.check_caption; }
  void set_check_box_caption(std::wstring caption) { values_.check_caption = std::move(caption); }
  bool check_box_value() const { return values_.checked; }
  void set_check_box_value(bool checked) { values_.checked = checked; }
  std::wstring details() const { return values_.details; }
  void set_details(std::wstring text) { values_.details = std::move(text); }
  ComPtr<IPictureDisp> picture() const { return values_.picture; }
  void set_picture(IPictureDisp* picture) { values_.picture = ComPtr<IPictureDisp>(picture); }
  bool sound() const { return values_.sound; }
  void set_sound(bool sound) { values_.sound = sound; }
  long time_out() const { return values_.time_out; }
  void set_time_out(long seconds);
  bool timed_out() const { return timed_out_; }

  long show(std::wstring text, long buttons, std::wstring title, long owner);
  /// Closes the box opened last by this object.
  void close_box(long result);

 private:
  static constexpr short kMostButtons = 3;

  MsgBoxRequest values_;
  ENUM_THEME theme_ = Windows_8;
  bool timed_out_ = false;
  std::vector<MsgBoxWindow*> open_;  // innermost last; each lives on the stack of its show()
};

/// `USMsgBox` and `USMsgBoxEx`: in the theme of the owner's skin.
long show_message(HWND owner, const std::wstring& text, long buttons, const std::wstring& title);

}  // namespace kestrelon
