#include "imaging/row_kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <type_traits>
#include <vector>

#include "imaging/tones.h"

namespace kestrelon {
namespace {

std::vector<const RowKernels*> kernel_sets() {
  std::vector<const RowKernels*> sets = {&plain_row_kernels()};
  for (const RowKernels* set : {sse2_row_kernels(), avx2_row_kernels()}) {
    if (set) sets.push_back(set);
  }
  return sets;
}

// The blend rule as a caller would write it down.
int blended(int src, int dst, int alpha, int global) {
  if (alpha == 0) return dst;
  if (global == 255) return alpha == 255 ? src : std::min(255, src + dst * (255 - alpha) / 255);
  const int effective = alpha * global / 255;
  return std::min(255, src * global / 255 + dst * (255 - effective) / 255);
}

// Every alpha, destination and global alpha; the colours are the largest allowed, one inside the
// range, and one that no valid image holds, which must saturate.
TEST(BlendRows, EveryAlphaDestinationAndGlobalAlphaFollowTheRule) {
  std::vector<uint8_t> src(256 * 256 * 4), before(src.size()), expected(src.size());
  for (int global = 1; global < 256; ++global) {
    const bool keep_alpha = global % 3 == 0;
    for (size_t i = 0; i < src.size(); i += 4) {
      const int alpha = static_cast<int>(i >> 10), d = static_cast<int>(i >> 2 & 255);
      const int colours[4] = {alpha, (d * 31 + global) % (alpha + 1), 255, alpha};
      for (size_t c = 0; c < 4; ++c) {
        src[i + c] = static_cast<uint8_t>(colours[c]);
        before[i + c] = static_cast<uint8_t>(d);
        const bool stays = keep_alpha && c == 3;
        expected[i + c] = static_cast<uint8_t>(stays ? d : blended(colours[c], d, alpha, global));
      }
    }
    for (const RowKernels* set : kernel_sets()) {
      std::vector<uint8_t> dst = before;
      set->blend(dst.data(), 0, src.data(), 0, dst.size() / 4, 1, static_cast<uint32_t>(global),
                 keep_alpha);
      const auto differ = std::mismatch(dst.begin(), dst.end(), expected.begin());
      ASSERT_TRUE(differ.first == dst.end())
          << set->name << " global " << global << " at " << differ.first - dst.begin();
    }
  }
}

TEST(BlendRows, RectanglesWithAnyStrideAndWidthTouchNothingElse) {
  for (const RowKernels* set : kernel_sets()) {
    for (size_t width = 0; width < 20; ++width) {
      std::vector<uint8_t> src(3 * 80, 0xFF), dst(3 * 96 + 1, 0x11);
      set->blend(dst.data() + 1 + 2 * 96, -96, src.data(), 80, width, 3, 255, false);
      for (size_t i = 0; i < dst.size(); ++i) {
        const bool inside = i > 0 && (i - 1) % 96 < width * 4;
        ASSERT_EQ(dst[i], inside ? 0xFF : 0x11) << set->name << ' ' << width << " at " << i;
      }
    }
  }
}

// Long rows, rows without a gap, rows in falling order, every alignment.
TEST(BlendRows, EveryShapeGivesTheBytesOfThePlainLoop) {
  std::mt19937 random(5);
  const auto any = [&](size_t most) { return static_cast<size_t>(random() % (most + 1)); };
  for (int k = 0; k < 600; ++k) {
    const size_t width = random() % 3 ? any(40) : 250 + any(60), rows = 1 + any(4);
    const size_t gap = any(1) * 4 * any(3), dst_at = any(40), src_at = any(40);
    const size_t stride = width * 4 + gap;
    std::vector<uint8_t> src(src_at + rows * stride), dst(dst_at + rows * stride);
    for (auto* bytes : {&src, &dst})
      for (uint8_t& byte : *bytes) byte = static_cast<uint8_t>(random());
    for (size_t i = src_at + 3; i < src.size(); i += 4)
      if (random() % 4) src[i] = random() % 2 ? 255 : 0;
    const bool dst_falls = any(1), src_falls = any(1), keep_alpha = any(1);
    const auto global = random() % 2 ? 255u : static_cast<uint32_t>(1 + any(254));
    const auto run = [&](const RowKernels& set) {
      std::vector<uint8_t> out = dst;
      const size_t last = (rows - 1) * stride;
      const auto step = static_cast<ptrdiff_t>(stride);
      set.blend(out.data() + dst_at + (dst_falls ? last : 0), dst_falls ? -step : step,
                src.data() + src_at + (src_falls ? last : 0), src_falls ? -step : step, width, rows,
                global, keep_alpha);
      return out;
    };
    const std::vector<uint8_t> expected = run(plain_row_kernels());
    for (const RowKernels* set : kernel_sets()) ASSERT_EQ(run(*set), expected) << set->name << k;
  }
}

TEST(LightRows, EveryAlphaAndColourFollowTheRule) {
  for (float percent :
       {-100.f, -99.f, -50.f, -7.5f, -1.f, -.1f, .3f, 1.f, 33.f, 50.f, 98.f, 100.f}) {
    const LightTable table = light_table(static_cast<double>(percent));
    const float adjustment = static_cast<float>(static_cast<double>(percent) / 100 * 255);
    for (const RowKernels* set : kernel_sets()) {
      std::vector<uint8_t> src;
      for (int alpha = 0; alpha < 256; ++alpha) {
        for (int c = 0; c < 256; ++c) {
          for (int v : {c, alpha * c / 255, 255 - c, alpha}) src.push_back(static_cast<uint8_t>(v));
        }
      }
      std::vector<uint8_t> dst(src.size());
      set->light(dst.data(), src.data(), src.size() / 4 - 1, table);
      for (size_t i = 0; i + 4 < src.size(); ++i) {
        const int alpha = src[i | 3];
        const int delta =
            static_cast<int>(std::nearbyint(static_cast<double>(adjustment) * alpha)) / 255;
        int expected = src[i];
        if (i % 4 != 3 && alpha != 0) {
          expected =
              percent < 0 ? std::max(expected + delta, 0) : std::min(expected + delta, alpha);
        }
        ASSERT_EQ(dst[i], expected) << set->name << ' ' << percent << " at " << i;
      }
    }
  }
}

// The sum of the three products is exact in double precision, so rounding it once is the rule.
TEST(GrayRows, AllFormulasRoundTheExactSumHalvesToEven) {
  for (int formula = 0; formula < 9; ++formula) {
    const GrayFormula f = gray_formula(static_cast<GrayScale>(formula));
    const GrayWeights weights = gray_weights(static_cast<GrayScale>(formula));
    std::vector<uint8_t> src(256 * 256 * 4);
    std::vector<std::vector<uint8_t>> out(3, std::vector<uint8_t>(src.size()));
    for (int k = 0; k < 24; ++k) {
      for (size_t i = 0; i < src.size() / 4; ++i) {
        src[i * 4] = static_cast<uint8_t>(i);
        src[i * 4 + 1] = static_cast<uint8_t>(i >> 8);
        src[i * 4 + 2] = static_cast<uint8_t>(k * 11 + static_cast<int>(i * 7 + (i >> 8) * 3));
        src[i * 4 + 3] = i % 97 == 0 ? 0 : 255;
      }
      const auto sets = kernel_sets();
      for (size_t s = 0; s < sets.size(); ++s)
        sets[s]->gray(out[s].data(), src.data(), src.size() / 4, weights);
      for (size_t i = 0; i < src.size(); i += 4) {
        const double sum = static_cast<double>(f.blue) * src[i] +
                           static_cast<double>(f.green) * src[i + 1] +
                           static_cast<double>(f.red) * src[i + 2];
        const auto expected =
            src[i + 3] == 0 ? src[i + 1] : static_cast<uint8_t>(std::nearbyint(sum));
        ASSERT_EQ(out[0][i + 1], expected) << formula << " at " << i;
      }
      for (size_t s = 1; s < sets.size(); ++s) ASSERT_EQ(out[s], out[0]) << sets[s]->name;
    }
  }
}

TEST(ReversedRows, AllSetsGiveEqualBytes) {
  std::mt19937 random(7);
  std::vector<uint8_t> row(4 * 103);
  for (uint8_t& byte : row) byte = static_cast<uint8_t>(random());
  std::vector<uint8_t> first(row.size()), out(row.size());
  plain_row_kernels().reverse(first.data(), row.data(), 103);
  for (const RowKernels* set : kernel_sets()) {
    set->reverse(out.data(), row.data(), 103);
    EXPECT_EQ(out, first) << set->name;
  }
}

// Steps of every size, even ones and jumps, to the last pixel of a row that ends where its memory
// does.
TEST(PickRows, EverySetTakesThePixelsNamed) {
  std::mt19937 random(7);
  for (int round = 0; round < 4000; ++round) {
    const uint32_t width = 1 + random() % 300, count = 1 + random() % 120;
    std::vector<uint32_t> row(width), expected(count), out(count);
    for (uint32_t& pixel : row) pixel = random();
    std::vector<int32_t> columns(count);
    const bool even = random() % 3 != 0;
    for (uint32_t x = 0; x < count; ++x)
      columns[x] = static_cast<int32_t>(even ? uint64_t{x} * width / count : random() % width);
    std::sort(columns.begin(), columns.end());
    if (random() % 2 != 0) std::reverse(columns.begin(), columns.end());
    for (uint32_t x = 0; x < count; ++x) expected[x] = row[static_cast<size_t>(columns[x])];
    for (const RowKernels* set : kernel_sets()) {
      set->pick(reinterpret_cast<uint8_t*>(out.data()),
                reinterpret_cast<const uint8_t*>(row.data()), width, columns.data(), count);
      ASSERT_EQ(out, expected) << set->name << ", " << count << " of " << width;
    }
  }
}

// A bilinear row between two source rows, with all weights at random but those at the edges of
// their range.
struct MixCase {
  int32_t column_units, row_units;
  std::vector<uint8_t> upper, lower;
  std::vector<uint32_t> index;
  std::vector<int32_t> far;
  int32_t lower_weight;

