// Recognition of e-mail addresses.
#pragma once

#include <string_view>

namespace kestrelon {

/// The documented check: one "@", some point, letters a to z, digits, "@", ".", "-" and "_" alone,
/// and a last part that is found within a list of endings, as a whole or as a fragment of it.
bool is_valid_email(std::wstring_view text);

/// The same with "+" allowed before the "@" and any ending of two letters or more.
bool is_valid_email_ex(std::wstring_view text);

}  // namespace kestrelon
