// A grid as comma-separated text.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "grid/grid_source.h"
#include "grid/locale_rules.h"
#include "grid/values/total_line.h"

namespace kestrelon {

/// The first three are those of the public call; the rest of its options are off unless asked for,
/// because the plain form puts no quotes and every line ends with its separator.
struct CsvOptions {
  bool visible_columns_only = true;
  bool visible_rows_only = false;  ///< a hidden row leaves an empty line
  bool boolean_as_text = true;     ///< else -1 and 0
  bool quotes = false;             ///< around a field that holds a separator, a quote or a line end
  bool semicolons = false;
  bool guard_formulas = false;    ///< an apostrophe before what a spreadsheet would calculate
  bool skip_hidden_rows = false;  ///< no line at all for a hidden row
  bool total_line = false;
  TotalRules totals;
};

/// The lines one after the other, so that a million rows never stand in memory as one text.
class CsvText {
 public:
  CsvText(const GridSource& source, const LocaleRules& rules, const CsvOptions& options,
          std::wstring caption);

  /// The next line with its line end; false at the end. The view lives until the next call.
  bool next(std::wstring_view& line);

 private:
  enum class Part { kCaption, kHeadings, kRows, kTotals, kEnd };

  template <class TextOf>
  void write_columns(TextOf text_of);
  bool write_row();
  std::wstring boolean_number(std::wstring_view text) const;
  void append_field(std::wstring_view text);
  bool is_formula(std::wstring_view text) const;

  const GridSource& source_;
  const LocaleRules& rules_;
  CsvOptions options_;
  std::wstring caption_;
  std::wstring line_;
  Part part_ = Part::kCaption;
  int position_ = 0;
};

/// Takes the next bytes of a file; false ends the writing.
using ByteSink = std::function<bool(std::string_view)>;

/// Writes the whole text: in the machine's code page where it loses nothing, else as UTF-8 with its
/// mark. False once the sink refused.
bool write_csv(const GridSource& source, const LocaleRules& rules, const CsvOptions& options,
               const std::wstring& caption, const ByteSink& sink);

}  // namespace kestrelon
