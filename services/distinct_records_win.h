// The distinct values of fields of a table, as a record set of the host's data library.
#pragma once

#include <string>

#include "services/late_object_win.h"

namespace kestrelon {

/// Opens the record set, static and read-only, on a connection of the host's. `fields` goes into
/// the query as it stands, separated by commas. Throws ComError.
LateObject open_distinct_records(IDispatch* connection, const std::wstring& fields,
                                 const std::wstring& table);

}  // namespace kestrelon
