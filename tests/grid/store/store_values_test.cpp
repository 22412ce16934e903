// Sorting, finding, filtering, totals and export, through the store.
#include <gtest/gtest.h>

#include "grid/fixed_locale_rules.h"
#include "grid/store/store_check.h"
#include "grid/store/store_search.h"
#include "grid/store/store_sort.h"
#include "grid/values/cell_number.h"
#include "grid/values/csv_text.h"

namespace kestrelon {
namespace {

class StoreValues : public ::testing::Test {
 protected:
  StoreValues() {
    const GridDataType types[] = {GridDataType::String, GridDataType::Numeric,
                                  GridDataType::Boolean, GridDataType::Custom};
    for (const GridDataType type : types) store.add_column({.heading = L"c", .type = type});
  }
  void TearDown() override { EXPECT_EQ(GridStoreCheck::fault(store), ""); }

  void fill(std::initializer_list<const wchar_t*> items) {
    for (const wchar_t* item : items) store.add_item(item);
  }
  std::wstring shown() const {
    std::wstring all;
    for (int i = 0; i < store.row_count(); ++i) all += store.text(store.row_at(i), 0);
    return all;
  }
  bool sort(const GridSortCall& call, CustomOrder* custom = nullptr) {
    return sorting.sort(call, false, rules, custom);
  }

  FixedLocaleRules rules = brazilian_locale_rules();
  GridStore store{[this](std::wstring_view text) { return cell_number(text, rules.facts()); }};
  StoreSort sorting{store};
};

TEST_F(StoreValues, ThreeSortsOfAColumnEndInTheNaturalOrder) {
  EXPECT_FALSE(sort({0, 1})) << "no rows";
  fill({L"b", L"a", L"d", L"c"});
  store.set_mark(GridMark::Caret, {2, 0});
  EXPECT_FALSE(sort({})) << "no column";
  EXPECT_FALSE(sort({4, 1})) << "no such column";
  sorting.note_click(0);
  EXPECT_TRUE(sort({}));
  EXPECT_EQ(shown(), L"abcd");
  EXPECT_EQ(store.column(0).sort_state, GridSortState::Ascending);
  EXPECT_EQ(store.mark(GridMark::Caret).row, 3) << "d stays current";
  EXPECT_TRUE(sort({}));
  EXPECT_EQ(shown(), L"dcba");
  EXPECT_EQ(store.mark(GridMark::Caret).row, 0);
  EXPECT_TRUE(sort({}));
  EXPECT_EQ(shown(), L"badc");
  EXPECT_EQ(sorting.column1(), -1);
  EXPECT_EQ(store.mark(GridMark::Caret).row, 2);
}

TEST_F(StoreValues, ASecondColumnOrdersTheGroupsOfTheFirst) {
  fill({L"b\t2", L"a\t10", L"b\t10", L"a\t9,5"});
  EXPECT_TRUE(sort({0, 1, 1, 2}));
  EXPECT_EQ(store.column_order().size(), 4u);
  std::wstring numbers;
  for (int i = 0; i < 4; ++i) numbers += std::wstring(store.text(store.row_at(i), 1)) + L" ";
  EXPECT_EQ(numbers, L"10 9,5 10 2 ");
  EXPECT_TRUE(sort({1, 1})) << "the second column becomes the first";
  EXPECT_EQ(sorting.column1(), 1);
  EXPECT_EQ(sorting.column2(), -1);
  EXPECT_EQ(store.text(store.row_at(0), 1), L"2");
}

// A handler of the custom order that pulls the floor away.
class Saboteur final : public CustomOrder {
 public:
  explicit Saboteur(std::function<void()> deed) : deed_(std::move(deed)) {}
  bool before(bool, int, const std::wstring&, const std::wstring&) override {
    deed_();
    return true;
  }

 private:
  std::function<void()> deed_;
};

TEST_F(StoreValues, ARowThatComesOrGoesWhileSortingEndsTheSort) {
  const std::function<void()> deeds[] = {[&] { store.add_item(L"new", {.position = 0}); },
                                         [&] { store.remove_row(1); }, [&] { store.clear(); },
                                         [&] { store.clear_all(); }};
  for (const auto& deed : deeds) {
    if (store.column_count() == 0)
      for (int i = 0; i < 4; ++i) store.add_column({.type = GridDataType::Custom});
    for (int i = 0; i < 50; ++i) store.add_item(L"a\tb\t1\tx");
    Saboteur saboteur(deed);
    EXPECT_FALSE(sort({3, 1}, &saboteur));
    EXPECT_EQ(GridStoreCheck::fault(store), "");
  }
}

TEST_F(StoreValues, FiltersNarrowAndTheCurrentRowGivesWay) {
  fill({L"ana\t1", L"bia\t2", L"ano\t3", L"caio\t4"});
  store.set_mark(GridMark::Caret, {1, 0});
  store.select_range(true, 1, 1);
  EXPECT_EQ(store.total(1, true), 10);
  EXPECT_EQ(find_item(store, {L"CAIO"}), 3);
  EXPECT_EQ(find_item(store, {L"a", -1, 2}), -1);
  EXPECT_TRUE(filter_on(store, {L"AN", 0, 5}));
  EXPECT_EQ(store.visible_count(), 2);
  EXPECT_EQ(store.selected_count(), 0) << "a hidden row is not removed unseen";
  EXPECT_EQ(store.total(1, true), 4);
  EXPECT_TRUE(leave_hidden_row(store));
  EXPECT_EQ(store.mark(GridMark::Caret).row, 2);
  EXPECT_TRUE(filter_on(store, {L"ana", 0, 0}));
  EXPECT_TRUE(leave_hidden_row(store));
  EXPECT_EQ(store.mark(GridMark::Caret).row, 0) << "the one before, where none follows";
  EXPECT_FALSE(filter_on(store, {L"x", 0, 99})) << "a mode of no meaning hides nothing";
  EXPECT_FALSE(filter_on(store, {L"x", 9, 0}));
  EXPECT_EQ(find_item(store, {L"bia"}), 1) << "hidden rows are found";
  EXPECT_TRUE(filter_on(store, {L"zzz"}));
  EXPECT_TRUE(leave_hidden_row(store));
  EXPECT_EQ(store.mark(GridMark::Caret).row, -1);
  EXPECT_TRUE(filter_off(store, 0));
  EXPECT_FALSE(filter_off(store, 0));
  EXPECT_EQ(store.total(1, true), 10);
}

TEST_F(StoreValues, TotalsAndExportReadTheStore) {
  fill({L"a\tR$ 1.234,56\tverdadeiro", L"b\t(34,56)\t0", L"c\t&H10"});
  EXPECT_EQ(store.total(1, false), 1216);
  EXPECT_EQ(store.text(0, 2), L"True");
  EXPECT_EQ(store.text(1, 2), L"False");
  store.edit_column(3).visible = false;
  store.swap_columns(0, 1);
  std::string text;
  CsvOptions options;
  options.boolean_as_text = false;
  options.total_line = true;
  EXPECT_TRUE(write_csv(store, rules, options, L"", [&](std::string_view bytes) {
    text += bytes;
    return true;
  }));
  EXPECT_EQ(text, "c,c,c,\r\nR$ 1.234,56,a,-1,\r\n(34,56),b,0,\r\n&H10,c,0,\r\n1216,,,\r\n");
}

}  // namespace
}  // namespace kestrelon
