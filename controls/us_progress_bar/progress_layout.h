// How far a work is, in parts of the whole, pixels, percent and seconds: arithmetic without a
// screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

struct ProgressRange {
  double min = 0;
  double max = 100;

  /// From 0 to 1; 0 where the end does not lie behind the beginning.
  double fraction(double value) const;
  /// Percent with `decimals` places (0 to kMostDecimals), cut, as a whole number of the last place:
  /// 99.6 gives 99, with one place 996.
  int64_t percent(double value, int decimals) const;
  bool complete(double value) const { return max > min && value >= max; }
};

inline constexpr int kMostDecimals = 10;

/// Places as they are used: within 0 and kMostDecimals.
int used_decimals(int decimals);

/// A whole number of the last place as text, with a decimal comma.
std::wstring percent_text(int64_t percent, int decimals);

/// A number that changes at least whenever the text of `value` with so many places changes, and
/// seldom otherwise.
double value_step(double value, int decimals);

/// Pixels of `length` that are filled: only a full bar reaches the end.
int filled_length(int length, double fraction);

/// The part of a bar between two distances from where it begins: the left or, upright, the bottom.
PixelRect bar_part(const PixelRect& bar, int from, int to, bool upright);

struct BlockSizes {
  int block = 0;
  int gap = 0;
};

/// Blocks from a bar's beginning: every one that `filled` pixels have begun is whole, the last of a
/// bar is cut at its end.
std::vector<PixelRect> bar_blocks(const PixelRect& bar, int filled, BlockSizes sizes, bool upright);

/// Where the runner of an endless bar is, `milliseconds` after it set out, as distances from the
/// beginning; it comes in at one end and leaves at the other.
struct Runner {
  int from = 0;
  int to = 0;
};
Runner runner_at(int length, uint64_t milliseconds);

struct ProgressTexts {
  std::wstring percent, value, max, time;
};

/// A caption with {p}, {v}, {m} and {t} put in; anything else in braces stays as it is.
std::wstring fill_caption(std::wstring_view pattern, const ProgressTexts& texts);

/// Whether a caption mentions one of the marks.
bool mentions(std::wstring_view pattern, wchar_t mark);

/// Tells from the pace so far how long the rest will take.
class ProgressClock {
 public:
  void reset() { began_.reset(); }
  /// The work has come to a fraction at a time in milliseconds. Going back starts the clock anew.
  void at(double fraction, uint64_t now);
  /// Whole seconds, rounded up; -1 while there is nothing to tell from.
  int64_t seconds_left() const;

 private:
  struct Moment {
    double fraction;
    uint64_t time;
  };
  std::optional<Moment> began_;
  Moment last_{};
};

}  // namespace kestrelon
