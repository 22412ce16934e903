// Property bags as text that people can read, compare and keep under version control.
#pragma once

#include <string>
#include <string_view>

#include "host/property_bag.h"

namespace kestrelon::host {

/// One line a key, in the order of the bag:
///
///   Caption = "Aceito os \"termos\""
///   Enabled = True
///   Value = 1%                      an Integer; & Long, ! Single, # Double, @ Currency
///   Level = Byte 7
///   Since = Date 44197.5            days since 30.12.1899
///   MouseIcon = Nothing
///   Font = Font {
///     Name = "Tahoma"
///   }
///   Image = Bytes {                 Base64
///     iVBORw0KGgo=
///   }
///   Picture = Stream {0BE35204-8F91-11CE-9DE3-00AA004BB851} {
///     bHQAAA==
///   }
///
/// `Object {clsid} {` holds the keys of an object that saves itself to a property bag. Empty lines
/// and lines that begin with an apostrophe are passed over.
std::wstring to_property_text(const BagEntries& entries);
/// Throws ComError with the number of the line that is wrong.
BagEntries parse_property_text(std::wstring_view text);

/// True for a name that stands without quotes: letters of the alphabet, digits, underscores.
bool is_plain_name(std::wstring_view name);

/// The file is UTF-8. Both throw ComError when the file cannot be used.
void save_property_file(const std::wstring& path, const BagEntries& entries);
BagEntries load_property_file(const std::wstring& path);

}  // namespace kestrelon::host
