#include "services/record_rows_win.h"

namespace kestrelon {
namespace {

bool is_true(const Variant& value) {
  Variant copy = value;
  return copy.change(VT_BOOL) && V_BOOL(&copy) != VARIANT_FALSE;
}

// The place of a record set, put back when the walk is over, however it ends.
class Bookmark {
 public:
  explicit Bookmark(LateObject& records) : records_(records) {
    try {
      place_ = records.get_property(L"Bookmark");
    } catch (const ComError&) {  // not every record set has one
    }
  }
  ~Bookmark() {
    if (V_VT(&place_) == VT_EMPTY) return;
    try {
      records_.put_property(L"Bookmark", place_);
    } catch (const ComError&) {
    }
  }
  Bookmark(const Bookmark&) = delete;
  Bookmark& operator=(const Bookmark&) = delete;

 private:
  LateObject& records_;
  Variant place_;
};

}  // namespace

RecordFields::RecordFields(LateObject& records, const std::vector<std::wstring>& names) {
  LateObject all = records.get_object(L"Fields");
  for (const std::wstring& name : names) {
    Field& field = fields_.emplace_back();
    if (name.empty()) continue;
    field.object = object_of(all.call(L"Item", {Variant(std::wstring_view(name))}));
    field.value = field.object.id(L"Value");
  }
}

Variant RecordFields::value(size_t field) {
  Field& wanted = fields_[field];
  if (!wanted.object) return {};
  Variant value = wanted.object.get_property(wanted.value);
  return V_VT(&value) == VT_NULL ? Variant() : value;
}

std::wstring RecordFields::text(size_t field) {
  Variant found = value(field);
  if (V_VT(&found) == VT_EMPTY || !found.change(VT_BSTR)) return {};
  return to_wstring(V_BSTR(&found));
}

int32_t RecordFields::number(size_t field) {
  Variant found = value(field);
  return found.change(VT_I4) ? static_cast<int32_t>(V_I4(&found)) : 0;
}

bool read_records(IDispatch* object, const std::vector<std::wstring>& names,
                  const std::function<void(RecordFields&)>& take) {
  LateObject records{ComPtr<IDispatch>(object)};
  if (!records) return false;
  try {
    RecordFields fields(records, names);
    const DISPID eof = records.id(L"EOF"), next = records.id(L"MoveNext");
    if (is_true(records.get_property(eof)) && is_true(records.get_property(L"BOF"))) return true;
    const Bookmark bookmark(records);
    while (!is_true(records.get_property(eof))) {
      take(fields);
      records.call(next, {});
    }
  } catch (const ComError&) {
    return false;
  }
  return true;
}

}  // namespace kestrelon
