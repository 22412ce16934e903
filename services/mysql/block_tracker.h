// Whether the blocks of a stored program are all closed.
#pragma once

#include <string>
#include <string_view>

namespace kestrelon {

/// Fed with the lines of a text, it counts BEGIN, IF, CASE, LOOP, WHILE and REPEAT against END,
/// outside quotes and comments.
class BlockTracker {
 public:
  void feed(std::string_view line);
  /// Every block that was opened is closed, and no quote or comment is open.
  bool is_closed() const { return depth_ <= 0 && quote_ == 0 && !in_comment_; }

 private:
  void take_word(std::string_view word, std::string_view rest);
  bool opens(std::string_view word, std::string_view rest) const;

  int depth_ = 0;
  char quote_ = 0;
  bool in_comment_ = false;
  bool may_start_ = false;  // a statement may start here
  bool after_end_ = false;
};

/// True for the text of a CREATE PROCEDURE, FUNCTION, TRIGGER or EVENT.
bool creates_program(std::string_view sql);

/// The text without blanks and comments outside quotes: what two texts of one meaning share.
std::string without_layout(std::string_view sql);

}  // namespace kestrelon
