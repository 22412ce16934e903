// The library whose controls the gallery shows.
#pragma once

namespace kestrelon::host {

/// Loads the library from the program's folder or the one above, when it is there; otherwise
/// controls come from the registry. Throws ComError for a file that cannot be loaded.
void open_library();
/// After the last form has gone.
void close_library();

}  // namespace kestrelon::host
