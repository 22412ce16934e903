#include "host/container_window.h"

#include <commctrl.h>
#include <olectl.h>
#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace kestrelon::host {
namespace {

// An off-screen picture of a client area.
class BackBuffer {
 public:
  BackBuffer(HDC target, int width, int height)
      : dc_(CreateCompatibleDC(target)), bitmap_(CreateCompatibleBitmap(target, width, height)) {
    before_ = SelectObject(dc_, bitmap_);
  }
  BackBuffer(const BackBuffer&) = delete;
  BackBuffer& operator=(const BackBuffer&) = delete;
  ~BackBuffer() {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

// The system cursor of a MousePointer value, or null for the default.
HCURSOR cursor_of(long pointer) {
  const wchar_t* const names[] = {nullptr,      IDC_ARROW,       IDC_CROSS,    IDC_IBEAM,
                                  IDC_ICON,     IDC_SIZEALL,     IDC_SIZENESW, IDC_SIZENS,
                                  IDC_SIZENWSE, IDC_SIZEWE,      IDC_UPARROW,  IDC_WAIT,
                                  IDC_NO,       IDC_APPSTARTING, IDC_HELP,     IDC_SIZEALL};
  if (pointer < 1 || pointer >= static_cast<long>(std::size(names))) return nullptr;
  return LoadCursorW(nullptr, names[pointer]);
}

void fill(HDC hdc, const RECT& area, OLE_COLOR color) {
  COLORREF rgb = 0;
  OleTranslateColor(color, nullptr, &rgb);
  HBRUSH brush = CreateSolidBrush(rgb);
  FillRect(hdc, &area, brush);
  DeleteObject(brush);
}

void draw_picture(HDC hdc, IPictureDisp* picture_disp) {
  const ComPtr<IPicture> picture = query<IPicture>(picture_disp);
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  if (!picture || FAILED(picture->get_Width(&width)) || FAILED(picture->get_Height(&height)))
    return;
  picture->Render(hdc, 0, 0, himetric_to_pixels(width, Axis::kX),
                  himetric_to_pixels(height, Axis::kY), 0, height, width, -height, nullptr);
}

bool is_mouse(UINT message) {
  return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
}
bool is_wheel(UINT message) {
  return message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL;
}
bool is_key(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_IME_STARTCOMPOSITION && message <= WM_IME_KEYLAST);
}

}  // namespace

ContainerWindow::~ContainerWindow() {
  destroy_window();
}

void ContainerWindow::register_class(const wchar_t* class_name) {
  WNDCLASSEXW wc = {};
  wc.cbSize = sizeof wc;
  if (GetClassInfoExW(GetModuleHandleW(nullptr), class_name, &wc)) return;
  wc = {};
  wc.cbSize = sizeof wc;
  wc.style = CS_DBLCLKS | CS_OWNDC;
  wc.lpfnWndProc = window_proc;
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.lpszClassName = class_name;
  RegisterClassExW(&wc);
}

void ContainerWindow::create_window(const wchar_t* class_name, const std::wstring& caption,
                                    DWORD style, DWORD ex_style, const RECT& bounds, HWND parent) {
  register_class(class_name);
  CreateWindowExW(ex_style, class_name, caption.c_str(), style | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                  bounds.left, bounds.top, width_of(bounds), height_of(bounds), parent, nullptr,
                  GetModuleHandleW(nullptr), this);
  if (!hwnd_) throw std::runtime_error("the window could not be made");
}

void ContainerWindow::set_accepts_drops(bool accept) {
  if (accept == static_cast<bool>(drops_)) return;
  if (accept) {
    drops_ = make_com<DropForwarder>([this](POINT at) {
      ScreenToClient(hwnd_, &at);
      return hit(at);
    });
    RegisterDragDrop(hwnd_, drops_.get());
  } else {
    RevokeDragDrop(hwnd_);
    drops_->detach();
    drops_.reset();
  }
}

void ContainerWindow::destroy_window() {
  set_accepts_drops(false);
  if (hwnd_) DestroyWindow(hwnd_);
}

LRESULT CALLBACK ContainerWindow::window_proc(HWND hwnd, UINT message, WPARAM wparam,
                                              LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<ContainerWindow*>(
        reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    self->hwnd_ = hwnd;
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<ContainerWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!self) return DefWindowProcW(hwnd, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    self->hwnd_ = nullptr;
    self->tips_ = nullptr;
    return DefWindowProcW(hwnd, message, wparam, lparam);
  }
  try {
    return self->on_message(message, wparam, lparam);
  } catch (const std::exception&) {
    // An exception must not leave a window procedure; the message is taken as handled.
    return 0;
  }
}

LRESULT ContainerWindow::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  LRESULT result = 0;
  if (forward(message, wparam, lparam, result)) return result;
  switch (message) {
    case WM_PAINT:
      on_paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_SIZE:
      InvalidateRect(hwnd_, nullptr, FALSE);
      align_items();
      clip_items();
      break;
    case WM_SETCURSOR:
      if (LOWORD(lparam) == HTCLIENT && reinterpret_cast<HWND>(wparam) == hwnd_) {
        if (HCURSOR cursor = cursor_of(mouse_pointer_)) {
          SetCursor(cursor);
          return TRUE;
        }
      }
      break;
    default:
      break;
  }
  return DefWindowProcW(hwnd_, message, wparam, lparam);
}

