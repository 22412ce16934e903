// Lengths are told in pixels of a screen of 96 dots an inch and grow with the screen's.
#pragma once

namespace kestrelon {

/// The scale of the window that is being drawn, as dots an inch: 96, 120, 144, 192, 288 ...
class Scale {
 public:
  static constexpr int kUnit = 96;

  constexpr Scale() = default;
  /// Values outside 96 (100 %) to 480 (500 %) are taken as the nearer end.
  constexpr explicit Scale(int dpi) : dpi_(dpi < kUnit ? kUnit : dpi > kMost ? kMost : dpi) {}

  constexpr int dpi() const { return dpi_; }
  constexpr bool is_unit() const { return dpi_ == kUnit; }
  /// A length in pixels of this scale, to the nearest; a length that is not 0 never becomes 0.
  constexpr int operator()(int length) const {
    if (dpi_ == kUnit || length == 0) return length;
    const int scaled = (length * dpi_ + (length < 0 ? -kUnit / 2 : kUnit / 2)) / kUnit;
    return scaled != 0 ? scaled : length < 0 ? -1 : 1;
  }
  /// The width of a thin line: whole pixels, cut, so that it stays thin at 150 %.
  constexpr int line(int width = 1) const {
    const int scaled = width * dpi_ / kUnit;
    return scaled < 1 ? 1 : scaled;
  }
  /// Back to pixels of 96 dots an inch.
  constexpr int to_unit(int pixels) const {
    return dpi_ == kUnit ? pixels : (pixels * kUnit + (pixels < 0 ? -dpi_ : dpi_) / 2) / dpi_;
  }
  constexpr bool operator==(const Scale&) const = default;

 private:
  static constexpr int kMost = 480;
  int dpi_ = kUnit;
};

}  // namespace kestrelon
