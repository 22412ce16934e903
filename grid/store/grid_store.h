// The rows of a data grid that it owns itself.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>

#include "grid/grid_source.h"
#include "grid/store/bit_row.h"
#include "grid/store/cell_block.h"
#include "grid/store/column_set.h"
#include "grid/store/column_totals.h"
#include "grid/store/look_pool.h"

namespace kestrelon {

/// What a new row is made of beside its texts; the defaults are those of the public member.
struct GridNewRow {
  int position = -1;  ///< a position of another row, or anything else for the end
  bool checked = false;
  bool added_new = false;
  bool locked = false;
  bool visible = true;
  int32_t data = 0;
};

/// Places that stay with their record while rows and columns come, go and change their order.
enum class GridMark { Caret, Anchor, Edit, Press };
inline constexpr int kGridMarks = 4;

/// Positions; -1 for none.
struct GridPlace {
  int row = -1;
  int column = -1;
  bool operator==(const GridPlace&) const = default;
};

/// Records.
struct GridCellId {
  int row = 0;
  int column = 0;
};

/// Rectangle of cells: rows by position, columns by record, both ends included; -1 as an end means
/// the last.
struct GridRange {
  int row_from = 0;
  int row_to = -1;
  int column_from = 0;
  int column_to = -1;
};

/// Raises no events and calls nothing foreign while it changes, so its owner tells the world when
/// an operation is complete. Members that take rows and columns want valid records, but for those
/// that say "position"; `resolve...` makes them from what public callers pass.
class GridStore final : public GridSource {
 public:
  /// Reads the number in a text; 0 for none. Decides totals, Boolean texts and format values.
  using NumberReader = std::function<double(std::wstring_view)>;

  static constexpr int kNoRoomForLook = -2;

  explicit GridStore(NumberReader numbers) : numbers_(std::move(numbers)) {}

  // GridSource
  int row_count() const override { return static_cast<int>(rows_.size()); }
  int row_at(int position) const override { return order_[static_cast<size_t>(position)]; }
  GridRowInfo row_info(int row) const override;
  bool resident() const override { return true; }
  int column_count() const override { return columns_.count(); }
  int column_at(int position) const override { return columns_.at(position); }
  const GridColumn& column(int column) const override { return columns_[column]; }
  std::wstring_view text(int row, int column) const override;
  GridCellInfo cell(int row, int column) const override;
  const GridLook& look(int style) const override;
  GridObject picture(int row, int column) const override;
  int visible_count() const override { return visible_.count(); }
  int next_visible(int position) const override { return visible_.next(position); }
  int previous_visible(int position) const override { return visible_.previous(position); }
  int visible_before(int position) const override { return visible_.count_before(position); }
  int visible_at(int rank) const override { return visible_.select(rank); }
  int selected_count() const override { return selected_.count(); }
  int checked_count() const override { return checked_count_; }
  bool has_row_images() const override { return cells_.row_image_count() != 0; }
  double total(int column, bool visible_only) const override;
  const GridTotalLine& total_line(int column) const override { return columns_.total_line(column); }
  uint32_t structure_version() const override { return structure_version_; }

  // What public callers pass: a row that is no position becomes the current or the last one, a
  // column below 0 the current one, a column too large nothing.
  int resolve_row(int position) const;  ///< a position; -1 on an empty grid
  int resolve_column(int column) const;
  std::optional<GridCellId> resolve(int position, int column) const;

  // Columns.
  int add_column(GridNewColumn spec);  ///< its record
  GridColumn& edit_column(int column) { return columns_[column]; }
  GridTotalLine& edit_total_line(int column) { return columns_.total_line(column); }
  void set_column_width(int column, double width) { columns_.set_width(column, width); }
  void set_column_width_pixels(int column, int pixels) {
    columns_.set_width_pixels(column, pixels);
  }
  void set_scale(double pixels_per_unit) { columns_.set_scale(pixels_per_unit); }
  /// Makes the visible columns share `width` (container units) in their present ratio.
  void fit_columns(double width);
  int column_position(int column) const { return columns_.position_of(column); }
  const std::vector<int>& column_order() const { return columns_.order(); }
  bool set_column_order(std::span<const int> order);
  bool move_column(int from, int to);  ///< positions
  bool swap_columns(int a, int b);     ///< positions
  void restore_column_order();

  // Rows in and out. `add_item` parts the texts at tabs; both give the position of the new row, or
  // kNoRoomForLook with nothing changed.
  int add_item(std::wstring_view item, const GridNewRow& spec = {});
  int add_row(std::span<const std::wstring_view> texts, const GridNewRow& spec = {});
  /// False for a bad position. The last row's removal leaves the grid as `clear` does.
  bool remove_row(int position);
  int remove_selected();  ///< how many
  void clear();           ///< all rows
  void clear_all();       ///< columns too
  void reserve_rows(int count);

