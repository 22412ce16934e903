#include "imaging/row_sampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace kestrelon {
namespace {

// With at most this many distinct fractions single precision is exact after truncation: a sum falls
// short of the next whole number by at least 1/4096, its rounding errors stay below 2^-14, and the
// bias of half a fraction lies above them.
constexpr int64_t kMaxFloatUnits = 4096;
// The weights of two rows are multiplied in 16 bits.
constexpr int64_t kMaxRowUnits = 32767;

struct Position {
  int32_t index;
  int64_t numerator;
};

// Where destination place `dest` falls in the source, as whole pixels and a fraction in lowest
// terms; the last pixel stands alone.
Position locate(int64_t dest, int32_t source_size, int32_t dest_size, int64_t divisor) {
  const int64_t product = dest * source_size;
  const auto index = static_cast<int32_t>(product / dest_size);
  if (index >= source_size - 1) return {source_size - 1, 0};
  return {index, product % dest_size / divisor};
}

template <class Real>
ColumnWeight<Real> column_weight(uint32_t index, int64_t near, int64_t far, double units) {
  return {index, static_cast<Real>(static_cast<double>(near) / units),
          static_cast<Real>(static_cast<double>(far) / units)};
}

}  // namespace

RowSampler::RowSampler(const PixelView& source, const SamplingShape& shape)
    : source_(source), shape_(shape), kernels_(row_kernels()) {
  const bool scaled = shape.dest_width != source.width || shape.dest_height != source.height;
  if (!scaled) {
    mode_ = shape.mirror_x ? Mode::Reverse : Mode::Copy;
  } else if (shape.high_quality) {
    prepare_bilinear();
  } else {
    prepare_nearest();
  }
  if (mode_ != Mode::Copy) out_.resize(static_cast<size_t>(shape.columns) * 4);
}

const uint8_t* RowSampler::source_row(int32_t y) const {
  return source_.row(shape_.mirror_y ? source_.height - 1 - y : y);
}

int32_t RowSampler::nearest(int64_t dest, double ratio, int32_t origin, int32_t size) const {
  const double place = std::floor(static_cast<double>(dest) * ratio + origin) - origin;
  return static_cast<int32_t>(std::clamp<double>(place, 0, size - 1));
}

void RowSampler::prepare_nearest() {
  mode_ = Mode::Nearest;
  const double ratio = static_cast<double>(source_.width) / shape_.dest_width;
  columns_.resize(static_cast<size_t>(shape_.columns));
  for (int32_t x = 0; x < shape_.columns; ++x) {
    const int64_t dest = int64_t{shape_.first_column} + x;
    const int32_t column =
        nearest(dest, ratio, shape_.mirror_x ? 0 : shape_.origin_x, source_.width);
    columns_[static_cast<size_t>(x)] = shape_.mirror_x ? source_.width - 1 - column : column;
  }
}

void RowSampler::prepare_bilinear() {
  const auto count = static_cast<size_t>(shape_.columns);
  const int64_t divisor = std::gcd(source_.width, shape_.dest_width);
  column_units_ = shape_.dest_width / divisor;
  row_units_ = shape_.dest_height / std::gcd(source_.height, shape_.dest_height);
  row_units_ = std::min(row_units_, kMaxRowUnits);
  const double units = static_cast<double>(column_units_) * static_cast<double>(row_units_);
  const bool wide = units > kMaxFloatUnits;
  mode_ = wide ? Mode::BilinearWide : Mode::Bilinear;
  bias_ = wide ? std::max(0.5 / units, 0x1p-43) : 0.5 / kMaxFloatUnits;

  auto weigh = [&](auto& weights, auto zero) {
    using Real = decltype(zero);
    weights.resize(count);
    columns_.resize(count);
    for (size_t x = 0; x < count; ++x) {
      const int64_t dest = int64_t{shape_.first_column} + static_cast<int64_t>(x);
      const Position at = locate(dest, source_.width, shape_.dest_width, divisor);
      int64_t near = column_units_ - at.numerator, far = at.numerator;
      int32_t left = at.index;
      if (shape_.mirror_x) {
        // The neighbour to the right is the one to the left in the source.
        left = std::max(source_.width - 2 - at.index, 0);
        if (at.index < source_.width - 1) std::swap(near, far);
      }
      columns_[x] = left;
      weights[x] = column_weight<Real>(static_cast<uint32_t>(left), near, far, units);
    }
  };
  wide ? weigh(wide_weights_, double{}) : weigh(weights_, float{});

  const auto [low, high] = std::minmax_element(columns_.begin(), columns_.end());
  first_needed_ = count == 0 ? 0 : *low;
  needed_ = count == 0 ? 0 : std::min(*high + 1, source_.width - 1) - first_needed_ + 1;
  // Shrinking by more than two leaves most source columns untouched: pick the pairs needed.
  gathered_ = static_cast<size_t>(needed_) > count * 2;
  const size_t held = gathered_ ? count * 2 : static_cast<size_t>(needed_);
  auto move_indices = [&](auto& weights) {
    for (size_t x = 0; x < weights.size(); ++x)
      weights[x].index = gathered_ ? static_cast<uint32_t>(x * 2)
                                   : weights[x].index - static_cast<uint32_t>(first_needed_);
  };
  move_indices(weights_);
  move_indices(wide_weights_);
  // The place right of the last column is read with weight 0.
  mixed_.assign((held + 1) * 4, 0.0f);
  if (gathered_) {
    upper_pairs_.resize(held * 4);
    lower_pairs_.resize(held * 4);
  }
}

