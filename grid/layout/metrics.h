// The sizes that a grid works with between two changes of font, caption, theme or image list.
#pragma once

#include <cstdint>

#include "grid/layout/scale.h"

namespace kestrelon::grid_layout {

/// What the sizes follow from. Lengths are pixels of the screen unless they say otherwise.
struct MetricsInput {
  Scale scale;
  int text_height = 0;  ///< of "ABCDWXYZ" in the header's font
  bool has_caption = false;
  double caption_height = 0;
  double min_row_height = 0;
  int min_vertical_offset = 2;  ///< at 96 dpi
  int grid_line_width = 1;      ///< at 96 dpi
  bool headers = true;
  bool small_headers = true;
  int header_lines = 2;
  bool row_check_boxes = false;
  bool any_row_image = false;
  int image_width = 0, image_height = 0;  ///< 0 without an image list
  bool display_ellipsis = true;
};

struct GridMetrics {
  Scale scale;
  uint32_t ellipsis_flag = 0;  ///< the word ellipsis of DrawText, or nothing
  int check_box_size = 0;      ///< where a row's check box ends, and the height of its place
  int image_width = 0, image_height = 0;
  int check_left = 0;        ///< of the row's check box, within the first column
  int row_image_left = 0;    ///< of the row's image, likewise
  int row_content_left = 0;  ///< where the first column's own content begins
  int header_height = 0;     ///< from the top of the control to the first row
  int text_height = 0;
  int caption_pixels = 0;
  int row_h = 0;  ///< default height of a row
  int vertical_offset = 0;
  int line_width = 0;  ///< of the grid lines, inside the cell at its right and bottom
  int padding = 0;     ///< at both sides of a text, so that a focus mark leaves it whole
};

GridMetrics ComputeMetrics(const MetricsInput& input);

/// Width of the column of row numbers: room for the largest number shown, 0 when it is not shown.
int row_number_width(bool shown, int32_t largest_number, int digit_width, const Scale& scale);

/// The height of a row whose tallest cell measures `tallest`: at least a line, at most
/// `max_line_count` lines (no limit below 1), and the offsets.
int measured_row_height(const GridMetrics& metrics, int tallest, int max_line_count);

}  // namespace kestrelon::grid_layout