  MixCase(std::mt19937& random, int32_t most_column_units) {
    const auto any = [&](int32_t most) { return static_cast<int32_t>(random() % (most + 1u)); };
    column_units = 1 + any(random() % 2 ? 40 : most_column_units - 1);
    row_units = 1 + any(random() % 2 ? 40 : kMostUnits - 1);
    const int32_t width = 2 + any(60), count = any(70);
    for (auto* row : {&upper, &lower}) {
      const uint32_t style = random() % 4;
      const auto tint = static_cast<uint8_t>(random());
      for (int32_t i = 0; i < width * 4; ++i) {
        const auto value = static_cast<uint8_t>(random());
        const uint8_t styles[] = {value, tint, static_cast<uint8_t>(value & 1 ? 255 : 254), 255};
        row->push_back(styles[style]);
      }
    }
    for (int32_t x = 0; x < count; ++x) {
      index.push_back(static_cast<uint32_t>(any(width - 2)));
      const int32_t choices[] = {0, column_units, any(column_units), any(column_units)};
      far.push_back(choices[random() % 4]);
    }
    // As in a picture: they rise, or fall in a mirrored one.
    const uint32_t order = random() % 4;
    if (order != 0) std::sort(index.begin(), index.end());
    if (order == 1) std::reverse(index.begin(), index.end());
    const int32_t choices[] = {0, row_units, any(row_units), any(row_units)};
    lower_weight = choices[random() % 4];
  }

