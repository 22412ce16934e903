// Statements of a dump out of its lines: boundaries are told by the shape of the lines, not by SQL.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// True when a line starts with an ASCII digit or letter, as a command does; comments, blanks and
/// brackets do not.
bool starts_command(std::string_view line);

/// A line that ends in ";" is a statement. Another one gathers the lines behind it, joined
/// directly, up to a line that ends in ";" outside a block: a line that begins with BEGIN opens the
/// block, a line END; closes it, and both are joined by CR LF.
class StatementGatherer {
 public:
  /// The statement that `line` completes, if it does. Lines that start no command are skipped
  /// unless a statement is being gathered.
  std::optional<std::string> feed(std::string_view line);

  /// True while a statement lacks its end.
  bool is_gathering() const { return gathering_; }

 private:
  std::string statement_;
  bool gathering_ = false;
  bool in_block_ = false;
};

}  // namespace kestrelon