void ContainerWindow::on_paint() {
  PAINTSTRUCT ps;
  HDC hdc = BeginPaint(hwnd_, &ps);
  RECT client;
  GetClientRect(hwnd_, &client);
  if (!IsRectEmpty(&client)) {
    const BackBuffer buffer(hdc, client.right, client.bottom);
    IntersectClipRect(buffer.dc(), ps.rcPaint.left, ps.rcPaint.top, ps.rcPaint.right,
                      ps.rcPaint.bottom);
    paint(buffer.dc());
    BitBlt(hdc, ps.rcPaint.left, ps.rcPaint.top, width_of(ps.rcPaint), height_of(ps.rcPaint),
           buffer.dc(), ps.rcPaint.left, ps.rcPaint.top, SRCCOPY);
  }
  EndPaint(hwnd_, &ps);
}

void ContainerWindow::paint_background(HDC hdc) {
  RECT client;
  GetClientRect(hwnd_, &client);
  fill(hdc, client, back_color_);
  if (picture_) draw_picture(hdc, picture_.get());
  paint_over(hdc);
}

void ContainerWindow::paint(HDC hdc) {
  paint_background(hdc);
  paint_items(hdc);
}

bool ContainerWindow::has_windowless_items() const {
  return std::any_of(items_.begin(), items_.end(),
                     [](const FormItem* item) { return !item->window(); });
}

void ContainerWindow::paint_items(HDC hdc) {
  const std::vector<FormItem*> bottom_up(items_.rbegin(), items_.rend());
  for (FormItem* item : bottom_up) {
    if (std::find(items_.begin(), items_.end(), item) == items_.end()) continue;
    if (!item->visible() || item->window() || !RectVisible(hdc, &item->bounds())) continue;
    const int saved = SaveDC(hdc);
    item->draw(hdc);
    RestoreDC(hdc, saved);
  }
}

void ContainerWindow::add_item(FormItem& item) {
  items_.insert(items_.begin(), &item);
}

void ContainerWindow::remove_item(FormItem& item) {
  if (captured_ == &item) {
    captured_ = nullptr;
    ReleaseCapture();
  }
  if (focused_ == &item) focused_ = nullptr;
  if (hovered_ == &item) hovered_ = nullptr;
  items_.erase(std::remove(items_.begin(), items_.end(), &item), items_.end());
  if (hwnd_) invalidate(item.bounds());
}

