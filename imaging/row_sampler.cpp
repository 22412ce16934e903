#include "imaging/row_sampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestrelon {

RowSampler::RowSampler(const ImageView& source, const SamplingShape& shape)
    : source_(source), shape_(shape), kernels_(row_kernels()) {
  const bool scaled = shape.dest_width != source.width || shape.dest_height != source.height;
  if (!scaled) {
    mode_ = shape.mirror_x ? Mode::Reverse : Mode::Copy;
  } else if (shape.high_quality) {
    mode_ = Mode::Bilinear;
    bilinear_.emplace(source, shape);
  } else {
    prepare_nearest();
  }
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

void RowSampler::write_nearest(uint8_t* dst, int32_t y) {
  const double ratio = static_cast<double>(source_.height) / shape_.dest_height;
  const int32_t origin = shape_.mirror_y ? 0 : shape_.origin_y;
  const uint8_t* from = source_row(nearest(y, ratio, origin, source_.height));
  // Enlarging takes the same source row several times.
  if (from != picked_) {
    kernels_.pick(dst, from, static_cast<size_t>(source_.width), columns_.data(), columns_.size());
  } else if (dst != written_) {
    std::memcpy(dst, written_, columns_.size() * 4);
  }
  picked_ = from;
  written_ = dst;
}

const uint8_t* RowSampler::row(int32_t y) {
  if (mode_ == Mode::Copy) return source_row(y) + ptrdiff_t{shape_.first_column} * 4;
  out_.resize(static_cast<size_t>(shape_.columns) * 4);
  write(out_.data(), y);
  return out_.data();
}

void RowSampler::write(uint8_t* dst, int32_t y) {
  const auto count = static_cast<size_t>(shape_.columns);
  switch (mode_) {
    case Mode::Copy:
      std::memcpy(dst, source_row(y) + ptrdiff_t{shape_.first_column} * 4, count * 4);
      break;
    case Mode::Reverse: {
      const int32_t first = source_.width - shape_.first_column - shape_.columns;
      kernels_.reverse(dst, source_row(y) + ptrdiff_t{first} * 4, count);
      break;
    }
    case Mode::Nearest:
      write_nearest(dst, y);
      break;
    case Mode::Bilinear:
      bilinear_->write(dst, y);
      break;
  }
}

}  // namespace kestrelon
