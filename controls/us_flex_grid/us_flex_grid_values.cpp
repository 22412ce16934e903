// Sort, search, filters, records of a query, the file.
#include "controls/us_flex_grid/us_flex_grid.h"
#include "grid/store/store_search.h"
#include "grid/values/csv_text.h"

// After windows.h.
#include <shellapi.h>
#include <shlobj.h>

namespace kestrelon {
namespace {

// Bits of the export's Options.
constexpr long kQuotes = 1, kSemicolons = 2, kGuardFormulas = 4, kSkipHidden = 8, kKeepOld = 16,
               kDontOpen = 32;

std::wstring desktop_folder() {
  wchar_t path[MAX_PATH] = {};
  return SHGetSpecialFolderPathW(nullptr, path, CSIDL_DESKTOP, FALSE) ? path : L"";
}

// Silent: a machine without a program for such files shows nothing.
void open_document(const std::wstring& path) {
  SHELLEXECUTEINFOW call{};
  call.cbSize = sizeof call;
  call.fMask = SEE_MASK_FLAG_NO_UI;
  call.lpVerb = L"open";
  call.lpFile = path.c_str();
  call.nShow = SW_SHOWNORMAL;
  ShellExecuteExW(&call);
}

/// What a record's field holds as the text of a cell.
std::wstring field_text(const Variant& given, const LocaleRules& rules) {
  Variant plain(given);
  switch (V_VT(&plain)) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BSTR:
      return to_wstring(V_BSTR(&plain));
    case VT_BOOL:
      return std::wstring(boolean_text(V_BOOL(&plain) != VARIANT_FALSE));
    case VT_DATE:
      return text_of_value(GridDate{V_DATE(&plain)}, rules);
    default:
      break;
  }
  if ((V_VT(&plain) & VT_ARRAY) != 0) return {};
  if (plain.change(VT_R8)) return text_of_value(V_R8(&plain), rules);
  return plain.change(VT_BSTR) ? to_wstring(V_BSTR(&plain)) : std::wstring();
}

/// A file beside the wanted one that takes its place only once it is whole.
class ReplacedFile {
 public:
  explicit ReplacedFile(std::wstring name) : name_(std::move(name)), draft_(name_ + L".tmp") {
    file_ = CreateFileW(draft_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  ~ReplacedFile() {
    if (file_ == INVALID_HANDLE_VALUE) return;
    CloseHandle(file_);
    DeleteFileW(draft_.c_str());
  }
  ReplacedFile(const ReplacedFile&) = delete;

  bool write(std::string_view bytes) {
    DWORD done = 0;
    return file_ != INVALID_HANDLE_VALUE &&
           WriteFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr) &&
           done == bytes.size();
  }
  bool finish() {
    if (file_ == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
    if (MoveFileExW(draft_.c_str(), name_.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    DeleteFileW(draft_.c_str());
    return false;
  }

 private:
  std::wstring name_, draft_;
  HANDLE file_;
};

template <class Ask>
class AskedOrder final : public CustomOrder {
 public:
  explicit AskedOrder(Ask ask) : ask_(std::move(ask)) {}
  bool before(bool ascending, int column, const std::wstring& value1,
              const std::wstring& value2) override {
    return ask_(ascending, column, value1, value2);
  }

 private:
  Ask ask_;
};

}  // namespace

void USFlexGrid::sort(long column1, long type1, long column2, long type2) {
  if (store_.row_count() == 0 || (edit_pending_ && !update_cell(false))) return;
  AskedOrder order(
      [this](bool rising, int index, const std::wstring& first, const std::wstring& second) {
        VARIANT_BOOL ascending = rising ? VARIANT_TRUE : VARIANT_FALSE, swap = VARIANT_FALSE;
        long column = index;
        BSTR value1 = Bstr(first).detach(), value2 = Bstr(second).detach();
        raise_custom_sort(ascending, column, value1, value2, swap);
        SysFreeString(value1);
        SysFreeString(value2);
        return swap != VARIANT_FALSE;
      });
  const GridSortCall call{static_cast<int>(column1), static_cast<int>(type1),
                          static_cast<int>(column2), static_cast<int>(type2)};
  if (!sort_.sort(call, ExactRules.get(), *locale_, &order)) return;
  forget_mouse();
  touch();
  show_cell(caret());
  raise_sort_complete();
}

long USFlexGrid::find_item(const std::wstring& text, long column, GRID_SEARCH_MODE mode,
                           bool match_case, long start) {
  const long where = column < 0 ? SearchColumn.get() : column;
  return kestrelon::find_item(
      store_, {text, static_cast<int>(where), mode, match_case, static_cast<int>(start)});
}

void USFlexGrid::filter_on(const std::wstring& text, long column, GRID_SEARCH_MODE mode,
                           bool match_case, long start) {
  if (edit_pending_ && !update_cell(false)) return;
  const long where = column < 0 ? SearchColumn.get() : column;
  if (!kestrelon::filter_on(
          store_, {text, static_cast<int>(where), mode, match_case, static_cast<int>(start)}))
    return;
  touch();
  if (leave_hidden_row(store_)) {
    show_cell(caret());
    raise_row_col_changed();
  }
}

void USFlexGrid::filter_off(long start) {
  if (!kestrelon::filter_off(store_, static_cast<int>(start))) return;
  touch();
  show_cell(caret());
}

void USFlexGrid::fill_grid_from_query(IDispatch* records, bool add_columns, bool size_columns,
                                      bool fit_columns) {
  if (records == nullptr) return;
  const Pause pause(*this);
  LateObject set{ComPtr<IDispatch>(records)};
  LateObject fields = set.get_object(L"Fields");
  const long count = static_cast<long>(number_of(fields.get_property(L"Count")));
  if (add_columns) {
    clear_all();
    for (long i = 0; i < count; ++i) {
      Variant name = object_of(fields.call(L"Item", {Variant(i)})).get_property(L"Name");
      name.change(VT_BSTR);
      const long made = add_column(to_wstring(V_BSTR(&name)), 500, AlignToLeftCenter, TypeString,
                                   L"", L"", AlignToLeftCenter, false, 0, true, false);
      if (size_columns) set_column_width_auto_size(made);
    }
  } else {
    clear();
  }
  const auto flag = [&](const wchar_t* name) {
    Variant value = set.get_property(name);
    return value.change(VT_BOOL) && V_BOOL(&value) != VARIANT_FALSE;
  };
  if (flag(L"BOF") && flag(L"EOF")) return;
  Variant bookmark;
  try {
    bookmark = set.get_property(L"Bookmark");
  } catch (const ComError&) {  // a forward-only set has none and is read on from where it stands
  }
  std::vector<std::wstring> texts(static_cast<size_t>(std::max(count, 0L)));
  std::vector<std::wstring_view> views(texts.size());
  while (!flag(L"EOF")) {
    for (size_t i = 0; i < texts.size(); ++i) {
      const Variant index(static_cast<long>(i));
      texts[i] =
          field_text(object_of(fields.call(L"Item", {index})).get_property(L"Value"), *locale_);
      views[i] = texts[i];
    }
    store_.add_row(views);
    raise_row_count_changed();
    set.call(L"MoveNext");
  }
  if (V_VT(&bookmark) != VT_EMPTY) set.put_property(L"Bookmark", bookmark);
  if (size_columns) set_column_width_auto_size(-1);
  if (fit_columns) columns_force_fit();
}

void USFlexGrid::export_grid_to_csv(const std::wstring& name, bool visible_columns,
                                    bool visible_rows, bool boolean_as_text, long options) {
  if (store_.row_count() == 0) {
    if (window() != nullptr && IsWindowVisible(window()))
      MessageBoxW(window(), L"No grid rows to export.", Caption.get().c_str(), MB_ICONINFORMATION);
    return;
  }
  const std::wstring folder = desktop_folder();
  if (folder.empty()) return;
  const std::wstring path = folder + L"\\" + name + L".csv";
  if ((options & kKeepOld) != 0 && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
    return;
  CsvOptions csv;
  csv.visible_columns_only = visible_columns;
  csv.visible_rows_only = visible_rows;
  csv.boolean_as_text = boolean_as_text;
  csv.quotes = (options & kQuotes) != 0;
  csv.semicolons = (options & kSemicolons) != 0;
  csv.guard_formulas = (options & kGuardFormulas) != 0;
  csv.skip_hidden_rows = (options & kSkipHidden) != 0;
  csv.total_line = TotalLineShow.get();
  csv.totals = {TotalLineVisibleOnly.get(), ExactRules.get()};
  ReplacedFile file(path);
  const bool whole = write_csv(store_, *locale_, csv, Caption.get(),
                               [&](std::string_view bytes) { return file.write(bytes); });
  if (!whole || !file.finish() || (options & kDontOpen) != 0) return;
  open_document(path);
}

}  // namespace kestrelon
