#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "grid/store/column_layout.h"
#include "grid/store/store_check.h"

namespace {

using namespace kestrelon;

double no_number(std::wstring_view) {
  return 0;
}

GridStore five_columns() {
  GridStore store(no_number);
  for (int i = 0; i < 5; ++i) store.add_column({});
  return store;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text(data, data + size);
  GridStore store = five_columns();
  const std::vector<int> before = store.column_order();
  if (!take_column_order(store, text).empty() && store.column_order() != before) __builtin_trap();
  take_column_widths(store, text);
  if (!GridStoreCheck::fault(store).empty()) __builtin_trap();
  // What came of it must survive being written and read.
  GridStore again = five_columns();
  if (!take_column_order(again, column_order_text(store)).empty()) __builtin_trap();
  if (!take_column_widths(again, column_widths_text(store)).empty()) __builtin_trap();
  if (again.column_order() != store.column_order()) __builtin_trap();
  for (int i = 0; i < 5; ++i)
    if (again.column(i).width != store.column(i).width || !(store.column(i).width >= 0))
      __builtin_trap();
  return 0;
}
