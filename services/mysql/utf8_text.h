// UTF-8, the text of the server's wire.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// Surrogate pairs become one character of four bytes; a lone surrogate is written as it stands.
std::string to_utf8(std::wstring_view text);

/// Replaces `text` by the characters of well-formed UTF-8; a byte that begins no sequence becomes
/// U+FFFD.
void from_utf8(std::string_view bytes, std::wstring& text);

}  // namespace kestrelon
