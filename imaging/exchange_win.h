// Images and file names from the clipboard and from dropped data.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <optional>
#include <string>
#include <vector>

#include "imaging/c32bpp_dib.h"

namespace kestrelon {

/// Replaces the image by the clipboard's bitmap, enhanced metafile or metafile, in this order.
bool load_clipboard(c32bppDIB& image);

/// The names in a file drop. Wide says whether the block itself held wide names.
struct FileNames {
  bool wide = false;
  std::vector<std::wstring> names;
};

/// The files on the clipboard, or nothing.
std::optional<FileNames> pasted_file_names();
/// The files that a data object carries, or nothing.
std::optional<FileNames> dropped_file_names(IDataObject& data);

}  // namespace kestrelon
