// Rows and columns of a source as the layout sees them.
#pragma once

#include "grid/grid_source.h"
#include "grid/layout/page.h"

namespace kestrelon::grid_layout {

class SourceRows final : public Rows {
 public:
  explicit SourceRows(const GridSource& source) : source_(source) {}

  int32_t count() const override { return source_.row_count(); }
  int32_t next_visible(int32_t position) const override {
    const int found = position < count() ? source_.next_visible(position) : -1;
    return found < 0 ? count() : found;
  }
  int32_t previous_visible(int32_t position) const override {
    return source_.previous_visible(position);
  }
  int32_t height(int32_t position) const override {
    return source_.row_info(source_.row_at(position)).height;
  }

 private:
  const GridSource& source_;
};

/// The columns in display order.
inline std::vector<Column> source_columns(const GridSource& source) {
  std::vector<Column> columns;
  columns.reserve(static_cast<size_t>(source.column_count()));
  for (int i = 0; i < source.column_count(); ++i) {
    const int store = source.column_at(i);
    const GridColumn& column = source.column(store);
    columns.push_back({store, column.width_pixels, column.visible, column.locked});
  }
  return columns;
}

}  // namespace kestrelon::grid_layout
