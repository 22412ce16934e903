// A hundred thousand random operations on the store and on a plain grid, side by side.
#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "grid/store/store_check.h"
#include "tests/grid/store/plain_grid.h"

namespace kestrelon {
namespace {

class Pair {
 public:
  explicit Pair(unsigned seed) : random_(seed) {}

  void step();
  void compare();
  std::string fault() const { return GridStoreCheck::fault(store_); }
  int rows() const { return store_.row_count(); }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool coin() { return below(2) == 0; }
  std::wstring random_text();
  GridCellId any_cell();
  PlainCell& plain(GridCellId id) {
    return plain_.rows[static_cast<size_t>(id.row)].cells[static_cast<size_t>(id.column)];
  }

  void change_structure(int what);
  void change_cell(int what);
  void change_row(int what);
  void add();
  void format();
  void reorder();
  void move_columns();
  void compare_row(int position);
  void compare_visible();

  std::mt19937 random_;
  GridStore store_{test_number};
  PlainGrid plain_;
};

std::wstring Pair::random_text() {
  static const wchar_t* const kTexts[] = {L"",     L"1",    L"-7",         L"True", L"False",
                                          L"12,5", L"nome", L"Açaí e pão", L"0",    L"99999999"};
  if (below(40) == 0) return std::wstring(static_cast<size_t>(below(5000)), L'x');
  if (coin()) return std::to_wstring(below(100000));
  return kTexts[below(10)];
}

GridCellId Pair::any_cell() {
  return {below(store_.row_count()), below(store_.column_count())};
}

void Pair::step() {
  if (below(4) != 0 && rows() > 0 && store_.column_count() > 0) {
    if (coin())
      change_cell(below(9));
    else
      change_row(below(9));
  } else {
    change_structure(below(100));
  }
}

void Pair::add() {
  std::vector<std::wstring> texts;
  std::wstring item;
  for (int i = below(store_.column_count() + 2); i > 0; --i) {
    texts.push_back(random_text());
    item += (texts.size() > 1 ? L"\t" : L"") + texts.back();
  }
  const GridNewRow spec{.position = below(rows() + 4) - 2,
                        .checked = coin(),
                        .added_new = coin(),
                        .locked = below(8) == 0,
                        .visible = below(5) != 0,
                        .data = below(3)};
  if (store_.column_count() == 0)
    plain_.add_column(GridDataType::String, GridAlignment::LeftCenter, false, 0);
  const int expected = plain_.add(texts, spec);
  ASSERT_EQ(store_.add_item(item, spec), expected);
}

void Pair::change_structure(int what) {
  if (what < 58 - rows() / 4) return add();
  if (what < 85) {
    if (rows() == 0) return;
    const int position = below(rows());
    plain_.remove(position);
    ASSERT_TRUE(store_.remove_row(position));
  } else if (what < 88) {
    plain_.remove_selected();
    store_.remove_selected();
  } else if (what < 93) {
    reorder();
  } else if (what < 95) {
    if (store_.column_count() >= 8) return;
    const auto type = static_cast<GridDataType>(below(7));
    const auto alignment = static_cast<GridAlignment>(below(11));
    const bool wrap = coin();
    const int position = below(store_.column_count() + 2);
    plain_.add_column(type, alignment, wrap, position);
    GridNewColumn column;
    column.type = type;
    column.alignment = alignment;
    column.word_wrap = wrap;
    column.position = position;
    store_.add_column(column);
  } else if (what < 98) {
    move_columns();
  } else if (below(12) == 0) {
    const bool all = below(4) == 0;
    plain_.clear();
    if (all) plain_.columns.clear(), plain_.column_order.clear(), store_.clear_all();
    store_.clear();
  } else {
    plain_.exact = coin();
    store_.set_exact_rules(plain_.exact);
    plain_.default_look.back_color = static_cast<uint32_t>(below(3));
    store_.set_default_look(plain_.default_look);
    plain_.default_height = 10 + below(20);
    store_.set_default_row_height(plain_.default_height);
  }
}

void Pair::reorder() {
  if (coin()) {
    std::iota(plain_.order.begin(), plain_.order.end(), 0);
    return store_.restore_row_order();
  }
  std::shuffle(plain_.order.begin(), plain_.order.end(), random_);
  ASSERT_TRUE(store_.set_row_order(plain_.order));
  std::vector<int> bad = plain_.order;
  if (bad.size() > 1) bad[0] = bad[1];
  EXPECT_EQ(store_.set_row_order(bad), bad.size() < 2);
}

void Pair::move_columns() {
  const int count = store_.column_count();
  if (count == 0) return;
  const std::vector<int> before = plain_.column_order;
  auto& order = plain_.column_order;
  const int from = below(count);
  const int to = below(count);
  switch (below(3)) {
    case 0:
      std::swap(order[static_cast<size_t>(from)], order[static_cast<size_t>(to)]);
      ASSERT_TRUE(store_.swap_columns(from, to));
      break;
    case 1: {
      const int entry = order[static_cast<size_t>(from)];
      order.erase(order.begin() + from);
      order.insert(order.begin() + to, entry);
      ASSERT_TRUE(store_.move_column(from, to));
      break;
    }
    default:
      std::shuffle(order.begin(), order.end(), random_);
      ASSERT_TRUE(store_.set_column_order(order));
  }
  for (PlainMark& mark : plain_.marks) {
    if (mark.column < 0) continue;
    const int column = before[static_cast<size_t>(mark.column)];
    mark.column = static_cast<int>(std::find(order.begin(), order.end(), column) - order.begin());
  }
}

void Pair::change_cell(int what) {
  const GridCellId id = any_cell();
  PlainCell& cell = plain(id);
  const GridDataType type = plain_.columns[static_cast<size_t>(id.column)].type;
  const auto boolean_text = [&](bool on) { cell.text = on ? L"True" : L"False"; };
  switch (what) {
    case 0:
    case 1: {
      // Also a text of the store itself, which the change may move.
      const GridCellId other = any_cell();
      const bool own = below(4) == 0;
      const std::wstring text =
          own ? plain(other).text.substr(plain(other).text.size() / 2) : random_text();
      const std::wstring_view inside = store_.text(other.row, other.column);
      store_.set_text(id.row, id.column, own ? inside.substr(inside.size() / 2) : text);
      cell.text = text;
      if (type != GridDataType::Boolean) break;
      PlainGrid::set(cell.flags, kGridChecked, test_number(text) != 0);
      if (!text.empty()) boolean_text(test_number(text) != 0);
      break;
    }
    case 2: {
      const bool on = coin();
      PlainGrid::set(cell.flags, kGridChecked, on);
      if (type == GridDataType::Boolean) boolean_text(on);
      store_.set_checked(id.row, id.column, on);
      break;
    }
    case 3:
      cell.flags = static_cast<int16_t>(below(102) - 1);
      store_.set_progress(id.row, id.column, cell.flags);
      if (type == GridDataType::ProgressBar) cell.text = std::to_wstring(cell.flags);
      break;
    case 4: {
      const auto bit = static_cast<int16_t>(1 << (3 + below(6)));
      const bool on = coin();
      PlainGrid::set(cell.flags, bit, on);
      store_.set_cell_bit(id.row, id.column, bit, on);
      break;
    }
    case 5:
      cell.tag = below(3) == 0 ? random_text() : L"";
      store_.set_cell_tag(id.row, id.column, cell.tag);
      cell.data = below(5) - 2;
      store_.set_cell_data(id.row, id.column, cell.data);
      break;
    case 6:
      cell.picture = coin() ? std::make_shared<int>(1) : nullptr;
      store_.set_picture(id.row, id.column, cell.picture);
      break;
    case 7:
      PlainGrid::set(cell.flags, kGridChanged, true);
      PlainGrid::set(plain_.rows[static_cast<size_t>(id.row)].flags, kGridChanged, true);
      plain_.changed = true;
      store_.mark_changed(id.row, id.column);
      break;
    default:
      format();
  }
}

void Pair::format() {
  static constexpr GridCellFormat kFormats[] = {
      GridCellFormat::BackColor,   GridCellFormat::ForeColor, GridCellFormat::Image,
      GridCellFormat::FontName,    GridCellFormat::FontBold,  GridCellFormat::FontUnderline,
      GridCellFormat::HandPointer, GridCellFormat::Alignment};
  const GridCellFormat mode = kFormats[below(8)];
  const int number = below(4);
  const auto alignment = static_cast<GridAlignment>(below(11));
  const GridRange range{below(rows() + 1) - 1, below(rows() + 2) - 1, below(store_.column_count()),
                        below(store_.column_count() + 1) - 1};
  ASSERT_TRUE(store_.format_cells(range, mode, std::to_wstring(number), alignment));
  const int row_to = range.row_to < 0 ? rows() - 1 : std::min(range.row_to, rows() - 1);
  const int column_to = range.column_to < 0 ? store_.column_count() - 1 : range.column_to;
  for (int p = std::max(range.row_from, 0); p <= row_to; ++p)
    for (int c = range.column_from; c <= column_to; ++c) {
      PlainCell& cell = plain_.at(p).cells[static_cast<size_t>(c)];
      switch (mode) {
        case GridCellFormat::BackColor:
          cell.look.back_color = static_cast<uint32_t>(number);
          break;
        case GridCellFormat::ForeColor:
          cell.look.fore_color = static_cast<uint32_t>(number);
          break;
        case GridCellFormat::Image:
          cell.look.image = static_cast<int16_t>(number);
          break;
        case GridCellFormat::FontName:
          cell.look.font_name = std::to_wstring(number);
          break;
        case GridCellFormat::FontBold:
          PlainGrid::set(cell.flags, kGridBold, number != 0);
          break;
        case GridCellFormat::FontUnderline:
          PlainGrid::set(cell.flags, kGridUnderline, number != 0);
          break;
        case GridCellFormat::HandPointer:
          cell.look.hand_pointer = number != 0;
          break;
        default:
          cell.alignment = alignment;
      }
    }
}

void Pair::change_row(int what) {
  const int position = below(rows());
  PlainRow& row = plain_.at(position);
  const int index = store_.row_at(position);
  switch (what) {
    case 0:
      row.height = below(50);
      store_.set_row_height(index, row.height);
      break;
    case 1:
      row.image = below(3) - 1;
      store_.set_row_image(index, row.image);
      break;
    case 2:
      row.data = below(9) - 4;
      store_.set_row_data(index, row.data);
      row.tag = random_text();
      store_.set_row_tag(index, row.tag);
      break;
    case 3: {
      static constexpr int16_t kBits[] = {kGridChecked, kGridSelected, kGridChanged, kGridAddedNew,
                                          kGridRowLocked};
      const int16_t bit = kBits[below(5)];
      const bool on = coin();
      PlainGrid::set(row.flags, bit, on);
      store_.set_row_bit(index, bit, on);
      break;
    }
    case 4:
      row.group_header = coin();
      store_.set_group_header(index, row.group_header);
      break;
    case 5: {
      const bool on = coin();
      EXPECT_EQ(store_.set_row_visible(position, on), row.visible != on);
      if (row.visible && !on) PlainGrid::set(row.flags, kGridSelected, false);
      row.visible = on;
      break;
    }
    case 6: {
      const int to = below(rows() + 3) - 1;
      const bool on = coin();
      store_.select_range(on, position, to);
      const int end = to < 0 ? rows() - 1 : std::min(to, rows() - 1);
      for (int i = std::min(position, end); i <= std::max(position, end); ++i)
        PlainGrid::set(plain_.at(i).flags, kGridSelected, on);
      break;
    }
    case 7:
      if (below(10) != 0) break;
      plain_.changed = false;
      store_.set_cells_changed(false);
      break;
    default: {
      const int mark = below(kGridMarks);
      plain_.marks[static_cast<size_t>(mark)] = {row.id, below(store_.column_count())};
      store_.set_mark(static_cast<GridMark>(mark),
                      {position, plain_.marks[static_cast<size_t>(mark)].column});
    }
  }
}

void Pair::compare_row(int position) {
  const PlainRow& row = plain_.at(position);
  const int index = store_.row_at(position);
  const GridRowInfo info = store_.row_info(index);
  ASSERT_EQ(info.height, row.height);
  ASSERT_EQ(info.image, row.image);
  ASSERT_EQ(info.flags, row.flags);
  ASSERT_EQ(info.group_header, row.group_header);
  ASSERT_EQ(info.visible, row.visible);
  ASSERT_EQ(store_.row_data(index), row.data);
  ASSERT_EQ(store_.row_tag(index), row.tag);
  for (int column = 0; column < store_.column_count(); ++column) {
    const PlainCell& expected = row.cells[static_cast<size_t>(column)];
    const GridCellInfo cell = store_.cell(index, column);
    ASSERT_EQ(cell.text, expected.text);
    ASSERT_EQ(cell.flags, expected.flags);
    ASSERT_EQ(cell.alignment, expected.alignment);
    ASSERT_EQ(store_.look(cell.style), expected.look);
    ASSERT_EQ(store_.cell_tag(index, column), expected.tag);
    ASSERT_EQ(store_.cell_data(index, column), expected.data);
    ASSERT_EQ(store_.picture(index, column), expected.picture);
  }
}

void Pair::compare_visible() {
  int before = 0;
  for (int i = 0; i <= plain_.last(); ++i) {
    ASSERT_EQ(store_.visible_before(i), before);
    if (!plain_.at(i).visible) continue;
    ASSERT_EQ(store_.visible_at(before), i);
    ASSERT_EQ(store_.next_visible(i), i);
    ASSERT_EQ(store_.previous_visible(i), i);
    ++before;
  }
  ASSERT_EQ(store_.visible_count(), before);
  ASSERT_EQ(store_.visible_at(before), -1);
}

void Pair::compare() {
  ASSERT_EQ(store_.row_count(), plain_.last() + 1);
  ASSERT_EQ(store_.column_order(), plain_.column_order);
  for (int i = 0; i <= plain_.last(); ++i) {
    ASSERT_EQ(store_.row_at(i), plain_.order[static_cast<size_t>(i)]);
    ASSERT_NO_FATAL_FAILURE(compare_row(i));
  }
  ASSERT_NO_FATAL_FAILURE(compare_visible());
  for (int mark = 0; mark < kGridMarks; ++mark) {
    const PlainMark& expected = plain_.marks[static_cast<size_t>(mark)];
    const GridPlace& place = store_.mark(static_cast<GridMark>(mark));
    ASSERT_EQ(place.row, expected.id ? plain_.position_of(*expected.id) : -1) << mark;
    ASSERT_EQ(place.column, expected.column) << mark;
  }
  ASSERT_EQ(store_.cells_changed(), plain_.changed);
  for (int column = 0; column < store_.column_count(); ++column) {
    // Some sums are asked for late, so both ways of keeping them are met.
    if (column % 2 != 0 && below(50) != 0) continue;
    for (const bool visible : {false, true})
      ASSERT_EQ(store_.total(column, visible), plain_.total(static_cast<size_t>(column), visible));
  }
}

TEST(GridStoreRandom, AgreesWithAPlainGridForAHundredThousandSteps) {
  constexpr int kSteps = 100'000;
  Pair pair(20260701);
  int most = 0;
  for (int i = 0; i < kSteps; ++i) {
    ASSERT_NO_FATAL_FAILURE(pair.step()) << "step " << i;
    if (i % 4 == 0) {
      ASSERT_NO_FATAL_FAILURE(pair.compare()) << "step " << i;
    }
    if (i % 64 == 0) {
      ASSERT_EQ(pair.fault(), "") << "step " << i;
    }
    most = std::max(most, pair.rows());
  }
  EXPECT_GT(most, 30);
}

}  // namespace
}  // namespace kestrelon
