// What a backup is asked for.
#pragma once

#include <functional>
#include <string>

#include "base/calendar.h"
#include "services/mysql/numeric_text.h"

namespace kestrelon {

struct BackupOptions {
  bool drop_database = false;
  bool drop_table_if_exists = true;
  bool only_table_structure = false;
  /// Rows in one INSERT of the default form, at least 1.
  int records_in_block = 250;
  std::wstring application_title = L"Kestrelon 2012";
  std::wstring additional_information = L"Kestrelon 2012 - Interface gráfica de objetos";
  /// The exact form, which loses nothing.
  bool exact_values = false;
  NumberMarks marks;
  std::function<DateTime()> clock;
};

}  // namespace kestrelon
