// Trees from rows of a table: by key and parent key, or by codes whose parts name their ancestors.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "lists/tree/tree_store.h"

namespace kestrelon {

struct TreeRow {
  std::wstring key;     ///< or the code
  std::wstring parent;  ///< the parent's key; "" for the root
  std::wstring text;
  int32_t image = 0;
};

/// Replaces the tree. Rows may come in any order; those whose parent is missing or that lie on a
/// cycle stand at the root. The result is the number of rows taken: a key that came before takes no
/// second row.
int32_t fill_by_parents(TreeStore& tree, std::span<const TreeRow> rows);

/// The same by codes: "1.01.02" lies under "1.01", else under "1", else at the root. With an empty
/// separator every shorter beginning of a code can be its parent.
int32_t fill_by_codes(TreeStore& tree, std::span<const TreeRow> rows, std::wstring_view separator);

}  // namespace kestrelon
