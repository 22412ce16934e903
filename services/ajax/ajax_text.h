// Texts of HTTP requests and answers: addresses, headers, form bodies and entities.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrelon {

/// The address with "http://" in front unless it names http or https in any case.
std::wstring full_address(std::wstring_view url);

/// `type`, with "; charset=" and the character set if there is one.
std::wstring content_type(std::wstring_view type, std::wstring_view charset);

/// Every character as "%" and two upper-case digits of its low byte, letters and digits too.
std::wstring url_encode(std::wstring_view text);

using FormFields = std::vector<std::pair<std::wstring, std::wstring>>;

/// "name=value" joined by "&" in order; only values are encoded, and only on demand.
std::wstring form_body(const FormFields& fields, bool encode_values);

/// Bytes of a text on the wire, which carries UTF-8.
size_t wire_length(std::wstring_view text);

/// Replaces the entities quot, lt, gt, amp and nbsp, then the decimal ones from 1 to 255, one after
/// the other, so that an entity that a replacement forms is replaced as well if its turn is still
/// to come. 128 to 159 follow the Western code page.
std::wstring decode_entities(std::wstring_view text);

}  // namespace kestrelon
