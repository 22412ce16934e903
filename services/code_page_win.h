// Texts in the machine's ANSI code page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// The bytes of a text, or nothing when the page lacks one of its characters. No best-fit
/// substitutes.
std::optional<std::string> page_bytes(std::wstring_view text);

std::wstring page_text(std::string_view bytes);

/// The text of bytes in a code page by its number; nothing for a page that the system lacks.
std::optional<std::wstring> text_of_page(std::string_view bytes, unsigned page);

}  // namespace kestrelon
