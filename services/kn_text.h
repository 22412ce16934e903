// Text helpers of the utility class.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// The ASCII digits of a text, in order.
std::wstring keep_digits(std::wstring_view text);

/// The text with each "@" of `mask` replaced by the next character of `text`, as long as there is
/// one.
std::wstring fill_mask(std::wstring_view text, std::wstring_view mask);

/// Portuguese and neighbouring accented letters (48 of the Latin-1 block) without their marks; ñ, ý
/// and letters beyond the block stay.
std::wstring remove_accents(std::wstring_view text);

/// What stands between the first `begin` and the first `end` after it, whatever the case; "" when
/// either is missing. An empty mark is found at once.
std::wstring text_between(std::wstring_view text, std::wstring_view begin, std::wstring_view end);

/// "999 Bytes", "0.98 Kb", "12.5 Mb", "250 Gb" to "Yb". Units change above 999 of the smaller one;
/// `mark` is the decimal mark. "" for what is no number.
std::wstring format_bytes(double bytes, wchar_t mark);

}  // namespace kestrelon
