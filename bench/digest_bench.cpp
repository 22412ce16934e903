// Digests and cipher beside OpenSSL 3 and zlib: 1 MiB of random bytes a pass. Skipjack has no
// counterpart in current libraries; triple DES, the other cipher with 64-bit blocks, stands beside
// it.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <zlib.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "services/digest_crc32.h"
#include "services/digest_md5.h"
#include "services/digest_text.h"
#include "services/skipjack.h"

namespace kestrelon {
namespace {

constexpr size_t kSize = size_t{1} << 20;

const std::vector<uint8_t>& message() {
  static const std::vector<uint8_t> bytes = [] {
    std::mt19937 random(1);
    std::vector<uint8_t> made(kSize);
    for (uint8_t& byte : made) byte = static_cast<uint8_t>(random());
    return made;
  }();
  return bytes;
}

void count_bytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kSize));
}

void md5_ours(benchmark::State& state) {
  for (auto _ : state) {
    Md5 md5;
    md5.update(message());
    benchmark::DoNotOptimize(md5.finish());
  }
  count_bytes(state);
}
BENCHMARK(md5_ours);

void md5_openssl(benchmark::State& state) {
  uint8_t digest[EVP_MAX_MD_SIZE];
  for (auto _ : state) {
    EVP_Digest(message().data(), kSize, digest, nullptr, EVP_md5(), nullptr);
    benchmark::DoNotOptimize(digest);
  }
  count_bytes(state);
}
BENCHMARK(md5_openssl);

void crc32_ours(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(crc32(message()));
  count_bytes(state);
}
BENCHMARK(crc32_ours);

void crc32_ours_by_tables(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(crc32_detail::by_tables(message(), ~0u));
  count_bytes(state);
}
BENCHMARK(crc32_ours_by_tables);

void crc32_zlib(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(::crc32(0, message().data(), kSize));
  count_bytes(state);
}
BENCHMARK(crc32_zlib);

std::vector<SkipjackBlock> cipher_blocks() {
  std::vector<SkipjackBlock> blocks(kSize / sizeof(SkipjackBlock));
  for (size_t i = 0; i < blocks.size(); ++i)
    for (size_t k = 0; k < 4; ++k)
      blocks[i][k] =
          static_cast<uint16_t>(message()[8 * i + 2 * k] << 8 | message()[8 * i + 2 * k + 1]);
  return blocks;
}

constexpr std::array<uint8_t, 10> kKey = {0x00, 0x99, 0x88, 0x77, 0x66,
                                          0x55, 0x44, 0x33, 0x22, 0x11};

void skipjack_encrypt_ours(benchmark::State& state) {
  const Skipjack cipher(kKey);
  auto blocks = cipher_blocks();
  for (auto _ : state) {
    cipher.encrypt(blocks);
    benchmark::DoNotOptimize(blocks.data());
  }
  count_bytes(state);
}
BENCHMARK(skipjack_encrypt_ours);

void skipjack_decrypt_ours(benchmark::State& state) {
  const Skipjack cipher(kKey);
  auto blocks = cipher_blocks();
  for (auto _ : state) {
    cipher.decrypt(blocks);
    benchmark::DoNotOptimize(blocks.data());
  }
  count_bytes(state);
}
BENCHMARK(skipjack_decrypt_ours);

// The public members: text in and out, counted in the bytes of the cipher's blocks.
void skipjack_text_ours(benchmark::State& state) {
  const std::wstring text(kSize / 8 * 6, L'a');
  for (auto _ : state)
    benchmark::DoNotOptimize(
        decrypt_text(encrypt_text(text, L"00998877665544332211"), L"00998877665544332211"));
  count_bytes(state);
}
BENCHMARK(skipjack_text_ours);

void triple_des_openssl(benchmark::State& state) {
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(
      EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
  const uint8_t key[24] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  EVP_EncryptInit_ex(context.get(), EVP_des_ede3_ecb(), nullptr, key, nullptr);
  std::vector<uint8_t> out(kSize + 16);
  int length = 0;
  for (auto _ : state) {
    EVP_EncryptUpdate(context.get(), out.data(), &length, message().data(), kSize);
    benchmark::DoNotOptimize(out.data());
  }
  count_bytes(state);
}
BENCHMARK(triple_des_openssl);

}  // namespace
}  // namespace kestrelon

BENCHMARK_MAIN();
