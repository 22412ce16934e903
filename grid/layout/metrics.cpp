#include "grid/layout/metrics.h"

#include <algorithm>

namespace kestrelon::grid_layout {
namespace {

constexpr uint32_t kWordEllipsis = 0x40000;
constexpr int kLongest =
    32767;  // no row or header is higher; keeps sums of a page far from overflow

int limited(double length) {
  return std::clamp(round_half_even(length), 0, kLongest);
}

int header_band(const MetricsInput& input) {
  if (!input.headers) return 0;
  const int lines = std::clamp(input.header_lines, 0, 100) * limited(input.text_height);
  return (input.small_headers ? lines / 3 : lines) + limited(input.text_height);
}

void place_row_parts(const MetricsInput& input, GridMetrics& out) {
  out.check_left = out.padding;
  out.row_image_left = input.row_check_boxes ? out.check_box_size + input.scale.px(2) : out.padding;
  out.row_content_left = out.row_image_left;
  if (input.any_row_image) out.row_content_left += out.image_width + 2 * input.scale.px(2);
}

}  // namespace

GridMetrics ComputeMetrics(const MetricsInput& input) {
  const Scale& scale = input.scale;
  GridMetrics out;
  out.scale = scale;
  out.ellipsis_flag = input.display_ellipsis ? kWordEllipsis : 0;
  out.text_height = limited(input.text_height);
  out.caption_pixels = input.has_caption ? limited(input.caption_height) : 0;
  out.vertical_offset = limited(scale.px(std::max(input.min_vertical_offset, 0)));
  out.line_width = limited(scale.line(input.grid_line_width));
  out.row_h = std::min(std::max(limited(input.min_row_height), out.text_height) +
                           2 * out.vertical_offset + scale.px(2),
                       kLongest);
  out.check_box_size =
      out.row_h >= scale.px(17) ? scale.px(16) : std::max(out.row_h - scale.px(4), 0);
  out.image_width = limited(input.image_width);
  out.image_height = limited(input.image_height);
  out.padding = scale.px(3);
  out.header_height = header_band(input) + out.caption_pixels;
  place_row_parts(input, out);
  return out;
}

int row_number_width(bool shown, int32_t largest_number, int digit_width, const Scale& scale) {
  if (!shown) return 0;
  int digits = 1;
  for (int32_t rest = largest_number; rest >= 10; rest /= 10) ++digits;
  return std::max(digits * std::clamp(digit_width, 0, 1000) + scale.px(5), scale.px(19));
}

int measured_row_height(const GridMetrics& metrics, int tallest, int max_line_count) {
  const int line_height = metrics.row_h - 2 * metrics.vertical_offset - metrics.scale.px(2);
  int64_t height = std::max(std::clamp(tallest, 0, kLongest), line_height);
  if (max_line_count >= 1) height = std::min(height, int64_t{max_line_count} * line_height);
  return static_cast<int>(std::min<int64_t>(height + 2 * metrics.vertical_offset, kLongest));
}

}  // namespace kestrelon::grid_layout
