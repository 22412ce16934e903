// The form's window: making, styles, state, unloading, ambient members.
#include "host/form.h"

#include <olectl.h>

#include "host/form_object.h"
#include "host/in_place_frame.h"
#include "host/message_loop.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kFormClass[] = L"KestrelonForm";
constexpr DWORD kStateBits =
    WS_VISIBLE | WS_MAXIMIZE | WS_MINIMIZE | WS_DISABLED | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;

struct Style {
  DWORD style;
  DWORD ex_style;
};

Style style_of(FormBorder border, bool control_box, bool min_button, bool max_button,
               bool in_taskbar) {
  Style out = {WS_CAPTION, WS_EX_CONTROLPARENT};
  const bool tool = border == FormBorder::kFixedTool || border == FormBorder::kSizableTool;
  const bool buttons = border == FormBorder::kFixedSingle || border == FormBorder::kSizable;
  if (border == FormBorder::kNone) return {WS_POPUP, WS_EX_CONTROLPARENT};
  if (border == FormBorder::kSizable || border == FormBorder::kSizableTool)
    out.style |= WS_THICKFRAME;
  if (border == FormBorder::kFixedDialog) out.ex_style |= WS_EX_DLGMODALFRAME;
  if (tool) out.ex_style |= WS_EX_TOOLWINDOW;
  if (in_taskbar && !tool) out.ex_style |= WS_EX_APPWINDOW;
  if (control_box) {
    out.style |= WS_SYSMENU;
    if (buttons && min_button) out.style |= WS_MINIMIZEBOX;
    if (buttons && max_button) out.style |= WS_MAXIMIZEBOX;
  }
  return out;
}

}  // namespace

Form::Form(const FormOptions& options) : name_(options.name), border_(options.border) {
  ambients_.user_mode = options.user_mode;
  ambients_.font = make_font(L"Tahoma", 8.25);
  set_scale_mode(options.scale_mode);
  object_ = make_com<FormObject>(*this);
  frame_ = make_in_place_frame(*this);
  const Style style = style_of(border_, control_box, min_button, max_button, show_in_taskbar);
  RECT outer = make_rect(0, 0, options.width, options.height);
  AdjustWindowRectEx(&outer, style.style, FALSE, style.ex_style);
  OffsetRect(&outer, -outer.left, -outer.top);
  create_window(kFormClass, options.caption, style.style, style.ex_style, outer, nullptr);
  register_form(*this);
}

Form::~Form() {
  unregister_form(*this);
  on_event = nullptr;
  message_filter = nullptr;
  on_control_event = nullptr;
  close_all();
  object_->detach();
  detach_in_place_frame(frame_.get());
  destroy_window();
}

IDispatch* Form::dispatch() const {
  return object_.get();
}

void Form::raise(const wchar_t* event, std::vector<short*> arguments) {
  if (!on_event) return;
  std::vector<VARIANT> raw(arguments.size());
  for (size_t i = 0; i < arguments.size(); ++i) {
    VARIANT& argument = raw[arguments.size() - 1 - i];
    argument.vt = VT_I2 | VT_BYREF;
    argument.piVal = arguments[i];
  }
  DISPPARAMS params = {raw.data(), nullptr, static_cast<UINT>(raw.size()), 0};
  const EventHandler handler = on_event;
  handler(event, params);
}

void Form::show() {
  if (!hwnd()) throw ComError(numbered_error(364), L"Object was unloaded");
  if (!shown_once_) {
    shown_once_ = true;
    raise(L"Load");
  }
  if (!hwnd()) return;
  ShowWindow(hwnd(), SW_SHOW);
  UpdateWindow(hwnd());
}

void Form::hide() {
  if (hwnd()) ShowWindow(hwnd(), SW_HIDE);
}

bool Form::unload(int mode) {
  if (!hwnd() || closing_) return true;
  closing_ = true;
  short cancel = 0;
  short unload_mode = static_cast<short>(mode);
  raise(L"QueryUnload", {&cancel, &unload_mode});
  if (!cancel) raise(L"Unload", {&cancel});
  if (!cancel) {
    close_all();
    object_->detach();
    destroy_window();
  }
  closing_ = false;
  return !cancel;
}

