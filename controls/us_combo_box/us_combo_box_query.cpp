// Completion from a table: the distinct values of a field, copied to the list.
#include "controls/us_combo_box/us_combo_box.h"
#include "services/distinct_records_win.h"

namespace kestrelon {

bool USComboBox::initialize_auto_complete(IDispatch* connection, const std::wstring& table,
                                          const std::wstring& field,
                                          const std::wstring& tag_field) {
  if (connection == nullptr || table.empty() || field.empty()) return false;
  const Hold hold(*this);
  LateObject records;
  try {
    const std::wstring fields = tag_field.empty() ? field : field + L", " + tag_field;
    records = open_distinct_records(connection, fields, table);
    if (fill_list_from_query(records.get(), field, L"", tag_field, L"") < 0) return false;
  } catch (const ComError&) {
    return false;
  }
  finalize_auto_complete();
  completion_records_ = std::move(records);
  completion_field_ = field;
  completion_tag_ = tag_field;
  return true;
}

void USComboBox::requery_auto_complete() {
  if (!completion_records_) return;
  const Hold hold(*this);
  LateObject records = completion_records_;
  try {
    records.call(L"Requery");
    fill_list_from_query(records.get(), completion_field_, L"", completion_tag_, L"");
  } catch (const ComError&) {  // the list stays as it is
  }
}

void USComboBox::finalize_auto_complete() {
  LateObject records = std::exchange(completion_records_, {});
  if (!records) return;
  try {
    records.call(L"Close");
  } catch (const ComError&) {  // closed already
  }
}

}  // namespace kestrelon
