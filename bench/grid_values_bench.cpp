// The grid's values over 1,000,000 rows: sorting and searching beside std::stable_sort with the
// same keys computed once, and beside one upper-casing and std::wstring::find a row.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "base/fold.h"
#include "grid/fixed_locale_rules.h"
#include "grid/store/grid_store.h"
#include "grid/values/cell_number.h"
#include "grid/values/date_text.h"
#include "grid/values/keyed_rows.h"
#include "grid/values/row_matcher.h"
#include "grid/values/row_sort.h"

namespace kestrelon {
namespace {

constexpr int kRows = 1000000;
enum Column { kNumber, kText, kDate, kEqual };

const FixedLocaleRules& brazil() {
  static const FixedLocaleRules rules = brazilian_locale_rules();
  return rules;
}

const GridStore& store() {
  static const GridStore* const filled = [] {
    auto* made = new GridStore([](std::wstring_view) { return 0.0; });
    for (const GridDataType type :
         {GridDataType::Numeric, GridDataType::String, GridDataType::Date, GridDataType::String}) {
      GridNewColumn column;
      column.type = type;
      made->add_column(column);
    }
    constexpr const wchar_t* kNames[] = {L"\u00C1gua mineral", L"Caf\u00E9 torrado",
                                         L"A\u00E7\u00FAcar",  L"Feij\u00E3o preto",
                                         L"Arroz branco",      L"Leite"};
    std::mt19937 random(1);
    for (int i = 0; i < kRows; ++i) {
      std::wstring item =
          std::to_wstring(random() % 10000000) + L"," + std::to_wstring(10 + random() % 90) + L"\t";
      item += kNames[random() % 6];
      item += L" " + std::to_wstring(random() % 100000) + L"\t";
      item += date_text(30000 + random() % 15000, brazil().facts()) + L"\tigual em todas as linhas";
      made->add_item(item);
    }
    return made;
  }();
  return *filled;
}

std::vector<int32_t> natural() {
  std::vector<int32_t> order(kRows);
  std::iota(order.begin(), order.end(), 0);
  return order;
}

void sort_ours(benchmark::State& state, const RowSort& sort) {
  store();
  for (auto _ : state)
    benchmark::DoNotOptimize(sort_rows(natural(), store(), sort, brazil())->data());
}
BENCHMARK_CAPTURE(sort_ours, numbers, RowSort{{kNumber, false}, {}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sort_ours, texts, RowSort{{kText, false}, {}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sort_ours, dates, RowSort{{kDate, true}, {}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sort_ours, equal_texts, RowSort{{kEqual, false}, {}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sort_ours, dates_then_numbers, RowSort{{kDate, false}, {kNumber, true}})
    ->Unit(benchmark::kMillisecond);

template <class Key, class KeyOf>
void sort_by_std(benchmark::State& state, KeyOf key_of) {
  for (auto _ : state) {
    std::vector<std::pair<Key, int32_t>> rows;
    rows.reserve(kRows);
    for (int row = 0; row < kRows; ++row) rows.emplace_back(key_of(row), row);
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    benchmark::DoNotOptimize(rows.data());
  }
}

void sort_std_numbers(benchmark::State& state) {
  sort_by_std<double>(
      state, [](int row) { return cell_number(store().text(row, kNumber), brazil().facts()); });
}
BENCHMARK(sort_std_numbers)->Unit(benchmark::kMillisecond);

void sort_std_texts(benchmark::State& state) {
  sort_by_std<std::string>(state, [](int row) {
    std::string key;
    brazil().append_sort_key(store().text(row, kText), key);
    return key;
  });
}
BENCHMARK(sort_std_texts)->Unit(benchmark::kMillisecond);

void contains_ours(benchmark::State& state) {
  const RowMatcher matcher(L"feij\u00E3o preto 77", static_cast<int>(GridSearchMode::Like), false);
  for (auto _ : state) {
    int found = 0;
    for (int row = 0; row < kRows; ++row)
      found += matcher.matches(store().text(row, kText)) ? 1 : 0;
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(contains_ours)->Unit(benchmark::kMillisecond);

void contains_folded(benchmark::State& state) {
  const TextPattern pattern(L"feijao preto 77", LetterRule::kFold);
  for (auto _ : state) {
    int found = 0;
    for (int row = 0; row < kRows; ++row)
      found += pattern.contains(store().text(row, kText)) ? 1 : 0;
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(contains_folded)->Unit(benchmark::kMillisecond);

void contains_std(benchmark::State& state) {
  const std::wstring wanted = upper_text(L"feij\u00E3o preto 77");
  for (auto _ : state) {
    int found = 0;
    for (int row = 0; row < kRows; ++row)
      found += upper_text(store().text(row, kText)).find(wanted) != std::wstring::npos ? 1 : 0;
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(contains_std)->Unit(benchmark::kMillisecond);

void read_numbers(benchmark::State& state) {
  for (auto _ : state) {
    double sum = 0;
    for (int row = 0; row < kRows; ++row)
      sum += cell_number(store().text(row, kNumber), brazil().facts());
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(read_numbers)->Unit(benchmark::kMillisecond);

void read_texts_as_numbers(benchmark::State& state) {
  for (auto _ : state) {
    double sum = 0;
    for (int row = 0; row < kRows; ++row)
      sum += cell_number(store().text(row, kText), brazil().facts());
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(read_texts_as_numbers)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kestrelon

BENCHMARK_MAIN();
