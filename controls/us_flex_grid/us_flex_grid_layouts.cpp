// Widths and order of columns in files and in the settings of the program.
#include "base/decimal.h"
#include "base/text.h"
#include "controls/us_flex_grid/us_flex_grid.h"
#include "grid/store/column_layout.h"
#include "grid/store/header_format.h"

namespace kestrelon {
namespace {

constexpr wchar_t kSettings[] = L"Software\\VB and VBA Program Settings\\";
constexpr wchar_t kNoSettings[] = L"Não foi possível acessar o registro.";
constexpr wchar_t kOtherColumns[] = L"A ordem gravada não corresponde às colunas da grade.";

/// The text of a failure goes to the caller's variable, whatever that holds.
void tell(VARIANT* place, const std::wstring& text) {
  if (place == nullptr) return;
  VARIANT* out = place;
  if (V_VT(place) == (VT_BYREF | VT_VARIANT)) out = V_VARIANTREF(place);
  if (V_VT(out) == (VT_BYREF | VT_BSTR)) {
    SysReAllocStringLen(V_BSTRREF(out), text.data(), static_cast<UINT>(text.size()));
    return;
  }
  if (V_VT(out) == VT_ERROR) return;
  VariantClear(out);
  V_BSTR(out) = Bstr(text).detach();
  V_VT(out) = VT_BSTR;
}

std::wstring program_title() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring name(path);
  name.erase(0, name.find_last_of(L"\\/") + 1);
  return name.substr(0, name.rfind(L'.'));
}

/// One section of a program's settings, as the host language keeps them.
class Settings {
 public:
  Settings(const std::wstring& section, const VARIANT& application, bool create) {
    Variant given;
    VariantCopyInd(&given, const_cast<VARIANT*>(&application));
    const bool named = V_VT(&given) != VT_ERROR && given.change(VT_BSTR);
    const std::wstring title = named ? to_wstring(V_BSTR(&given)) : program_title();
    const std::wstring path = kSettings + title + L"\\" + section;
    const LSTATUS status = create
                               ? RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0,
                                                 KEY_ALL_ACCESS, nullptr, &key_, nullptr)
                               : RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key_);
    if (status != ERROR_SUCCESS) key_ = nullptr;
  }
  ~Settings() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  Settings(const Settings&) = delete;
  explicit operator bool() const { return key_ != nullptr; }

  bool write(const std::wstring& name, const std::wstring& text) {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key_, name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(text.c_str()), bytes) == ERROR_SUCCESS;
  }
  std::optional<double> number(const std::wstring& name) const {
    wchar_t text[64] = {};
    DWORD bytes = sizeof text - sizeof(wchar_t);
    if (RegGetValueW(key_, nullptr, name.c_str(), RRF_RT_REG_SZ, nullptr, text, &bytes) !=
        ERROR_SUCCESS)
      return std::nullopt;
    return parse_plain_number(text);
  }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

void USFlexGrid::load_column_widths_from_file(const std::wstring& name, VARIANT* error) {
  tell(error, load_column_widths_file(store_, name));
  touch();
}

void USFlexGrid::save_column_widths_to_file(const std::wstring& name, VARIANT* error) {
  tell(error, save_layout_file(name, column_widths_text(store_, locale_->facts().decimal_mark)));
}

void USFlexGrid::load_column_order_from_file(const std::wstring& name, VARIANT* error) {
  const std::wstring failure = load_column_order_file(store_, name);
  tell(error, failure);
  if (failure.empty()) columns_moved(0, 0);
}

void USFlexGrid::save_column_order_to_file(const std::wstring& name, VARIANT* error) {
  tell(error, save_layout_file(name, column_order_text(store_)));
}

void USFlexGrid::load_column_widths_from_registry(const std::wstring& name, VARIANT* error,
                                                  const VARIANT& application) {
  const Settings settings(name, application, false);
  if (!settings) return tell(error, kNoSettings);
  for (int i = 0; i < store_.column_count(); ++i)
    if (const auto width = settings.number(decimal_text(i) + L"W"); width && *width >= 0)
      store_.set_column_width(i, *width);
  touch();
  tell(error, L"");
}

void USFlexGrid::save_column_widths_to_registry(const std::wstring& name, VARIANT* error,
                                                const VARIANT& application) {
  Settings settings(name, application, true);
  bool done = static_cast<bool>(settings);
  for (int i = 0; done && i < store_.column_count(); ++i)
    done = settings.write(decimal_text(i) + L"W",
                          single_text(store_.column(i).width, locale_->facts().decimal_mark));
  tell(error, done ? L"" : kNoSettings);
}

void USFlexGrid::load_column_order_from_registry(const std::wstring& name, VARIANT* error,
                                                 const VARIANT& application) {
  const Settings settings(name, application, false);
  if (!settings) return tell(error, kNoSettings);
  const int count = store_.column_count();
  if (settings.number(L"Count") != std::optional<double>(count - 1))
    return tell(error, kOtherColumns);
  std::vector<int> order;
  for (int i = 0; i < count; ++i) {
    const double entry = settings.number(decimal_text(i)).value_or(i);
    order.push_back(entry >= 0 && entry < count ? static_cast<int>(entry) : -1);
  }
  if (!store_.set_column_order(order)) return tell(error, kOtherColumns);
  tell(error, L"");
  columns_moved(0, 0);
}

void USFlexGrid::save_column_order_to_registry(const std::wstring& name, VARIANT* error,
                                               const VARIANT& application) {
  Settings settings(name, application, true);
  const int count = store_.column_count();
  bool done = settings && settings.write(L"Count", decimal_text(count - 1));
  for (int i = 0; done && i < count; ++i)
    done = settings.write(decimal_text(i), decimal_text(store_.column_at(i)));
  tell(error, done ? L"" : kNoSettings);
}

}  // namespace kestrelon
