// Objects in the shape of ADO's Connection, Recordset, Fields and Field, by its public
// documentation, over a MariaDB server. They are reached late-bound alone.
#pragma once

#include <string>

#include "base/com_win.h"

namespace kestrelon::testing {

/// An open connection to a database of the server on a loopback port.
ComPtr<IDispatch> make_ado_connection(unsigned port, const std::string& database);

}  // namespace kestrelon::testing
