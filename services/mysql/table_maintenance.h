// Housekeeping over all tables of the connected database.
#pragma once

#include <optional>
#include <string>

#include "services/mysql/db_connection.h"
#include "services/mysql/maintenance_observer.h"

namespace kestrelon {

/// Numbers of MYSQL_TABLE_ENGINE (InnoDB 0 to ISAM 4). All of these throw DbError.
void alter_tables_engine(DbConnection& connection, MaintenanceObserver& observer, int engine);

void optimize_tables(DbConnection& connection, MaintenanceObserver& observer);

/// Numbers of MYSQL_TYPE_REPAIR: QUICK 0, EXTENDED 1, USE_FRM 2.
void repair_tables(DbConnection& connection, MaintenanceObserver& observer, int mode);

/// Numbers of MYSQL_FLUSH, 0 to 7. Another number is told by a status and runs nothing.
void flush_server(DbConnection& connection, MaintenanceObserver& observer, int what);

}  // namespace kestrelon