  // Rows.
  int position_of(int row) const;
  const std::vector<int>& row_order() const { return order_; }
  bool set_row_order(std::vector<int> order);  ///< false, nothing changed, for no permutation
  void restore_row_order();
  void set_row_height(int row, int pixels);
  void set_default_row_height(int pixels) { default_row_height_ = pixels; }
  void set_row_image(int row, int image);
  int32_t row_data(int row) const { return cells_.row_data(slot(row)); }
  void set_row_data(int row, int32_t value) { cells_.set_row_data(slot(row), value); }
  std::wstring_view row_tag(int row) const { return cells_.row_tag(slot(row)); }
  void set_row_tag(int row, std::wstring_view text) { cells_.set_row_tag(slot(row), text); }
  void set_row_bit(int row, int16_t bit, bool value);  ///< any of GridRowInfo::flags
  void set_group_header(int row, bool value);
  /// A row that is hidden loses its selection. True if that changed anything.
  bool set_row_visible(int position, bool value);
  /// All positions from one to the other, in either direction; -1 as `from` is the first, as `to`
  /// the last. True if that changed anything.
  bool select_range(bool value, int from = -1, int to = -1);

  // Cells.
  void set_text(int row, int column, std::wstring_view text);
  bool checked(int row, int column) const;
  void set_checked(int row, int column, bool value);
  int16_t progress(int row, int column) const { return record(row, column).flags; }
  void set_progress(int row, int column, int16_t value);
  void set_cell_bit(int row, int column, int16_t bit, bool value);
  void set_alignment(int row, int column, GridAlignment value);
  std::wstring_view cell_tag(int row, int column) const;
  void set_cell_tag(int row, int column, std::wstring_view text);
  int32_t cell_data(int row, int column) const { return cells_.cell_data(column, slot(row)); }
  void set_cell_data(int row, int column, int32_t value);
  void set_picture(int row, int column, GridObject picture);
  /// Records that a user changed the cell.
  void mark_changed(int row, int column);
  bool cells_changed() const { return changed_; }
  void set_cells_changed(bool value) { changed_ = value; }

  // Looks. False, and nothing changed, when there is no room for one more.
  const GridLook& default_look() const { return default_look_; }
  void set_default_look(const GridLook& look);
  bool change_look(const GridRange& range, const std::function<void(GridLook&)>& edit);
  bool format_cells(const GridRange& range, GridCellFormat mode, std::wstring_view value,
                    GridAlignment alignment);
  bool reset_looks();

  // Places.
  const GridPlace& mark(GridMark mark) const { return marks_[static_cast<size_t>(mark)]; }
  void set_mark(GridMark mark, GridPlace place);

  /// `exact`: an inserted row's Boolean texts check their own cell, not that of the row shown last.
  void set_exact_rules(bool exact) { exact_rules_ = exact; }
  /// The numbers in texts read differently from now on.
  void set_numbers(NumberReader numbers);
  double number(std::wstring_view text) const { return numbers_(text); }
  size_t text_units() const { return cells_.pool().page_units(); }

 private:
  friend class GridStoreCheck;

  struct RowRecord {
    int32_t height = 0;
    uint32_t slot = 0;
    int16_t flags = 0;  // without kGridSelected, which selected_ holds
    bool group_header = false;
    bool visible = true;
  };

  RowRecord& row(int index) { return rows_[static_cast<size_t>(index)]; }
  const RowRecord& row(int index) const { return rows_[static_cast<size_t>(index)]; }
  uint32_t slot(int index) const { return row(index).slot; }
  CellRecord record(int row, int column) const { return cells_.cell(column, slot(row)); }
  CellRecord& record(int row, int column) { return cells_.cell_at(column, slot(row)); }

  void fill_cells(int row, std::span<const std::wstring_view> texts, int style);
  void check_by_text(int row, int column, double value);
  void replace_text(int row, int column, std::wstring_view text);
  void account_row(int row, bool leaves);
  void release_row(int row);
  bool take_default_style();
  bool clip(GridRange& range) const;
  void apply_bit(const GridRange& range, int16_t bit, bool value);
  void rebuild_visible();
  void pack();
  std::array<int, kGridMarks> marked_columns() const;
  void columns_moved(const std::array<int, kGridMarks>& marked);
  std::array<int, kGridMarks> marked_rows() const;
  void place_marks(const std::array<int, kGridMarks>& rows);
  static bool follows_removal(size_t mark);

  ColumnSet columns_;
  std::vector<RowRecord> rows_;  // in the order of creation
  std::vector<int> order_;       // position to row
  BitRow visible_;               // by position
  BitRow selected_;              // by row
  CellBlock cells_;
  LookPool looks_;
  mutable ColumnTotals totals_;
  NumberReader numbers_;
  GridLook default_look_;
  int default_style_ = -1;  // default_look_ in looks_, with one use of its own; -1 not entered
  int default_row_height_ = 17;
  int checked_count_ = 0;
  uint32_t structure_version_ = 0;
  std::array<GridPlace, kGridMarks> marks_{};
  bool changed_ = false;
  bool exact_rules_ = false;
};

}  // namespace kestrelon
