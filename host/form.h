// A form: a top-level window that hosts controls, with the object model that code behind it and
// the controls on it reach late-bound.
#pragma once

#include <windows.h>
//
#include <ocidl.h>

#include <functional>
#include <string>
#include <vector>

#include "host/ambients.h"
#include "host/container_window.h"
#include "host/control_site.h"
#include "host/drawn_item.h"
#include "host/frame_box.h"

namespace kestrelon::host {

class FormObject;

/// The numbers are those of the BorderStyle property.
enum class FormBorder : long {
  kNone = 0,
  kFixedSingle = 1,
  kSizable = 2,
  kFixedDialog = 3,
  kFixedTool = 4,
  kSizableTool = 5,
};

struct FormOptions {
  std::wstring name = L"Form1";
  std::wstring caption = L"Form1";
  /// Client size in pixels.
  int width = 480;
  int height = 320;
  FormBorder border = FormBorder::kSizable;
  ScaleMode scale_mode = ScaleMode::kTwip;
  /// False hosts the controls as a designer does.
  bool user_mode = true;
};

class Form final : public ContainerWindow {
 public:
  explicit Form(const FormOptions& options = {});
  ~Form() override;

  const std::wstring& name() const { return name_; }
  /// The late-bound object of the form; it outlives the form and answers error 398 from then on.
  IDispatch* dispatch() const;
  IDispatch* container_dispatch() override { return dispatch(); }

  /// Items. Names are compared without case; an empty name is made from the class and a number. The
  /// box is the form itself when none is given. A bounds rectangle in client pixels of the box; an
  /// empty one keeps the size that the control asks for. Throws ComError: 727 for a name that is
  /// taken, the control's own failure otherwise.
  ComPtr<ControlSite> add_control(const std::wstring& prog_id, const std::wstring& name,
                                  const RECT& bounds, ContainerWindow* box = nullptr,
                                  const ControlState& state = {});
  ComPtr<ControlSite> add_object(ComPtr<IUnknown> control, const std::wstring& name,
                                 const RECT& bounds, ContainerWindow* box = nullptr,
                                 const ControlState& state = {});
  ComPtr<FrameBox> add_frame(const std::wstring& name, const RECT& bounds,
                             ContainerWindow* box = nullptr);
  /// An item that `painter` draws, named by a number.
  ComPtr<DrawnItem> add_drawing(const RECT& bounds, DrawnItem::Painter painter,
                                ContainerWindow* box = nullptr);
  void remove(FormItem& item);
  void remove_items_of(ContainerWindow& box);
  /// In the order of their making.
  const std::vector<ComPtr<FormItem>>& all_items() const { return all_; }
  FormItem* find(const std::wstring& name) const;
  /// The box that a Container object stands for; throws ComError 380 for a foreign one.
  ContainerWindow& box_of(IDispatch* container);
  /// Makes the object of a ProgID; the system's registry unless replaced.
  std::function<ComPtr<IUnknown>(const std::wstring& prog_id)> create_object;

  void show();
  void hide();
  /// Asks the code behind (QueryUnload, Unload), then closes all items and the window. False when
  /// the code refused.
  bool unload(int mode = 1);
  bool loaded() const { return hwnd() != nullptr; }
  RECT window_rect() const;
  void move_window(const RECT& outer);
  void set_client_size(int width, int height);
  FormBorder border() const { return border_; }
  void set_border(FormBorder border);
  long window_state() const;
  void set_window_state(long state);
  std::wstring caption() const;
  HFONT font_handle();

  /// Ambient members. A change is told to all controls.
  const Ambients& ambients() const { return ambients_; }
  void set_ambient_back_color(OLE_COLOR color);
  void set_ambient_fore_color(OLE_COLOR color);
  void set_ambient_font(ComPtr<IFontDisp> font);
  void set_user_mode(bool user_mode);
  void set_missing_ambients(std::set<DISPID> missing) { ambients_.missing = std::move(missing); }
  /// False refuses windowless activation, as an old container does.
  bool allow_windowless = true;

  /// Events of the form itself (Load, Activate, Deactivate, Resize, QueryUnload, Unload) and of all
  /// its controls.
  EventHandler on_event;
  std::function<void(ControlSite&, const std::wstring&, DISPPARAMS&)> on_control_event;

  /// Offered each message of the form's window first; true when it is done with.
  std::function<bool(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result)> message_filter;

  /// Keys. translate() answers true when the message is done with; see host/message_loop.h.
  bool translate(MSG& message);
  void move_focus(bool backwards);
  FormItem* active_item() const { return active_; }
  size_t tab_index(const FormItem& item) const;
  void set_tab_index(FormItem& item, long index);
  void set_default(FormItem& item, bool wanted);
  void set_cancel(FormItem& item, bool wanted);

  /// From the sites.
  ComPtr<IOleInPlaceFrame> in_place_frame();
  void set_active_object(IOleInPlaceActiveObject* object);
  void item_ui_activated(ControlSite& site);
  void item_focus_changed(ControlSite& site, bool got_focus);
  void item_left(ControlSite& site);
  void raise_control_event(ControlSite& site, const std::wstring& event, DISPPARAMS& params);

  /// Border properties of the form model, each with its window style.
  bool control_box = true;
  bool min_button = true;
  bool max_button = true;
  bool show_in_taskbar = true;
  void apply_style();
  ComPtr<IPictureDisp> icon() const { return icon_; }
  void set_icon(ComPtr<IPictureDisp> icon);
  std::wstring tag;

 protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void enlist(FormItem& item);
  void delist(FormItem& item);
  void close_all();
  std::wstring free_name(const std::wstring& wanted, const std::wstring& kind) const;
  void raise(const wchar_t* event, std::vector<short*> arguments = {});
  void tell_ambient(DISPID id);
  void update_default();
  bool translate_enter(MSG& message, bool cancel);
  bool translate_mnemonic(MSG& message);
  bool focusable(const FormItem& item) const;
  std::vector<ComPtr<ControlSite>> sites() const;

  std::wstring name_;
  Ambients ambients_;
  ComPtr<FormObject> object_;
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleInPlaceActiveObject> active_object_;
  std::vector<ComPtr<FormItem>> all_;
  std::vector<FormItem*> tab_order_;
  FormItem* active_ = nullptr;
  ControlSite* shown_default_ = nullptr;
  FormBorder border_;
  ComPtr<IPictureDisp> icon_;
  HWND last_focus_ = nullptr;
  bool shown_once_ = false;
  bool closing_ = false;
};

}  // namespace kestrelon::host
