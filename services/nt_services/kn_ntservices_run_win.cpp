// Running as a service: orders come as messages to a hidden window and leave as events.
#include "services/event_text_win.h"
#include "services/nt_services/kn_ntservices_win.h"
#include "services/nt_services/service_process_win.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonServiceOrders";

}  // namespace

bool KN_NTSERVICES::run_as_service(const std::wstring& name) {
  const bool makes = window_ == nullptr;
  if (makes) make_window();
  const uint32_t code = window_ == nullptr ? GetLastError() : service_process::run(name, window_);
  error_ = {code};
  if (code != 0 && makes && window_ != nullptr) DestroyWindow(std::exchange(window_, nullptr));
  return code == 0;
}

void KN_NTSERVICES::report_stopped(long code) {
  // Another object's service is not this one's to stop.
  if (window_ != nullptr) service_process::stop(static_cast<uint32_t>(code));
}

// Without a desktop there are still windows for messages only.
void KN_NTSERVICES::make_window() {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = window_proc;
  window_class.hInstance = module_instance();
  window_class.lpszClassName = kWindowClass;
  RegisterClassW(&window_class);
  window_ = CreateWindowExW(0, kWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            module_instance(), nullptr);
  if (window_ != nullptr)
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK KN_NTSERVICES::window_proc(HWND window, UINT message, WPARAM wparam,
                                            LPARAM lparam) {
  auto* const object = reinterpret_cast<KN_NTSERVICES*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != service_process::kOrderMessage || object == nullptr)
    return DefWindowProcW(window, message, wparam, lparam);
  object->call([&] { object->on_order(static_cast<ServiceOrder>(wparam)); });
  return 0;
}

void KN_NTSERVICES::on_order(ServiceOrder order) {
  raise_order(order);
  service_process::done(order);
}

void KN_NTSERVICES::raise_order(ServiceOrder order) {
  switch (order) {
    case ServiceOrder::kInterrogate: {
      EventText arguments(service_process::arguments());
      return raise_service_started(arguments.text);
    }
    case ServiceOrder::kPause:
      return raise_service_paused();
    case ServiceOrder::kContinue:
      return raise_service_continued();
    case ServiceOrder::kStop:
      return raise_service_stop();
    case ServiceOrder::kShutdown:
      return raise_service_shutdown();
    default: {
      auto code = static_cast<long>(order);
      return raise_service_command(code);
    }
  }
}

void KN_NTSERVICES::on_final_release() {
  if (window_ == nullptr) return;
  service_process::stop(0);
  DestroyWindow(std::exchange(window_, nullptr));
}

}  // namespace kestrelon
