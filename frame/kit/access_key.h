// The access key that a caption's & marks.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// The access key of a caption in lower case, or an empty text. The first single & that is not the
/// last character marks it; a doubled && stands for itself and is passed over. Captions of one
/// character have none.
std::wstring access_key_from_start(std::wstring_view caption);

/// The same with the search from the end: the last single & that is not the last character.
std::wstring access_key_from_end(std::wstring_view caption);

/// The caption as it is read: without the marks, a doubled && as one &.
std::wstring without_access_marks(std::wstring_view caption);

}  // namespace kestrelon
