#include "imaging/zlib_inflater.h"

#include <gtest/gtest.h>

#include <random>

#include "png_test_tools.h"

namespace kestrelon {
namespace {

using png_test::Bytes;

Bytes sample(size_t size) {
  std::mt19937 random(static_cast<unsigned>(size));
  Bytes plain(size);
  for (uint8_t& byte : plain) byte = static_cast<uint8_t>(random() % 7 * (random() % 3));
  return plain;
}

struct Outcome {
  Bytes bytes;
  bool good = false;
};

Outcome in_pieces(const Bytes& stream, size_t size, size_t segment) {
  std::vector<std::span<const uint8_t>> segments(1);
  for (size_t i = 0; i < stream.size(); i += segment)
    segments.push_back(std::span(stream).subspan(i, std::min(segment, stream.size() - i)));
  segments.emplace_back();
  ZlibInflater inflater(*png_test::native_zlib(), segments, size, 8);
  Outcome outcome;
  for (auto run = inflater.next(); !run.empty(); run = inflater.next())
    outcome.bytes.insert(outcome.bytes.end(), run.begin(), run.end());
  outcome.good = inflater.ends_well();
  return outcome;
}

Outcome at_once(const Bytes& stream, size_t size) {
  Outcome outcome;
  outcome.bytes.resize(size);
  uLongf made = size;
  const int result = ::uncompress(outcome.bytes.data(), &made, stream.data(), stream.size());
  outcome.good = result == Z_OK && made == size;
  return outcome;
}

// The pieces end before, at and behind the end of the output.
TEST(ZlibInflater, JudgesEveryStreamAsUncompressDoes) {
  for (const size_t size :
       {size_t{1}, size_t{300}, size_t{65535}, size_t{65536}, size_t{65537}, size_t{200000}}) {
    const Bytes plain = sample(size);
    const Bytes good = png_test::packed(plain);
    std::vector<Bytes> streams = {good, png_test::packed(plain, 0)};
    for (const size_t cut : {size_t{1}, size_t{4}, size_t{5}, good.size() / 2}) {
      if (cut < good.size()) streams.emplace_back(good.begin(), good.end() - static_cast<int>(cut));
    }
    streams.push_back(good);
    streams.back().back() ^= 1;
    streams.push_back(good);
    streams.back()[good.size() / 2] ^= 0x10;
    streams.push_back(good);
    streams.back()[0] ^= 0x10;
    streams.push_back(good);
    streams.back().insert(streams.back().end(), {1, 2, 3});
    for (size_t i = 0; i < streams.size(); ++i) {
      for (const size_t wanted : {size - 1, size, size + 1}) {
        if (wanted == 0) continue;
        const Outcome expected = at_once(streams[i], wanted);
        for (const size_t segment : {size_t{1}, size_t{1000}, streams[i].size()}) {
          const Outcome got = in_pieces(streams[i], wanted, segment);
          ASSERT_EQ(got.good, expected.good) << size << " stream " << i << " for " << wanted;
          if (got.good) {
            ASSERT_EQ(got.bytes, plain) << size << " stream " << i;
          }
        }
      }
    }
  }
}

TEST(ZlibInflater, ALibraryThatRefusesToStartGivesNothing) {
  ZlibApi refusing = *png_test::native_zlib();
  refusing.inflate_init = [](ZlibStream*) { return Z_VERSION_ERROR; };
  const Bytes stream = png_test::packed(sample(100));
  const std::span<const uint8_t> segments[] = {stream};
  ZlibInflater inflater(refusing, segments, 100, 8);
  EXPECT_TRUE(inflater.next().empty());
  EXPECT_FALSE(inflater.ends_well());
}

}  // namespace
}  // namespace kestrelon
