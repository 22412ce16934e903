#include "services/record_rows_win.h"

namespace kestrelon {

RecordRows::RecordRows(IDispatch* records, const std::vector<std::wstring>& fields)
    : records_(ComPtr<IDispatch>(records)) {
  try {
    usable_ = records_ && find_fields(fields);
  } catch (const ComError&) {
    usable_ = false;
  }
  if (!usable_) return;
  try {
    bookmark_ = records_.get_property(L"Bookmark");
    has_bookmark_ = true;
  } catch (const ComError&) {
    // Forward-only record sets have none: they are read on.
  }
}

RecordRows::~RecordRows() {
  try {
    if (has_bookmark_) records_.put_property(L"Bookmark", bookmark_);
  } catch (const ComError&) {
    // The record set was closed meanwhile.
  }
}

bool RecordRows::find_fields(const std::vector<std::wstring>& names) {
  end_ = records_.id(L"EOF");
  next_ = records_.id(L"MoveNext");
  LateObject all = records_.get_object(L"Fields");
  for (const std::wstring& name : names) {
    LateObject field = name.empty()
                           ? LateObject()
                           : object_of(all.call(L"Item", {Variant(std::wstring_view(name))}));
    if (!name.empty() && !field) return false;
    values_.push_back(field ? field.id(L"Value") : 0);
    fields_.push_back(std::move(field));
  }
  return true;
}

bool RecordRows::more() {
  try {
    Variant end = records_.get_property(end_);
    return usable_ && end.change(VT_BOOL) && V_BOOL(&end) == VARIANT_FALSE;
  } catch (const ComError&) {
    return false;
  }
}

void RecordRows::next() {
  try {
    records_.call(next_, {});
  } catch (const ComError&) {
    usable_ = false;
  }
}

Variant RecordRows::value(size_t field) {
  if (field >= fields_.size() || !fields_[field]) return {};
  try {
    return fields_[field].get_property(values_[field]);
  } catch (const ComError&) {
    return {};
  }
}

std::wstring RecordRows::text(size_t field) {
  Variant value = this->value(field);
  if (V_VT(&value) == VT_NULL || (V_VT(&value) & VT_ARRAY) != 0 || !value.change(VT_BSTR)) return {};
  return to_wstring(V_BSTR(&value));
}

}  // namespace kestrelon