void ContainerWindow::order_item(FormItem& item, bool to_front) {
  const auto at = std::find(items_.begin(), items_.end(), &item);
  if (at == items_.end()) return;
  items_.erase(at);
  items_.insert(to_front ? items_.begin() : items_.end(), &item);
  if (HWND window = item.window())
    SetWindowPos(window, to_front ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  else
    invalidate(item.bounds());
}

void ContainerWindow::align_items() {
  RECT rest;
  if (!hwnd_ || !GetClientRect(hwnd_, &rest)) return;
  const std::vector<FormItem*> items = items_;
  for (FormItem* item : items) {
    if (std::find(items_.begin(), items_.end(), item) == items_.end()) continue;
    RECT place = item->bounds();
    const int width = width_of(place);
    const int height = height_of(place);
    switch (item->align()) {
      case Align::kTop:
        place = make_rect(rest.left, rest.top, width_of(rest), height);
        rest.top += height;
        break;
      case Align::kBottom:
        place = make_rect(rest.left, rest.bottom - height, width_of(rest), height);
        rest.bottom -= height;
        break;
      case Align::kLeft:
        place = make_rect(rest.left, rest.top, width, height_of(rest));
        rest.left += width;
        break;
      case Align::kRight:
        place = make_rect(rest.right - width, rest.top, width, height_of(rest));
        rest.right -= width;
        break;
      case Align::kNone:
        continue;
    }
    item->move(place);
  }
}

void ContainerWindow::take_items_out() {
  const std::vector<FormItem*> items = items_;
  for (FormItem* item : items)
    if (std::find(items_.begin(), items_.end(), item) != items_.end()) item->leave_container();
}

void ContainerWindow::put_items_in() {
  const std::vector<FormItem*> items(items_.rbegin(), items_.rend());
  for (FormItem* item : items)
    if (std::find(items_.begin(), items_.end(), item) != items_.end()) item->enter_container();
}

void ContainerWindow::clip_items() {
  const std::vector<FormItem*> items = items_;
  for (FormItem* item : items)
    if (std::find(items_.begin(), items_.end(), item) != items_.end() &&
        item->align() == Align::kNone)
      item->place();
}

void ContainerWindow::update_tip(FormItem& item) {
  if (!hwnd_ || (item.tool_tip().empty() && !tips_)) return;
  if (!tips_) {
    tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0,
                            0, 0, hwnd_, nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  TTTOOLINFOW tool = {};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = hwnd_;
  tool.uId = reinterpret_cast<UINT_PTR>(&item);
  if (HWND window = item.window()) {
    tool.uFlags |= TTF_IDISHWND;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
  }
  tool.rect = item.bounds();
  SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  if (item.tool_tip().empty()) return;
  std::wstring text = item.tool_tip();
  tool.lpszText = text.data();
  SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ContainerWindow::invalidate(const RECT& area) {
  InvalidateRect(hwnd_, &area, FALSE);
}

void ContainerWindow::set_back_color(OLE_COLOR color) {
  back_color_ = color;
  InvalidateRect(hwnd_, nullptr, FALSE);
}

void ContainerWindow::set_picture(ComPtr<IPictureDisp> picture) {
  picture_ = std::move(picture);
  InvalidateRect(hwnd_, nullptr, FALSE);
}

void ContainerWindow::set_captured(FormItem* item) {
  captured_ = item;
  if (item)
    SetCapture(hwnd_);
  else if (GetCapture() == hwnd_)
    ReleaseCapture();
}

void ContainerWindow::set_focused(FormItem* item) {
  if (focused_ == item && GetFocus() == hwnd_) return;
  LRESULT ignored = 0;
  if (GetFocus() == hwnd_) {
    if (FormItem* before = std::exchange(focused_, nullptr))
      send(before, WM_KILLFOCUS, 0, 0, ignored);
    focused_ = item;
    if (item) send(item, WM_SETFOCUS, 0, 0, ignored);
  } else {
    focused_ = item;
    if (item) SetFocus(hwnd_);
  }
}

bool ContainerWindow::send(FormItem* item, UINT message, WPARAM wparam, LPARAM lparam,
                           LRESULT& result) {
  if (!item) return false;
  const ComPtr<FormItem> alive(item);
  const ComPtr<IOleInPlaceObjectWindowless> object(item->windowless());
  return object && object->OnWindowMessage(message, wparam, lparam, &result) == S_OK;
}

FormItem* ContainerWindow::hit(POINT client) {
  // A solid hit anywhere in the stack wins over a near one, and that over a transparent one.
  for (DWORD wanted : {HITRESULT_HIT, HITRESULT_CLOSE, HITRESULT_TRANSPARENT}) {
    for (FormItem* item : items_) {
      if (!item->visible() || !item->windowless() || !PtInRect(&item->bounds(), client)) continue;
      DWORD answer = HITRESULT_HIT;
      if (IViewObjectEx* view = item->view()) {
        if (FAILED(view->QueryHitPoint(DVASPECT_CONTENT, &item->bounds(), client, 0, &answer)))
          answer = HITRESULT_HIT;
      }
      if (answer == wanted) return item;
    }
  }
  return nullptr;
}

FormItem* ContainerWindow::target_of_mouse(POINT client) {
  return captured_ ? captured_ : hit(client);
}

bool ContainerWindow::forward(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (is_mouse(message)) {
    POINT at = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
    if (is_wheel(message)) return send(focused_, message, wparam, lparam, result);
    FormItem* item = target_of_mouse(at);
    if (!captured_) hovered_ = item;
    return send(item, message, wparam, lparam, result);
  }
  if (is_key(message) || message == WM_HELP) return send(focused_, message, wparam, lparam, result);
  switch (message) {
    case WM_SETCURSOR: {
      if (LOWORD(lparam) != HTCLIENT || reinterpret_cast<HWND>(wparam) != hwnd_) return false;
      POINT at;
      GetCursorPos(&at);
      ScreenToClient(hwnd_, &at);
      return send(target_of_mouse(at), message, wparam, lparam, result);
    }
    case WM_MOUSELEAVE:
      return send(std::exchange(hovered_, nullptr), message, wparam, lparam, result);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      return send(focused_, message, wparam, lparam, result);
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lparam) == hwnd_) return false;
      return send(std::exchange(captured_, nullptr), message, wparam, lparam, result);
    case WM_CANCELMODE:
      return send(captured_, message, wparam, lparam, result);
    default:
      return false;
  }
}

}  // namespace kestrelon::host
