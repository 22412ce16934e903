// Runs dumps and scripts from files.
#pragma once

#include <string>

#include "services/mysql/db_connection.h"
#include "services/mysql/maintenance_observer.h"

namespace kestrelon {

struct ScriptOutcome {
  long commands = 0;
  long errors = 0;  // of commands
  /// The run ended at an error, before the end of the file.
  bool stopped = false;
  /// Of the last error; number 0 when there was none. The line is that of the file, from 1.
  long error_line = 0;
  long error_number = 0;
  std::wstring error_text;
};

/// Restores a file of any form. Stops at the first failing statement, unless `ignore_error` passes
/// over it. A statement that the end of the file cuts off is not run and counts as an error; so
/// does a stored program whose reading was cut short, and what is left of it is not run either. No
/// statement is run twice. A file that cannot be read stops the run in any case.
ScriptOutcome restore_file(const std::wstring& path, DbConnection& connection,
                           MaintenanceObserver& observer, bool ignore_error);

/// Runs a script of one command a line, each followed by a commit; errors of commands do not stop
/// it.
ScriptOutcome run_script_by_line(const std::wstring& path, DbConnection& connection,
                                 MaintenanceObserver& observer);

}  // namespace kestrelon
