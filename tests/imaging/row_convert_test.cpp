#include "imaging/row_convert.h"

#include <gtest/gtest.h>

#include <vector>

#include "imaging/bit_fields.h"

namespace kestrelon {
namespace {

TEST(RowConvert, ShufflesLikeThePlainForm) {
  if (!row_convert_detail::has_ssse3()) GTEST_SKIP() << "processor without byte shuffle";
  uint32_t state = 5;
  for (size_t count = 0; count < 70; ++count) {
    std::vector<uint8_t> src(3 * count);
    for (uint8_t& byte : src) byte = static_cast<uint8_t>((state = state * 1664525 + 99) >> 24);
    std::vector<uint8_t> plain(4 * count), shuffled(4 * count);  // exact sizes: overruns show
    row_convert_detail::bgr24_to_row_plain(plain.data(), src.data(), count);
    row_convert_detail::bgr24_to_row_ssse3(shuffled.data(), src.data(), count);
    ASSERT_EQ(shuffled, plain) << count;
    for (size_t i = 0; i < 4 * count; ++i)
      ASSERT_EQ(plain[i], i % 4 == 3 ? 255 : src[i / 4 * 3 + i % 4]);
  }
}

TEST(RowConvert, FastFormsOfBitFieldsAgreeWithTheGeneralOne) {
  const BitFields x555({0x7C00, 0x3E0, 0x1F, 0}), r565({0xF800, 0x7E0, 0x1F, 0});
  for (uint32_t value = 0; value < 0x10000; ++value) {
    const uint8_t src[2] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
    uint8_t general[4], fast[4];
    x555.to_row(general, src, 1, 16);
    x1r5g5b5_to_row(fast, src, 1);
    ASSERT_TRUE(std::equal(fast, fast + 4, general)) << value;
    r565.to_row(general, src, 1, 16);
    r5g6b5_to_row(fast, src, 1);
    ASSERT_TRUE(std::equal(fast, fast + 4, general)) << value;
  }
}

TEST(BitFields, ReachesBothEndsAtEveryWidth) {
  for (int width = 1; width <= 32; ++width) {
    const uint32_t mask = width == 32 ? 0xFFFFFFFFu : (1u << width) - 1;
    const BitFields fields({mask, 0, 0, 0});
    uint8_t out[4];
    const uint8_t ones[4] = {255, 255, 255, 255}, zeros[4] = {};
    fields.to_row(out, ones, 1, 32);
    EXPECT_EQ(out[2], 255) << width;
    fields.to_row(out, zeros, 1, 32);
    EXPECT_EQ(out[2], 0) << width;
    EXPECT_EQ(out[3], 255) << width;
  }
}

}  // namespace
}  // namespace kestrelon
