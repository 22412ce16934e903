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

}  // namespace

RowSampler::RowSampler(const ImageView& source, const SamplingShape& shape)
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

template <class Real>
void RowSampler::weigh_columns(std::vector<ColumnWeight<Real>>& weights, double units) {
  const int64_t divisor = shape_.dest_width / column_units_;
  weights.resize(static_cast<size_t>(shape_.columns));
  int64_t dest = shape_.first_column;
  for (ColumnWeight<Real>& weight : weights) {
    const Position at = locate(dest++, source_.width, shape_.dest_width, divisor);
    int64_t near = column_units_ - at.numerator, far = at.numerator;
    int32_t left = at.index;
    if (left == source_.width - 1 && left > 0) {
      // The last column stands alone, as the right one of a pair that lies inside the row.
      --left;
      std::swap(near, far);
    }
    if (shape_.mirror_x && source_.width > 1) {
      left = source_.width - 2 - left;
      std::swap(near, far);
    }
    weight = {static_cast<uint32_t>(left), static_cast<Real>(static_cast<double>(near) / units),
              static_cast<Real>(static_cast<double>(far) / units)};
  }
}

void RowSampler::prepare_bilinear() {
  column_units_ = shape_.dest_width / std::gcd(source_.width, shape_.dest_width);
  row_units_ = shape_.dest_height / std::gcd(source_.height, shape_.dest_height);
  row_units_ = std::min(row_units_, kMaxRowUnits);
  const double units = static_cast<double>(column_units_) * static_cast<double>(row_units_);
  if (units > kMaxFloatUnits) {
    mode_ = Mode::BilinearWide;
    bias_ = std::max(0.5 / units, 0x1p-43);
    weigh_columns(wide_weights_, units);
  } else {
    mode_ = Mode::Bilinear;
    bias_ = 0.5 / kMaxFloatUnits;
    weigh_columns(weights_, units);
  }
}

const uint8_t* RowSampler::bilinear_row(int32_t y) {
  const int64_t divisor = std::gcd(source_.height, shape_.dest_height);
  const Position at = locate(y, source_.height, shape_.dest_height, divisor);
  auto lower_weight = static_cast<int32_t>(at.numerator);
  if (const int64_t units = shape_.dest_height / divisor; units > kMaxRowUnits)
    lower_weight = static_cast<int32_t>(at.numerator * kMaxRowUnits / units);
  RowPair rows{source_row(at.index), source_row(std::min(at.index + 1, source_.height - 1)),
               static_cast<int32_t>(row_units_) - lower_weight, lower_weight};
  if (source_.width == 1) {
    std::memcpy(doubled_[0], rows.upper, 4);
    std::memcpy(doubled_[1], rows.lower, 4);
    rows.upper = doubled_[0];
    rows.lower = doubled_[1];
  }
  const auto count = static_cast<size_t>(shape_.columns);
  if (mode_ == Mode::Bilinear) {
    kernels_.mix(out_.data(), rows, weights_.data(), count, static_cast<float>(bias_));
  } else {
    kernels_.mix_wide(out_.data(), rows, wide_weights_.data(), count, bias_);
  }
  return out_.data();
}

const uint8_t* RowSampler::nearest_row(int32_t y) {
  const double ratio = static_cast<double>(source_.height) / shape_.dest_height;
  const int32_t origin = shape_.mirror_y ? 0 : shape_.origin_y;
  const uint8_t* from = source_row(nearest(y, ratio, origin, source_.height));
  // Enlarging takes the same source row several times.
  if (from != picked_) kernels_.pick(out_.data(), from, columns_.data(), columns_.size());
  picked_ = from;
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
    case Mode::Nearest:
      return nearest_row(y);
    case Mode::Bilinear:
    case Mode::BilinearWide:
      break;
  }
  return bilinear_row(y);
}

}  // namespace kestrelon
