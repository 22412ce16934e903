#include "tests/frame/probe_places.h"

#include "host/form.h"
#include "host/input.h"
#include "host/message_loop.h"
#include "host/property_bag.h"

namespace kestrelon {
namespace {

// A plain window that counts presses and takes the focus.
class OtherWindow {
 public:
  explicit OtherWindow(HWND parent) {
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 10, 150, 60, 20,
                              parent, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    former_ = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OtherWindow::procedure)));
  }
  HWND window() const { return window_; }
  int presses() const { return presses_; }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const self = reinterpret_cast<OtherWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_LBUTTONDOWN) ++self->presses_;
    return CallWindowProcW(self->former_, window, message, wparam, lparam);
  }

  HWND window_ = nullptr;
  WNDPROC former_ = nullptr;
  int presses_ = 0;
};

class FormPlace final : public ProbePlace {
 public:
  explicit FormPlace(const ComPtr<IUnknown>& control) {
    host::ControlState state;
    const auto bag = host::make_com<host::PropertyBag>();
    state.bag = bag.get();
    site_ = form_.add_object(control, L"Prova", RECT{10, 10, 130, 34}, nullptr, state);
    form_.show();
    host::bring_up(form_);
    other_ = std::make_unique<OtherWindow>(form_.hwnd());
  }
  void run_for(DWORD milliseconds) override { host::pump_for(milliseconds); }
  void remove() override {
    if (site_) form_.remove(*site_);
    site_.reset();
  }
  HWND other_window() const override { return other_->window(); }
  int presses_on_other() const override { return other_->presses(); }

 private:
  host::Form form_;
  ComPtr<host::ControlSite> site_;
  std::unique_ptr<OtherWindow> other_;
};

// The system's container window in a top-level window of our own.
class AxPlace final : public ProbePlace {
 public:
  AxPlace(const ComPtr<IUnknown>& control, bool dialog) : dialog_(dialog) {
    top_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                           50, 50, 400, 240, nullptr, nullptr, nullptr, nullptr);
    const HMODULE library = atl();
    container_ = CreateWindowExW(
        WS_EX_CONTROLPARENT,
        library == GetModuleHandleW(L"atl100.dll") ? L"AtlAxWin100" : L"AtlAxWin", nullptr,
        WS_CHILD | WS_VISIBLE, 10, 10, 120, 24, top_, nullptr, nullptr, nullptr);
    using Attach = HRESULT WINAPI(IUnknown*, HWND, IUnknown**);
    reinterpret_cast<Attach*>(reinterpret_cast<void*>(
        GetProcAddress(library, "AtlAxAttachControl")))(control.get(), container_, site_.put());
    other_ = std::make_unique<OtherWindow>(top_);
    SetForegroundWindow(top_);
  }
  ~AxPlace() override {
    if (IsWindow(top_)) DestroyWindow(top_);
  }
  void run_for(DWORD milliseconds) override {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (dialog_ && IsDialogMessageW(top_, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
      }
    }
  }
  void remove() override {
    if (IsWindow(container_)) DestroyWindow(container_);
    site_.reset();
  }
  HWND other_window() const override { return other_->window(); }
  int presses_on_other() const override { return other_->presses(); }

 private:
  static HMODULE atl() {
    static const HMODULE library = [] {
      HMODULE out = LoadLibraryW(L"atl100.dll");
      if (out == nullptr) out = LoadLibraryW(L"atl.dll");
      reinterpret_cast<BOOL(WINAPI*)()>(
          reinterpret_cast<void*>(GetProcAddress(out, "AtlAxWinInit")))();
      return out;
    }();
    return library;
  }

  bool dialog_;
  HWND top_ = nullptr;
  HWND container_ = nullptr;
  ComPtr<IUnknown> site_;
  std::unique_ptr<OtherWindow> other_;
};

}  // namespace

std::string place_name(PlaceKind kind) {
  switch (kind) {
    case PlaceKind::kForm:
      return "Form";
    case PlaceKind::kAxWindow:
      return "AxWindow";
    default:
      return "Dialog";
  }
}

std::unique_ptr<ProbePlace> make_probe_place(PlaceKind kind, const ComPtr<IUnknown>& control) {
  if (kind == PlaceKind::kForm) return std::make_unique<FormPlace>(control);
  return std::make_unique<AxPlace>(control, kind == PlaceKind::kDialog);
}

}  // namespace kestrelon
