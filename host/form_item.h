// What stands on a form: a hosted control or one of the form model's own boxes.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <string>

#include "base/com_win.h"
#include "host/units.h"

namespace kestrelon::host {

class ContainerWindow;
class Form;

/// The numbers are those of the Align property.
enum class Align : long { kNone = 0, kTop = 1, kBottom = 2, kLeft = 3, kRight = 4 };

/// Counted, so that an item survives its own removal by a handler that it called. The form that
/// owns it closes it; a closed item answers no more.
class FormItem {
 public:
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;

  /// The object that Controls hands out.
  virtual IDispatch* dispatch() = 0;
  /// Its window, or null when it has none of its own.
  virtual HWND window() const = 0;
  /// The object that takes window messages on behalf of a windowless item, or null.
  virtual IOleInPlaceObjectWindowless* windowless() const { return nullptr; }
  virtual IViewObjectEx* view() const { return nullptr; }
  /// What other items can stand on, of an item that carries some; null for any other.
  virtual ContainerWindow* box() { return nullptr; }
  /// Draws an item without a window into its container's surface.
  virtual void draw(HDC) {}

  virtual bool can_focus() const = 0;
  virtual void take_focus() = 0;

  /// The place in client pixels of the container.
  const RECT& bounds() const { return bounds_; }
  void move(const RECT& bounds);
  void set_visible(bool visible);
  void set_align(Align align);
  /// Puts the item on another box of the same form.
  void set_container(ContainerWindow& container);
  void set_tool_tip(const std::wstring& text);

  Form& form() const { return *form_; }
  ContainerWindow& container() const { return *container_; }
  const std::wstring& name() const { return name_; }
  void set_name(const std::wstring& name) { name_ = name; }
  bool visible() const { return visible_; }
  Align align() const { return align_; }
  const std::wstring& tool_tip() const { return tool_tip_; }
  bool closed() const { return closed_; }

  /// Ends the item: no window, no site, no back pointers in use after this.
  void close();

  std::wstring tag;
  bool tab_stop = true;
  bool is_default = false;
  bool is_cancel = false;

 protected:
  FormItem(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds);
  virtual ~FormItem() = default;

  /// Sets the first visibility without showing or hiding anything.
  void start_visible(bool visible) { visible_ = visible; }

  friend class ContainerWindow;  // places again what a new size shows more or less of
  virtual void place() = 0;
  virtual void show(bool visible) = 0;
  virtual void enter_container() = 0;
  virtual void leave_container() = 0;
  virtual void on_close() = 0;

  RECT bounds_;

 private:
  Form* form_;
  ContainerWindow* container_;
  std::wstring name_;
  std::wstring tool_tip_;
  Align align_ = Align::kNone;
  bool visible_ = true;
  bool closed_ = false;
};

}  // namespace kestrelon::host
