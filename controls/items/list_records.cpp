#include "controls/items/list_records.h"

#include "services/record_rows_win.h"

namespace kestrelon {

bool read_list_records(IDispatch* records, const std::vector<std::wstring>& fields,
                       std::vector<ListRecord>& out) {
  return read_records(records, fields, [&](RecordFields& row) {
    out.push_back({row.text(0), row.text(2), row.number(1), row.value(3)});
  });
}

}  // namespace kestrelon
