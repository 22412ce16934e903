#include "grid/values/row_sort.h"

#include <limits>
#include <span>
#include <utility>

#include "grid/values/cell_number.h"
#include "grid/values/cell_value.h"
#include "grid/values/date_text.h"
#include "grid/values/keyed_rows.h"
#include "grid/values/merge_sort.h"

namespace kestrelon {
namespace {

enum class Order { kNumber, kText, kCustom };

class RowSorter {
 public:
  RowSorter(const GridSource& source, const RowSort& sort, const LocaleRules& rules,
            CustomOrder* custom)
      : source_(source),
        sort_(sort),
        rules_(rules),
        custom_(custom),
        version_(source.structure_version()) {}

  bool sort(std::vector<int32_t>& order) {
    if (sort_.second.column < 0) return sort_by(order, sort_.first);
    if (sort_.exact_rules) return sort_by(order, sort_.second) && sort_by(order, sort_.first);
    read_second_keys(order);
    return sort_by(order, sort_.first) && sort_groups(order);
  }

 private:
  GridDataType type_of(int column) const { return source_.column(column).type; }
  Order order_of(int column) const;
  size_t end_of_group(std::span<const int32_t> order, size_t begin) const;
  void read_second_keys(std::span<const int32_t> order);
  uint64_t key_of(int32_t row, const SortKey& key, GridDataType type) const;
  bool sort_groups(std::span<int32_t> order);
  bool sort_by(std::span<int32_t> order, const SortKey& key);
  double number_of_cell(int32_t row, int column, GridDataType type) const;
  void sort_numbers(std::span<int32_t> order, const SortKey& key);
  void sort_texts(std::span<int32_t> order, const SortKey& key);
  bool sort_custom(std::span<int32_t> order, const SortKey& key);

  const GridSource& source_;
  const RowSort& sort_;
  const LocaleRules& rules_;
  CustomOrder* custom_;
  uint32_t version_;
  std::vector<KeyedRow> keyed_, scratch_;
  std::vector<uint64_t> second_keys_;  // by row; empty where cells are read when needed
  std::string key_;
};

Order RowSorter::order_of(int column) const {
  switch (type_of(column)) {
    case GridDataType::Numeric:
    case GridDataType::Date:
    case GridDataType::Boolean:
      return Order::kNumber;
    case GridDataType::ProgressBar:
      return sort_.exact_rules ? Order::kNumber : Order::kText;
    case GridDataType::Custom:
      return custom_ != nullptr ? Order::kCustom : Order::kText;
    default:
      return Order::kText;
  }
}

// Numbers of the second column while rows are still in the order they lie in memory: groups are
// scattered.
void RowSorter::read_second_keys(std::span<const int32_t> order) {
  const SortKey& key = sort_.second;
  if (order_of(key.column) != Order::kNumber) return;
  const GridDataType type = type_of(key.column);
  std::vector<uint64_t> keys(static_cast<size_t>(source_.row_count()));
  for (const int32_t row : order) keys[static_cast<size_t>(row)] = key_of(row, key, type);
  second_keys_ = std::move(keys);
}

size_t RowSorter::end_of_group(std::span<const int32_t> order, size_t begin) const {
  const int column = sort_.first.column;
  size_t end = begin + 1;
  if (type_of(column) == GridDataType::Boolean) {
    const auto checked = [&](int32_t row) {
      return source_.cell(row, column).flags & kGridChecked;
    };
    while (end < order.size() && checked(order[end]) == checked(order[begin])) ++end;
    return end;
  }
  const std::wstring text(source_.text(order[begin], column));
  while (end < order.size() && source_.text(order[end], column) == text) ++end;
  return end;
}

bool RowSorter::sort_groups(std::span<int32_t> order) {
  for (size_t begin = 0; begin < order.size();) {
    const size_t end = end_of_group(order, begin);
    if (end - begin > 1 && !sort_by(order.subspan(begin, end - begin), sort_.second)) return false;
    begin = end;
  }
  return true;
}

bool RowSorter::sort_by(std::span<int32_t> order, const SortKey& key) {
  switch (order_of(key.column)) {
    case Order::kNumber:
      sort_numbers(order, key);
      return true;
    case Order::kCustom:
      return sort_custom(order, key);
    default:
      sort_texts(order, key);
      return true;
  }
}

double RowSorter::number_of_cell(int32_t row, int column, GridDataType type) const {
  if (type == GridDataType::Boolean)
    return (source_.cell(row, column).flags & kGridChecked) != 0 ? 1 : 0;
  const std::wstring_view text = source_.text(row, column);
  if (type == GridDataType::Date)  // what is no date goes before all dates
    return cell_date(text, rules_).value_or(-std::numeric_limits<double>::infinity());
  if (type == GridDataType::ProgressBar)
    return cell_progress(text, source_.cell(row, column).flags, rules_.facts()).percent;
  return cell_number(text, rules_.facts());
}

uint64_t RowSorter::key_of(int32_t row, const SortKey& key, GridDataType type) const {
  if (&key == &sort_.second && !second_keys_.empty()) return second_keys_[static_cast<size_t>(row)];
  const uint64_t number = number_key(number_of_cell(row, key.column, type));
  return key.descending ? ~number : number;
}

void RowSorter::sort_numbers(std::span<int32_t> order, const SortKey& key) {
  const GridDataType type = type_of(key.column);
  keyed_.clear();
  keyed_.reserve(order.size());
  for (const int32_t row : order) keyed_.push_back({key_of(row, key, type), row, 0});
  if (scratch_.size() < order.size()) scratch_.resize(order.size());
  sort_by_key(keyed_, scratch_);
  for (size_t i = 0; i < order.size(); ++i) order[i] = keyed_[i].row;
}

void RowSorter::sort_texts(std::span<int32_t> order, const SortKey& key) {
  ByteKeyedRows rows(key.descending);
  rows.start(order.size());
  for (const int32_t row : order) {
    key_.clear();
    rules_.append_sort_key(source_.text(row, key.column), key_);
    rows.add(row, key_);
  }
  size_t at = 0;
  for (const KeyedRow& row : rows.sorted()) order[at++] = row.row;
}

bool RowSorter::sort_custom(std::span<int32_t> order, const SortKey& key) {
  std::vector<int32_t> scratch(order.size());
  return merge_sort(order, scratch, [&](int32_t behind, int32_t front, bool& stop) {
    const std::wstring value1(source_.text(behind, key.column));
    const std::wstring value2(source_.text(front, key.column));
    const bool swap = custom_->before(!key.descending, key.column, value1, value2);
    stop = source_.structure_version() != version_;
    return swap;
  });
}

}  // namespace

std::optional<std::vector<int32_t>> sort_rows(std::vector<int32_t> order, const GridSource& source,
                                              const RowSort& sort, const LocaleRules& rules,
                                              CustomOrder* custom) {
  if (!RowSorter(source, sort, rules, custom).sort(order)) return std::nullopt;
  return order;
}

GridSortState next_sort_state(GridSortState now, int sort_type) {
  constexpr int kNormal = 0, kAscending = 1, kDescending = 2;
  if (sort_type == kNormal) return GridSortState::None;
  if (sort_type == kAscending) return GridSortState::Ascending;
  if (sort_type == kDescending) return GridSortState::Descending;
  if (now == GridSortState::None) return GridSortState::Ascending;
  return now == GridSortState::Ascending ? GridSortState::Descending : GridSortState::None;
}

}  // namespace kestrelon
