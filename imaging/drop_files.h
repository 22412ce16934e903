// The names in a block of dropped or pasted files.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrelon {

/// File names as dropped, in order. A narrow block holds bytes in the system's code page.
struct DroppedNames {
  bool wide = false;
  std::vector<std::wstring> names;
  std::vector<std::string> narrow_names;

  size_t count() const { return wide ? names.size() : narrow_names.size(); }
};

/// Reads the block of the file drop format: a 20-byte head, then names, each ending at its zero,
/// the last with a second one. A block that ends earlier gives the names before its end; nothing if
/// the head is cut or points outside.
std::optional<DroppedNames> read_drop_files(std::span<const uint8_t> block);

}  // namespace kestrelon
