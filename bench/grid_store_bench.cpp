// Filling the data grid with 1,000,000 rows of 10 texts beside a plain store of the same records:
// vectors of structures with what a caller can set in a row (28 bytes) and a cell (24 bytes), and
// the characters one after the other.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "grid/store/grid_store.h"

namespace {

using namespace kestrelon;

constexpr int kRows = 1'000'000;
constexpr int kColumns = 10;

struct PlainCell {
  const wchar_t* text;
  uint32_t length;
  int16_t alignment;
  int16_t style;
  int16_t flags;
  int16_t image;
  int32_t data;
};
static_assert(sizeof(PlainCell) <= 32);

struct PlainRow {
  int32_t height, image, data;
  int16_t flags;
  bool group_header, visible;
  uint32_t first_cell;
  const wchar_t* tag;
};

// Texts as a shop's list has them, 8 to 24 characters, made once for all fills.
const std::vector<std::wstring>& items() {
  static const auto texts = [] {
    std::vector<std::wstring> made;
    for (int i = 0; i < 4096; ++i) {
      const std::wstring number = std::to_wstring(i * 7919 % 100000);
      made.push_back(number + L"\tCliente " + number + L"\tRua das Laranjeiras " + number +
                     L"\t2026-03-1" + number.substr(0, 1) + L"\t" + number + L",50\tBoleto " +
                     number + L"\tSão Paulo\tSP\t11 5555-" + number + L"\tem aberto");
    }
    return made;
  }();
  return texts;
}

double megabytes() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / (1 << 20);
}

void fill(benchmark::State& state) {
  const auto& texts = items();
  for (auto _ : state) {
    const double before = megabytes();
    GridStore store([](std::wstring_view) { return 0.0; });
    for (int i = 0; i < kColumns; ++i) store.add_column({});
    for (int i = 0; i < kRows; ++i) store.add_item(texts[static_cast<size_t>(i) % texts.size()]);
    state.PauseTiming();
    state.counters["MB"] = megabytes() - before;
    const double text_bytes = static_cast<double>(store.text_units()) * sizeof(wchar_t);
    state.counters["MB of text"] = text_bytes / (1 << 20);
    state.counters["bytes a cell beside text"] =
        ((megabytes() - before) * (1 << 20) - text_bytes) / kRows / kColumns;
    state.ResumeTiming();
    benchmark::DoNotOptimize(store.row_count());
  }
}

void peer_plain_store(benchmark::State& state) {
  const auto& texts = items();
  for (auto _ : state) {
    const double before = megabytes();
    std::vector<PlainRow> rows;
    std::vector<PlainCell> cells;
    std::vector<int> order;
    std::vector<std::unique_ptr<wchar_t[]>> pages;
    size_t room = 0;
    wchar_t* next = nullptr;
    for (int i = 0; i < kRows; ++i) {
      const std::wstring_view item = texts[static_cast<size_t>(i) % texts.size()];
      order.push_back(i);
      rows.push_back({17, 0, 0, 0, false, true, static_cast<uint32_t>(cells.size()), nullptr});
      for (size_t from = 0; from <= item.size();) {
        const size_t tab = std::min(item.find(L'\t', from), item.size());
        const std::wstring_view text = item.substr(from, tab - from);
        if (room < text.size()) {
          room = 1 << 16;
          pages.push_back(std::make_unique_for_overwrite<wchar_t[]>(room));
          next = pages.back().get();
        }
        std::copy(text.begin(), text.end(), next);
        cells.push_back({next, static_cast<uint32_t>(text.size()), 4, 0, 0, 0, 0});
        next += text.size();
        room -= text.size();
        from = tab + 1;
      }
    }
    state.PauseTiming();
    state.counters["MB"] = megabytes() - before;
    state.ResumeTiming();
    benchmark::DoNotOptimize(cells.data());
  }
}

BENCHMARK(fill)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(peer_plain_store)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
