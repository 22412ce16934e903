// The file of a backup: written beside the old one, in whose place it comes when it is complete.
#pragma once

#include <string>
#include <string_view>

#include "base/system_file.h"

namespace kestrelon {

/// Writes `path` + ".parcial". An end before `complete` leaves an old file at `path` alone and the
/// part beside it; without an old file the part gets the name itself. Throws DbError when the file
/// cannot be made, written or put in its place.
class DumpTarget {
 public:
  explicit DumpTarget(const std::wstring& path);
  ~DumpTarget();
  DumpTarget(const DumpTarget&) = delete;
  DumpTarget& operator=(const DumpTarget&) = delete;

  /// Hands the bytes to the system.
  void write(std::string_view bytes);
  void complete();

 private:
  std::wstring path_;
  std::wstring partial_;  // the path itself for what is no plain file
  bool is_open_ = true;
  SystemFile file_;
};

}  // namespace kestrelon
