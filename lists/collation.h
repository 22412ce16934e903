// The seam between sorting, which is portable, and the order of a language, which is the system's.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace kestrelon {

/// Makes keys whose bytes compare as their texts do in the language's order.
class Collation {
 public:
  Collation() = default;
  Collation(const Collation&) = delete;
  Collation& operator=(const Collation&) = delete;
  virtual ~Collation() = default;

  /// Adds the key of a text at the end of `keys`. A text that has none adds nothing and sorts
  /// first.
  virtual void append_key(std::wstring_view text, std::vector<uint8_t>& keys) const = 0;
};

/// The order of folded characters, exact characters where those are the same: what needs no
/// language.
const Collation& folded_collation();

}  // namespace kestrelon
