#include "host/form_object.h"

#include <algorithm>

#include "host/controls_collection.h"
#include "host/form.h"
#include "host/list_enumerator.h"

namespace kestrelon::host {
namespace {

template <class I>
ComPtr<I> to_interface(const VARIANT& value, int error, const wchar_t* text) {
  const ComPtr<IDispatch> object = to_object(value);
  if (!object) return nullptr;
  ComPtr<I> wanted = object.as<I>();
  if (!wanted) throw ComError(numbered_error(error), text);
  return wanted;
}

ComPtr<IPictureDisp> to_picture(const VARIANT& value) {
  return to_interface<IPictureDisp>(value, 481, L"Invalid picture");
}

Variant handle_value(void* handle) {
  return Variant(static_cast<long>(reinterpret_cast<INT_PTR>(handle)));
}

Variant color_value(OLE_COLOR color) {
  return Variant(static_cast<long>(color));
}

OLE_COLOR to_color(const VARIANT& value) {
  return static_cast<OLE_COLOR>(to_long(value));
}

long in_range(const VARIANT& value, long first, long last) {
  const long number = to_long(value);
  if (number < first || number > last)
    throw ComError(numbered_error(380), L"Invalid property value");
  return number;
}

}  // namespace

FormObject::FormObject(Form& form) : LateBound(L"Form"), form_(&form) {
  add_identity();
  add_place();
  add_looks();
  add_border();
  add_methods();
}

Form* FormObject::form() const {
  return form_ && form_->hwnd() ? form_ : nullptr;
}

void FormObject::before_call() {
  if (!form()) throw ComError(numbered_error(398), L"Client site not available");
}

bool FormObject::answer(REFIID iid, void** out) {
  if (!IsEqualIID(iid, IID_IOleContainer) && !IsEqualIID(iid, IID_IParseDisplayName)) return false;
  *out = static_cast<IOleContainer*>(this);
  return true;
}

HRESULT FormObject::ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker** out) {
  if (out) *out = nullptr;
  return E_NOTIMPL;
}

HRESULT FormObject::EnumObjects(DWORD, IEnumUnknown** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (!form()) return E_UNEXPECTED;
  std::vector<ComPtr<IUnknown>> controls;
  for (const auto& item : form_->all_items())
    if (auto* site = dynamic_cast<ControlSite*>(item.get())) controls.emplace_back(site->control());
  *out = make_com<ListEnumerator<IEnumUnknown, IUnknown*, ComPtr<IUnknown>>>(std::move(controls))
             .detach();
  return S_OK;
}

void FormObject::add_identity() {
  property(
      L"Name", [this] { return Variant(form_->name()); }, nullptr, DISPID_VALUE);
  property(L"hWnd", [this] { return handle_value(form_->hwnd()); });
  // The window's private context: it lives as long as the window and needs no giving back.
  property(L"hDC", [this] { return handle_value(GetDC(form_->hwnd())); });
  property(
      L"Tag", [this] { return Variant(form_->tag); },
      [this](const VARIANT& value) { form_->tag = to_text(value); });
  property(L"Controls", [this] {
    return Variant(static_cast<IDispatch*>(make_com<ControlsCollection>(*this).get()));
  });
  property(L"ActiveControl", [this] {
    FormItem* active = form_->active_item();
    return Variant(active ? active->dispatch() : static_cast<IDispatch*>(nullptr));
  });
  property(L"MDIChild", [] { return Variant(false); });
}

void FormObject::add_outer(const wchar_t* name, std::function<int(const RECT&)> get,
                           std::function<void(RECT&, int)> set, bool horizontal) {
  const Axis axis = horizontal ? Axis::kX : Axis::kY;
  property(
      name,
      [this, get, axis] {
        const int pixels = get(form_->window_rect());
        return Variant(static_cast<float>(from_pixels(pixels, ScaleMode::kTwip, axis)));
      },
      [this, set, axis](const VARIANT& value) {
        RECT outer = form_->window_rect();
        set(outer, to_pixels(to_double(value), ScaleMode::kTwip, axis));
        form_->move_window(outer);
      });
}

