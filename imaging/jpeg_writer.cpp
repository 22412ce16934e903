#include "imaging/jpeg_writer.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "base/byte_writer.h"
#include "imaging/flatten.h"
#include "imaging/huffman.h"
#include "imaging/jpeg_blocks.h"
#include "imaging/jpeg_format.h"

namespace kestrelon {
namespace {

using namespace jpeg;

constexpr int kWholeColourQuality = 90;

// Code tables, by the id they have in the file: direct and alternating coefficients of luminance,
// then of colour.
enum Table : uint8_t { kLumaDc, kLumaAc, kColourDc, kColourAc, kTables };

// A symbol and the bits that follow it, whose number is the symbol's low half.
struct Token {
  uint16_t bits;
  Table table;
  uint8_t symbol;
};
static_assert(sizeof(Token) == 4);

class BitWriter {
 public:
  explicit BitWriter(std::vector<uint8_t>& out) : out_(out) {}
  void put(uint32_t bits, int count) {
    pending_ = pending_ << count | bits;
    for (pending_bits_ += count; pending_bits_ >= 8;) {
      pending_bits_ -= 8;
      const auto byte = static_cast<uint8_t>(pending_ >> pending_bits_);
      out_.push_back(byte);
      if (byte == 0xFF) out_.push_back(0);  // no marker
    }
  }
  void finish() {
    if (pending_bits_ > 0) put(0x7F, 7);  // ones fill the last byte; spare bits are dropped
  }

 private:
  std::vector<uint8_t>& out_;
  uint64_t pending_ = 0;
  int pending_bits_ = 0;
};

/// One picture on its way: blocks are turned into tokens while their symbols are counted; the codes
/// come of the counts, so the tokens are written last.
class cJPGWriter {
 public:
  cJPGWriter(const c32bppDIB& image, const JpegOptions& options);
  void encode();
  void write(std::vector<uint8_t>& out);

 private:
  struct Component {
    int sampling;  // blocks of a unit in each direction
    const Divisors* divisors;
    Table dc, ac;
    int previous_dc = 0;
    std::vector<uint8_t> samples;  // the rows of one line of units
  };

  size_t unit() const { return 8 * static_cast<size_t>(luma_sampling_); }
  void load_unit_rows(int32_t top);
  void halve_colour(std::vector<uint8_t>& samples) const;
  void encode_block(Component& component, size_t x, size_t y);
  void emit(Table table, int run, int value);
  void write_tables(ByteWriter& out) const;
  void write_frame(ByteWriter& out) const;

