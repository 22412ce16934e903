// Base64 of RFC 4648, with padding.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::host {

std::wstring to_base64(const uint8_t* bytes, size_t size);
/// Nothing unless the text is whole groups of four with padding at its end only.
std::optional<std::vector<uint8_t>> from_base64(std::wstring_view text);

}  // namespace kestrelon::host
