// What a backup changes or leaves out: a count and one line in Portuguese for each.
#pragma once

#include <cstdint>
#include <string>

namespace kestrelon {

class AlterationLog {
 public:
  /// Values or objects that come back other than they were. The line is for the user.
  void altered(const std::wstring& line, uint64_t count = 1) {
    count_ += count;
    note(line);
  }
  /// A line about what does not count as altered.
  void note(const std::wstring& line) {
    if (!lines_.empty()) lines_ += L"\r\n";
    lines_ += line;
  }
  void clear() { *this = {}; }

  uint64_t count() const { return count_; }
  /// Lines parted by CR LF; empty for none.
  const std::wstring& lines() const { return lines_; }

 private:
  uint64_t count_ = 0;
  std::wstring lines_;
};

}  // namespace kestrelon