LRESULT Form::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  LRESULT filtered = 0;
  if (const auto filter = message_filter; filter && filter(message, wparam, lparam, filtered))
    return filtered;
  switch (message) {
    case WM_CLOSE:
      unload(0);
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wparam) == WA_INACTIVE) {
        last_focus_ = GetFocus();
        raise(L"Deactivate");
      } else {
        raise(L"Activate");
      }
      if (!hwnd()) return 0;
      break;
    case WM_SETFOCUS:
      if (focused()) break;
      if (last_focus_ && last_focus_ != hwnd() && IsChild(hwnd(), last_focus_)) {
        SetFocus(last_focus_);
        return 0;
      }
      if (!active_) move_focus(false);
      return 0;
    case WM_SIZE: {
      const LRESULT result = ContainerWindow::on_message(message, wparam, lparam);
      raise(L"Resize");
      return result;
    }
    default:
      break;
  }
  return ContainerWindow::on_message(message, wparam, lparam);
}

RECT Form::window_rect() const {
  RECT outer = {};
  GetWindowRect(hwnd(), &outer);
  return outer;
}

void Form::move_window(const RECT& outer) {
  SetWindowPos(hwnd(), nullptr, outer.left, outer.top, width_of(outer), height_of(outer),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::set_client_size(int width, int height) {
  RECT client = {};
  GetClientRect(hwnd(), &client);
  RECT outer = window_rect();
  outer.right += width - client.right;
  outer.bottom += height - client.bottom;
  move_window(outer);
}

void Form::set_border(FormBorder border) {
  border_ = border;
  apply_style();
}

void Form::apply_style() {
  const Style style = style_of(border_, control_box, min_button, max_button, show_in_taskbar);
  constexpr DWORD kOwnExBits = WS_EX_DLGMODALFRAME | WS_EX_TOOLWINDOW | WS_EX_APPWINDOW;
  const DWORD now = static_cast<DWORD>(GetWindowLongW(hwnd(), GWL_STYLE));
  const DWORD ex_now = static_cast<DWORD>(GetWindowLongW(hwnd(), GWL_EXSTYLE));
  SetWindowLongW(hwnd(), GWL_STYLE, static_cast<LONG>((now & kStateBits) | style.style));
  SetWindowLongW(hwnd(), GWL_EXSTYLE, static_cast<LONG>((ex_now & ~kOwnExBits) | style.ex_style));
  SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

long Form::window_state() const {
  return IsIconic(hwnd()) ? 1 : IsZoomed(hwnd()) ? 2 : 0;
}

void Form::set_window_state(long state) {
  if (state < 0 || state > 2) throw ComError(numbered_error(380), L"Invalid property value");
  const int commands[] = {SW_RESTORE, SW_MINIMIZE, SW_MAXIMIZE};
  ShowWindow(hwnd(), commands[state]);
}

std::wstring Form::caption() const {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(hwnd())) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(hwnd(), text.data(), static_cast<int>(text.size()))));
  return text;
}

HFONT Form::font_handle() {
  HFONT font = nullptr;
  if (const auto ole_font = ambients_.font.as<IFont>()) ole_font->get_hFont(&font);
  return font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

void Form::set_icon(ComPtr<IPictureDisp> icon) {
  icon_ = std::move(icon);
  OLE_HANDLE handle = 0;
  short type = PICTYPE_NONE;
  if (const auto picture = icon_.as<IPicture>()) {
    picture->get_Type(&type);
    picture->get_Handle(&handle);
  }
  const LPARAM icon_handle =
      type == PICTYPE_ICON ? static_cast<LPARAM>(static_cast<INT_PTR>(static_cast<int>(handle)))
                           : 0;
  SendMessageW(hwnd(), WM_SETICON, ICON_SMALL, icon_handle);
  SendMessageW(hwnd(), WM_SETICON, ICON_BIG, icon_handle);
}

void Form::tell_ambient(DISPID id) {
  for (const auto& site : sites())
    if (!site->closed()) site->ambient_changed(id);
}
void Form::set_ambient_back_color(OLE_COLOR color) {
  ambients_.back_color = color;
  set_back_color(color);
  tell_ambient(DISPID_AMBIENT_BACKCOLOR);
}
void Form::set_ambient_fore_color(OLE_COLOR color) {
  ambients_.fore_color = color;
  tell_ambient(DISPID_AMBIENT_FORECOLOR);
}
void Form::set_ambient_font(ComPtr<IFontDisp> font) {
  ambients_.font = std::move(font);
  tell_ambient(DISPID_AMBIENT_FONT);
}
void Form::set_user_mode(bool user_mode) {
  ambients_.user_mode = user_mode;
  tell_ambient(DISPID_AMBIENT_USERMODE);
}

void Form::raise_control_event(ControlSite& site, const std::wstring& event, DISPPARAMS& params) {
  // A copy: the handler may take the form's handlers away while it runs.
  if (const auto handler = on_control_event) handler(site, event, params);
}

}  // namespace kestrelon::host
