#include "imaging/inflate.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

namespace kestrelon {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes deflate_with(const Bytes& plain, int level, int window_bits, int strategy) {
  z_stream z{};
  deflateInit2(&z, level, Z_DEFLATED, window_bits, 8, strategy);
  Bytes out(deflateBound(&z, static_cast<uLong>(plain.size())) + 64);
  z.next_in = const_cast<Bytef*>(plain.data());
  z.avail_in = static_cast<uInt>(plain.size());
  z.next_out = out.data();
  z.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&z, Z_FINISH), Z_STREAM_END);
  out.resize(z.total_out);
  deflateEnd(&z);
  return out;
}

// Literals, and repeats at every distance from 1 to the window's end, short and long.
Bytes mixed(size_t size, uint32_t seed) {
  std::mt19937 random(seed);
  Bytes out;
  while (out.size() < size) {
    if (out.empty() || random() % 3 == 0) {
      for (uint32_t n = random() % 40; n; --n) out.push_back(static_cast<uint8_t>(random() % 97));
      out.push_back(static_cast<uint8_t>(random()));
      continue;
    }
    const size_t far = std::min<size_t>(out.size(), random() % 2 ? 20 : 32768);
    const size_t distance = 1 + random() % far;
    for (uint32_t n = 3 + random() % 300; n; --n) out.push_back(out[out.size() - distance]);
  }
  out.resize(size);
  return out;
}

// A stream written bit by bit, lowest bit first.
struct BitWriter {
  Bytes bytes;
  unsigned used = 0;

  BitWriter& put(uint32_t value, unsigned bits) {
    for (; bits; --bits, value >>= 1) {
      if (used == 0) bytes.push_back(0);
      bytes.back() = static_cast<uint8_t>(bytes.back() | (value & 1) << used);
      used = (used + 1) & 7;
    }
    return *this;
  }
  // A code's bits come highest first.
  BitWriter& code(uint32_t value, unsigned bits) {
    while (bits) put(value >> --bits & 1, 1);
    return *this;
  }
};

std::optional<Bytes> raw(const Bytes& stream, size_t max = 1 << 20) {
  return inflate_all(stream, max, InflateFormat::RawDeflate);
}

TEST(Inflate, UndoesEveryKindOfBlockAtEverySizeOfRun) {
  for (size_t size :
       {0, 1, 2, 257, 258, 259, 32767, 32768, 32769, 131071, 131072, 131073, 500001}) {
    const Bytes plain = mixed(size, static_cast<uint32_t>(size));
    for (int strategy : {Z_DEFAULT_STRATEGY, Z_FIXED, Z_HUFFMAN_ONLY, Z_RLE}) {
      for (int level : {0, 1, 9}) {
        const Bytes zlib = deflate_with(plain, level, 15, strategy);
        EXPECT_EQ(inflate_all(zlib, size), plain) << size << ' ' << strategy << ' ' << level;
        EXPECT_EQ(raw(deflate_with(plain, level, -15, strategy)), plain);
        Bytes exact(size);
        EXPECT_TRUE(inflate_exact(zlib, exact, InflateFormat::Zlib, Adler32Check::Verify));
        EXPECT_EQ(exact, plain);
      }
    }
  }
}

TEST(Inflate, InputMayBeCutIntoSegmentsAnywhere) {
  const Bytes plain = mixed(600000, 5);
  const Bytes stream = deflate_with(plain, 6, 15, Z_DEFAULT_STRATEGY);
  ASSERT_GT(stream.size(), 40000u);
  for (size_t piece : {size_t{1}, size_t{7}, size_t{8192}, size_t{32768}, stream.size() - 1}) {
    std::vector<std::span<const uint8_t>> segments;
    for (size_t i = 0; i < stream.size(); i += piece) {
      segments.push_back(std::span(stream).subspan(i, std::min(piece, stream.size() - i)));
      segments.emplace_back();
    }
    Inflater inflater(segments, InflateFormat::Zlib, plain.size());
    Bytes out;
    for (auto run = inflater.next(); !run.empty(); run = inflater.next()) {
      out.insert(out.end(), run.begin(), run.end());
    }
    EXPECT_EQ(out, plain) << piece;
    EXPECT_TRUE(inflater.complete());
    EXPECT_TRUE(inflater.trailer_matches(adler32(1, plain)));
  }
}

