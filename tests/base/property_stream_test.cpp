#include "base/property_stream.h"

#include <gtest/gtest.h>

namespace kestrelon {
namespace {

std::vector<PropertyRecord> sample() {
  return {{L"Caption", 8, utf16_bytes(L"Opção & saída")},
          {L"Empty", 8, {}},
          {L"Value", 2, {1, 0}},
          {L"", 3, {1, 2, 3, 4}}};
}

std::span<const uint8_t> payload_of(const std::vector<uint8_t>& stream) {
  return std::span(stream).subspan(kPropertyHeaderBytes);
}

TEST(PropertyStream, KeepsKeysTypesDataAndOrder) {
  const auto stream = write_property_stream(sample());
  uint32_t length = 0;
  ASSERT_TRUE(read_property_header(stream, length));
  EXPECT_EQ(length, stream.size() - kPropertyHeaderBytes);
  EXPECT_EQ(read_property_records(payload_of(stream)), sample());
}

TEST(PropertyStream, GivesTheWholeRecordsBeforeACut) {
  const auto stream = write_property_stream(sample());
  const auto whole = payload_of(stream);
  size_t last = 0;
  for (size_t cut = 0; cut <= whole.size(); ++cut) {
    const std::vector<uint8_t> part(whole.begin(), whole.begin() + static_cast<long>(cut));
    const auto records = read_property_records(part);
    ASSERT_LE(records.size(), sample().size());
    ASSERT_GE(records.size(), last);
    for (size_t i = 0; i < records.size(); ++i) EXPECT_EQ(records[i], sample()[i]);
    last = records.size();
  }
  EXPECT_EQ(last, sample().size());
}

TEST(PropertyStream, RefusesAForeignOrOversizedHeader) {
  auto stream = write_property_stream({});
  uint32_t length = 0;
  for (size_t cut = 0; cut < kPropertyHeaderBytes; ++cut)
    EXPECT_FALSE(read_property_header(std::span(stream).first(cut), length));
  stream[7] = 0x7F;  // about 2 GB
  EXPECT_FALSE(read_property_header(stream, length));
  stream[7] = 0;
  stream[0] ^= 1;
  EXPECT_FALSE(read_property_header(stream, length));
}

TEST(PropertyStream, SurvivesLengthsThatPointOutside) {
  const std::vector<uint8_t> hostile = {0xFF, 0xFF, 'a', 0, 8, 0, 0xFF, 0xFF, 0xFF, 0xFF};
  EXPECT_TRUE(read_property_records(hostile).empty());
  const std::vector<uint8_t> long_data = {1, 0, 'a', 0, 8, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0};
  EXPECT_TRUE(read_property_records(long_data).empty());
}

}  // namespace
}  // namespace kestrelon
