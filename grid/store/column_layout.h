// The widths and the order of the columns as lines of text, to be kept in files. The functions give
// what is to be told the user of a failure, or nothing.
#pragma once

#include <string>
#include <string_view>

#include "grid/store/grid_store.h"

namespace kestrelon {

/// A line a column: its index, a tab, the width in container units.
std::wstring column_widths_text(const GridStore& store, wchar_t decimal_mark = L'.');
/// Takes the lines up to the first bad one; a column that does not exist is passed over.
std::wstring take_column_widths(GridStore& store, std::wstring_view text);

/// A line a position: the position, a tab, the index of the column shown there.
std::wstring column_order_text(const GridStore& store);
/// Changes nothing unless the lines name every position and every column once.
std::wstring take_column_order(GridStore& store, std::wstring_view text);

std::wstring save_layout_file(const std::wstring& name, std::wstring_view text);
std::wstring load_column_widths_file(GridStore& store, const std::wstring& name);
std::wstring load_column_order_file(GridStore& store, const std::wstring& name);

}  // namespace kestrelon
