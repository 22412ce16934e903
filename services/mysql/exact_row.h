// One row of an exact dump as the literals of an INSERT.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "services/mysql/db_connection.h"
#include "services/mysql/exact_columns.h"
#include "services/mysql/exact_output.h"

namespace kestrelon {

/// A column with the selected fields that it is read from: one, or several pieces of a long value.
struct SelectedColumn {
  const ExactColumn* column = nullptr;
  size_t first_field = 0;
  size_t fields = 1;
};

/// Built anew for each row; its memory is kept.
class ExactRow {
 public:
  explicit ExactRow(std::vector<SelectedColumn> columns) : columns_(std::move(columns)) {}

  /// Reads the current row.
  void read(RecordSet& rows);

  /// "(1,'x',NULL)" in UTF-8.
  const std::string& text() const { return text_; }
  /// The row holds what a strict session refuses.
  bool needs_leniency() const { return needs_leniency_; }

  /// Moves the longest values into user variables, each filled by statements of at most `limit`
  /// bytes, until the row itself is no longer than that.
  void move_long_values(size_t limit, ExactOutput& output);

 private:
  void append(RecordSet& rows, const SelectedColumn& selected);
  void append_hex(RecordSet& rows, const SelectedColumn& selected);
  std::string fill_variable(std::string_view literal, const SelectedColumn& selected, size_t number,
                            size_t limit, ExactOutput& output) const;

  std::vector<SelectedColumn> columns_;
  std::string text_;
  std::vector<size_t> starts_;  // of the literals in the text, and its end
  bool needs_leniency_ = false;
};

}  // namespace kestrelon
