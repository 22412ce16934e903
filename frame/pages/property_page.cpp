#include "frame/pages/property_page.h"

#include "frame/face/task_memory.h"
#include "frame/screen.h"
#include "frame/window_class.h"

namespace kestrelon {
namespace {

constexpr wchar_t kWindowClass[] = L"KestrelonPropertyPage2012";

}  // namespace

void* PropertyPage::find_interface(REFIID iid) {
  if (iid == IID_IPropertyPage || iid == IID_IPropertyPage2)
    return static_cast<IPropertyPage2*>(this);
  return AutomationObject::find_interface(iid);
}

STDMETHODIMP PropertyPage::SetPageSite(IPropertyPageSite* site) {
  site_ = ComPtr<IPropertyPageSite>(site);
  return S_OK;
}

STDMETHODIMP PropertyPage::SetObjects(ULONG count, IUnknown** objects) {
  if (count > 0 && objects == nullptr) return E_POINTER;
  return call([&] {
    objects_.clear();
    for (ULONG i = 0; i < count; ++i)
      if (auto object = query<IDispatch>(objects[i])) objects_.push_back(std::move(object));
    changed_ = false;
    if (window_ == nullptr || objects_.empty()) return;
    showing_ = true;
    show_objects();
    showing_ = false;
  });
}

STDMETHODIMP PropertyPage::GetPageInfo(PROPPAGEINFO* info) {
  if (info == nullptr) return E_POINTER;
  if (info->cb < sizeof(PROPPAGEINFO)) return E_INVALIDARG;
  const Scale scale = system_scale();
  info->pszTitle = task_text(title_);
  info->size = {scale(static_cast<int>(size_.cx)), scale(static_cast<int>(size_.cy))};
  info->pszDocString = nullptr;
  info->pszHelpFile = nullptr;
  info->dwHelpContext = 0;
  return info->pszTitle != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP PropertyPage::Activate(HWND parent, LPCRECT place, BOOL) {
  if (place == nullptr) return E_POINTER;
  if (window_ != nullptr) return E_UNEXPECTED;
  return call([&]() -> HRESULT {
    if (window_class(kWindowClass, procedure, 0) == 0) return E_FAIL;
    CreateWindowExW(WS_EX_CONTROLPARENT, kWindowClass, nullptr, WS_CHILD | WS_CLIPCHILDREN,
                    place->left, place->top, place->right - place->left, place->bottom - place->top,
                    parent, nullptr, module_instance(), this);
    if (window_ == nullptr) return E_FAIL;
    scale_ = window_scale(window_);
    font_ = reinterpret_cast<HFONT>(SendMessageW(parent, WM_GETFONT, 0, 0));
    if (font_ == nullptr) font_ = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    showing_ = true;
    build();
    if (!objects_.empty()) show_objects();
    showing_ = false;
    ShowWindow(window_, SW_SHOWNA);
    return S_OK;
  });
}

STDMETHODIMP PropertyPage::Deactivate() {
  if (window_ != nullptr) DestroyWindow(window_);  // WM_NCDESTROY clears window_
  return S_OK;
}

STDMETHODIMP PropertyPage::Show(UINT command) {
  if (window_ == nullptr) return E_UNEXPECTED;
  ShowWindow(window_, static_cast<int>(command));
  return S_OK;
}

STDMETHODIMP PropertyPage::Move(LPCRECT place) {
  if (place == nullptr) return E_POINTER;
  if (window_ == nullptr) return E_UNEXPECTED;
  MoveWindow(window_, place->left, place->top, place->right - place->left,
             place->bottom - place->top, TRUE);
  return S_OK;
}

STDMETHODIMP PropertyPage::Apply() {
  return call([&]() -> HRESULT {
    if (!changed_) return S_OK;
    if (!write_objects()) return S_FALSE;
    changed_ = false;
    return S_OK;
  });
}

STDMETHODIMP PropertyPage::TranslateAccelerator(MSG* message) {
  if (message == nullptr) return E_POINTER;
  if (window_ == nullptr || !IsChild(window_, message->hwnd)) return S_FALSE;
  // Escape, Enter and the tab keys at the last control belong to the frame.
  const bool key = message->message == WM_KEYDOWN;
  if (key && (message->wParam == VK_ESCAPE || message->wParam == VK_RETURN)) return S_FALSE;
  if (key && message->wParam == VK_TAB && site_ && site_->TranslateAccelerator(message) == S_OK)
    return S_OK;
  return IsDialogMessageW(window_, message) ? S_OK : S_FALSE;
}

STDMETHODIMP PropertyPage::EditProperty(DISPID id) {
  return call([&] { edit_property(id); });
}

void PropertyPage::mark_changed() {
  if (showing_) return;
  changed_ = true;
  if (site_) site_->OnStatusChange(PROPPAGESTATUS_DIRTY | PROPPAGESTATUS_VALIDATE);
}

HWND PropertyPage::add(const wchar_t* window_class_name, const std::wstring& text, DWORD style,
                       int id, int left, int top, int width, int height) {
  const HWND out = CreateWindowExW(
      0, window_class_name, text.c_str(), style | WS_CHILD | WS_VISIBLE, scale_(left), scale_(top),
      scale_(width), scale_(height), window_, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)),
      module_instance(), nullptr);
  if (out != nullptr) SendMessageW(out, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
  return out;
}

LRESULT CALLBACK PropertyPage::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* const page =
        static_cast<PropertyPage*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(page));
    page->window_ = window;
  }
  auto* const page = reinterpret_cast<PropertyPage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (page == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    page->window_ = nullptr;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  const Hold hold(*page);
  LRESULT result = 0;
  try {
    if (page->handle(message, wparam, lparam, result)) return result;
  } catch (...) {
    return 0;
  }
  return DefWindowProcW(window, message, wparam, lparam);
}

bool PropertyPage::handle(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  switch (message) {
    case WM_COMMAND:
      if (!showing_) command(LOWORD(wparam), HIWORD(wparam));
      return true;
    case WM_DRAWITEM:
      result = draw_item(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
      return result != 0;
    case WM_ERASEBKGND: {
      RECT client{};
      GetClientRect(window_, &client);
      FillRect(reinterpret_cast<HDC>(wparam), &client, GetSysColorBrush(COLOR_BTNFACE));
      result = 1;
      return true;
    }
    default:
      return false;
  }
}

}  // namespace kestrelon
