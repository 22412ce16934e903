// The caller's ADO-style connection behind the narrow one of the database services.
#pragma once

#include "services/late_object_win.h"
#include "services/mysql/db_connection.h"

namespace kestrelon {

/// Uses, and does not own, a connection object: Execute, DefaultDatabase, and record sets with
/// Fields, EOF, BOF, RecordCount, AbsolutePosition, PageSize, PageCount, AbsolutePage, MoveNext,
/// Open, Close.
class AdoConnection final : public DbConnection {
 public:
  explicit AdoConnection(IDispatch* connection);

  std::wstring default_database() override;
  std::unique_ptr<RecordSet> execute(std::wstring_view sql) override;
  std::unique_ptr<RecordSet> open_rows(std::unique_ptr<RecordSet> reuse,
                                       std::wstring_view sql) override;

 private:
  LateObject& object();

  LateObject connection_;
};

}  // namespace kestrelon
