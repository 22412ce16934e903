#include "grid/values/row_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include "grid/fixed_locale_rules.h"
#include "grid/store/grid_store.h"
#include "grid/values/cell_number.h"

namespace kestrelon {
namespace {

class RowSortTest : public ::testing::Test {
 protected:
  void columns(std::initializer_list<GridDataType> types) {
    for (const GridDataType type : types) {
      GridNewColumn column;
      column.type = type;
      store.add_column(column);
    }
  }
  void rows(std::initializer_list<const wchar_t*> items) {
    for (const wchar_t* item : items) store.add_item(item);
  }
  std::vector<int32_t> natural() const {
    std::vector<int32_t> order(static_cast<size_t>(store.row_count()));
    std::iota(order.begin(), order.end(), 0);
    return order;
  }
  std::vector<int32_t> sorted(const RowSort& sort, CustomOrder* custom = nullptr) const {
    return sort_rows(natural(), store, sort, brazil, custom).value();
  }

  using Rows = std::vector<int32_t>;
  const FixedLocaleRules brazil = brazilian_locale_rules();
  GridStore store{[this](std::wstring_view text) { return cell_number(text, brazil.facts()); }};
};

class Handler final : public CustomOrder {
 public:
  using Answer = std::function<bool(bool, const std::wstring&, const std::wstring&)>;
  explicit Handler(Answer answer) : answer_(std::move(answer)) {}
  bool before(bool ascending, int, const std::wstring& value1,
              const std::wstring& value2) override {
    ++asked;
    return answer_(ascending, value1, value2);
  }
  int asked = 0;

 private:
  Answer answer_;
};

TEST_F(RowSortTest, NumbersSortByValueAndEqualOnesKeepTheirOrderBothWays) {
  columns({GridDataType::Numeric});
  rows({L"10", L"9", L"R$ 9,00", L"", L"-1.000", L"(5)", L"x", L"-0"});
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{4, 5, 3, 6, 7, 1, 2, 0}));
  EXPECT_EQ(sorted({{0, true}, {}}), (Rows{0, 1, 2, 3, 6, 7, 5, 4}));
}

TEST_F(RowSortTest, DatesComeByDayWithWhatIsNoneInFrontOrAtTheEnd) {
  columns({GridDataType::Date});
  rows({L"02/01/2012", L"b", L"2011-12-31", L"", L"01/01/2012 10:00", L"01/01/2012", L"a"});
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{1, 3, 6, 2, 5, 4, 0}));
  EXPECT_EQ(sorted({{0, true}, {}}), (Rows{0, 4, 5, 2, 1, 3, 6}));
}

TEST_F(RowSortTest, TextsIgnoreCaseAndPutAccentsLast) {
  columns({GridDataType::String});
  rows({L"\u00C1gua", L"agua", L"AGUA", L"agu", L"", L"zebra", L"aguardente com gelo e lim\u00E3o",
        L"Aguardente com gelo e lim\u00E3o", L"aguardente com gelo e lima", L"2", L"-x"});
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{4, 10, 9, 3, 1, 2, 0, 8, 6, 7, 5}));
  EXPECT_EQ(sorted({{0, true}, {}}), (Rows{5, 6, 7, 8, 0, 1, 2, 3, 9, 10, 4}));
}

TEST_F(RowSortTest, BooleansSortByTheBit) {
  columns({GridDataType::Boolean});
  rows({L"True", L"False", L"-1", L"x"});
  store.set_checked(3, 0, true);
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{1, 0, 2, 3}));
}

TEST_F(RowSortTest, GroupsAreRunsOfEqualTextUnlessRulesAreExact) {
  columns({GridDataType::Numeric, GridDataType::Numeric});
  rows({L"1\t5", L"1,0\t9", L"1\t3", L"1\t1", L"0\t7"});
  EXPECT_EQ(sorted({{0, false}, {1, false}}), (Rows{4, 0, 1, 3, 2}));
  EXPECT_EQ(sorted({{0, false}, {1, false}, true}), (Rows{4, 3, 2, 0, 1}));
  EXPECT_EQ(sorted({{0, true}, {1, true}, true}), (Rows{1, 0, 2, 3, 4}));
}

TEST_F(RowSortTest, ProgressSortsAsTextUnlessRulesAreExact) {
  columns({GridDataType::ProgressBar});
  rows({L"100", L"20", L"3%"});
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{0, 1, 2}));
  EXPECT_EQ(sorted({{0, false}, {}, true}), (Rows{2, 1, 0}));
}

