// Binary values as text: pairs of upper-case hexadecimal digits, separated by blanks.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

std::string bytes_to_hex_text(std::string_view bytes);

/// Digits of either case in pairs; blanks and commas may stand between the pairs. Nothing for any
/// other text; an empty text is no bytes.
std::optional<std::string> hex_text_to_bytes(std::string_view text);

}  // namespace kestrelon
