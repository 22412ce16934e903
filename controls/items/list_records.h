// Records of a query as items.
#pragma once

#include <string>
#include <vector>

#include "base/com_win.h"

namespace kestrelon {

struct ListRecord {
  std::wstring text, tag;
  int32_t data = 0;
  Variant image;
};

/// The fields in the order text, number, tag, image; an empty name is no field. False when one is
/// missing.
bool read_list_records(IDispatch* records, const std::vector<std::wstring>& fields,
                       std::vector<ListRecord>& out);

}  // namespace kestrelon
