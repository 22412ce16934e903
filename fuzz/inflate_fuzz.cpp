// The decompressor against hostile streams: in one piece and cut into segments, with and without
// headers, the answers must agree.
#include <cstdlib>
#include <cstring>

#include "imaging/inflate.h"

using namespace kestrelon;

namespace {

constexpr size_t kMaxOutput = 1 << 20;

// Runs of any size put together; cut off at kMaxOutput.
std::vector<uint8_t> drain(Inflater& inflater) {
  std::vector<uint8_t> all;
  for (;;) {
    const auto run = inflater.next();
    if (run.empty()) return all;
    all.insert(all.end(), run.begin(), run.end());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const auto format = static_cast<InflateFormat>(data[0] % 3);
  const size_t piece = 1 + data[1];
  const std::span<const uint8_t> packed(data + 2, size - 2);

  const std::span<const uint8_t> one[] = {packed};
  Inflater whole(one, format, kMaxOutput);
  const std::vector<uint8_t> expected = drain(whole);

  std::vector<std::span<const uint8_t>> pieces;
  for (size_t i = 0; i < packed.size(); i += piece) {
    pieces.push_back(packed.subspan(i, std::min(piece, packed.size() - i)));
  }
  Inflater cut(pieces, format, kMaxOutput);
  if (drain(cut) != expected || cut.complete() != whole.complete()) std::abort();

  std::vector<uint8_t> exact(expected.size());
  if (!whole.failed() && !inflate_exact(packed, exact, format)) std::abort();
  if (!whole.failed() && exact != expected) std::abort();
  return 0;
}
