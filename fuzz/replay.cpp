// Runs every file of a corpus through a fuzz target once, without libFuzzer, so that findings stay
// fixed.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main() {
  size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KESTRELON_CORPUS)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    // An exact allocation lets AddressSanitizer see a read one past the end.
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    ++count;
  }
  std::printf("%zu inputs\n", count);
  return count == 0 ? 1 : 0;
}
