// Arithmetic of scrolling: values, thumbs, wheels. Exact for every value a Long can hold.
#pragma once

#include <cstdint>

#include "frame/kit/pixel_view.h"

namespace kestrelon {

/// The values a bar can take. A maximum below the minimum leaves the minimum alone.
struct ScrollRange {
  int32_t min = 0;
  int32_t max = 0;

  /// `Max` less `Min`, not below 0.
  constexpr int64_t span() const { return max > min ? int64_t{max} - min : 0; }
  constexpr int32_t limit(int64_t value) const {
    return static_cast<int32_t>(value <= min || max <= min ? min : value >= max ? max : value);
  }
  /// `value` moved by `by`, limited at both ends.
  constexpr int32_t moved(int32_t value, int64_t by) const { return limit(value + by); }
};

/// The parts of a bar, numbered as a hit test reports them.
enum class BarPart {
  kNone = 0,
  kTopLeft = 1,      ///< the button that steps towards the minimum
  kBottomRight = 2,  ///< the button that steps towards the maximum
  kBefore = 3,       ///< the track up to the thumb
  kAfter = 4,        ///< the track beyond it
  kThumb = 5,
};

/// A bar of a size in pixels, before its value is known.
struct BarShape {
  int width = 0;
  int height = 0;
  bool vertical = false;  ///< runs from top to bottom
  bool buttons = true;
};

inline constexpr int kBarButton = 18;  ///< length of a button that has room
inline constexpr int kMinThumb = 8;    ///< length below which no thumb goes

/// Where everything lies on a bar; positions and lengths are pixels along it.
struct BarLayout {
  PixelRect top_left, bottom_right, before, after, thumb;
  bool vertical = false;
  bool has_thumb = false;
  int track_start = 0;
  int track_length = 0;
  int thumb_start = 0;
  int thumb_size = 0;

  int along(int x, int y) const { return vertical ? y : x; }
  BarPart hit(int x, int y) const;
  const PixelRect& part(BarPart part) const;
};

/// Lays a bar out. `page` is what a press on the track moves by; where it gives no thumb size, as 0
/// does, the thumb keeps `last_thumb_size` as far as the track has room. A bar too short for its
/// buttons and the shortest thumb is all buttons, half of the length each.
BarLayout layout_bar(const BarShape& shape, const ScrollRange& range, int32_t value, int32_t page,
                     int last_thumb_size);

/// The value for a thumb that starts at `thumb_start`: the nearest one, halves to even, so that
/// both ends can be reached. Without room to move it is `value`.
int32_t value_at(const BarLayout& layout, const ScrollRange& range, int thumb_start, int32_t value);

/// Turns wheel movements into whole notches; what is less than a notch is kept and adds up.
class WheelNotches {
 public:
  /// `delta` as the wheel message has it, 120 a notch and positive away from the user; the result
  /// is positive towards the user.
  int add(int delta);
  void reset() { kept_ = 0; }

 private:
  int kept_ = 0;
};

/// The platform's bars end where the last page ends: these two turn a maximum and a page into the
/// end of the scroll info and back. A page below 1 counts as 1.
int32_t info_end(int32_t max, int32_t page);
int32_t max_of_info(int32_t end, int32_t page);

}  // namespace kestrelon
