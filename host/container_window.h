// A window that items stand on: the form itself and each of its boxes. It paints the background and
// the windowless items, and passes window messages on to those.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <string>
#include <vector>

#include "base/com_win.h"
#include "host/drop_forwarder.h"
#include "host/form_item.h"
#include "host/units.h"

namespace kestrelon::host {

class ContainerWindow {
 public:
  ContainerWindow(const ContainerWindow&) = delete;
  ContainerWindow& operator=(const ContainerWindow&) = delete;

  HWND hwnd() const { return hwnd_; }
  virtual IDispatch* container_dispatch() = 0;

  /// Items from the topmost down.
  const std::vector<FormItem*>& items() const { return items_; }
  void add_item(FormItem& item);
  void remove_item(FormItem& item);
  /// Puts the item above or below its siblings.
  void order_item(FormItem& item, bool to_front);
  void align_items();
  /// Tells items whose place is their own how much of it the container shows now.
  void clip_items();
  /// Before the window goes that the items stand on, and once there is another.
  void take_items_out();
  void put_items_in();
  /// Keeps the tip of an item over its place.
  void update_tip(FormItem& item);

  void invalidate(const RECT& area);
  /// Paints background, picture and windowless items.
  void paint(HDC hdc);
  /// Paints background and picture only, for a windowless item that asks for what lies behind it.
  virtual void paint_background(HDC hdc);

  /// Capture and focus on behalf of windowless items; null gives them up.
  void set_captured(FormItem* item);
  FormItem* captured() const { return captured_; }
  void set_focused(FormItem* item);
  FormItem* focused() const { return focused_; }

  /// Has what is dragged over the window handed to the windowless items; off at the start. OLE must
  /// be running on the thread.
  void set_accepts_drops(bool accept);

  ScaleMode scale_mode() const { return scale_mode_; }
  void set_scale_mode(ScaleMode mode) { scale_mode_ = mode; }
  OLE_COLOR back_color() const { return back_color_; }
  void set_back_color(OLE_COLOR color);
  const ComPtr<IPictureDisp>& picture() const { return picture_; }
  void set_picture(ComPtr<IPictureDisp> picture);
  long mouse_pointer() const { return mouse_pointer_; }
  void set_mouse_pointer(long pointer) { mouse_pointer_ = pointer; }

 protected:
  ContainerWindow() = default;
  virtual ~ContainerWindow();

  /// Makes the window; throws std::runtime_error when the system refuses.
  void create_window(const wchar_t* class_name, const std::wstring& caption, DWORD style,
                     DWORD ex_style, const RECT& bounds, HWND parent);
  void destroy_window();
  /// Takes a window that belongs to another for its own; null lets go of it.
  void adopt(HWND window) { hwnd_ = window; }
  /// Hands a message to the windowless item it is for; true when `result` is its answer.
  bool forward(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);
  /// Answers WM_PAINT by one picture of background and windowless items.
  void on_paint();
  void paint_items(HDC hdc);
  bool has_windowless_items() const;
  /// An override answers what it handles and passes the rest on to this one.
  virtual LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam);
  virtual void paint_over(HDC) {}

 private:
  static LRESULT CALLBACK window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  static void register_class(const wchar_t* class_name);

  FormItem* target_of_mouse(POINT client);
  FormItem* hit(POINT client);
  static bool send(FormItem* item, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result);

  HWND hwnd_ = nullptr;
  HWND tips_ = nullptr;
  ComPtr<DropForwarder> drops_;
  std::vector<FormItem*> items_;
  FormItem* captured_ = nullptr;
  FormItem* focused_ = nullptr;
  FormItem* hovered_ = nullptr;
  ScaleMode scale_mode_ = ScaleMode::kTwip;
  OLE_COLOR back_color_ = 0x8000000F;
  ComPtr<IPictureDisp> picture_;
  long mouse_pointer_ = 0;
};

}  // namespace kestrelon::host
