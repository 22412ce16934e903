#include "imaging/png_rows.h"

#include <algorithm>
#include <cstring>

#include "imaging/png_unfilter.h"

namespace kestrelon::png {
namespace {

template <uint32_t Step>
void scatter(uint8_t* dst, const uint8_t* src, size_t count) {
  for (size_t i = 0; i < count; ++i) std::memcpy(dst + i * Step * 4, src + i * 4, 4);
}

}  // namespace

RowSink::RowSink(const Description& picture, c32bppDIB& out)
    : header_(picture.header),
      out_(out),
      passes_(header_.passes()),
      converter_(picture, header_.width),
      step_(std::max<size_t>(1, header_.bits_per_pixel() / 8)) {
  const auto longest = static_cast<size_t>(header_.row_bytes(header_.width));
  current_.resize(longest + kRowSlack);
  // A picture of one row never looks at a row above.
  if (header_.height > 1) above_.resize(longest + kRowSlack);
  if (header_.interlaced) scattered_.resize(out.scanWidth());
  begin_pass();
}

// Goes on to the next pass, from pass_ on, that has pixels.
void RowSink::begin_pass() {
  for (; pass_ < passes_.size(); ++pass_) {
    columns_ = passes_[pass_].columns(header_.width);
    rows_ = passes_[pass_].rows(header_.height);
    if (columns_ != 0 && rows_ != 0) break;
  }
  row_ = 0;
  row_bytes_ = static_cast<size_t>(header_.row_bytes(columns_));
}

void RowSink::feed(std::span<const uint8_t> bytes) {
  while (!bytes.empty() && !done()) {
    const size_t whole = row_bytes_ + 1;
    if (partial_size_ == 0 && bytes.size() >= whole) {
      take_row(bytes.data());
      bytes = bytes.subspan(whole);
      continue;
    }
    if (partial_.size() < whole + kRowSlack) partial_.resize(whole + kRowSlack);
    const size_t n = std::min(bytes.size(), whole - partial_size_);
    std::memcpy(partial_.data() + partial_size_, bytes.data(), n);
    bytes = bytes.subspan(n);
    partial_size_ += n;
    if (partial_size_ == whole) {
      partial_size_ = 0;
      take_row(partial_.data());
    }
  }
}

void RowSink::take_row(const uint8_t* filtered) {
  const uint8_t* const above = row_ == 0 ? nullptr : above_.data();
  unfilter_row(filtered[0], current_.data(), filtered + 1, above, row_bytes_, step_);
  place_row();
  if (!above_.empty()) current_.swap(above_);
  if (++row_ == rows_) {
    ++pass_;
    begin_pass();
  }
}

void RowSink::place_row() {
  const Pass& pass = passes_[pass_];
  uint8_t* const row = out_.row(static_cast<int32_t>(pass.y0 + row_ * pass.dy));
  if (pass.dx == 1) return converter_.convert(row, current_.data(), columns_);
  converter_.convert(scattered_.data(), current_.data(), columns_);
  uint8_t* const first = row + size_t{pass.x0} * 4;
  switch (pass.dx) {
    case 2:
      return scatter<2>(first, scattered_.data(), columns_);
    case 4:
      return scatter<4>(first, scattered_.data(), columns_);
    default:
      return scatter<8>(first, scattered_.data(), columns_);
  }
}

}  // namespace kestrelon::png