  uint8_t expected(size_t x, size_t c) const {
    const auto across = [&](const std::vector<uint8_t>& row) {
      const uint8_t* p = &row[index[x] * 4 + c];
      return int64_t{p[0]} * (column_units - far[x]) + int64_t{p[4]} * far[x];
    };
    const int64_t sum = across(upper) * (row_units - lower_weight) + across(lower) * lower_weight;
    return static_cast<uint8_t>(sum / (int64_t{column_units} * row_units));
  }

  template <class Sum, class Column>
  std::vector<uint8_t> run(auto across, auto down) const {
    std::vector<Column> columns;
    for (int32_t f : far) {
      if constexpr (std::is_same_v<Column, NarrowColumn>) {
        columns.emplace_back(column_units - f, f);
      } else {
        columns.push_back({static_cast<int16_t>(column_units - f), static_cast<int16_t>(f)});
      }
    }
    const ColumnQuads quads(
        index, static_cast<int32_t>(upper.size() / 4),
        std::is_same_v<Column, NarrowColumn> ? QuadOrder::kNarrow : QuadOrder::kWide);
    std::vector<Sum> sums[2];
    for (size_t k : {0, 1}) {
      sums[k].resize(index.size() * 4);
      across(sums[k].data(), (k ? lower : upper).data(), index.data(), quads, columns.data(),
             index.size());
    }
    std::vector<uint8_t> out(index.size() * 4);
    down(out.data(), sums[0].data(), sums[1].data(), out.size(),
         RowMix{row_units - lower_weight, lower_weight, column_units * row_units});
    return out;
  }
};

TEST(MixRows, EverySetTruncatesTheExactSum) {
  std::mt19937 random(7);
  for (int k = 0; k < 20000; ++k) {
    const bool narrow = k % 2 == 0;
    const MixCase mix(random, narrow ? kMostNarrowUnits : kMostUnits);
    for (const RowKernels* set : kernel_sets()) {
      const std::vector<uint8_t> out =
          narrow ? mix.run<int16_t, NarrowColumn>(set->mix_across, set->mix_down)
                 : mix.run<float, WideColumn>(set->mix_across_wide, set->mix_down_wide);
      for (size_t i = 0; i < out.size(); ++i) {
        ASSERT_EQ(out[i], mix.expected(i / 4, i % 4))
            << set->name << ' ' << narrow << " case " << k << " at " << i << " units "
            << mix.column_units << ' ' << mix.row_units;
      }
    }
  }
}

// Runs from any place to any other, in pictures that are stored either way up.
TEST(RotateRows, AllSetsGiveEqualBytesUpToTheEdges) {
  std::mt19937 random(11);
  constexpr auto kUnit = int64_t{1} << 32;
  for (int k = 0; k < 2000; ++k) {
    const auto width = static_cast<int32_t>(1 + random() % 40);
    const auto height = static_cast<int32_t>(1 + random() % 40);
    std::vector<uint8_t> source(static_cast<size_t>(width * height) * 4);
    for (uint8_t& byte : source) byte = static_cast<uint8_t>(random());
    const ptrdiff_t stride = width * 4;
    const bool bottom_up = random() % 2 == 0;
    const auto any = [&](int32_t size) {
      return static_cast<int64_t>((uint64_t{random()} << 32 | random()) %
                                  static_cast<uint64_t>(size * kUnit));
    };
    const size_t count = 2 + random() % 50;
    const auto steps = static_cast<int64_t>(count - 1);
    RotatedRun run{source.data() + (bottom_up ? (height - 1) * stride : 0),
                   bottom_up ? -stride : stride,
                   width - 1,
                   height - 1,
                   any(width),
                   any(height),
                   0,
                   0};
    run.dx = (any(width) - run.x) / steps;
    run.dy = (any(height) - run.y) / steps;
    std::vector<uint8_t> nearest;
    for (size_t i = 0; i < count; ++i) {
      const auto step = static_cast<int64_t>(i);
      const uint8_t* pixel = run.top + ((run.y + step * run.dy) >> 32) * run.stride +
                             ((run.x + step * run.dx) >> 32) * 4;
      nearest.insert(nearest.end(), pixel, pixel + 4);
    }
    std::vector<std::vector<uint8_t>> out;
    for (const RowKernels* set : kernel_sets()) {
      out.emplace_back(count * 4);
      set->rotate_nearest(out.back().data(), run, count);
      ASSERT_EQ(out.back(), nearest) << set->name;
      set->rotate_bilinear(out.back().data(), run, count);
      ASSERT_EQ(out.back(), out.front()) << set->name;
    }
  }
}

}  // namespace
}  // namespace kestrelon
