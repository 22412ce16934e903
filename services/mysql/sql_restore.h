// Restores files that are SQL as the server's own client reads it.
#pragma once

#include <string>

#include "base/system_file.h"
#include "services/mysql/db_connection.h"
#include "services/mysql/dump_head.h"
#include "services/mysql/maintenance_observer.h"
#include "services/mysql/script_runner.h"

namespace kestrelon {

/// Runs the statements of an exact dump or of a dump of the server's own tool. A file that is cut
/// is told before anything runs; with `ignore_error` it then runs as far as it goes. The settings
/// of the caller's session stand afterwards, and nothing stays locked.
void restore_sql(const std::wstring& path, SystemFile& file, int64_t length, DumpKind kind,
                 DbConnection& connection, MaintenanceObserver& observer, bool ignore_error,
                 ScriptOutcome& outcome);

}  // namespace kestrelon
