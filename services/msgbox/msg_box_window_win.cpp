#include "services/msgbox/msg_box_window_win.h"

#include <algorithm>

#include "base/module_win.h"
#include "base/resource_ids.h"
#include "frame/screen.h"
#include "frame/window_class.h"
#include "services/kn_paths.h"
#include "services/kn_shell_win.h"
#include "services/msgbox/msg_box_sound_win.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"FormMsgBox";
constexpr wchar_t kOpenDetails[] = L"&Detalhes >>", kCloseDetails[] = L"&Detalhes <<";
constexpr UINT_PTR kSecondTimer = 1;
constexpr UINT kTimerStep = 200;  // milliseconds; seconds are counted by the clock

void load_picture(c32bppDIB& out, const MsgBoxRequest& request, Scale scale) {
  if (request.picture) {
    load_std_picture(out, request.picture.get());
    return;
  }
  if (request.rules.icon == msg_box::Icon::kNone) return;
  const int number = IDP_MSGBOX_CRITICAL - 1 + static_cast<int>(request.rules.icon);
  const bool large = scale(msg_box::kPictureSide) > 64;
  load_resource_image(out, large ? number + IDP_MSGBOX_LARGE : number, L"USMSGBOX");
}

}  // namespace

MsgBoxWindow::MsgBoxWindow(const MsgBoxRequest& request)
    : request_(request),
      captions_(msg_box::captions_for(request.rules.buttons, request.captions)),
      escape_(msg_box::escape_answer(request.rules.buttons)),
      checked_(request.checked) {}

MsgBoxWindow::~MsgBoxWindow() {
  if (window_ != nullptr) DestroyWindow(window_);
  drop_parts();
}

msg_box::Answer MsgBoxWindow::run(HWND owner) {
  take_owner(owner);
  scale_ = window_scale(owner_);
  if (!create()) {
    release_owner();
    return msg_box::kNone;
  }
  ShowWindow(window_, SW_SHOW);
  if (request_.rules.foreground) SetForegroundWindow(window_);
  UpdateWindow(window_);
  announce();
  if (request_.time_out > 0) {
    seconds_left_ = request_.time_out;
    deadline_ = GetTickCount64() + 1000ULL * static_cast<ULONGLONG>(request_.time_out);
    SetTimer(window_, kSecondTimer, kTimerStep, nullptr);
  }
  loop();
  // The owner answers again before the box goes: otherwise the system activates another program.
  release_owner();
  if (window_ != nullptr) {
    checked_ = check_ ? (*check_)->Value.get() != 0 : checked_;
    DestroyWindow(window_);
  }
  if (focus_before_ != nullptr && IsWindow(focus_before_)) SetFocus(focus_before_);
  return answer_;
}

void MsgBoxWindow::close(msg_box::Answer answer) {
  if (done_) return;
  answer_ = answer;
  done_ = true;
  // The loop may be waiting for a message.
  if (window_ != nullptr) PostMessageW(window_, WM_NULL, 0, 0);
}

bool MsgBoxWindow::create() {
  const ATOM atom = window_class(kWindowClass, procedure, CS_DROPSHADOW);
  if (atom == 0) return false;
  const DWORD topmost = request_.rules.topmost ? WS_EX_TOPMOST : 0;
  CreateWindowExW(WS_EX_CONTROLPARENT | topmost, kWindowClass, request_.title.c_str(),
                  WS_POPUP | WS_SYSMENU | WS_CLIPCHILDREN, 0, 0, 1, 1, owner_, nullptr,
                  module_instance(), this);
  if (window_ == nullptr) return false;
  load_picture(picture_, request_, scale_);
  links_ = msg_box::find_links(request_.text);
  make_parts();
  if (window_ == nullptr) return false;
  measure();
  RECT owner{};
  if (owner_ == nullptr || IsIconic(owner_) || !GetWindowRect(owner_, &owner))
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &owner, 0);
  lay_out();
  const RECT work = work_area(owner);
  const PixelRect where = msg_box::place_box(places_.width, places_.height,
                                             {owner.left, owner.top, owner.right, owner.bottom},
                                             {work.left, work.top, work.right, work.bottom});
  SetWindowPos(window_, nullptr, where.left, where.top, places_.width, places_.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  place_parts();
  draw();
  if (request_.rules.chosen < buttons_.size())
    last_focus_ = buttons_[request_.rules.chosen]->window();
  return window_ != nullptr;
}

std::unique_ptr<MsgBoxWindow::ButtonControl> MsgBoxWindow::make_button(
    const std::wstring& caption, std::function<void()> click) {
  auto button = std::make_unique<ButtonControl>(
      ambient_, [click = std::move(click)](DISPID event, DISPPARAMS&) {
        if (event == DISPID_CLICK) click();
      });
  (*button)->Theme.put(request_.theme);
  (*button)->Caption.put(caption);
  (*button)->HandPointer.put(false);
  return button;
}

void MsgBoxWindow::make_parts() {
  for (size_t i = 0; i < captions_.size(); ++i)
    buttons_.push_back(make_button(captions_[i], [this, i] { close(request_.rules.buttons[i]); }));
  if (!request_.details.empty()) {
    details_button_ = make_button(kOpenDetails, [this] { toggle_details(); });
    details_ = CreateWindowExW(
        request_.rules.right_to_left ? WS_EX_RTLREADING | WS_EX_RIGHT : 0, L"EDIT",
        request_.details.c_str(),
        WS_CHILD | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0, 0, 1, 1,
        window_, nullptr, module_instance(), nullptr);
    SendMessageW(details_, WM_SETFONT, reinterpret_cast<WPARAM>(font()), FALSE);
  }
  if (!request_.check_caption.empty()) {
    check_ = std::make_unique<InnerControl<USCheckBox>>(ambient_, [](DISPID, DISPPARAMS&) {});
    (*check_)->Theme.put(request_.theme);
    (*check_)->Caption.put(request_.check_caption);
    (*check_)->BackStyle.put(Opaque);
    (*check_)->BackColor.put(0x80000005);
    (*check_)->Value.put(checked_ ? short{1} : short{0});
  }
}

