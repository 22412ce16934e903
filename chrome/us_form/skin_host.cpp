#include "chrome/us_form/skin_host.h"

#include <oleidl.h>

#include <string_view>

#include "frame/platform.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

constexpr HRESULT kGone = numbered_error(398);

bool has_member(IDispatch* object, const wchar_t* name) {
  LPOLESTR text = const_cast<LPOLESTR>(name);
  DISPID id = DISPID_UNKNOWN;
  return object != nullptr &&
         SUCCEEDED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
}

bool is_of_type(IDispatch* object, std::wstring_view wanted) {
  ComPtr<ITypeInfo> type;
  Bstr name;
  return SUCCEEDED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put())) && type &&
         SUCCEEDED(type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr)) &&
         (name.view() == wanted ||
          (name.view().starts_with(L'_') && name.view().substr(1) == wanted));
}

}  // namespace

void SkinHost::find(IDispatch* extender) {
  forget();
  gone_ = false;
  if (extender == nullptr) return;
  try {
    LateObject parent = LateObject(ComPtr<IDispatch>(extender)).get_object(L"Parent");
    object_ = ComPtr<IDispatch>(parent.get());
  } catch (const ComError&) {
    return;
  }
  window_ = object_ ? WindowOfObject(object_.get()) : nullptr;
  if (window_ == nullptr) return forget();
  if (is_of_type(object_.get(), L"MDIForm")) {
    kind_ = Kind::kMdiForm;
  } else if (has_member(object_.get(), L"BorderStyle")) {
    kind_ = Kind::kForm;
  } else {
    forget();
  }
}

bool SkinHost::attach(HWND window) {
  DWORD process = 0;
  if (!IsWindow(window) || GetAncestor(window, GA_ROOT) != window ||
      GetWindowThreadProcessId(window, &process) != GetCurrentThreadId() ||
      process != GetCurrentProcessId())
    return false;
  forget();
  gone_ = false;
  kind_ = Kind::kWindow;
  window_ = window;
  return true;
}

void SkinHost::forget() {
  kind_ = Kind::kNone;
  object_.reset();
  window_ = nullptr;
}

RECT SkinHost::place() const {
  RECT out{};
  if (window_ != nullptr) GetWindowRect(window_, &out);
  return out;
}

void SkinHost::failed(HRESULT hr) {
  if (hr == kGone || hr == RPC_E_DISCONNECTED || hr == CO_E_OBJNOTCONNECTED) gone_ = true;
}

Variant SkinHost::get(const wchar_t* name) {
  if (!object_ || gone()) return {};
  try {
    return LateObject(object_).get_property(name);
  } catch (const ComError& error) {
    failed(error.hr);
    return {};
  }
}

void SkinHost::put(const wchar_t* name, const Variant& value) {
  if (!object_ || gone()) return;
  try {
    LateObject(object_).put_property(name, value);
  } catch (const ComError& error) {
    failed(error.hr);
  }
}

void SkinHost::put_object(const wchar_t* name, IDispatch* object) {
  Variant value;
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = ComPtr<IDispatch>(object).detach();
  put(name, value);
}

long SkinHost::number(const wchar_t* name, long missing) {
  Variant value = get(name);
  if (V_VT(&value) == VT_EMPTY || !value.change(VT_I4)) return missing;
  return V_I4(&value);
}

std::wstring SkinHost::caption() {
  Variant value = get(L"Caption");
  if (V_VT(&value) == VT_BSTR) return to_wstring(V_BSTR(&value));
  if (window_ == nullptr || gone()) return {};
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
  text.resize(
      static_cast<size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()))));
  return text;
}

void SkinHost::set_caption(const std::wstring& caption) {
  if (object_) return put(L"Caption", Variant(std::wstring_view(caption)));
  if (window_ != nullptr) SetWindowTextW(window_, caption.c_str());
}

namespace {

constexpr const wchar_t* kThemed[] = {
    L"USButton",     L"USComboBox",    L"USFlexGrid", L"USGroupBox", L"USListBox",   L"USMenu",
    L"USPictureLCD", L"USProgressBar", L"USRibbon",   L"USTextBox",  L"USTextBoxEx", L"USToolBar",
    L"USTreeView",   L"USStatusBar",   L"USTab",      L"USCalendar"};

void add_themed(std::vector<ComPtr<IDispatch>>& out, const VARIANT& entry) {
  LateObject control = object_of(entry);
  if (!control) return;
  for (const wchar_t* const name : kThemed)
    if (is_of_type(control.get(), name)) return out.emplace_back(control.get()), void();
}

}  // namespace

std::vector<ComPtr<IDispatch>> SkinHost::themed_controls() {
  std::vector<ComPtr<IDispatch>> out;
  const Variant controls = get(L"Controls");
  ComPtr<IEnumVARIANT> list;
  try {
    if (LateObject collection = object_of(controls)) {
      const Variant enumerator = collection.get_property(DISPID_NEWENUM);
      if (V_VT(&enumerator) == VT_UNKNOWN || V_VT(&enumerator) == VT_DISPATCH)
        list = query<IEnumVARIANT>(V_UNKNOWN(&enumerator));
    }
  } catch (const ComError& error) {
    failed(error.hr);
  }
  if (list) {
    Variant entry;
    while (list->Next(1, &entry, nullptr) == S_OK) {
      add_themed(out, entry);
      entry = Variant();
    }
    return out;
  }
  const ComPtr<IOleContainer> container = object_.as<IOleContainer>();
  ComPtr<IEnumUnknown> objects;
  if (!container || FAILED(container->EnumObjects(OLECONTF_EMBEDDINGS, objects.put()))) return out;
  ComPtr<IUnknown> object;
  while (objects && objects->Next(1, object.put(), nullptr) == S_OK) {
    Variant entry;
    V_VT(&entry) = VT_UNKNOWN;
    V_UNKNOWN(&entry) = object.detach();
    add_themed(out, entry);
  }
  return out;
}

void SkinHost::unload() {
  if (gone()) return;
  if (has_member(object_.get(), L"Unload")) {
    try {
      const ComPtr<IDispatch> object = object_;
      LateObject(object).call(L"Unload");
      return;
    } catch (const ComError& error) {
      failed(error.hr);
    }
  }
  if (!gone() && window_ != nullptr) SendMessageW(window_, WM_CLOSE, 0, 0);
}

}  // namespace kestrelon
