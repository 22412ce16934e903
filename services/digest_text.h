// Digests and cipher as the utility class offers them: over the ANSI bytes of a text, printed in
// hexadecimal digits.
#pragma once

#include <string>
#include <string_view>

#include "services/kn_platform.h"

namespace kestrelon {

/// MD5 in 32 lower-case digits.
std::wstring md5_text(std::wstring_view text);

/// CRC-32 in upper-case digits without leading zeros; "0" for the empty text.
std::wstring crc32_text(std::wstring_view text);

/// CRC-32 of a file in eight upper-case digits. "" when the file cannot be read to its end, and on
/// a machine without zlib, whose presence this member has always asked for.
std::wstring crc32_of_file(KnPlatform& platform, std::wstring_view path);

/// Skipjack over six characters a block (the fourth word stays empty), the last one filled with
/// blanks: sixteen upper-case digits a block. The key is 20 hexadecimal digits, taken as it comes:
/// a digit that is missing or is none counts as 0.
std::wstring encrypt_text(std::wstring_view text, std::wstring_view key);

/// The text of whole blocks of sixteen digits in either case; what is left over is lost. The two
/// bytes of a zero fourth word are dropped from each block, and blanks from both ends of the whole.
std::wstring decrypt_text(std::wstring_view digits, std::wstring_view key);

}  // namespace kestrelon
