#include "services/digest_md5.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace kestrelon {
namespace {

static_assert(std::endian::native == std::endian::little, "words of a block are read in place");

// The sine table of RFC 1321, section 3.4.
constexpr uint32_t kSines[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

constexpr size_t word_of_step(size_t step) {
  switch (step / 16) {
    case 0:
      return step;
    case 1:
      return (5 * step + 1) % 16;
    case 2:
      return (3 * step + 5) % 16;
    default:
      return 7 * step % 16;
  }
}

// One step: `a` becomes b plus the rotated sum. What depends on `b`, the word made last, is added
// as late as possible: the chain through b is what bounds the speed.
template <size_t Step>
inline void step(uint32_t& a, uint32_t b, uint32_t c, uint32_t d, const uint32_t* words) {
  constexpr size_t kRound = Step / 16;
  uint32_t sum = a + kSines[Step] + words[word_of_step(Step)];
  if constexpr (kRound == 0) {
    sum += d ^ (b & (c ^ d));
  } else if constexpr (kRound == 1) {
    sum += c & ~d;  // no bit is in both halves, so the sum stands for the "or"
    sum += b & d;
  } else if constexpr (kRound == 2) {
    sum += b ^ (c ^ d);
  } else {
    sum += c ^ (b | ~d);
  }
  a = b + std::rotl(sum, kShifts[kRound][Step % 4]);
}

// Four steps turn the roles of the words once around.
template <size_t Step>
inline void four_steps(uint32_t (&s)[4], const uint32_t* words) {
  step<Step>(s[0], s[1], s[2], s[3], words);
  step<Step + 1>(s[3], s[0], s[1], s[2], words);
  step<Step + 2>(s[2], s[3], s[0], s[1], words);
  step<Step + 3>(s[1], s[2], s[3], s[0], words);
}

template <size_t... Quarter>
inline void all_steps(uint32_t (&s)[4], const uint32_t* words, std::index_sequence<Quarter...>) {
  (four_steps<4 * Quarter>(s, words), ...);
}

void take_blocks(std::array<uint32_t, 4>& state, const uint8_t* bytes, size_t blocks) {
  uint32_t s[4] = {state[0], state[1], state[2], state[3]};
  for (; blocks > 0; --blocks, bytes += 64) {
    uint32_t words[16];
    std::memcpy(words, bytes, sizeof words);
    const uint32_t before[4] = {s[0], s[1], s[2], s[3]};
    all_steps(s, words, std::make_index_sequence<16>());
    for (size_t i = 0; i < 4; ++i) s[i] += before[i];
  }
  for (size_t i = 0; i < 4; ++i) state[i] = s[i];
}

}  // namespace

void Md5::update(std::span<const uint8_t> bytes) {
  const size_t held = static_cast<size_t>(length_ % kBlock);
  length_ += bytes.size();
  if (held > 0) {
    const size_t taken = std::min(kBlock - held, bytes.size());
    std::copy_n(bytes.begin(), taken, pending_.begin() + held);
    if (held + taken < kBlock) return;
    take_blocks(state_, pending_.data(), 1);
    bytes = bytes.subspan(taken);
  }
  take_blocks(state_, bytes.data(), bytes.size() / kBlock);
  const auto rest = bytes.last(bytes.size() % kBlock);
  std::copy(rest.begin(), rest.end(), pending_.begin());
}

std::array<uint8_t, 16> Md5::finish() {
  const uint64_t bits = length_ * 8;
  std::array<uint8_t, kBlock> padding{0x80};
  const size_t held = static_cast<size_t>(length_ % kBlock);
  update(std::span(padding).first((held < 56 ? 56 : 120) - held));
  std::array<uint8_t, 8> length;
  std::memcpy(length.data(), &bits, length.size());
  update(length);
  std::array<uint8_t, 16> digest;
  std::memcpy(digest.data(), state_.data(), digest.size());
  return digest;
}

}  // namespace kestrelon
