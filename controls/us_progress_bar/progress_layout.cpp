#include "controls/us_progress_bar/progress_layout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/decimal.h"

namespace kestrelon {
namespace {

constexpr int kRunnerPart = 3;          // the runner takes a third of the bar
constexpr uint64_t kRunnerTime = 2000;  // milliseconds from one end to the other

double power_of_ten(int exponent) {
  static constexpr std::array kPowers = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
  return kPowers[static_cast<size_t>(exponent)];
}

// Cut to a whole number, where a hair's breadth below one is that one: 0.29 of 1 are 29 percent.
double cut(double value) {
  const double nearest = std::nearbyint(value);
  const double slack = 1e-14 * std::max(1.0, std::fabs(value));
  return std::fabs(value - nearest) <= slack ? nearest : std::floor(value);
}

}  // namespace

int used_decimals(int decimals) {
  return std::clamp(decimals, 0, kMostDecimals);
}

double ProgressRange::fraction(double value) const {
  if (!(max > min) || !(value > min)) return 0;
  if (value >= max) return 1;
  // Halves, since the distance of two huge numbers may be beyond the range.
  return (value / 2 - min / 2) / (max / 2 - min / 2);
}

int64_t ProgressRange::percent(double value, int decimals) const {
  const double whole = 100 * power_of_ten(used_decimals(decimals));
  const double part = fraction(value);
  if (part >= 1) return static_cast<int64_t>(whole);
  return static_cast<int64_t>(std::min(cut(part * whole), whole - 1));
}

std::wstring percent_text(int64_t percent, int decimals) {
  const auto places = static_cast<size_t>(used_decimals(decimals));
  std::wstring digits = decimal_text(percent);
  if (places == 0) return digits;
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), L'0');
  return digits.insert(digits.size() - places, 1, L',');
}

double value_step(double value, int decimals) {
  return cut(2 * value * power_of_ten(used_decimals(decimals)));
}

int filled_length(int length, double fraction) {
  return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * std::max(0, length));
}

PixelRect bar_part(const PixelRect& bar, int from, int to, bool upright) {
  const int length = upright ? bar.bottom - bar.top : bar.right - bar.left;
  from = std::clamp(from, 0, std::max(0, length));
  to = std::clamp(to, from, std::max(0, length));
  if (upright) return {bar.left, bar.bottom - to, bar.right, bar.bottom - from};
  return {bar.left + from, bar.top, bar.left + to, bar.bottom};
}

std::vector<PixelRect> bar_blocks(const PixelRect& bar, int filled, BlockSizes sizes,
                                  bool upright) {
  std::vector<PixelRect> out;
  if (sizes.block < 1 || sizes.gap < 0) return out;
  const int length = upright ? bar.bottom - bar.top : bar.right - bar.left;
  filled = std::min(filled, length);
  const int step = sizes.block + sizes.gap;
  if (filled > 0) out.reserve(static_cast<size_t>((filled - 1) / step) + 1);
  for (int at = 0; at < filled; at += step)
    out.push_back(bar_part(bar, at, at + sizes.block, upright));
  return out;
}

Runner runner_at(int length, uint64_t milliseconds) {
  if (length < 1) return {};
  const int size = std::max(1, length / kRunnerPart);
  const auto way = static_cast<uint64_t>(length) + static_cast<uint64_t>(size);
  const auto end = static_cast<int>(way * (milliseconds % kRunnerTime) / kRunnerTime);
  return {std::clamp(end - size, 0, length), std::clamp(end, 0, length)};
}

std::wstring fill_caption(std::wstring_view pattern, const ProgressTexts& texts) {
  std::wstring out;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const bool mark = pattern[i] == L'{' && i + 2 < pattern.size() && pattern[i + 2] == L'}';
    const wchar_t name = mark ? pattern[i + 1] : L'\0';
    const std::wstring* const text = name == L'p'   ? &texts.percent
                                     : name == L'v' ? &texts.value
                                     : name == L'm' ? &texts.max
                                     : name == L't' ? &texts.time
                                                    : nullptr;
    if (text == nullptr) {
      out.push_back(pattern[i]);
    } else {
      out += *text;
      i += 2;
    }
  }
  return out;
}

bool mentions(std::wstring_view pattern, wchar_t mark) {
  const wchar_t text[] = {L'{', mark, L'}'};
  return pattern.find(std::wstring_view(text, 3)) != std::wstring_view::npos;
}

void ProgressClock::at(double fraction, uint64_t now) {
  if (!began_ || fraction < last_.fraction) began_ = Moment{fraction, now};
  last_ = {fraction, now};
}

int64_t ProgressClock::seconds_left() const {
  if (!began_) return -1;
  const double done = last_.fraction - began_->fraction;
  if (last_.fraction >= 1) return 0;
  if (!(done > 0) || last_.time <= began_->time) return -1;
  const double left = static_cast<double>(last_.time - began_->time) * (1 - last_.fraction) / done;
  constexpr double kLongest = 359999;  // 99:59:59; a pace that promises more promises nothing
  return left / 1000 > kLongest ? -1 : static_cast<int64_t>(std::ceil(left / 1000));
}

}  // namespace kestrelon
