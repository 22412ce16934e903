// Text files as bytes: which encoding they have, and which one a text needs.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon {

/// The text of a file: UTF-8 or UTF-16 by its byte order mark, else UTF-8 if it is well-formed,
/// else the Western code page. Zero characters, which no edit window holds, are left out.
std::wstring decode_text_file(std::span<const uint8_t> bytes);

/// The Western code page where nothing is lost and the bytes read back as the same text, else UTF-8
/// with its mark.
std::vector<uint8_t> encode_text_file(std::wstring_view text);

/// A file with `text` behind what it held, in the encoding it had if that holds the text.
std::vector<uint8_t> append_to_text_file(std::span<const uint8_t> old, std::wstring_view text);

}  // namespace kestrelon
