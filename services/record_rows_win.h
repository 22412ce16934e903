// Walks the records of any object that has the members of a record set, bound late.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "services/late_object_win.h"

namespace kestrelon {

/// The wanted fields of the record that the walk stands on, in the order they were asked for.
class RecordFields {
 public:
  /// Fetches the field objects. Throws ComError when one is missing; an empty name is no field.
  RecordFields(LateObject& records, const std::vector<std::wstring>& names);

  /// Empty for Null, and where no field was named.
  Variant value(size_t field);
  std::wstring text(size_t field);
  /// 0 for what is no Long.
  int32_t number(size_t field);

 private:
  struct Field {
    LateObject object;
    DISPID value = DISPID_UNKNOWN;
  };
  std::vector<Field> fields_;
};

/// Hands each record from the present one to the end to `take` and restores the bookmark. False,
/// with nothing taken, when the object is none, or a field is missing. Record sets without
/// bookmarks stay at their end.
bool read_records(IDispatch* records, const std::vector<std::wstring>& names,
                  const std::function<void(RecordFields&)>& take);

}  // namespace kestrelon
