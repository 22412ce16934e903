#include "imaging/bilinear_rows.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace kestrelon {
namespace {

struct Position {
  int32_t index;
  int32_t fraction;  // in units
};

// The number of distinct fractions, or the most that 15 bits can tell apart.
int32_t units_of(int32_t source_size, int32_t dest_size) {
  return std::min(dest_size / std::gcd(source_size, dest_size), kMostUnits);
}

// Where destination place `dest` falls in the source, as whole pixels and a fraction; the last
// pixel stands alone.
Position locate(int64_t dest, int32_t source_size, int32_t dest_size, int32_t units) {
  const int64_t product = dest * source_size;
  const auto index = static_cast<int32_t>(product / dest_size);
  if (index >= source_size - 1) return {source_size - 1, 0};
  return {index, static_cast<int32_t>(product % dest_size * units / dest_size)};
}

}  // namespace

BilinearRows::BilinearRows(const ImageView& source, const SamplingShape& shape)
    : source_(source),
      shape_(shape),
      kernels_(row_kernels()),
      column_units_(units_of(source.width, shape.dest_width)),
      row_units_(units_of(source.height, shape.dest_height)),
      narrow_(column_units_ <= kMostNarrowUnits) {
  weigh_columns();
  quads_ = ColumnQuads(index_, source.width, narrow_ ? QuadOrder::kNarrow : QuadOrder::kWide);
  const size_t channels = index_.size() * 4;
  for (KeptRow& kept : kept_) {
    if (narrow_) {
      kept.narrow.resize(channels);
    } else {
      kept.wide.resize(channels);
    }
  }
}

void BilinearRows::weigh_columns() {
  const auto count = static_cast<size_t>(shape_.columns);
  index_.resize(count);
  if (narrow_) {
    narrow_columns_.resize(count);
  } else {
    wide_columns_.resize(count);
  }
  for (size_t x = 0; x < count; ++x) {
    const int64_t dest = shape_.first_column + static_cast<int64_t>(x);
    const Position at = locate(dest, source_.width, shape_.dest_width, column_units_);
    int32_t left_weight = column_units_ - at.fraction, right_weight = at.fraction;
    int32_t left = at.index;
    if (left == source_.width - 1 && left > 0) {
      // The last column stands alone, as the right one of a pair that lies inside the row.
      --left;
      std::swap(left_weight, right_weight);
    }
    if (shape_.mirror_x && source_.width > 1) {
      left = source_.width - 2 - left;
      std::swap(left_weight, right_weight);
    }
    index_[x] = static_cast<uint32_t>(left);
    if (narrow_) {
      narrow_columns_[x] = NarrowColumn(left_weight, right_weight);
    } else {
      wide_columns_[x] = {static_cast<int16_t>(left_weight), static_cast<int16_t>(right_weight)};
    }
  }
}

void BilinearRows::mix_across(KeptRow& kept, int32_t line) {
  const uint8_t* row = source_.row(shape_.mirror_y ? source_.height - 1 - line : line);
  uint8_t doubled[8];
  if (source_.width == 1) {
    std::memcpy(doubled, row, 4);
    std::memcpy(doubled + 4, row, 4);
    row = doubled;
  }
  if (narrow_) {
    kernels_.mix_across(kept.narrow.data(), row, index_.data(), quads_, narrow_columns_.data(),
                        index_.size());
  } else {
    kernels_.mix_across_wide(kept.wide.data(), row, index_.data(), quads_, wide_columns_.data(),
                             index_.size());
  }
  kept.line = line;
}

// The slot that holds source row `line`, made if need be; `not_this_slot` is left alone.
size_t BilinearRows::keep(int32_t line, size_t not_this_slot) {
  for (size_t slot : {0, 1}) {
    if (kept_[slot].line == line) return slot;
  }
  const size_t slot = not_this_slot == 0 ? 1 : 0;
  mix_across(kept_[slot], line);
  return slot;
}

void BilinearRows::write(uint8_t* dst, int32_t y) {
  const Position at = locate(y, source_.height, shape_.dest_height, row_units_);
  const int32_t below = at.fraction == 0 ? at.index : at.index + 1;
  // A row that is there must not make room for the one that is not.
  const bool have_below = kept_[0].line == below || kept_[1].line == below;
  const size_t lower_slot = have_below ? keep(below, 2) : 2;
  const size_t upper_slot = keep(at.index, lower_slot);
  const KeptRow& upper = kept_[upper_slot];
  const KeptRow& lower = kept_[keep(below, upper_slot)];
  const RowMix mix{row_units_ - at.fraction, at.fraction, column_units_ * row_units_};
  const size_t channels = index_.size() * 4;
  if (narrow_) {
    kernels_.mix_down(dst, upper.narrow.data(), lower.narrow.data(), channels, mix);
  } else {
    kernels_.mix_down_wide(dst, upper.wide.data(), lower.wide.data(), channels, mix);
  }
}

}  // namespace kestrelon