void FormObject::add_place() {
  add_outer(
      L"Left", [](const RECT& r) { return static_cast<int>(r.left); },
      [](RECT& r, int to) { OffsetRect(&r, to - r.left, 0); }, true);
  add_outer(
      L"Top", [](const RECT& r) { return static_cast<int>(r.top); },
      [](RECT& r, int to) { OffsetRect(&r, 0, to - r.top); }, false);
  add_outer(
      L"Width", [](const RECT& r) { return width_of(r); },
      [](RECT& r, int to) { r.right = r.left + std::max(0, to); }, true);
  add_outer(
      L"Height", [](const RECT& r) { return height_of(r); },
      [](RECT& r, int to) { r.bottom = r.top + std::max(0, to); }, false);
  property(
      L"ScaleMode", [this] { return Variant(static_cast<short>(form_->scale_mode())); },
      [this](const VARIANT& value) {
        form_->set_scale_mode(static_cast<ScaleMode>(in_range(value, 0, 7)));
      });
  const auto client = [this](LONG RECT::*side, Axis axis) {
    RECT area = {};
    GetClientRect(form_->hwnd(), &area);
    return Variant(static_cast<float>(from_pixels(area.*side, form_->scale_mode(), axis)));
  };
  property(L"ScaleWidth", [client] { return client(&RECT::right, Axis::kX); });
  property(L"ScaleHeight", [client] { return client(&RECT::bottom, Axis::kY); });
  property(
      L"WindowState", [this] { return Variant(static_cast<short>(form_->window_state())); },
      [this](const VARIANT& value) { form_->set_window_state(to_long(value)); });
  action(L"Move", [this](const Arguments& arguments) {
    RECT outer = form_->window_rect();
    const auto length = [&](UINT index, int present, Axis axis) {
      return arguments.has(index) ? to_pixels(arguments.number(index), ScaleMode::kTwip, axis)
                                  : present;
    };
    form_->move_window(make_rect(length(0, outer.left, Axis::kX), length(1, outer.top, Axis::kY),
                                 std::max(0, length(2, width_of(outer), Axis::kX)),
                                 std::max(0, length(3, height_of(outer), Axis::kY))));
  });
}

void FormObject::add_looks() {
  property(
      L"Caption", [this] { return Variant(form_->caption()); },
      [this](const VARIANT& value) { SetWindowTextW(form_->hwnd(), to_text(value).c_str()); });
  property(
      L"Icon", [this] { return Variant(static_cast<IDispatch*>(form_->icon().get())); },
      [this](const VARIANT& value) { form_->set_icon(to_picture(value)); });
  property(
      L"Picture", [this] { return Variant(static_cast<IDispatch*>(form_->picture().get())); },
      [this](const VARIANT& value) { form_->set_picture(to_picture(value)); });
  property(
      L"BackColor", [this] { return color_value(form_->back_color()); },
      [this](const VARIANT& value) { form_->set_ambient_back_color(to_color(value)); });
  property(
      L"ForeColor", [this] { return color_value(form_->ambients().fore_color); },
      [this](const VARIANT& value) { form_->set_ambient_fore_color(to_color(value)); });
  property(
      L"Font", [this] { return Variant(static_cast<IDispatch*>(form_->ambients().font.get())); },
      [this](const VARIANT& value) {
        form_->set_ambient_font(to_interface<IFontDisp>(value, kTypeMismatch, L"Type mismatch"));
      });
  property(
      L"MousePointer", [this] { return Variant(static_cast<short>(form_->mouse_pointer())); },
      [this](const VARIANT& value) { form_->set_mouse_pointer(in_range(value, 0, 99)); });
  property(
      L"Visible", [this] { return Variant(IsWindowVisible(form_->hwnd()) != FALSE); },
      [this](const VARIANT& value) { to_bool(value) ? form_->show() : form_->hide(); });
  property(
      L"Enabled", [this] { return Variant(IsWindowEnabled(form_->hwnd()) != FALSE); },
      [this](const VARIANT& value) { EnableWindow(form_->hwnd(), to_bool(value)); });
}

void FormObject::add_style_flag(const wchar_t* name, bool Form::*flag) {
  property(
      name, [this, flag] { return Variant(form_->*flag); },
      [this, flag](const VARIANT& value) {
        form_->*flag = to_bool(value);
        form_->apply_style();
      });
}

void FormObject::add_border() {
  property(
      L"BorderStyle", [this] { return Variant(static_cast<short>(form_->border())); },
      [this](const VARIANT& value) {
        form_->set_border(static_cast<FormBorder>(in_range(value, 0, 5)));
      });
  add_style_flag(L"ControlBox", &Form::control_box);
  add_style_flag(L"MinButton", &Form::min_button);
  add_style_flag(L"MaxButton", &Form::max_button);
  add_style_flag(L"ShowInTaskBar", &Form::show_in_taskbar);
}

void FormObject::add_methods() {
  action(L"Show", [this](const Arguments&) { form_->show(); });
  action(L"Hide", [this](const Arguments&) { form_->hide(); });
  action(L"SetFocus", [this](const Arguments&) {
    SetForegroundWindow(form_->hwnd());
    SetFocus(form_->hwnd());
  });
  action(L"Refresh", [this](const Arguments&) {
    RedrawWindow(form_->hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  });
  action(L"ZOrder", [this](const Arguments& arguments) {
    const bool to_front = !arguments.has(0) || arguments.integer(0) == 0;
    SetWindowPos(form_->hwnd(), to_front ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  });
  // Posted: the caller, often a control of this form, must be off the stack when it goes.
  action(L"Unload", [this](const Arguments&) { PostMessageW(form_->hwnd(), WM_CLOSE, 0, 0); });
}

}  // namespace kestrelon::host
