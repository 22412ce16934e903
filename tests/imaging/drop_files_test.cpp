#include "imaging/drop_files.h"

#include <gtest/gtest.h>

#include "base/property_stream.h"
#include "imaging/jpeg_size.h"

namespace kestrelon {
namespace {

std::vector<uint8_t> block(uint8_t offset, bool wide, const std::vector<uint8_t>& names) {
  std::vector<uint8_t> out(offset < 20 ? 20 : offset, 0xEE);
  out[0] = offset;
  out[1] = out[2] = out[3] = 0;
  for (size_t i = 16; i < 20; ++i) out[i] = wide && i == 16;
  out.insert(out.end(), names.begin(), names.end());
  return out;
}

TEST(DropFiles, NamesEndAtTheirZeroWord) {
  const std::wstring names(L"C:\\a\0b\0\0c\0", 10);
  const auto found = read_drop_files(block(26, true, utf16_bytes(names)));
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->wide);
  EXPECT_EQ(found->names, (std::vector<std::wstring>{L"C:\\a", L"b"}));
  const auto narrow = read_drop_files(block(20, false, {'x', 0, 0xE7, 'y', 0, 0}));
  ASSERT_TRUE(narrow);
  EXPECT_EQ(narrow->narrow_names, (std::vector<std::string>{"x", "\xE7y"}));
  EXPECT_EQ(narrow->count(), 2u);
}

TEST(DropFiles, HostileBlocksEndWhereTheirBytesDo) {
  const auto whole = block(20, true, utf16_bytes(std::wstring(L"ab\0cd\0\0", 7)));
  for (size_t size = 0; size < whole.size(); ++size) {
    const auto found = read_drop_files(std::span(whole).first(size));
    EXPECT_EQ(found.has_value(), size >= 20) << size;
    const size_t names = found ? found->count() : 0;
    EXPECT_EQ(names, size < 26 ? 0u : size < 32 ? 1u : 2u) << size;
  }
  EXPECT_FALSE(read_drop_files(block(4, true, {})));  // names inside the head
  const auto cut = block(200, true, {});
  EXPECT_FALSE(read_drop_files(std::span(cut).first(60)));
}

TEST(JpegSize, ReadsTheFrameBehindOtherSegments) {
  const std::vector<uint8_t> file = {0xFF, 0xD8, 0xFF, 0xE0, 0, 4,  9, 9, 0xFF, 0xFF, 0xFF, 0xC4,
                                     0,    2,    0xFF, 0xC2, 0, 17, 8, 1, 2,    3,    4,    3};
  const auto size = jpeg_size(file);
  ASSERT_TRUE(size);
  EXPECT_EQ(*size, (ImageRect{0, 0, 0x304, 0x102}));
  for (size_t end = 0; end < 23; ++end) EXPECT_FALSE(jpeg_size(std::span(file).first(end))) << end;
  std::vector<uint8_t> scan = file;
  scan[11] = 0xDA;  // pixel data before any frame
  EXPECT_FALSE(jpeg_size(scan));
  scan[11] = 0xC4;
  scan[13] = 1;  // a length that does not count itself
  EXPECT_FALSE(jpeg_size(scan));
}

}  // namespace
}  // namespace kestrelon
