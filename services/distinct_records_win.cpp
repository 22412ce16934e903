#include "services/distinct_records_win.h"

namespace kestrelon {
namespace {

constexpr long kClient = 3, kStatic = 3, kReadOnly = 1;

LateObject make_record_set() {
  CLSID id{};
  ComPtr<IDispatch> made;
  if (FAILED(CLSIDFromProgID(L"ADODB.Recordset", &id)) ||
      FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made.put_void())))
    throw ComError(REGDB_E_CLASSNOTREG);
  return LateObject(made);
}

}  // namespace

LateObject open_distinct_records(IDispatch* connection, const std::wstring& fields,
                                 const std::wstring& table) {
  LateObject records = make_record_set();
  records.put_property(L"CursorLocation", Variant(kClient));
  const std::wstring query = L"SELECT DISTINCT " + fields + L" FROM " + table + L";";
  records.call(L"Open", {Variant(std::wstring_view(query)), Variant(connection), Variant(kStatic),
                         Variant(kReadOnly)});
  return records;
}

}  // namespace kestrelon
