// Registry branches as REGEDIT4 text. Its lines end in CR LF.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "services/registry/regedit4_code.h"
#include "services/registry/registry_service.h"

namespace kestrelon {

/// The comment behind the head that marks a file of the escaped form.
inline constexpr std::string_view kEscapedMark =
    "; Kestrelon 2012: textos com escape de aspas e barras";

struct RegExportOptions {
  bool subkeys = true;
  /// The plain form holds strings, binary values and double words, and escapes nothing, so that
  /// texts with quotes or line ends do not come back whole. The escaped form carries every value of
  /// every kind; other readers of REGEDIT4 understand it as well.
  bool escaped = false;
  /// Made bytes by this; not owned. A text that it lacks ends the export.
  const RegFileCode* code = nullptr;
  /// Called with the path of each key, its root written long, before the key is written.
  std::function<void(const std::string& path)> on_key;
};

/// Takes a piece of the file; false when it cannot be written.
using RegTextSink = std::function<bool(std::string_view piece)>;

/// Writes the head and a key with its branch. False as soon as something cannot be written.
bool export_registry(RegistryService& registry, std::string_view path,
                     const RegExportOptions& options, const RegTextSink& out);

/// Applies a text, whose lists of bytes that are texts `code` reads, to the registry, making
/// missing keys. False for another head than REGEDIT4 or for a malformed double word or line
/// continuation; what stands before it has then been applied. The registry's `creates_missing_keys`
/// is set during the import and given back only when it succeeds.
bool import_registry(RegistryService& registry, std::string_view text,
                     const RegFileCode& code = RegFileCode());

}  // namespace kestrelon
