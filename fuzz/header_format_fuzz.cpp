#include <cstddef>
#include <cstdint>
#include <string>

#include "grid/store/grid_store.h"
#include "grid/store/header_format.h"

namespace {

using namespace kestrelon;

double no_number(std::wstring_view) {
  return 0;
}

GridStore columns_of(std::wstring_view text) {
  GridStore store(no_number);
  for (GridNewColumn& column : parse_header_format(text)) store.add_column(std::move(column));
  return store;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // What is read must write back to a text that reads the same, in either manner of writing.
  const GridStore store = columns_of(std::wstring(data, data + size));
  const std::wstring exact = build_header_format(store, true);
  for (const std::wstring& text : {exact, build_header_format(store, false)}) {
    const GridStore again = columns_of(text);
    if (again.column_count() != store.column_count()) __builtin_trap();
    for (int i = 0; i < store.column_count(); ++i) {
      const GridColumn& a = store.column(i);
      const GridColumn& b = again.column(i);
      if (a.heading != b.heading || a.format != b.format || a.input_filter != b.input_filter ||
          a.alignment != b.alignment || a.type != b.type || a.flags != b.flags ||
          a.image_alignment != b.image_alignment || a.visible != b.visible || a.locked != b.locked)
        __builtin_trap();
    }
  }
  return 0;
}
