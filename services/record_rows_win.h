// Rows of a record set of the host's (ADO's, DAO's, or anything with their members), read forwards.
#pragma once

#include <string>
#include <vector>

#include "services/late_object_win.h"

namespace kestrelon {

/// Begins at the current record and puts the record set back there at the end, where it has
/// bookmarks. Members and fields are looked up once.
class RecordRows {
 public:
  /// `fields` that are empty read empty.
  RecordRows(IDispatch* records, const std::vector<std::wstring>& fields);
  ~RecordRows();
  RecordRows(const RecordRows&) = delete;
  RecordRows& operator=(const RecordRows&) = delete;

  /// False when the object is no record set or lacks a field.
  bool usable() const { return usable_; }
  /// Whether there is a record to read; errors of the record set end it.
  bool more();
  void next();
  /// A field of the current record.
  Variant value(size_t field);
  /// The same as text; "" for Null, for bytes and for what cannot be one.
  std::wstring text(size_t field);

 private:
  bool find_fields(const std::vector<std::wstring>& names);

  LateObject records_;
  std::vector<LateObject> fields_;
  std::vector<DISPID> values_;
  Variant bookmark_;
  DISPID end_ = 0, next_ = 0;
  bool has_bookmark_ = false;
  bool usable_ = false;
};

}  // namespace kestrelon
