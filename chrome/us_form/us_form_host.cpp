// Taking the form's window over, hearing its messages, giving it back.
#include "chrome/us_form/host_listener.h"
#include "chrome/us_form/us_form.h"
#include "frame/kit/lines.h"
#include "frame/region.h"
#include "frame/screen.h"

namespace kestrelon {
namespace {

constexpr LONG_PTR kFrameBits = 0x40000 | 0x400000 | 0x800000 | 0xC00000 | 0x20000 | 0x10000;
constexpr UINT kUnloadDelay = 10;  // milliseconds between the wish to close and the closing
constexpr short kNoBorder = 0, kSizableBorder = 2;

void frame_changed(HWND window) {
  SetWindowPos(window, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace

void USForm::take_over() {
  const HWND window = host_.window();
  running_ = true;
  closing_ = false;
  active_ = true;
  if (host_.kind() == SkinHost::Kind::kForm && host_.flag(L"ShowInTaskBar", false))
    SetWindowLongPtrW(window, GWL_EXSTYLE,
                      GetWindowLongPtrW(window, GWL_EXSTYLE) | WS_EX_APPWINDOW);
  listen();
  if (KeepFrame.get()) frame_kept();
}

void USForm::listen() {
  const HWND window = host_.window();
  if (!host_sub_.sc_Subclass(window, 0, 1, listener_.get(), false)) return;
  constexpr UINT kAfter[] = {WM_SYSCOMMAND,    WM_NCACTIVATE, WM_SIZE,   WM_PAINT,
                             WM_GETMINMAXINFO, WM_SHOWWINDOW, WM_SETTEXT};
  for (const UINT message : kAfter) host_sub_.sc_AddMsg(window, message, MSG_AFTER);
  for (const UINT message : {UINT{WM_SYSCOMMAND}, UINT{WM_NCCALCSIZE}})
    host_sub_.sc_AddMsg(window, message, MSG_BEFORE);
}

void USForm::host_before(UINT message, WPARAM wparam, LPARAM lparam, bool& handled,
                         LRESULT& result) {
  if (!live()) return;
  if (message == WM_NCCALCSIZE && KeepFrame.get() && wparam != 0) {
    handled = true;  // all of the window is its client area
    result = 0;
  } else if (message == WM_SYSCOMMAND && (wparam & 0xFFF0) == SC_KEYMENU && lparam == L' ') {
    handled = true;
    result = 0;
    POINT below{0, strip_height()};
    if (window() == nullptr) return;
    ClientToScreen(window(), &below);
    show_system_menu(below);
  }
}

void USForm::host_after(UINT message, WPARAM wparam, LPARAM lparam) {
  if (!live()) return;
  switch (message) {
    case WM_GETMINMAXINFO:
      return hold_to_monitor(*reinterpret_cast<MINMAXINFO*>(lparam));
    case WM_SHOWWINDOW:
      if (wparam != 0 && lparam == 0) fade_in();
      return;
    case WM_SIZE:
      return host_sized();
    case WM_PAINT:
      return host_painted();
    case WM_NCACTIVATE: {
      active_ = wparam != 0;
      redraw_chrome();
      VARIANT_BOOL value = active_ ? VARIANT_TRUE : VARIANT_FALSE;
      return raise_form_activated(value);
    }
    case WM_SETTEXT:
      return redraw();
    case WM_SYSCOMMAND:
      if ((wparam & 0xFFF0) == SC_CLOSE && ShowControlBox.get() && ShowClose.get())
        deactivate_form();
      return;
    default:
      return;
  }
}

// A maximized window fills the work area of the monitor it is on; places are told from that
// monitor's corner.
void USForm::hold_to_monitor(MINMAXINFO& info) const {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (!GetMonitorInfoW(MonitorFromWindow(host_.window(), MONITOR_DEFAULTTONEAREST), &monitor))
    return;
  const RECT& work = monitor.rcWork;
  info.ptMaxSize = {work.right - work.left, work.bottom - work.top};
  info.ptMaxPosition = {work.left - monitor.rcMonitor.left, work.top - monitor.rcMonitor.top};
}

void USForm::set_host_border(long style) {
  if (changing_border_) return;
  changing_border_ = true;
  host_.put(L"BorderStyle", Variant(static_cast<short>(style)));
  changing_border_ = false;
}

void USForm::host_sized() {
  if (changing_border_) return;
  const bool minimized = host_.minimized();
  const bool child = host_.kind() == SkinHost::Kind::kForm && host_.mdi_child();
  if (host_.kind() == SkinHost::Kind::kForm && !child && !KeepFrame.get()) {
    const long border = host_.number(L"BorderStyle", kNoBorder);
    if (!minimized && border != kNoBorder) {
      set_host_border(kNoBorder);
      if (live()) strip_border(true);
    } else if (minimized && border != kSizableBorder) {
      set_host_border(kSizableBorder);
      if (live()) host_.set_caption(host_.caption());  // the task bar's entry keeps its text
    }
  } else if (child && !minimized) {
    const auto at_least = [this](const wchar_t* name, long least) {
      if (host_.number(name, least) < least) host_.put(name, Variant(least));
    };
    at_least(L"Width", skin::kLeastChildWidth);
    at_least(L"Height", skin::kLeastChildHeight);
  } else if (host_.kind() == SkinHost::Kind::kWindow && !minimized && !KeepFrame.get()) {
    strip_border(true);
  }
  if (!live() || minimized) return;
  place_strip();
  place_edges();
  refresh_gradient();
  if (live()) redraw_chrome();
}

void USForm::host_painted() {
  if (!first_paint_done_) first_paint();
  if (live()) redraw_chrome();
}

void USForm::first_paint() {
  first_paint_done_ = true;  // before anything that paints again
  if (host_.kind() != SkinHost::Kind::kWindow)
    strip_border(host_.kind() == SkinHost::Kind::kMdiForm);
  if (!live()) return;
  edges_.create(host_.window());
  place_strip();
  place_edges();
  refresh_gradient();
}

void USForm::strip_border(bool force) {
  if (KeepFrame.get()) return;
  if (!force && !host_.has_menu() && host_.number(L"BorderStyle", kNoBorder) == kNoBorder) return;
  const HWND window = host_.window();
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  if ((style & kFrameBits) != 0) {
    SetWindowLongPtrW(window, GWL_STYLE, style & ~kFrameBits);
    frame_changed(window);
  }
  if (force || !live() || !AutoRedraw.get() || !host_.normal()) return;
  constexpr long kBorderTwips = 80;
  host_.put(L"Width", Variant(host_.number(L"Width", 0) - kBorderTwips));
  host_.put(L"Height", Variant(host_.number(L"Height", 0) - height()));
}

// With the frame kept, the bits stand for what the user may do; the client area covers it.
void USForm::frame_kept() {
  if (!running_ || host_.window() == nullptr) return;
  const HWND window = host_.window();
  LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  if (KeepFrame.get()) {
    style |= WS_CAPTION | WS_SYSMENU;
    if (ShowMinimize.get()) style |= WS_MINIMIZEBOX;
    if (AllowResize.get()) style |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    if (cut_) SetWindowRgn(window, nullptr, TRUE);
    cut_ = false;
  } else {
    style &= ~kFrameBits;
  }
  cut_size_ = {};
  SetWindowLongPtrW(window, GWL_STYLE, style);
  frame_changed(window);
}

void USForm::cut_corners() {
  if (!live() || host_.kind() == SkinHost::Kind::kNone || host_.minimized()) return;
  const RECT place = host_.place();
  const SIZE size{place.right - place.left, place.bottom - place.top};
  const bool wanted = !skin::is_flat(Theme.get()) && !KeepFrame.get();
  if (wanted == cut_ && size.cx == cut_size_.cx && size.cy == cut_size_.cy) return;
  if (!wanted && !cut_) return;
  cut_ = wanted;
  cut_size_ = size;
  HRGN region = nullptr;
  if (wanted) {
    region = CreateRectRgn(0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy));
    for (const PixelRect& cut :
         skin::corner_cuts(static_cast<int>(size.cx), static_cast<int>(size.cy), scale())) {
      const HRGN corner = CreateRectRgn(cut.left, cut.top, cut.right, cut.bottom);
      CombineRgn(region, region, corner, RGN_DIFF);
      DeleteObject(corner);
    }
  }
  SetWindowRgn(host_.window(), region, TRUE);  // the system owns it from here
}

void USForm::place_strip() {
  if (window() == nullptr || !live() || given_.strip_parent == nullptr) return;
  SetWindowPos(window(), HWND_TOP, 0, 0, 0, strip_height(), SWP_NOACTIVATE);
}

void USForm::place_edges() {
  if (!edges_.exist() || !live() || host_.minimized()) return;
  RECT client{};
  GetClientRect(host_.window(), &client);
  const HWND above =
      window() != nullptr && GetParent(window()) == host_.window() ? window() : nullptr;
  if (above != nullptr)
    SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  edges_.place(skin::edge_places(Theme.get(), static_cast<int>(client.right),
                                 static_cast<int>(client.bottom), scale()),
               above);
}

void USForm::let_go(bool fade) {
  end_timer_.stop();
  fade_timer_.stop();
  host_sub_.sc_Terminate();
  tip_.Destroy();
  if (fade && running_ && first_paint_done_) fade_out();
  edges_.destroy();
  if (given_.strip_parent != nullptr) attach_window(0);
  running_ = false;
  first_paint_done_ = false;
}

void USForm::deactivate_form() {
  if (!host_.takes_skin() || !running_) return;
  running_ = false;
  closing_ = true;
  end_timer_.start(kUnloadDelay, [this] { close_now(); });
}

void USForm::close_now() {
  const Hold hold(*this);
  end_timer_.stop();
  host_.unload();
  closing_ = host_.gone();
  running_ = !closing_ && host_.takes_skin();
  if (running_) redraw_chrome();
}

void USForm::unload_sub_class() {
  const Hold hold(*this);
  let_go(true);
}

void USForm::draw_form() {
  if (!user_mode()) return;
  if (!host_.takes_skin() || host_.gone()) {
    const ComPtr<IDispatch> own = extender();
    host_.find(own.get());
  }
  if (!host_.takes_skin() || host_.gone()) return;
  running_ = true;
  active_ = true;
  listen();
  if (!first_paint_done_ && IsWindowVisible(host_.window())) first_paint();
  redraw_chrome();
}

void USForm::draw_gradient() {
  gradient_size_ = {};
  refresh_gradient();
}

void USForm::refresh_gradient() {
  if (!UseGradient.get() || !live() || host_.object() == nullptr) return;
  RECT client{};
  GetClientRect(host_.window(), &client);
  if (client.right < 1 || client.bottom < 1 ||
      (gradient_size_.cx == client.right && gradient_size_.cy == client.bottom))
    return;
  gradient_size_ = {client.right, client.bottom};
  const int width = static_cast<int>(client.right), rows = static_cast<int>(client.bottom);
  const HDC screen = GetDC(nullptr);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, rows);
  ReleaseDC(nullptr, screen);
  DibSection picture;
  const HDC target = CreateCompatibleDC(nullptr);
  if (bitmap != nullptr && picture.create(width, rows)) {
    skin::paint_background(picture.pixels(), shown_color(GradientColor1.get(), COLOR_BTNFACE),
                           shown_color(GradientColor2.get(), COLOR_BTNFACE));
    const HGDIOBJ before = SelectObject(target, bitmap);
    BitBlt(target, 0, 0, width, rows, picture.dc(), 0, 0, SRCCOPY);
    SelectObject(target, before);
  }
  DeleteDC(target);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap;
  ComPtr<IPictureDisp> object;
  if (bitmap != nullptr &&
      SUCCEEDED(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, object.put_void())))
    host_.put_object(L"Picture", object.get());
}

}  // namespace kestrelon