TEST(Inflate, StreamCutShortFails) {
  for (int strategy : {Z_DEFAULT_STRATEGY, Z_FIXED}) {
    const Bytes plain = mixed(900, 3);
    const Bytes stream = deflate_with(plain, 9, 15, strategy);
    Bytes out(plain.size());
    for (size_t size = 0; size < stream.size(); ++size) {
      const Bytes cut(stream.begin(), stream.begin() + static_cast<ptrdiff_t>(size));
      EXPECT_EQ(inflate_all(cut, plain.size()), std::nullopt) << size;
      EXPECT_FALSE(inflate_exact(cut, out, InflateFormat::Zlib, Adler32Check::Verify)) << size;
      if (size + 8 < stream.size()) {
        EXPECT_FALSE(inflate_exact(cut, out)) << size;
      }
    }
  }
}

TEST(Inflate, SizeLimitIsExact) {
  const Bytes plain = mixed(140000, 8);
  const Bytes stream = deflate_with(plain, 9, 15, Z_DEFAULT_STRATEGY);
  EXPECT_EQ(inflate_all(stream, plain.size() - 1), std::nullopt);
  EXPECT_EQ(inflate_all(stream, plain.size()), plain);
  Bytes shorter(plain.size() - 1), longer(plain.size() + 1);
  EXPECT_TRUE(inflate_exact(stream, shorter));
  EXPECT_TRUE(std::equal(shorter.begin(), shorter.end(), plain.begin()));
  EXPECT_FALSE(inflate_exact(stream, shorter, InflateFormat::Zlib, Adler32Check::Verify));
  EXPECT_FALSE(inflate_exact(stream, longer));
}

TEST(Inflate, HeaderAndTrailerAreCheckedWhereAsked) {
  const Bytes plain = mixed(100, 1);
  const Bytes stream = deflate_with(plain, 9, 15, Z_DEFAULT_STRATEGY);
  Bytes bad_sum = stream;
  bad_sum.back() ^= 1;
  EXPECT_EQ(inflate_all(bad_sum, 1000), std::nullopt);
  EXPECT_EQ(inflate_all(bad_sum, 1000, InflateFormat::Zlib, Adler32Check::Ignore), plain);
  // Method 7; a wider window than there is; a wrong check value; a preset dictionary.
  for (auto [first, second] : {std::pair{0x77, 0x85}, {0x88, 0x1C}, {0x78, 0x9D}, {0x78, 0xBB}}) {
    Bytes bad = stream;
    bad[0] = static_cast<uint8_t>(first);
    bad[1] = static_cast<uint8_t>(second);
    EXPECT_EQ(inflate_all(bad, 1000), std::nullopt) << first << ' ' << second;
    EXPECT_EQ(inflate_all(bad, 1000, InflateFormat::ZlibLax), plain);
  }
}

TEST(Inflate, DistanceMustStayInTheOutput) {
  // Fixed codes: one literal "a" (0x61 + 0x30), length 3 (0000001), distance 1 (00000) or 2
  // (00001).
  auto stream = [](uint32_t distance_code) {
    return BitWriter()
        .put(1, 1)
        .put(1, 2)
        .code(0x91, 8)
        .code(1, 7)
        .code(distance_code, 5)
        .code(0, 7);
  };
  EXPECT_EQ(raw(stream(0).bytes), Bytes(4, 'a'));
  EXPECT_EQ(raw(stream(1).bytes), std::nullopt);
  EXPECT_EQ(raw(stream(30).bytes), std::nullopt);
  // Length symbol 286 exists in the fixed code but means nothing.
  const auto no_length = BitWriter().put(1, 1).put(1, 2).code(0x91, 8).code(0xC6, 8).put(0, 40);
  EXPECT_EQ(raw(no_length.bytes), std::nullopt);
}