void MsgBoxWindow::drop_parts() {
  buttons_.clear();
  details_button_.reset();
  check_.reset();
  if (accessible_) accessible_->detach();
  accessible_.reset();
}

void MsgBoxWindow::announce() {
  NotifyWinEvent(EVENT_SYSTEM_ALERT, window_, OBJID_CLIENT, CHILDID_SELF);
  if (request_.sound) play_msg_box_sound(request_.rules.icon);
}

void MsgBoxWindow::second_passed() {
  const ULONGLONG now = GetTickCount64();
  const long left = now >= deadline_ ? 0 : static_cast<long>((deadline_ - now + 999) / 1000);
  if (left >= seconds_left_) return;
  seconds_left_ = left;
  const size_t chosen = request_.rules.chosen;
  if (left > 0)
    (*buttons_[chosen])->Caption.put(msg_box::counting_caption(captions_[chosen], left));
  if (request_.tick) request_.tick(left);
  if (left > 0 || done_) return;
  timed_out_ = true;
  close(request_.rules.buttons[chosen]);
}

void MsgBoxWindow::toggle_details() {
  if (window_ == nullptr) return;
  details_open_ = !details_open_;
  (*details_button_)->Caption.put(details_open_ ? kCloseDetails : kOpenDetails);
  lay_out();
  RECT now{};
  GetWindowRect(window_, &now);
  const RECT work = work_area(now);
  const LONG top = std::max(work.top, std::min(now.top, work.bottom - places_.height));
  SetWindowPos(window_, nullptr, now.left, top, places_.width, places_.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  place_parts();
  draw();
  InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK MsgBoxWindow::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* const box =
        static_cast<MsgBoxWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(box));
    box->window_ = window;
  }
  auto* const box = reinterpret_cast<MsgBoxWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (box == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  try {
    return box->handle(message, wparam, lparam);
  } catch (...) {
    return 0;
  }
}

LRESULT MsgBoxWindow::handle(UINT message, WPARAM wparam, LPARAM lparam) {
  const POINT point{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    case WM_NCHITTEST:
      return hit_test(point);
    case WM_ACTIVATE:
      if (LOWORD(wparam) == WA_INACTIVE && IsChild(window_, GetFocus())) last_focus_ = GetFocus();
      draw();
      InvalidateRect(window_, nullptr, FALSE);
      break;
    case WM_SETFOCUS:
      if (IsWindow(last_focus_)) SetFocus(last_focus_);
      return 0;
    case WM_CLOSE:
      if (escape_ != msg_box::kNone) close(escape_);
      return 0;
    case WM_TIMER:
      if (wparam == kSecondTimer) second_passed();
      return 0;
    case WM_MOUSEWHEEL:
      scroll_to(scroll_ - GET_WHEEL_DELTA_WPARAM(wparam) * 3 * line_height_ / WHEEL_DELTA);
      return 0;
    case WM_VSCROLL:
      scroll_by_bar(LOWORD(wparam));
      return 0;
    case WM_LBUTTONUP:
      if (const int link = link_at(point); link >= 0) {
        const msg_box::Link& target = links_[static_cast<size_t>(link)];
        const std::wstring address =
            browsable_url(request_.text.substr(target.start, target.length));
        if (!address.empty()) open_by_shell(address);
      }
      return 0;
    case WM_SETCURSOR: {
      POINT at{};
      GetCursorPos(&at);
      ScreenToClient(window_, &at);
      if (LOWORD(lparam) != HTCLIENT || link_at(at) < 0) break;
      SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
      return TRUE;
    }
    case WM_NCLBUTTONDOWN:
      if (wparam != HTCLOSE) break;
      SendMessageW(window_, WM_CLOSE, 0, 0);
      return 0;
    case WM_CTLCOLORSTATIC:
      SetBkColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOW));
      SetTextColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOWTEXT));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_GETOBJECT:
      if (static_cast<DWORD>(lparam) == static_cast<DWORD>(OBJID_CLIENT)) {
        if (!accessible_) accessible_ = ComPtr<AccessibleObject>(new AccessibleObject(*this));
        if (const LRESULT result = accessible_result(wparam, accessible_.get()); result != 0)
          return result;
      }
      break;
    case WM_NCDESTROY: {
      const HWND gone = std::exchange(window_, nullptr);
      SetWindowLongPtrW(gone, GWLP_USERDATA, 0);
      // Destroyed with its owner: nobody has answered.
      if (!done_) {
        answer_ = msg_box::gone_answer(request_.rules.buttons);
        done_ = true;
      }
      return DefWindowProcW(gone, message, wparam, lparam);
    }
    default:
      break;
  }
  return window_ != nullptr ? DefWindowProcW(window_, message, wparam, lparam) : 0;
}

ENUM_THEME theme_of_owner(HWND owner) {
  static const UINT ask = RegisterWindowMessageW(kFormThemeMessage);
  const HWND form = owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr;
  DWORD_PTR answer = 0;
  constexpr UINT kPatience = 200;  // milliseconds; a window of another process may hang
  if (form == nullptr ||
      !SendMessageTimeoutW(form, ask, 0, 0, SMTO_ABORTIFHUNG, kPatience, &answer))
    return Windows_8;
  return answer >= 1 && answer <= 3 ? static_cast<ENUM_THEME>(answer - 1) : Windows_8;
}

}  // namespace kestrelon