  const c32bppDIB& image_;
  uint32_t fill_;
  int luma_sampling_;
  size_t padded_width_;
  Divisors luma_divisors_, colour_divisors_;
  Component components_[3];
  cHuffman codes_[kTables];
  std::vector<Token> tokens_;
};

cJPGWriter::cJPGWriter(const c32bppDIB& image, const JpegOptions& options)
    : image_(image),
      fill_(options.fill_colour),
      luma_sampling_(options.quality < kWholeColourQuality ? 2 : 1),
      padded_width_((static_cast<size_t>(image.Width()) + unit() - 1) / unit() * unit()),
      luma_divisors_(scale_divisors(kLuminanceDivisors, options.quality)),
      colour_divisors_(scale_divisors(kChrominanceDivisors, options.quality)) {
  components_[0] = {luma_sampling_, &luma_divisors_, kLumaDc, kLumaAc, 0, {}};
  for (int i : {1, 2}) components_[i] = {1, &colour_divisors_, kColourDc, kColourAc, 0, {}};
  for (Component& component : components_) component.samples.resize(padded_width_ * unit());
}

// Flattened rows as samples; the last row and column are repeated up to whole units.
void cJPGWriter::load_unit_rows(int32_t top) {
  const auto width = static_cast<size_t>(image_.Width());
  std::vector<uint8_t> row(padded_width_ * 4);
  for (size_t i = 0; i < unit(); ++i) {
    const int32_t y = std::min(top + static_cast<int32_t>(i), image_.Height() - 1);
    flatten_row_32(row.data(), image_.row(y), width, fill_);
    for (size_t x = width; x < padded_width_; ++x)
      std::memcpy(&row[4 * x], &row[4 * (width - 1)], 4);
    const size_t at = i * padded_width_;
    split_row(row.data(), padded_width_, &components_[0].samples[at], &components_[1].samples[at],
              &components_[2].samples[at]);
  }
  if (luma_sampling_ == 1) return;
  halve_colour(components_[1].samples);
  halve_colour(components_[2].samples);
}

// Means of two by two samples, in place; rows keep their distance. The rounding alternates, so that
// halves do not brighten the picture.
void cJPGWriter::halve_colour(std::vector<uint8_t>& samples) const {
  for (size_t y = 0; y < 8; ++y) {
    const uint8_t* upper = &samples[2 * y * padded_width_];
    const uint8_t* lower = upper + padded_width_;
    uint8_t* dst = &samples[y * padded_width_];
    for (size_t x = 0; x < padded_width_ / 2; ++x) {
      const int sum = upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1];
      dst[x] = static_cast<uint8_t>((sum + 1 + static_cast<int>(x & 1)) >> 2);
    }
  }
}

// A run of zeros and the value after it: the number of the value's bits, and the bits themselves,
// one less where it is negative.
void cJPGWriter::emit(Table table, int run, int value) {
  const int size = std::bit_width(static_cast<unsigned>(std::abs(value)));
  const auto symbol = static_cast<uint8_t>(run << 4 | size);
  const int bits = value < 0 ? value - 1 : value;
  codes_[table].count(symbol);
  tokens_.push_back({static_cast<uint16_t>(bits & ((1 << size) - 1)), table, symbol});
}

void cJPGWriter::encode_block(Component& component, size_t x, size_t y) {
  Block block;
  for (size_t row = 0; row < 8; ++row) {
    const uint8_t* samples = &component.samples[(y + row) * padded_width_ + x];
    for (size_t i = 0; i < 8; ++i) block[8 * row + i] = static_cast<int16_t>(samples[i] - 128);
  }
  transform_and_quantise(block, *component.divisors);

  emit(component.dc, 0, block[0] - component.previous_dc);
  component.previous_dc = block[0];
  int run = 0;
  for (size_t i = 1; i < block.size(); ++i) {
    const int value = block[kZigzag[i]];
    if (value == 0) {
      ++run;
      continue;
    }
    for (; run > 15; run -= 16) emit(component.ac, 15, 0);
    emit(component.ac, run, value);
    run = 0;
  }
  if (run > 0) emit(component.ac, 0, 0);  // end of the block
}

void cJPGWriter::encode() {
  for (int32_t top = 0; top < image_.Height(); top += static_cast<int32_t>(unit())) {
    load_unit_rows(top);
    for (size_t left = 0; left < padded_width_; left += unit()) {
      for (Component& component : components_) {
        const size_t side = 8 * static_cast<size_t>(component.sampling);
        const size_t start = left / unit() * side;
        for (size_t y = 0; y < side; y += 8) {
          for (size_t x = 0; x < side; x += 8) encode_block(component, start + x, y);
        }
      }
    }
  }
  for (cHuffman& code : codes_) code.build();
}

void cJPGWriter::write_tables(ByteWriter& out) const {
  uint8_t id = 0;
  for (const Divisors* divisors : {&luma_divisors_, &colour_divisors_}) {
    out.u16be(kQuantTable), out.u16be(2 + 1 + 64), out.u8(id++);
    for (const uint8_t place : kZigzag) out.u8((*divisors)[place]);
  }
  for (int table = 0; table < kTables; ++table) {
    const cHuffman& code = codes_[table];
    out.u16be(kHuffmanTable), out.u16be(2 + 1 + 16 + static_cast<uint32_t>(code.symbols().size()));
    const bool ac = table == kLumaAc || table == kColourAc;
    out.u8((ac ? 0x10 : 0) | (table >= kColourDc ? 1 : 0));
    out.bytes(code.lengths());
    out.bytes(code.symbols());
  }
}

void cJPGWriter::write_frame(ByteWriter& out) const {
  out.u16be(kBaselineFrame), out.u16be(8 + 3 * 3), out.u8(8);
  out.u16be(static_cast<uint32_t>(image_.Height()));
  out.u16be(static_cast<uint32_t>(image_.Width()));
  out.u8(3);
  for (uint32_t i = 0; i < 3; ++i) {
    const auto sampling = static_cast<uint32_t>(components_[i].sampling);
    out.u8(i + 1), out.u8(sampling << 4 | sampling), out.u8(i == 0 ? 0 : 1);
  }
}

void cJPGWriter::write(std::vector<uint8_t>& out) {
  ByteWriter writer(out);
  writer.u16be(kStart);
  writer.u16be(kJfif), writer.u16be(16);
  writer.bytes(std::array<uint8_t, 5>{'J', 'F', 'I', 'F', 0});
  writer.u16be(0x0101);                              // version
  writer.u8(1), writer.u16be(96), writer.u16be(96);  // dots an inch
  writer.u16be(0);                                   // no thumbnail
  write_tables(writer);
  write_frame(writer);
  writer.u16be(kScan), writer.u16be(6 + 2 * 3), writer.u8(3);
  for (uint32_t i = 0; i < 3; ++i) writer.u8(i + 1), writer.u8(i == 0 ? 0x00 : 0x11);
  writer.u8(0), writer.u8(63), writer.u8(0);

  BitWriter bits(out);
  for (const Token& token : tokens_) {
    const cHuffman& code = codes_[token.table];
    bits.put(code.code(token.symbol), code.code_bits(token.symbol));
    bits.put(token.bits, token.symbol & 15);
  }
  bits.finish();
  writer.u16be(kEnd);
}

}  // namespace

bool write_jpeg(const c32bppDIB& image, const JpegOptions& options, std::vector<uint8_t>& out) {
  out.clear();
  if (!image.has_image() || image.Width() > 0xFFFF || image.Height() > 0xFFFF) return false;
  cJPGWriter writer(image, options);
  writer.encode();
  writer.write(out);
  return true;
}

}  // namespace kestrelon