TEST(Inflate, StoredBlockNeedsItsInverseSizeAndAllItsBytes) {
  auto stream = [](uint32_t size, uint32_t inverse) {
    BitWriter w;
    w.put(1, 8).put(size, 16).put(inverse, 16).put('x', 8).put('y', 8);
    return w.bytes;
  };
  EXPECT_EQ(raw(stream(2, 0xFFFD)), (Bytes{'x', 'y'}));
  EXPECT_EQ(raw(stream(0, 0xFFFF)), Bytes());
  EXPECT_EQ(raw(stream(2, 0xFFFC)), std::nullopt);
  EXPECT_EQ(raw(stream(3, 0xFFFC)), std::nullopt);
  EXPECT_EQ(raw({7, 0, 0, 0}), std::nullopt);  // block type 3
}

InflateTables tables;

TEST(InflateTables, AcceptsPrefixCodesAlone) {
  auto dist = [](std::initializer_list<uint8_t> lengths) {
    Bytes all(30);
    std::copy(lengths.begin(), lengths.end(), all.begin());
    return tables.build_dist(all);
  };
  EXPECT_TRUE(dist({}));
  EXPECT_TRUE(dist({0, 1}));
  EXPECT_TRUE(dist({1, 1}));
  EXPECT_TRUE(dist({1, 2, 2}));
  EXPECT_FALSE(dist({2}));
  EXPECT_FALSE(dist({1, 2}));
  EXPECT_FALSE(dist({1, 1, 1}));
  EXPECT_FALSE(dist({1, 2, 2, 15}));
  Bytes lit(286);
  lit[0] = lit[1] = 1;
  EXPECT_FALSE(tables.build_lit_len(lit));  // no end of block
  lit[1] = 0;
  lit[256] = 1;
  EXPECT_TRUE(tables.build_lit_len(lit));
  Bytes precode(19);
  EXPECT_FALSE(tables.build_precode(precode));
  precode[3] = 1;
  EXPECT_FALSE(tables.build_precode(precode));
  precode[4] = 1;
  EXPECT_TRUE(tables.build_precode(precode));
}

// Random complete codes of every shape: each code must lead to its symbol whatever bits follow.
TEST(InflateTables, EveryCodeFindsItsSymbol) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    // Splitting leaves keeps a code complete; splitting the newest one makes it deep.
    std::vector<uint8_t> leaves = {1, 1};
    const size_t wanted = 2 + random() % 29;
    while (leaves.size() < wanted) {
      const size_t i = random() % 3 ? leaves.size() - 1 : random() % leaves.size();
      if (leaves[i] == 15) continue;
      ++leaves[i];
      leaves.push_back(leaves[i]);
    }
    Bytes lengths(30);
    std::shuffle(leaves.begin(), leaves.end(), random);
    std::copy(leaves.begin(), leaves.end(), lengths.begin());
    ASSERT_TRUE(tables.build_dist(lengths));
    uint32_t code = 0;
    for (unsigned bits = 1; bits <= 15; ++bits, code <<= 1) {
      for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] != bits) continue;
        uint32_t stream = 0;
        for (unsigned b = 0; b < bits; ++b) stream |= (code >> (bits - 1 - b) & 1) << b;
        stream |= random() << bits;
        ++code;
        uint32_t entry = tables.dist[stream & ((1u << kDistBits) - 1)];
        unsigned taken = 0;
        if (entry & kEntryException) {
          taken = entry & 31;
          entry = tables.dist[(entry >> 16) + (stream >> taken & ((1u << (entry >> 8 & 15)) - 1))];
        }
        ASSERT_EQ(taken + (entry >> 8 & 15), bits);
        const uint32_t extra = symbol < 4 ? 0 : static_cast<uint32_t>(symbol / 2 - 1);
        ASSERT_EQ((entry & 31) - (entry >> 8 & 15), extra);
        const uint32_t base =
            symbol < 4 ? static_cast<uint32_t>(symbol) + 1 : ((2 + (symbol & 1)) << extra) + 1;
        ASSERT_EQ(entry >> 16, base);
      }
    }
  }
}

}  // namespace
}  // namespace kestrelon