void RowSampler::gather(const uint8_t* from, std::vector<uint8_t>& to) const {
  uint8_t* out = to.data();
  const int32_t last = source_.width - 1;
  for (const int32_t left : columns_) {
    const uint8_t* pixel = from + ptrdiff_t{left} * 4;
    std::memcpy(out, pixel, 4);
    std::memcpy(out + 4, left < last ? pixel + 4 : pixel, 4);
    out += 8;
  }
}

const uint8_t* RowSampler::bilinear_row(int32_t y) {
  const int64_t divisor = std::gcd(source_.height, shape_.dest_height);
  const Position at = locate(y, source_.height, shape_.dest_height, divisor);
  auto lower_weight = static_cast<int32_t>(at.numerator);
  if (const int64_t units = shape_.dest_height / divisor; units > kMaxRowUnits)
    lower_weight = static_cast<int32_t>(at.numerator * kMaxRowUnits / units);
  const auto upper_weight = static_cast<int32_t>(row_units_) - lower_weight;
  const uint8_t* upper = source_row(at.index);
  const uint8_t* lower = source_row(std::min(at.index + 1, source_.height - 1));
  size_t bytes = static_cast<size_t>(needed_) * 4;
  if (gathered_) {
    gather(upper, upper_pairs_);
    gather(lower, lower_pairs_);
    upper = upper_pairs_.data();
    lower = lower_pairs_.data();
    bytes = upper_pairs_.size();
  } else {
    upper += ptrdiff_t{first_needed_} * 4;
    lower += ptrdiff_t{first_needed_} * 4;
  }
  kernels_.mix_rows(mixed_.data(), upper, lower, bytes, upper_weight, lower_weight);
  const auto count = static_cast<size_t>(shape_.columns);
  if (mode_ == Mode::Bilinear) {
    kernels_.mix_columns(out_.data(), mixed_.data(), weights_.data(), count,
                         static_cast<float>(bias_));
  } else {
    kernels_.mix_columns_wide(out_.data(), mixed_.data(), wide_weights_.data(), count, bias_);
  }
  return out_.data();
}

const uint8_t* RowSampler::row(int32_t y) {
  switch (mode_) {
    case Mode::Copy:
      return source_row(y) + ptrdiff_t{shape_.first_column} * 4;
    case Mode::Reverse: {
      const int32_t first = source_.width - shape_.first_column - shape_.columns;
      kernels_.reverse(out_.data(), source_row(y) + ptrdiff_t{first} * 4,
                       static_cast<size_t>(shape_.columns));
      return out_.data();
    }
    case Mode::Nearest: {
      const double ratio = static_cast<double>(source_.height) / shape_.dest_height;
      const uint8_t* from =
          source_row(nearest(y, ratio, shape_.mirror_y ? 0 : shape_.origin_y, source_.height));
      uint8_t* out = out_.data();
      for (const int32_t column : columns_) {
        std::memcpy(out, from + ptrdiff_t{column} * 4, 4);
        out += 4;
      }
      return out_.data();
    }
    case Mode::Bilinear:
    case Mode::BilinearWide:
      break;
  }
  return bilinear_row(y);
}

}  // namespace kestrelon