TEST_F(RowSortTest, RadixAgreesWithAStableSortOfTheSameKeys) {
  columns({GridDataType::Numeric, GridDataType::String, GridDataType::String});
  std::mt19937 random(5);
  for (int i = 0; i < 5000; ++i) {
    const auto number = static_cast<int>(random() % 4000) - 2000;
    // Long common beginnings take the sort beyond the first eight bytes of its keys.
    std::wstring text = std::wstring(random() % 20, L'a') + std::to_wstring(random() % 30);
    store.add_item(std::to_wstring(number) + L"," + std::to_wstring(random() % 10) + L"\t" + text +
                   L"\t" + std::wstring(1, static_cast<wchar_t>(L'a' + random() % 3)));
  }
  for (const int column : {0, 1, 2}) {
    for (const bool descending : {false, true}) {
      const auto key = [&](int32_t row) {
        std::string bytes;
        brazil.append_sort_key(store.text(row, column), bytes);
        return bytes;
      };
      const auto less = [&](int32_t a, int32_t b) {
        if (descending) std::swap(a, b);
        return column == 0 ? store.number(store.text(a, 0)) < store.number(store.text(b, 0))
                           : key(a) < key(b);
      };
      Rows expected = natural();
      std::stable_sort(expected.begin(), expected.end(), less);
      ASSERT_EQ(sorted({{column, descending}, {}}), expected) << column;
    }
  }
}

TEST_F(RowSortTest, ACustomOrderSeesTextsAndDecides) {
  columns({GridDataType::Custom});
  rows({L"bbb", L"a", L"cc", L"dd"});
  Handler by_length([](bool ascending, const std::wstring& a, const std::wstring& b) {
    return ascending ? a.size() < b.size() : a.size() > b.size();
  });
  EXPECT_EQ(sorted({{0, false}, {}}, &by_length), (Rows{1, 2, 3, 0}));
  EXPECT_EQ(sorted({{0, true}, {}}, &by_length), (Rows{0, 2, 3, 1}));
  EXPECT_EQ(sorted({{0, false}, {}}), (Rows{1, 0, 2, 3})) << "as text when nobody is asked";
}

TEST_F(RowSortTest, AnyAnswersOfACustomOrderEndWithEveryRowOnce) {
  columns({GridDataType::Custom, GridDataType::Custom});
  for (int i = 0; i < 1000; ++i) store.add_item(i % 3 == 0 ? L"x\ty" : L"z\tw");
  std::mt19937 random(6);
  for (const Handler::Answer& answer :
       {Handler::Answer([](bool, const auto&, const auto&) { return true; }),
        Handler::Answer([](bool, const auto&, const auto&) { return false; }),
        Handler::Answer([&](bool, const auto&, const auto&) { return random() % 2 == 0; })}) {
    Handler handler(answer);
    Rows result = sorted({{0, false}, {1, false}}, &handler);
    EXPECT_LE(handler.asked, 2 * 1000 * 10);
    std::sort(result.begin(), result.end());
    EXPECT_EQ(result, natural());
  }
}

TEST_F(RowSortTest, RowsChangedByTheHandlerEndTheSort) {
  columns({GridDataType::Custom});
  rows({L"c", L"b", L"a", L"d"});
  for (const std::function<void()>& change :
       {std::function<void()>([this] { store.add_item(L"x"); }),
        std::function<void()>([this] { store.remove_row(0); }),
        std::function<void()>([this] { store.clear_all(); })}) {
    Handler handler([&](bool, const auto&, const auto&) {
      if (handler.asked == 2) change();
      return true;
    });
    EXPECT_FALSE(sort_rows(natural(), store, {{0, false}, {}}, brazil, &handler));
    EXPECT_EQ(handler.asked, 2);
  }
}

TEST_F(RowSortTest, NothingAndOneRowSortToThemselves) {
  columns({GridDataType::String});
  EXPECT_EQ(sorted({{0, false}, {0, true}}), Rows());
  rows({L"a"});
  EXPECT_EQ(sorted({{0, false}, {0, true}}), Rows{0});
}

TEST(SortState, CyclesOrTakesTheTypeTurnedRound) {
  using enum GridSortState;
  GridSortState state = None;
  for (const GridSortState expected : {Ascending, Descending, None})
    EXPECT_EQ(state = next_sort_state(state, -1), expected);
  EXPECT_EQ(next_sort_state(Descending, 1), Ascending);
  EXPECT_EQ(next_sort_state(Ascending, 2), Descending);
  EXPECT_EQ(next_sort_state(Ascending, 0), None);
}

}  // namespace
}  // namespace kestrelon
