// zlib out of zlibwapi.dll.
#pragma once

namespace kestrelon {

/// Makes zlibwapi.dll the source of find_zlib(). It is looked for when first needed, beside this
/// module and then on the system's path, and stays loaded.
void use_zlibwapi();

/// `isZlibEnabled`: zlibwapi.dll loads and has the entry "crc32". Loads and frees it for the test.
bool is_zlib_enabled();

}  // namespace kestrelon
